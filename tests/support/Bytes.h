// Byte strings in the form that Qt Test prints when a comparison fails.
#pragma once

#include <QByteArray>
#include <string_view>

namespace support {

inline QByteArray Bytes(std::string_view sText) {
    return QByteArray(sText.data(), static_cast<qsizetype>(sText.size()));
}

inline std::string_view View(const QByteArray& sBytes) {
    return {sBytes.constData(), static_cast<std::size_t>(sBytes.size())};
}

}  // namespace support
