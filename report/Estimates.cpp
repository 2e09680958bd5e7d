// The formulas.
#include "report/Estimates.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace report {

namespace {

constexpr double Normal95 = 1.959964;

using Part = double (*)(const Cluster&);

double Sum(std::span<const Cluster> t, Part Of) {
    double d = 0;
    for (const Cluster& tCluster : t) d += Of(tCluster);
    return d;
}

double SizeOf(const Cluster& t) { return t.All(); }
double Both(const Cluster& t) { return t.dHeardByBoth; }
double FirstAlone(const Cluster& t) { return t.dByFirstAlone; }
double SecondAlone(const Cluster& t) { return t.dBySecondAlone; }
double ByFirst(const Cluster& t) { return t.dHeardByBoth + t.dByFirstAlone; }
double BySecond(const Cluster& t) { return t.dHeardByBoth + t.dBySecondAlone; }
double Difference(const Cluster& t) { return t.dByFirstAlone - t.dBySecondAlone; }
double Alone(const Cluster& t) { return t.dByFirstAlone + t.dBySecondAlone; }

// What leaving out one cluster after the other says of the ratio's variance.
double JackknifeVariance(std::span<const Cluster> t, Part Of) {
    const double dPart = Sum(t, Of), dAll = Sum(t, SizeOf);
    const auto dCount = static_cast<double>(t.size());
    double d = 0;
    for (const Cluster& tCluster : t) {
        const double dLess = (dPart - Of(tCluster)) / (dAll - tCluster.All()) - dPart / dAll;
        d += dLess * dLess;
    }
    return d * (dCount - 1) / dCount;
}

Interval Wilson(double dShare, double dCount, double z) {
    const double dCentre = (dShare + z * z / (2 * dCount)) / (1 + z * z / dCount);
    const double dHalf =
        z / (1 + z * z / dCount) * std::sqrt(dShare * (1 - dShare) / dCount + z * z / (4 * dCount * dCount));
    return {std::max(0.0, dCentre - dHalf), std::min(1.0, dCentre + dHalf)};
}

std::optional<double> DeviationsOf(std::span<const Cluster> t) { return DeviationsOf95(EffectiveCount(t) - 1); }

}  // namespace

std::optional<double> DeviationsOf95(double dFreedom) {
    constexpr std::array Table = {12.706, 4.303, 3.182, 2.776, 2.571, 2.447, 2.365, 2.306, 2.262, 2.228};
    if (!(dFreedom >= 1)) return std::nullopt;
    if (dFreedom < static_cast<double>(Table.size()) + 1) return Table[static_cast<std::size_t>(dFreedom) - 1];
    constexpr double z = Normal95, z3 = z * z * z, z5 = z3 * z * z;
    return z + (z3 + z) / (4 * dFreedom) + (5 * z5 + 16 * z3 + 3 * z) / (96 * dFreedom * dFreedom);
}

double EffectiveCount(std::span<const Cluster> t) {
    double dSum = 0, dSquares = 0;
    for (const Cluster& tCluster : t) {
        dSum += tCluster.All();
        dSquares += tCluster.All() * tCluster.All();
    }
    return dSquares > 0 ? dSum * dSum / dSquares : 0;
}

std::optional<Interval> ShareInterval95(Share e, std::span<const Cluster> tShips, std::span<const Cluster> tTimes) {
    constexpr std::array<Part, 5> Parts = {Both, FirstAlone, SecondAlone, ByFirst, BySecond};
    const Part Of = Parts[static_cast<std::size_t>(e)];
    if (!DeviationsOf(tShips)) return std::nullopt;
    const double dAll = Sum(tShips, SizeOf);
    const double dShare = Sum(tShips, Of) / dAll;
    Interval tWidest{dShare, dShare};
    for (const auto& t : {tShips, tTimes}) {
        const auto z = DeviationsOf(t);
        if (!z) continue;
        const double dVariance = std::max(JackknifeVariance(t, Of), dShare * (1 - dShare) / dAll);
        const double dCount = dVariance > 0 ? dShare * (1 - dShare) / dVariance : dAll;
        const Interval tInterval = Wilson(dShare, dCount, *z);
        tWidest = {std::min(tWidest.dLow, tInterval.dLow), std::max(tWidest.dHigh, tInterval.dHigh)};
    }
    return tWidest;
}

std::optional<Interval> ShareDifference(std::span<const Cluster> tShips, std::span<const Cluster> tTimes) {
    const auto z = DeviationsOf(tShips);
    if (!z) return std::nullopt;
    const double dAll = Sum(tShips, SizeOf);
    const double dDifference = Sum(tShips, Difference) / dAll;
    const double dOneByOne = (Sum(tShips, Alone) + 1) / (dAll * dAll);
    double dHalf = *z * std::sqrt(std::max(dOneByOne, JackknifeVariance(tShips, Difference)));
    if (const auto zTimes = DeviationsOf(tTimes)) {
        dHalf = std::max(dHalf, *zTimes * std::sqrt(JackknifeVariance(tTimes, Difference)));
    }
    return Interval{std::max(-1.0, dDifference - dHalf), std::min(1.0, dDifference + dHalf)};
}

RankMedian MedianByRanks(std::vector<double>& dValues) {
    constexpr double EachTail = 0.025;
    std::ranges::sort(dValues);
    const std::size_t lCount = dValues.size();
    if (lCount == 0) return {};
    RankMedian t{(dValues[(lCount - 1) / 2] + dValues[lCount / 2]) / 2, std::nullopt};
    const auto d = static_cast<double>(lCount);
    // So many values at each end can be left out: the chance of no more than that many heads in as many throws.
    std::size_t lOut = 0;
    if (lCount > 1000) {
        lOut = static_cast<std::size_t>(std::floor(d / 2 - Normal95 * std::sqrt(d) / 2 - 1));
    } else {
        double dThis = std::pow(0.5, d);
        double dTail = dThis;
        while (dTail <= EachTail) {
            ++lOut;
            dThis *= (d - static_cast<double>(lOut) + 1) / static_cast<double>(lOut);
            dTail += dThis;
        }
    }
    if (lOut > 0) t.tInterval = Interval{dValues[lOut - 1], dValues[lCount - lOut]};
    return t;
}

}  // namespace report
