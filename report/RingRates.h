// The share of the reports due that was heard, by rings of range: for every command that tells of it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "report/FromUs.h"

namespace report {

struct RingRate {
    std::int64_t lHeard = 0;
    double dSent = 0;

    bool Empty() const { return lHeard == 0 && dSent == 0; }
};

// Where a report came from.
struct RingPlace {
    std::size_t iRing = 0;
    int iTenths = 0;  // of a mile, to the nearest
};

class RingRates {
public:
    explicit RingRates(int iMiles = 5) : m_iMiles(iMiles) {}

    // Where a report is that has a range. Ring i reaches from i to i + 1 times Miles().
    RingPlace PlaceOf(const FromUs& t) const {
        const int iTenths = static_cast<int>(t.RangeStep());
        const int iRing = iTenths / (10 * m_iMiles);
        // Only what was rounded to a border can lie on its other side.
        const bool bBorder = iTenths == iRing * 10 * m_iMiles;
        return {static_cast<std::size_t>(bBorder ? t.Ring(m_iMiles) : iRing), iTenths};
    }
    // What DueReports::Take counts.
    void Count(const RingPlace& tFrom, const RingPlace& tTo, double dMissed, bool bHeard);
    int Miles() const { return m_iMiles; }
    // From the inside, empty ones among them.
    const std::vector<RingRate>& Rings() const { return m_tRings; }
    // The outer border, in nautical miles, of the rings from the inside out up to the first of which less than the
    // wanted share (0 to 1) was heard; 0 where that is the innermost, or nothing can be said.
    double ReliableMiles(double dShare) const;

private:
    RingRate& At(std::size_t iRing);

    int m_iMiles;
    std::vector<RingRate> m_tRings;
};

}  // namespace report
