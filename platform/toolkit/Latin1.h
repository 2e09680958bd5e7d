// The border between the two string types: std::string holds Latin-1, one byte per character, QString is the toolkit's.
// They meet here and nowhere else. Names of files cross it as paths, whose bytes are the system's own.
#pragma once

#include <QFile>
#include <QLatin1StringView>
#include <QString>
#include <filesystem>
#include <string>
#include <string_view>

namespace toolkit {

inline QString FromLatin1(std::string_view sText) {
    return QString(QLatin1StringView(sText.data(), static_cast<qsizetype>(sText.size())));
}

// Characters outside Latin-1 become "?".
inline std::string ToLatin1(const QString& sText) { return sText.toLatin1().toStdString(); }

inline std::filesystem::path ToPath(const QString& sFile) { return QFile::encodeName(sFile).toStdString(); }

}  // namespace toolkit
