// The share of the reports due that was heard, by rings of range: for every command that tells of it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace report {

struct RingRate {
    std::int64_t lHeard = 0;
    double dSent = 0;

    bool Empty() const { return lHeard == 0 && dSent == 0; }
};

class RingRates {
public:
    explicit RingRates(int iMiles = 5) : m_iMiles(iMiles) {}

    // What DueReports::Take counts: dMissed reports between the ranges dFrom and dTo, and one heard at dFrom when
    // bHeard.
    void Count(double dFrom, double dTo, double dMissed, bool bHeard);
    // Ring i reaches from i to i + 1 times Miles().
    std::size_t RingOf(double dRange) const { return static_cast<std::size_t>(dRange) / m_iMiles; }
    int Miles() const { return static_cast<int>(m_iMiles); }
    // From the inside, empty ones among them.
    const std::vector<RingRate>& Rings() const { return m_tRings; }
    // The outer border, in nautical miles, of the rings from the inside out up to the first of which less than the
    // wanted share (0 to 1) was heard; 0 where that is the innermost, or nothing can be said.
    double ReliableMiles(double dShare) const;

private:
    RingRate& At(double dRange);

    std::size_t m_iMiles;
    std::vector<RingRate> m_tRings;
};

}  // namespace report
