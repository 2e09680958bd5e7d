// Each transmission is counted once, whoever heard it.
#include "report/Comparison.h"

#include <algorithm>
#include <cmath>

#include "nav/Trigonometry.h"

namespace report {

namespace {

constexpr std::size_t MostWaiting = 4096;
// So many that one alone heard, on both sides and without one that both heard, are no chance: of as many as usually lie
// between two that both hear this would be twenty times as many.
constexpr std::int64_t LeastLost = 300;
constexpr std::int64_t TimesUsual = 20;

std::size_t SideOf(HeardBy e) { return e == HeardBy::Second ? 1 : 0; }

}  // namespace

Comparison::Comparison(const Options& tOptions, const Recording& tFirst, const Recording& tSecond, bool bReach)
    : m_iSectorDegrees(tOptions.iSector),
      m_tScale(tOptions.bRaw),
      m_tFirst(tFirst),
      m_tSecond(tSecond),
      m_bReach(bReach) {}

void Comparison::Take(const Heard* pFirst, const Heard* pSecond, std::int64_t lOffset) {
    // cppcheck-suppress nullPointerRedundantCheck ; one of the two has always heard it
    const runtime::DateTime dt = pFirst ? pFirst->dt : pSecond->dt;
    if (!m_bLost) m_dtSeen = std::max(m_dtSeen, dt);
    if (!m_tFirst.Covers(dt) || !m_tSecond.Covers({dt.lSeconds + lOffset})) {
        lLeftOut[0] += pFirst != nullptr;
        lLeftOut[1] += pSecond != nullptr;
    } else if (pFirst && pSecond) {
        TakePair(*pFirst, *pSecond);
    } else {
        TakeAlone(pFirst ? HeardBy::First : HeardBy::Second, pFirst ? *pFirst : *pSecond);
    }
}

void Comparison::TakePair(const Heard& tFirst, const Heard& tSecond) {
    if (m_bLost && tFirst.dt <= m_dtSeen) {
        TakeLost(HeardBy::First, tFirst);
        return TakeLost(HeardBy::Second, tSecond);
    }
    if (m_bLost) tLost.back().dtTo = tFirst.dt;
    m_bLost = false;
    Release();
    Count(HeardBy::Both, tFirst, &tSecond);
    m_dtLast = tFirst.dt;
}

void Comparison::TakeAlone(HeardBy e, const Heard& t) {
    if (m_bLost) return TakeLost(e, t);
    m_tWaiting.push_back({e, t});
    ++m_lWaiting[SideOf(e)];
    if (IsLost()) return Lose();
    if (m_tWaiting.size() >= MostWaiting) Release();
}

bool Comparison::IsLost() const {
    const std::int64_t lBoth = tTotal.Count(HeardBy::Both) + 1;
    const auto TooMany = [&](std::int64_t lNow, std::int64_t lSoFar) {
        return lNow >= std::max(LeastLost, TimesUsual * (lSoFar + 1) / lBoth);
    };
    return TooMany(m_lWaiting[0], tTotal.Count(HeardBy::First)) &&
           TooMany(m_lWaiting[1], tTotal.Count(HeardBy::Second));
}

void Comparison::Lose() {
    const runtime::DateTime dtFrom = tTotal.Either() > 0 ? m_dtLast : m_tWaiting.front().t.dt;
    tLost.push_back({dtFrom, dtFrom});
    m_bLost = true;
    m_tLostSamples = {};
    m_lInSamples = 0;
    m_lNextLook = static_cast<std::int64_t>(m_tWaiting.size());
    for (const Alone& tAlone : m_tWaiting) TakeLost(tAlone.e, tAlone.t);
    m_tWaiting.clear();
    m_lWaiting = {};
}

// Looks for the new offset with what has come, and again each time when that is twice as much.
void Comparison::TakeLost(HeardBy e, const Heard& t) {
    const std::size_t iSide = SideOf(e);
    ++lLost[iSide];
    tLost.back().dtTo = std::max(tLost.back().dtTo, t.dt);
    m_dtSeen = std::max(m_dtSeen, t.dt);
    if (t.bOnce) m_tLostSamples[iSide].Add(t.lPayload, t.dt);
    if (++m_lInSamples < m_lNextLook) return;
    m_lNextLook *= 2;
    const auto tOffset = EstimateOffset(m_tLostSamples[0], m_tLostSamples[1]);
    if (!tOffset) return;
    m_lShift = tOffset->lSeconds;
    m_tLostSamples = {};
    m_lInSamples = 0;
    m_lNextLook = LeastLost;
}

void Comparison::Release() {
    for (const Alone& tAlone : m_tWaiting) {
        Count(tAlone.e, tAlone.t, nullptr);
        m_dtLast = tAlone.t.dt;
    }
    m_tWaiting.clear();
    m_lWaiting = {};
}

void Comparison::Finish() { Release(); }

void Comparison::Count(HeardBy e, const Heard& t, const Heard* pSecond) {
    nav::RangeAndBearing tPlace{};
    const bool bJump = t.bPosition && m_tTracks.Jumps(t.iShip, t.dt, t.dLatitude, t.dLongitude);
    const bool bPlace = !bJump && Place(t, e, pSecond, tPlace);
    lJumps += bJump;
    const bool bBearing = bPlace && tPlace.dBearing == tPlace.dBearing;  // not-a-number due north or south
    const int iSectors = 360 / m_iSectorDegrees;
    const int iRing = bPlace ? static_cast<int>(tPlace.dRange) / RingMiles : NoPlace;
    const int iSector = bBearing ? static_cast<int>(tPlace.dBearing / m_iSectorDegrees) % iSectors : NoPlace;
    const std::array<Tally*, 5> pTallies = {&tTotal, &tRings[iRing], &tSectors[iSector],
                                            &tChannels[static_cast<int>(t.eChannel)], &tTypes[t.lType]};
    for (Tally* p : pTallies) p->Add(e, t.iShip, t.dt);
    lWithLevels[SideOf(e)] += t.bLevels;
    if (pSecond) {
        lWithLevels[1] += pSecond->bLevels;
        CountLevels(t, *pSecond, pTallies);
    }
    bSameThroughout &= pSecond && t.dt == pSecond->dt && t.bLevels == pSecond->bLevels &&
                       t.tLevels.dSignal == pSecond->tLevels.dSignal &&
                       t.tLevels.dThreshold == pSecond->tLevels.dThreshold;
    if (!m_bReach || bJump) return;
    const auto Reaches = [&](std::size_t iSide, const Heard& tOwn) {
        if (!tOwn.bRange || tOwn.tFromUs.dBearing != tOwn.tFromUs.dBearing) return;
        const int i = static_cast<int>(tOwn.tFromUs.dBearing / m_iSectorDegrees) % iSectors;
        tReach[iSide][i].Add(tOwn.tFromUs.dRange);
    };
    Reaches(SideOf(e), t);
    if (pSecond) Reaches(1, *pSecond);
}

// One place for both, or rows would not hold the same transmissions: the first's, where it is known.
bool Comparison::Place(const Heard& t, HeardBy e, const Heard* pSecond, nav::RangeAndBearing& tPlace) {
    const auto& tOwn = m_tFirst.Own();
    if (e == HeardBy::Second && t.bPosition && tOwn) {
        const auto& tOther = m_tSecond.Own();
        if (t.bRange && tOther->dLatitude == tOwn->dLatitude && tOther->dLongitude == tOwn->dLongitude) {
            tPlace = t.tFromUs;
            return true;
        }
        try {
            tPlace = nav::RangeBearing(tOwn->dLatitude, tOwn->dLongitude, t.dLatitude, t.dLongitude);
            return tPlace.dRange == tPlace.dRange;
        } catch (const nav::DivisionByZero&) {
            return false;
        }
    }
    const Heard& tFrom = !t.bRange && pSecond ? *pSecond : t;
    tPlace = tFrom.tFromUs;
    lPlacesOfSecond += tFrom.bRange && (e == HeardBy::Second || &tFrom != &t);
    return tFrom.bRange;
}

void Comparison::CountLevels(const Heard& tFirst, const Heard& tSecond, std::span<Tally* const> pTallies) {
    if (!tFirst.bLevels || !tSecond.bLevels) return;
    const ShownLevels t1 = m_tScale.Show(tFirst.tLevels);
    const ShownLevels t2 = m_tScale.Show(tSecond.tLevels);
    tThreshold.Add(tFirst.iShip, t1.dThreshold - t2.dThreshold);
    if ((m_tDbm.Show(tFirst.tLevels).dSnr + m_tDbm.Show(tSecond.tLevels).dSnr) / 2 < LeastSnr) {
        ++lWeakPairs;
        return;
    }
    tSignal.Add(tFirst.iShip, t1.dSignal - t2.dSignal);
    tSnr.Add(tFirst.iShip, t1.dSnr - t2.dSnr);
    for (Tally* p : pTallies) p->tSignal.Add(tFirst.iShip, t1.dSignal - t2.dSignal);
}

}  // namespace report
