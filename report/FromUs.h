// Range and bearing of a position from us. The doubles are those of nav::RangeBearing, made when somebody asks for
// them; most questions can be answered without: the estimate is exact enough unless the answer hangs on the last
// digits.
#pragma once

#include <cstdint>
#include <limits>

#include "nav/RangeBearing.h"
#include "nav/RangeEstimate.h"

namespace report {

// A place and what is worked out once for it.
struct OwnPlace {
    explicit OwnPlace(nav::Position t) : tPosition(t), tEstimate(t) {}
    nav::Position tPosition;
    nav::RangeEstimate tEstimate;
};

class FromUs {
public:
    // False where the arithmetic has no range.
    bool Measure(const OwnPlace& tOwn, nav::Position tTo);
    // There is no position, or none of ours.
    void Forget();

    // Not-a-number where there is none.
    double Range() const { return Exact().dRange; }      // nautical miles
    double Bearing() const { return Exact().dBearing; }  // degrees true

    // The rest only where there is a range, and Sector only where there is a bearing.
    bool HasBearing() const { return m_bNear || m_tExact.dBearing == m_tExact.dBearing; }
    // The step of a Distribution that Range() falls into.
    std::int64_t RangeStep() const;
    // Range() / iMiles without decimals.
    std::int64_t Ring(int iMiles) const;
    // Range() > dMiles.
    bool Beyond(double dMiles) const;
    // Bearing() / iDegrees without decimals; 360 degrees may come out as a sector of their own.
    std::int64_t Sector(int iDegrees) const;

private:
    static constexpr double NoNumber = std::numeric_limits<double>::quiet_NaN();
    static constexpr nav::RangeAndBearing Nothing{NoNumber, NoNumber};

    const nav::RangeAndBearing& Exact() const;

    nav::Position m_tFrom, m_tTo;
    nav::NearRange m_tNear{};
    mutable nav::RangeAndBearing m_tExact = Nothing;
    mutable bool m_bExact = true;  // m_tExact has been made
    bool m_bNear = false;          // m_tNear holds
};

}  // namespace report
