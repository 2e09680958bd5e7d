// Counting in steps.
#include "report/Distribution.h"

#include <algorithm>
#include <cmath>

namespace report {

void Distribution::Add(const Distribution& t) {
    for (std::size_t i = 0; i < t.m_lCounts.size(); ++i) {
        if (t.m_lCounts[i] > 0) CountOf(t.m_lFirst + static_cast<std::int64_t>(i)) += t.m_lCounts[i];
    }
    m_lCount += t.m_lCount;
}

std::uint32_t& Distribution::CountOf(std::int64_t lStep) {
    if (m_lCounts.empty()) m_lFirst = lStep;
    if (lStep < m_lFirst) {
        m_lCounts.insert(m_lCounts.begin(), static_cast<std::size_t>(m_lFirst - lStep), 0);
        m_lFirst = lStep;
    }
    const auto iPlace = static_cast<std::size_t>(lStep - m_lFirst);
    if (iPlace >= m_lCounts.size()) m_lCounts.resize(iPlace + 1);
    return m_lCounts[iPlace];
}

double Distribution::Quantile(double dShare) const {
    const auto lRank = std::max<std::int64_t>(1, std::llround(std::ceil(dShare * static_cast<double>(m_lCount))));
    std::int64_t lSoFar = 0;
    std::size_t i = 0;
    while (i + 1 < m_lCounts.size() && (lSoFar += m_lCounts[i]) < lRank) ++i;
    return static_cast<double>(m_lFirst + static_cast<std::int64_t>(i)) / StepsPerOne;
}

}  // namespace report
