// Figures over time in steps that grow with the time: a picture of an hour is one of minutes, that of a year one of
// days, and neither takes more memory than it has steps.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <map>
#include <optional>

#include "report/Period.h"

namespace report {

// T is what is counted in a step; one of a longer step takes others by T::Add.
template <class T>
class TimeBins {
public:
    // In steps of that period alone where one is told.
    explicit TimeBins(std::optional<Period> eFixed) : m_eFixed(eFixed) {}

    // The step that dt lies in. The reference holds until the next call.
    T& At(runtime::DateTime dt) {
        while (!m_eFixed && m_iStep + 1 < Steps.size() && SpanWith(dt) > Steps[m_iStep].lLongest) Lengthen();
        return m_tBins[StartOf(dt)];
    }

    const std::map<runtime::DateTime, T>& All() const { return m_tBins; }
    runtime::DateTime EndOf(runtime::DateTime dtStart) const {
        return m_eFixed ? report::EndOf(*m_eFixed, dtStart)
                        : runtime::DateTime{dtStart.lSeconds + Steps[m_iStep].lSeconds};
    }
    const char* StepName() const {
        if (m_eFixed) return *m_eFixed == Period::Hour ? "hour" : *m_eFixed == Period::Day ? "day" : "week";
        return Steps[m_iStep].sName;
    }

private:
    struct Step {
        std::int64_t lSeconds;
        std::int64_t lLongest;  // seconds that are divided so
        const char* sName;
    };
    static constexpr std::int64_t Hour = 3600, Day = 24 * Hour;
    static constexpr std::array<Step, 4> Steps = {
        {{60, 3 * Hour, "minute"}, {600, 12 * Hour, "10 minutes"}, {Hour, 31 * Day, "hour"}, {Day, 0, "day"}}};

    std::int64_t SpanWith(runtime::DateTime dt) const {
        if (m_tBins.empty()) return 0;
        return std::max(dt, m_tBins.rbegin()->first).lSeconds - std::min(dt, m_tBins.begin()->first).lSeconds;
    }

    runtime::DateTime StartOf(runtime::DateTime dt) const {
        if (m_eFixed) return report::StartOf(*m_eFixed, dt);
        static const auto lBefore = runtime::MakeDateTime({1, 1, 1}, 0, 0, 0).lSeconds;  // any stamp
        return {dt.lSeconds - (dt.lSeconds - lBefore) % Steps[m_iStep].lSeconds};
    }

    void Lengthen() {
        const auto tShort = std::move(m_tBins);
        m_tBins.clear();
        ++m_iStep;
        for (const auto& [dt, t] : tShort) m_tBins[StartOf(dt)].Add(t);
    }

    const std::optional<Period> m_eFixed;
    std::size_t m_iStep = 0;
    std::map<runtime::DateTime, T> m_tBins;
};

}  // namespace report
