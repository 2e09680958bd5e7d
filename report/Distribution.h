// How often each value came, in steps of a tenth: enough for quantiles of any number of values in little memory.
#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

namespace report {

class Distribution {
public:
    static constexpr double StepsPerOne = 10;
    static constexpr double Limit = 10800;  // values beyond count as this: half way round the earth, in miles

    void Add(double dValue) { AddStep(StepOf(dValue)); }
    void Add(const Distribution& t);

    // The same in two steps.
    static std::int64_t StepOf(double dValue) {
        const double dSteps = std::clamp(dValue, -Limit, Limit) * StepsPerOne;
        const auto lWhole = static_cast<std::int64_t>(dSteps);
        const double dRest = dSteps - static_cast<double>(lWhole);  // exact
        return dRest >= 0.5 ? lWhole + 1 : dRest <= -0.5 ? lWhole - 1 : lWhole;
    }
    void AddStep(std::int64_t lStep) {
        const auto iPlace = static_cast<std::size_t>(lStep - m_lFirst);  // enormous for a step before the first
        ++(iPlace < m_lCounts.size() ? m_lCounts[iPlace] : CountOf(lStep));
        ++m_lCount;
    }

    std::int64_t Count() const { return m_lCount; }
    bool Empty() const { return m_lCount == 0; }
    // The value of the smallest rank that at least this share (0 to 1) of the values does not exceed: the k-th smallest
    // with k = share times count, rounded up, at least the first. To a tenth. Not while Empty().
    double Quantile(double dShare) const;
    double Median() const { return Quantile(0.5); }
    double Greatest() const { return Quantile(1); }

private:
    std::uint32_t& CountOf(std::int64_t lStep);

    std::vector<std::uint32_t> m_lCounts;  // of m_lFirst, the next step, ...
    std::int64_t m_lFirst = 0;
    std::int64_t m_lCount = 0;
};

}  // namespace report
