// A line of text to be edited, read and written as Latin-1.
#pragma once

#include <QLineEdit>
#include <QRegularExpressionValidator>
#include <string>

#include "platform/toolkit/Latin1.h"

namespace toolkit {

class TextBox : public QLineEdit {
    Q_OBJECT
public:
    using QLineEdit::QLineEdit;

    std::string Text() const { return ToLatin1(text()); }
    void SetText(std::string_view sText) { setText(FromLatin1(sText)); }
    // Characters that can be typed or pasted at the most; a text that the program sets is kept whole.
    void SetTypingLimit(int iCharacters) {
        const QRegularExpression tUpTo(QStringLiteral(".{0,%1}").arg(iCharacters));
        setValidator(new QRegularExpressionValidator(tUpTo, this));
    }
};

}  // namespace toolkit
