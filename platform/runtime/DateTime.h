// Local date and time with one-second resolution, its texts, and the clock that gives it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace runtime {

// Seconds of local civil time since 1899-12-30 00:00:00, the value of a date-time never set. Civil time knows no time
// zone: a difference across a change to or from summer time is off by that hour, as the clock on the wall is.
struct DateTime {
    std::int64_t lSeconds = 0;
    // NOLINTNEXTLINE(modernize-use-nullptr): the 0 is the language's own
    friend auto operator<=>(const DateTime&, const DateTime&) = default;
};

struct CivilDate {
    int iYear;
    int iMonth;  // 1 to 12
    int iDay;    // 1 to 31
};

// Any proleptic Gregorian date; the parts must be in range.
DateTime MakeDateTime(CivilDate tDate, int iHour, int iMinute, int iSecond);
CivilDate DateOf(DateTime dt);
// Second of the day, 0 to 86399.
std::int32_t SecondOfDay(DateTime dt);

void AppendTime(std::string& sText, DateTime dt);         // "hh:nn:ss", 24-hour
std::string TimeText(DateTime dt);                        // "hh:nn:ss"
void AppendRecordStamp(std::string& sText, DateTime dt);  // "mm/dd/yyyy hh:nn:ss"
std::string RmcDateText(DateTime dt);                     // "ddmmyy"

// Reads exactly "mm/dd/yyyy hh:nn:ss" (19 characters, digits in every place, a real date from year 1 on and a real
// time); nothing otherwise.
std::optional<DateTime> FromRecordStamp(std::string_view sText);

// The computer's local clock.
DateTime LocalNow();
// Seconds since local midnight with fraction, 0 up to (not including) 86400: it wraps at midnight.
double LocalSecondsSinceMidnight();

}  // namespace runtime
