// The reporting interval that the AIS rules prescribe for a ship's speed, as the Spec and Miss columns use it.
#pragma once

#include <cstdint>

namespace targets {

// Seconds for a speed in knots; 0 means no check. Class B for message ids 18, 19 and 24, class A for every other. A
// speed on a band edge belongs to the slower band.
std::int32_t SpecifiedInterval(std::int32_t lMessageId, double dSpeed);

// A report counts as late only when it came more than this many seconds after the interval.
inline constexpr std::int32_t IntervalTolerance = 2;

}  // namespace targets
