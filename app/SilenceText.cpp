// Minutes and seconds of a port's silence.
#include "app/SilenceText.h"

#include "platform/runtime/Format.h"

namespace app {

std::string SilenceText(std::int32_t lSeconds) {
    // Kept on purpose: the bound is inclusive, the sixtieth second still counts under minute 00.
    const std::int32_t lMinutes = lSeconds <= 60 ? 0 : lSeconds / 60;
    std::string sText;
    runtime::AppendFormat(sText, lMinutes, runtime::PictureTwo);
    sText += ':';
    runtime::AppendTwoDigits(sText, lSeconds - 60 * lMinutes);
    return sText;
}

}  // namespace app
