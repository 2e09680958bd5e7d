// The "--name value" pairs of the simulator's two programs.
#pragma once

#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>

namespace simulator {

struct ArgumentError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

class Arguments {
public:
    // Raises ArgumentError for anything that is not a known name followed by a value.
    Arguments(int iCount, const char* const* sArguments, const std::set<std::string_view>& sNames);

    bool Has(std::string_view sName) const { return m_sValues.count(sName) > 0; }
    std::string Text(std::string_view sName, std::string_view sElse) const;
    // Raises ArgumentError when the value is no number or lies outside dLow to dHigh.
    double Number(std::string_view sName, double dElse, double dLow, double dHigh) const;

private:
    std::map<std::string_view, std::string_view> m_sValues;
};

}  // namespace simulator
