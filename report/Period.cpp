// Civil time has no zone, so every day has 24 hours.
#include "report/Period.h"

#include <array>
#include <charconv>

#include "platform/runtime/Format.h"

namespace report {

namespace {

constexpr std::int64_t Minute = 60;
constexpr std::int64_t Hour = 60 * Minute;
constexpr std::int64_t Day = 24 * Hour;
constexpr std::int64_t Week = 7 * Day;

std::int64_t LengthOf(Period e) { return e == Period::Hour ? Hour : e == Period::Day ? Day : Week; }

}  // namespace

std::optional<Period> ReadPeriod(std::string_view sText) {
    if (sText == "hour") return Period::Hour;
    if (sText == "day") return Period::Day;
    if (sText == "week") return Period::Week;
    return std::nullopt;
}

runtime::DateTime StartOf(Period e, runtime::DateTime dt) {
    // A Monday from which all periods can be counted; no stamp lies before it.
    static const runtime::DateTime dtMonday = runtime::MakeDateTime({1, 1, 1}, 0, 0, 0);
    const std::int64_t lLength = LengthOf(e);
    return {dt.lSeconds - (dt.lSeconds - dtMonday.lSeconds) % lLength};
}

runtime::DateTime EndOf(Period e, runtime::DateTime dtStart) { return {dtStart.lSeconds + LengthOf(e)}; }

std::string IsoText(runtime::DateTime dt) {
    const runtime::CivilDate t = runtime::DateOf(dt);
    std::string s;
    runtime::AppendFormat(s, t.iYear, {4, 0});
    s += '-';
    runtime::AppendTwoDigits(s, t.iMonth);
    s += '-';
    runtime::AppendTwoDigits(s, t.iDay);
    s += ' ';
    runtime::AppendTime(s, dt);
    return s;
}

std::optional<std::int64_t> ReadDuration(std::string_view sText) {
    constexpr std::string_view Units = "smhd";
    constexpr std::array Lengths = {std::int64_t{1}, Minute, Hour, Day};
    std::int64_t lCount = 0;
    const char* pEnd = sText.data() + sText.size();
    const auto [pUnit, eError] = std::from_chars(sText.data(), pEnd, lCount);
    if (eError != std::errc() || pUnit + 1 != pEnd || lCount < 1 || lCount > 366 * Day) return std::nullopt;
    const std::size_t iUnit = Units.find(*pUnit);
    if (iUnit == std::string_view::npos || lCount * Lengths[iUnit] > 366 * Day) return std::nullopt;
    return lCount * Lengths[iUnit];
}

std::string DurationText(std::int64_t lSeconds) {
    const auto TwoUnits = [](std::int64_t lWhole, const char* sWhole, std::int64_t lPart, const char* sPart) {
        std::string s = std::to_string(lWhole) + sWhole;
        if (lPart > 0) s += " " + std::to_string(lPart) + sPart;
        return s;
    };
    if (lSeconds >= Day) return TwoUnits(lSeconds / Day, " d", lSeconds % Day / Hour, " h");
    if (lSeconds >= Hour) return TwoUnits(lSeconds / Hour, " h", lSeconds % Hour / Minute, " min");
    if (lSeconds < Minute) return std::to_string(lSeconds) + " s";
    return TwoUnits(lSeconds / Minute, " min", lSeconds % Minute, " s");
}

}  // namespace report
