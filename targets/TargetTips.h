// The tool-tips of the target table's columns.
#pragma once

#include <string>

namespace targets {

// Empty for column 0, for no column (-1) and for no row (-1). bPower adds the units of the level columns.
std::string TargetTip(int iRow, int iColumn, bool bPower);

}  // namespace targets
