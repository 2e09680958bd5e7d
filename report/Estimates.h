// 95 % intervals for messages that do not come one by one. Where one of a ship's messages is heard the next is as well:
// a ship behind a house is missed a thousand times for one reason. What is independent is at best the ships. So each
// interval comes from how the ships differ, not from the number of messages; and because a receiver can be deaf for an
// hour to all ships at once, also from how stretches of time differ; the wider one holds.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace report {

struct Interval {
    double dLow;
    double dHigh;
};

// Messages that hang together: those of a ship, or of a stretch of time.
struct Cluster {
    double dHeardByBoth = 0;
    double dByFirstAlone = 0;
    double dBySecondAlone = 0;

    double All() const { return dHeardByBoth + dByFirstAlone + dBySecondAlone; }
};

// How far a 95 % interval goes, in standard deviations, when the spread was found from so many degrees of freedom
// (Student's t); nothing below 1.
std::optional<double> DeviationsOf95(double dFreedom);

// As many clusters of one size tell as much as these: (sum of sizes)^2 / (sum of squares).
double EffectiveCount(std::span<const Cluster> t);

enum class Share { Both, FirstAlone, SecondAlone, First, Second };

// A share of what either heard, 0 to 1: Wilson's interval for the number of independent messages that has the spread
// found by leaving out one cluster after the other (jackknife). Nothing where the ships tell as much as less than two.
std::optional<Interval> ShareInterval95(Share e, std::span<const Cluster> tShips, std::span<const Cluster> tTimes);
// The first's share less the second's, -1 to 1, with the same spread, which is taken to be no less than it would be for
// messages one by one and one more.
std::optional<Interval> ShareDifference(std::span<const Cluster> tShips, std::span<const Cluster> tTimes);

// The median, and the interval in which that of all lies by the ranks alone (sign test: exact whatever the
// distribution, for values that are independent); nothing for fewer than 6 values. Sorts them.
struct RankMedian {
    double dMedian = 0;
    std::optional<Interval> tInterval;
};
RankMedian MedianByRanks(std::vector<double>& dValues);

}  // namespace report
