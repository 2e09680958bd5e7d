// The border between the two string types: std::string holds Latin-1, one byte per character, QString is the toolkit's.
// They meet here and nowhere else.
#pragma once

#include <QLatin1StringView>
#include <QString>
#include <string>
#include <string_view>

namespace toolkit {

inline QString FromLatin1(std::string_view sText) {
    return QString(QLatin1StringView(sText.data(), static_cast<qsizetype>(sText.size())));
}

// Characters outside Latin-1 become "?".
inline std::string ToLatin1(const QString& sText) { return sText.toLatin1().toStdString(); }

}  // namespace toolkit
