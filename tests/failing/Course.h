// One course of a scenario in a process of its own: what it is to meet, and what it leaves for who started it, even
// when it crashes.
#pragma once

#include <string>

#include "tests/failing/FailingCalls.h"

namespace failing {

struct Course {
    State tState;
    char sStep[64] = "";          // where it stands
    char sMessage[4096] = "";     // what did not hold
    char sOutcome[1 << 17] = "";  // what could be seen at its end
    bool bEnded = false;

    void Step(const char* s);
    void Keep(const std::string& sSeen);
};

// The one that this process is in; in memory that is shared with who started it.
Course& TheCourse();

}  // namespace failing
