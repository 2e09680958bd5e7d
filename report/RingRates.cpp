// Reports due, put into rings.
#include "report/RingRates.h"

#include <algorithm>
#include <cmath>

namespace report {

namespace {

constexpr double LeastSent = 30;  // a ring with fewer reports behind it ends no reliable range

}  // namespace

RingRate& RingRates::At(std::size_t iRing) {
    if (iRing >= m_tRings.size()) m_tRings.resize(iRing + 1);
    return m_tRings[iRing];
}

void RingRates::Count(const RingPlace& tFrom, const RingPlace& tTo, double dMissed, bool bHeard) {
    if (bHeard) {
        RingRate& t = At(tFrom.iRing);
        ++t.lHeard;
        ++t.dSent;
    }
    if (dMissed == 0) return;
    if (tTo.iRing == tFrom.iRing) {
        At(tFrom.iRing).dSent += dMissed;
        return;
    }
    // Across a border: each where the ship was, if it kept its way.
    const int iParts = std::max(1, static_cast<int>(std::lround(dMissed)));
    for (int i = 1; i <= iParts; ++i) {
        const int iTenths = tFrom.iTenths + (tTo.iTenths - tFrom.iTenths) * i / (iParts + 1);
        At(static_cast<std::size_t>(iTenths / (10 * m_iMiles))).dSent += dMissed / iParts;
    }
}

double RingRates::ReliableMiles(double dShare) const {
    double dMiles = 0;
    for (std::size_t i = 0; i < m_tRings.size(); ++i) {
        const RingRate& t = m_tRings[i];
        if (t.dSent < LeastSent) continue;
        if (static_cast<double>(t.lHeard) < dShare * t.dSent) break;
        dMiles = static_cast<double>(i + 1) * m_iMiles;
    }
    return dMiles;
}

}  // namespace report
