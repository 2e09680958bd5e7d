// See Arguments.h.
#include "tools/Arguments.h"

#include "platform/runtime/Convert.h"

namespace simulator {

Arguments::Arguments(int iCount, const char* const* sArguments, const std::set<std::string_view>& sNames) {
    for (int i = 1; i < iCount; i += 2) {
        const std::string_view sName = sArguments[i];
        if (sNames.count(sName) == 0) throw ArgumentError("unknown option " + std::string(sName));
        if (i + 1 == iCount) throw ArgumentError("no value behind " + std::string(sName));
        m_sValues[sName] = sArguments[i + 1];
    }
}

std::string Arguments::Text(std::string_view sName, std::string_view sElse) const {
    const auto it = m_sValues.find(sName);
    return std::string(it == m_sValues.end() ? sElse : it->second);
}

double Arguments::Number(std::string_view sName, double dElse, double dLow, double dHigh) const {
    const auto it = m_sValues.find(sName);
    if (it == m_sValues.end()) return dElse;
    double d = 0;
    try {
        d = runtime::ToReal(it->second);
    } catch (const runtime::ConversionError&) {
        throw ArgumentError("no number behind " + std::string(sName));
    }
    if (!(d >= dLow && d <= dHigh)) throw ArgumentError("out of range: " + std::string(sName));
    return d;
}

}  // namespace simulator
