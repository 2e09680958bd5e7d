// The words behind the program's name.
#pragma once

#include <optional>
#include <string>

#include "report/Command.h"

namespace report {

struct Asked {
    const Command* pCommand = nullptr;
    Options tOptions;
};

// Nothing where there is nothing to do but to say sText and end with iExit: help or version on standard output (0), a
// mistake on standard error (2).
std::optional<Asked> ReadCommandLine(int iCount, const char* const* sWords, std::string& sText, int& iExit);

inline constexpr int ExitGood = 0;
inline constexpr int ExitUnsaid = 1;  // something could not be read, or what was asked could not be said
inline constexpr int ExitUsage = 2;

}  // namespace report
