// The summary's words.
#include "targets/TargetSummary.h"

#include "platform/runtime/Format.h"

namespace targets {

namespace {

constexpr std::int32_t RowsOfFullTable = 255;  // Kept on purpose: the mark comes before the first row is removed

}  // namespace

void AppendTargetSummary(std::string& sText, std::int32_t lTargets, std::int32_t lRows) {
    runtime::AppendInteger(sText, lTargets);
    sText += " Targets, ";
    if (lRows >= RowsOfFullTable) sText += '>';
    runtime::AppendInteger(sText, lRows - 1);
    sText += " Messages";
}

}  // namespace targets
