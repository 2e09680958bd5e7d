// By the standard library's calendar; the latest stamp is kept, because most lines have the same.
#include "tests/simulation/Stamp.h"

#include <chrono>
#include <cstdio>
#include <optional>
#include <string>

namespace simulation {

namespace {

constexpr std::chrono::sys_days FirstDay{std::chrono::year{1899} / 12 / 30};

}  // namespace

std::string_view Stamp(runtime::DateTime dt) {
    using namespace std::chrono;
    static std::optional<runtime::DateTime> dtKept;
    static char s[40];
    if (dtKept == dt) return s;
    const sys_seconds tTime = FirstDay + seconds{dt.lSeconds};
    const auto tDay = floor<days>(tTime);
    const year_month_day tDate{tDay};
    const hh_mm_ss tClock{tTime - tDay};
    std::snprintf(s, sizeof s, "%02u/%02u/%04d %02d:%02d:%02d ", static_cast<unsigned>(tDate.month()),
                  static_cast<unsigned>(tDate.day()), static_cast<int>(tDate.year()),
                  static_cast<int>(tClock.hours().count()), static_cast<int>(tClock.minutes().count()),
                  static_cast<int>(tClock.seconds().count()));
    dtKept = dt;
    return s;
}

runtime::DateTime MomentOf(std::string_view sStamp) {
    using namespace std::chrono;
    unsigned iMonth = 0, iDay = 0;
    int iYear = 0, iHour = 0, iMinute = 0, iSecond = 0;
    std::sscanf(std::string(sStamp.substr(0, 19)).c_str(), "%2u/%2u/%4d %2d:%2d:%2d", &iMonth, &iDay, &iYear, &iHour,
                &iMinute, &iSecond);
    const sys_seconds tTime = sys_days{year{iYear} / static_cast<int>(iMonth) / static_cast<int>(iDay)} + hours{iHour} +
                              minutes{iMinute} + seconds{iSecond};
    return {(tTime - sys_seconds{FirstDay}).count()};
}

}  // namespace simulation
