// Great-circle range and initial true bearing between two positions on a sphere of 60 nautical miles per degree.
#pragma once

#include <string>

namespace nav {

struct RangeAndBearing {
    double dRange;    // nautical miles
    double dBearing;  // degrees true, 0 to 360
};

// From point 1 to point 2, degrees north and east positive. Raises DivisionByZero for coincident or opposite points;
// where the cosines come out a hair beyond 1 the results are not-a-number.
RangeAndBearing RangeBearing(double dLatitude1, double dLongitude1, double dLatitude2, double dLongitude2);

// The same as text: range "0.0", bearing "0" (which may print 360).
void RangeBearingText(double dLatitude1, double dLongitude1, double dLatitude2, double dLongitude2, std::string& sRange,
                      std::string& sBearing);

}  // namespace nav
