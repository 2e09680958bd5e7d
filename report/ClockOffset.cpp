// The most frequent difference: what repeats by chance scatters, what is the same transmission agrees.
#include "report/ClockOffset.h"

#include <algorithm>
#include <vector>

namespace report {

namespace {

constexpr std::int64_t SameSeconds = 3;  // two receivers' stamps of one transmission, or one heard twice by one
constexpr std::int64_t WindowSeconds = 2;
constexpr std::int64_t ApartSeconds = 10;
constexpr std::int64_t LeastAgreeing = 5;
constexpr std::int64_t LeastUnanimous = 3;
constexpr std::int64_t LeastLead = 3;
constexpr std::int64_t LeastPart = 5;  // a clock that is set gives two differences, of many that agree each

using Differences = std::vector<std::int64_t>;  // in order

std::int64_t CountWithin(const Differences& l, std::int64_t lFrom, std::int64_t lTo) {
    return std::upper_bound(l.begin(), l.end(), lTo) - std::lower_bound(l.begin(), l.end(), lFrom);
}

// Where the window begins that holds the most, of those that begin outside lFrom to lTo.
std::int64_t Fullest(const Differences& l, std::int64_t lFrom, std::int64_t lTo, std::int64_t& lMost) {
    std::int64_t lBest = 0;
    lMost = 0;
    for (std::size_t i = 0; i < l.size(); ++i) {
        if ((i > 0 && l[i] == l[i - 1]) || (l[i] >= lFrom && l[i] <= lTo)) continue;
        const std::int64_t lCount = CountWithin(l, l[i], l[i] + WindowSeconds);
        if (lCount <= lMost) continue;
        lMost = lCount;
        lBest = l[i];
    }
    return lBest;
}

}  // namespace

void PayloadSample::Add(std::uint64_t lPayload, runtime::DateTime dt) {
    if (!Keeps(lPayload)) return;
    const auto [p, bNew] = m_tSeen.try_emplace(lPayload, Seen{dt.lSeconds});
    if (!bNew && dt.lSeconds - p->second.lSeconds > SameSeconds) p->second.bAgain = true;
    if (m_tSeen.size() <= Capacity) return;
    m_lMask = m_lMask * 2 + 1;
    std::erase_if(m_tSeen, [this](const auto& t) { return !Keeps(t.first); });
}

std::optional<ClockOffset> EstimateOffset(const PayloadSample& tFirst, const PayloadSample& tSecond) {
    Differences l;
    for (const auto& [lPayload, t] : tFirst.Payloads()) {
        const auto p = tSecond.Payloads().find(lPayload);
        if (p == tSecond.Payloads().end() || t.bAgain || p->second.bAgain) continue;
        l.push_back(p->second.lSeconds - t.lSeconds);
    }
    std::ranges::sort(l);
    std::int64_t lMost = 0, lNext = 0;
    const std::int64_t lBest = Fullest(l, 1, 0, lMost);
    Fullest(l, lBest - ApartSeconds, lBest + ApartSeconds, lNext);
    const std::int64_t lFrom = lBest - SameSeconds, lTo = lBest + WindowSeconds + SameSeconds;
    const std::int64_t lAgreeing = CountWithin(l, lFrom, lTo);
    const bool bUnanimous = lAgreeing == static_cast<std::int64_t>(l.size()) && lAgreeing >= LeastUnanimous;
    const bool bClear = lMost >= LeastLead * lNext || lMost * LeastPart >= static_cast<std::int64_t>(l.size());
    if (!bUnanimous && (lMost < LeastAgreeing || !bClear)) return std::nullopt;
    const auto pMiddle = std::lower_bound(l.begin(), l.end(), lFrom) + lAgreeing / 2;
    return ClockOffset{*pMiddle, lAgreeing, static_cast<std::int64_t>(l.size())};
}

}  // namespace report
