// A text file as a text: which letters its bytes mean is found out when it is read and kept when it is written.
#pragma once

#include <QString>
#include <QStringConverter>
#include <string>
#include <string_view>

namespace toolkit {

struct FileText {
    QString sText;
    QStringConverter::Encoding eCode = QStringConverter::Latin1;
    bool bMark = false;  // begins with a byte order mark
};

// A byte order mark tells (UTF-8, -16 or -32); without one it is UTF-8 where all bytes fit that, else Latin-1. Nothing
// is lost on the way: what does not fit what its mark promises is read as Latin-1.
FileText FromFileBytes(std::string_view sBytes);

// The bytes of a text in its file's own code; a Latin-1 file that now has other letters, or would be read as something
// else, becomes UTF-8.
std::string ToFileBytes(const FileText& t);

}  // namespace toolkit
