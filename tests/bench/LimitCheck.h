// Whether the window after a burst and the plain loop over the same file have come to the same.
#pragma once

#include <string>

#include "tests/bench/Limit.h"
#include "tests/support/TestWindow.h"

namespace bench {

// The first difference in words, empty where there is none: counts by type and their total, the number of ships, the
// newest lines of the raw log, and of each row of the target table number, ship, channel, time, seconds since the
// message before and signal levels. Levels are compared as they came: "Show dBm" must be off.
std::string FirstDifference(const Limit& tLimit, support::TestWindow& t);

}  // namespace bench
