// What two receivers heard of the same transmissions: by ship and by stretches of time, for the figures and their
// intervals.
#pragma once

#include <array>
#include <unordered_map>
#include <vector>

#include "platform/runtime/DateTime.h"
#include "report/Estimates.h"

namespace report {

enum class HeardBy : std::uint8_t { Both, First, Second };

// Differences of levels, of which each ship counts once, with the mean of its own.
class ShipMeans {
public:
    void Add(int iShip, double dDifference);

    std::int64_t Count() const { return m_lCount; }
    std::int64_t ShipCount() const { return static_cast<std::int64_t>(m_tShips.size()); }
    // Not while Count() is 0.
    RankMedian Median() const;

private:
    struct Ship {
        std::int64_t lCount = 0;
        double dSum = 0;
    };
    std::unordered_map<int, Ship> m_tShips;
    std::int64_t m_lCount = 0;
};

class Tally {
public:
    void Add(HeardBy e, int iShip, runtime::DateTime dt);

    std::int64_t Count(HeardBy e) const { return m_lCounts[static_cast<std::size_t>(e)]; }
    std::int64_t Either() const { return m_lCounts[0] + m_lCounts[1] + m_lCounts[2]; }
    std::int64_t ByFirst() const { return Count(HeardBy::Both) + Count(HeardBy::First); }
    std::int64_t BySecond() const { return Count(HeardBy::Both) + Count(HeardBy::Second); }
    std::int64_t ShipCount() const { return static_cast<std::int64_t>(m_tShips.size()); }

    // Of the shares of what either heard, and of the first's less the second's. Not while Either() is 0.
    struct Intervals {
        std::array<std::optional<Interval>, 5> tShares;  // in the order of Share
        std::optional<Interval> tDifference;
        const std::optional<Interval>& Of(Share e) const { return tShares[static_cast<std::size_t>(e)]; }
    };
    Intervals Shares() const;

    ShipMeans tSignal;  // the first's less the second's

private:
    using Counts = std::array<std::uint32_t, 3>;  // by HeardBy
    // Stretches of a minute; of two, four, ... minutes when there get to be more than that.
    static constexpr std::size_t MostStretches = 64;
    struct Stretch {
        std::int64_t lNumber;  // of the stretch, in time
        Counts lCounts{};
    };
    Stretch& StretchOf(runtime::DateTime dt);
    void Widen();

    std::array<std::int64_t, 3> m_lCounts{};
    std::unordered_map<int, Counts> m_tShips;
    std::vector<Stretch> m_tStretches;  // those with messages, in order
    std::int64_t m_lStretchSeconds = 60;
};

}  // namespace report
