// Lets Qt Test print byte strings when a comparison fails. To be included in every file that compares them.
#pragma once

#include <QTest>
#include <string>

namespace QTest {

template <>
inline char* toString(const std::string& sText) {
    return toPrettyCString(sText.data(), static_cast<qsizetype>(sText.size()));
}

}  // namespace QTest
