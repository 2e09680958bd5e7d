// Hours, days and weeks of the clock on the wall, by which results can be divided.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/runtime/DateTime.h"

namespace report {

enum class Period { Hour, Day, Week };

// "hour", "day", "week"; nothing for any other.
std::optional<Period> ReadPeriod(std::string_view sText);
// When the period began that dt lies in. Weeks begin on Monday.
runtime::DateTime StartOf(Period e, runtime::DateTime dt);
// When the period ends that begins at dtStart.
runtime::DateTime EndOf(Period e, runtime::DateTime dtStart);

// "2025-06-14 08:00:00".
std::string IsoText(runtime::DateTime dt);
// The seconds of "90s", "10m", "2h", "1d": from 1 second to a year. Nothing for anything else.
std::optional<std::int64_t> ReadDuration(std::string_view sText);
// "35 s", "12 min", "3 h 20 min", "7 d 3 h".
std::string DurationText(std::int64_t lSeconds);

}  // namespace report
