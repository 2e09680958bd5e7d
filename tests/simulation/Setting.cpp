// The settings in turn: eight seeds in a row see every way to record, with captures and without, and one of them
// message numbers beyond 2^31.
#include "tests/simulation/Setting.h"

#include <array>

namespace simulation {

namespace {

constexpr std::int64_t BeforeTheBound = (std::int64_t{1} << 31) - 700;

// An ordinary day, the turn of the year, a leap day, the end of a month.
constexpr std::array Clocks = {"2011-05-15T12:00:00", "2011-12-31T15:10:00", "2012-02-28T21:00:00",
                               "2015-06-30T06:30:00"};

}  // namespace

Setting SettingOf(std::uint64_t lSeed) {
    Setting t;
    t.lSeed = lSeed;
    t.sClock = Clocks[(lSeed / 4) % Clocks.size()];
    t.iTargets = 4 + static_cast<int>(lSeed * 7 % 13);
    t.bOutput = lSeed % 3 == 0;
    t.bUnattended = lSeed % 4 != 0;
    t.bHourly = lSeed % 4 == 2;
    t.bNever = lSeed % 8 == 7;
    t.bCapture = lSeed % 5 < 2;
    if (lSeed % 4 == 1) t.lKeepDays = 2;
    if (lSeed % 4 == 2) t.lKeepMegabytes = 5;
    if (lSeed % 8 == 5) t.lFirstNumber = BeforeTheBound;
    return t;
}

std::string Setting::Text() const {
    std::string s = "by hand";
    if (bUnattended) s = bHourly ? "unattended, hourly" : bNever ? "unattended, one file" : "unattended, daily";
    if (lKeepDays > 0) s += ", Keep days " + std::to_string(lKeepDays);
    if (lKeepMegabytes > 0) s += ", Keep MB " + std::to_string(lKeepMegabytes);
    if (bCapture) s += ", with capture";
    if (bOutput) s += ", with output";
    if (lFirstNumber > 0) s += ", numbers beyond 2^31";
    return s + ", " + std::to_string(iTargets) + " ships, from " + sClock;
}

}  // namespace simulation
