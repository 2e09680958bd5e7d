// Groups and their pairs.
#include "report/Matcher.h"

#include <algorithm>
#include <cstdlib>

namespace report {

namespace {

constexpr std::size_t LargestGroup = 64;  // a station that repeats itself without pause

struct Pair {
    std::size_t iFirst, iSecond;
    std::int64_t lApart;
};

}  // namespace

void Matcher::Take(std::size_t iSide, const Heard& t) {
    CloseBefore({t.dt.lSeconds - ToleranceSeconds});
    Group& tGroup = m_tGroups[t.lPayload];
    tGroup.tHeard[iSide].push_back(t);
    tGroup.dtLast = t.dt;
    m_tDue.push_back({t.dt, t.lPayload});
    if (tGroup.tHeard[iSide].size() < LargestGroup) return;
    Close(tGroup);
    m_tGroups.erase(t.lPayload);
}

void Matcher::CloseBefore(runtime::DateTime dt) {
    while (!m_tDue.empty() && m_tDue.front().dt < dt) {
        const auto p = m_tGroups.find(m_tDue.front().lPayload);
        if (p != m_tGroups.end() && p->second.dtLast == m_tDue.front().dt) {
            Close(p->second);
            m_tGroups.erase(p);
        }
        m_tDue.pop_front();
    }
}

void Matcher::Finish() {
    if (!m_tDue.empty()) CloseBefore({m_tDue.back().dt.lSeconds + ToleranceSeconds});
}

// Nearest in time first, of equals the earliest.
void Matcher::Close(Group& t) {
    const auto& [tFirst, tSecond] = t.tHeard;
    std::vector<Pair> tPairs;
    for (std::size_t i = 0; i < tFirst.size(); ++i) {
        for (std::size_t j = 0; j < tSecond.size(); ++j) {
            const std::int64_t lApart = std::llabs(tFirst[i].dt.lSeconds - tSecond[j].dt.lSeconds);
            if (lApart <= ToleranceSeconds) tPairs.push_back({i, j, lApart});
        }
    }
    std::ranges::stable_sort(tPairs, {}, &Pair::lApart);
    std::vector<bool> bFirst(tFirst.size()), bSecond(tSecond.size());
    for (const Pair& tPair : tPairs) {
        if (bFirst[tPair.iFirst] || bSecond[tPair.iSecond]) continue;
        bFirst[tPair.iFirst] = bSecond[tPair.iSecond] = true;
        m_Tell(&tFirst[tPair.iFirst], &tSecond[tPair.iSecond]);
    }
    for (std::size_t i = 0; i < tFirst.size(); ++i) {
        if (!bFirst[i]) m_Tell(&tFirst[i], nullptr);
    }
    for (std::size_t j = 0; j < tSecond.size(); ++j) {
        if (!bSecond[j]) m_Tell(nullptr, &tSecond[j]);
    }
}

}  // namespace report
