// The one-line summary of targets and messages in the status bar.
#pragma once

#include <cstdint>
#include <string>

namespace targets {

// Appends "12 Targets, >256 Messages": lRows counts the header row; the ">" appears from 255 rows on, one message
// before the first could have been removed. Kept on purpose.
void AppendTargetSummary(std::string& sText, std::int32_t lTargets, std::int32_t lRows);

}  // namespace targets
