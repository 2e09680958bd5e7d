// The scenarios: each does one thing that a user does, and then asks what must hold whatever has failed in it.
#pragma once

#include <vector>

#include "tests/failing/Stage.h"

namespace failing {

struct Scenario {
    const char* sName;
    const char* sUnattended;  // for its profile
    void (*pPlay)(Stage& t);
};
const std::vector<Scenario>& Scenarios();

}  // namespace failing
