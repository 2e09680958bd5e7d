// How wide a field must be for a text: in its own font and style, frame, margins and icons included.
#pragma once

#include <QLineEdit>

namespace toolkit {

// Device-independent pixels. A line edit asks for 17 "x" and what it needs around them: that room is the same for any
// text. One more for the cursor behind the last character.
inline int FieldWidth(const QLineEdit& txt, const char* sText) {
    const QFontMetrics tMetrics = txt.fontMetrics();
    const int iAround = txt.sizeHint().width() - 17 * tMetrics.horizontalAdvance(QLatin1Char('x'));
    return tMetrics.horizontalAdvance(QLatin1String(sText)) + iAround + 1;
}

}  // namespace toolkit
