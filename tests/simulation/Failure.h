// What ends a simulation: an invariant that does not hold, in words for the developer.
#pragma once

#include <stdexcept>

namespace simulation {

struct Failure : std::runtime_error {
    using std::runtime_error::runtime_error;
};

}  // namespace simulation
