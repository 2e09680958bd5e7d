// Counting.
#include "report/Tally.h"

#include <algorithm>

namespace report {

void ShipMeans::Add(int iShip, double dDifference) {
    ++m_lCount;
    Ship& t = m_tShips[iShip];
    ++t.lCount;
    t.dSum += dDifference;
}

RankMedian ShipMeans::Median() const {
    std::vector<double> dMeans;
    for (const auto& [iShip, t] : m_tShips) dMeans.push_back(t.dSum / static_cast<double>(t.lCount));
    return MedianByRanks(dMeans);
}

void Tally::Add(HeardBy e, int iShip, runtime::DateTime dt) {
    const auto i = static_cast<std::size_t>(e);
    ++m_lCounts[i];
    ++m_tShips[iShip][i];
    ++StretchOf(dt).lCounts[i];
    while (m_tStretches.size() > MostStretches) Widen();
}

// Mostly the last: messages come in order of time but for seconds.
Tally::Stretch& Tally::StretchOf(runtime::DateTime dt) {
    const std::int64_t lNumber = dt.lSeconds / m_lStretchSeconds;
    if (!m_tStretches.empty() && m_tStretches.back().lNumber == lNumber) return m_tStretches.back();
    const auto p = std::ranges::lower_bound(m_tStretches, lNumber, {}, &Stretch::lNumber);
    if (p != m_tStretches.end() && p->lNumber == lNumber) return *p;
    return *m_tStretches.insert(p, Stretch{lNumber});
}

void Tally::Widen() {
    m_lStretchSeconds *= 2;
    std::vector<Stretch> tWide;
    for (const Stretch& t : m_tStretches) {
        if (tWide.empty() || tWide.back().lNumber != t.lNumber / 2) tWide.push_back({t.lNumber / 2});
        for (std::size_t i = 0; i < t.lCounts.size(); ++i) tWide.back().lCounts[i] += t.lCounts[i];
    }
    m_tStretches = std::move(tWide);
}

// Ships in the order of their numbers, so that sums come out the same to the last digit.
Tally::Intervals Tally::Shares() const {
    std::vector<std::pair<int, Counts>> tByNumber(m_tShips.begin(), m_tShips.end());
    std::ranges::sort(tByNumber);
    const auto ClusterOf = [](const Counts& l) {
        return Cluster{static_cast<double>(l[0]), static_cast<double>(l[1]), static_cast<double>(l[2])};
    };
    std::vector<Cluster> tShips, tTimes;
    for (const auto& [iShip, l] : tByNumber) tShips.push_back(ClusterOf(l));
    for (const Stretch& t : m_tStretches) tTimes.push_back(ClusterOf(t.lCounts));
    Intervals t;
    for (std::size_t i = 0; i < t.tShares.size(); ++i) {
        t.tShares[i] = ShareInterval95(static_cast<Share>(i), tShips, tTimes);
    }
    t.tDifference = ShareDifference(tShips, tTimes);
    return t;
}

}  // namespace report
