// The range and bearing under another name, compiled for a processor that multiplies and adds in one step.
#define nav fused
#include "tests/nav/FusedRangeBearing.h"

#include "nav/RangeBearing.cpp"
#include "nav/Trigonometry.cpp"

std::optional<std::array<double, 2>> FusedRangeBearing(double dLatitude1, double dLongitude1, double dLatitude2,
                                                       double dLongitude2) {
    try {
        const fused::RangeAndBearing t = fused::RangeBearing(dLatitude1, dLongitude1, dLatitude2, dLongitude2);
        return std::array{t.dRange, t.dBearing};
    } catch (const fused::DivisionByZero&) {
        return std::nullopt;
    }
}
