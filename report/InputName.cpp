// Looks whether there is such a file.
#include "report/InputName.h"

#include <filesystem>
#include <system_error>

namespace report {

InputName ReadInputName(const std::string& sName) {
    const bool bInput = sName.size() > 2 && (sName.ends_with("#1") || sName.ends_with("#2"));
    std::error_code tIgnored;
    if (!bInput || std::filesystem::exists(sName, tIgnored)) return {sName, std::nullopt};
    return {sName.substr(0, sName.size() - 2), static_cast<runtime::PortIndex>(sName.back() - '1')};
}

}  // namespace report
