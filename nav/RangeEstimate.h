// Range and bearing to positions nearby, quickly and nearly: who asks only whether a range is beyond a limit, or which
// step or sector it falls into, seldom needs the arithmetic of RangeBearing, which takes four times as long.
#pragma once

#include "nav/PositionReading.h"

namespace nav {

// What an estimate says.
struct NearRange {
    double dRange;  // nautical miles
    double dNorth;  // the direction, of any length
    double dEast;

    double Bearing() const;  // degrees true, 0 to 360
};

class RangeEstimate {
public:
    static constexpr double RangeError = 1e-4;    // nautical miles
    static constexpr double BearingError = 0.02;  // degrees

    explicit RangeEstimate(Position tFrom);

    // True where RangeBearing from there to that position has a range and a bearing, too, and t's differ from them by
    // less than the errors above. False where nothing is promised: within a mile, more than five degrees of latitude or
    // longitude away, across the 180th meridian, nearly due north or south, and from beyond 80 degrees of latitude.
    bool To(Position tTo, NearRange& t) const;

private:
    Position m_tFrom;
    double m_dSine;  // of the latitude
    double m_dCosine;
    bool m_bPolar;
};

}  // namespace nav
