// Reports due, put into rings.
#include "report/RingRates.h"

#include <algorithm>
#include <cmath>

namespace report {

namespace {

constexpr double LeastSent = 30;  // a ring with fewer reports behind it ends no reliable range

}  // namespace

RingRate& RingRates::At(double dRange) {
    const std::size_t iRing = RingOf(dRange);
    if (iRing >= m_tRings.size()) m_tRings.resize(iRing + 1);
    return m_tRings[iRing];
}

void RingRates::Count(double dFrom, double dTo, double dMissed, bool bHeard) {
    if (bHeard) {
        RingRate& t = At(dFrom);
        ++t.lHeard;
        ++t.dSent;
    }
    if (dMissed == 0) return;
    if (RingOf(dFrom) == RingOf(dTo)) {
        At(dFrom).dSent += dMissed;
        return;
    }
    // Across a border: each where the ship was, if it kept its way.
    const int iParts = std::max(1, static_cast<int>(std::lround(dMissed)));
    for (int i = 1; i <= iParts; ++i) At(dFrom + (dTo - dFrom) * i / (iParts + 1)).dSent += dMissed / iParts;
}

double RingRates::ReliableMiles(double dShare) const {
    std::size_t iMiles = 0;
    for (std::size_t i = 0; i < m_tRings.size(); ++i) {
        const RingRate& t = m_tRings[i];
        if (t.dSent < LeastSent) continue;
        if (static_cast<double>(t.lHeard) < dShare * t.dSent) break;
        iMiles = (i + 1) * m_iMiles;
    }
    return static_cast<double>(iMiles);
}

}  // namespace report
