// Texts of a recording and of a playback.
#include "app/RunNote.h"

#include <algorithm>
#include <array>

#include "app/RecordLine.h"
#include "platform/runtime/Format.h"

namespace app {

std::string SizeText(std::int64_t lBytes) {
    if (lBytes < 1000) return std::to_string(lBytes) + (lBytes == 1 ? " byte" : " bytes");
    constexpr std::array<const char*, 3> sUnits = {" kB", " MB", " GB"};
    std::size_t iUnit = 0;
    double dSize = static_cast<double>(lBytes) / 1000;
    for (; dSize >= 999.95 && iUnit + 1 < sUnits.size(); ++iUnit) dSize /= 1000;
    return runtime::Format(dSize, runtime::PictureTenths) + sUnits[iUnit];
}

std::string SpanText(std::int64_t lSeconds) {
    const std::int64_t lSpan = std::max<std::int64_t>(lSeconds, 0);
    std::string sText;
    runtime::AppendInteger(sText, lSpan / 3600);
    sText += ':';
    runtime::AppendTwoDigits(sText, static_cast<int>(lSpan / 60 % 60));
    sText += ':';
    runtime::AppendTwoDigits(sText, static_cast<int>(lSpan % 60));
    return sText;
}

std::string MomentText(runtime::DateTime dt, runtime::DateTime dtNow) {
    const std::int64_t lMidnight = dtNow.lSeconds - runtime::SecondOfDay(dtNow);
    const bool bToday = dt.lSeconds >= lMidnight && dt.lSeconds < lMidnight + 86400;
    if (bToday) return runtime::TimeText(dt);
    std::string sText;
    runtime::AppendRecordStamp(sText, dt);
    return sText;
}

std::optional<runtime::DateTime> LastRecordStamp(std::string_view sEnd) {
    RecordStampReader tReader;
    while (!sEnd.empty()) {
        const std::size_t iBreak = sEnd.find_last_of("\r\n");
        const std::size_t iLine = iBreak == std::string_view::npos ? 0 : iBreak + 1;
        if (const auto& dt = tReader.Read(sEnd.substr(iLine))) return dt;
        if (iLine == 0) break;
        sEnd = sEnd.substr(0, iBreak);
    }
    return std::nullopt;
}

}  // namespace app
