// The rules, one after the other.
#include "report/WatchRules.h"

#include <algorithm>
#include <utility>

namespace report {

namespace {

constexpr std::int64_t Hour = 3600;
constexpr std::int64_t HoursOfDay = 24;
constexpr double Grace = 60;  // seconds in which the lines of an hour that is over may still come

}  // namespace

void WatchRules::Line(runtime::DateTime dt) {
    m_bLine = true;
    m_bLive = m_bBegun;
    m_dtLast = dt;
    const std::int64_t lHour = dt.lSeconds / Hour;
    if (!m_bHour) OpenHour(lHour, false);
    // Beside a gap, or where the clock was set, nobody knows which part of an hour was recorded.
    if (lHour == m_lHour + 1) CloseHour();
    if (lHour != m_lHour) OpenHour(lHour, lHour == m_lHour + 1);
    m_bLines = true;
}

void WatchRules::Message() {
    m_bMessage = true;
    ++m_lMessages;
}

void WatchRules::OpenHour(std::int64_t lHour, bool bWhole) {
    m_bHour = true;
    m_lHour = lHour;
    m_bWhole = bWhole;
    m_bLines = false;
    m_lMessages = 0;
}

void WatchRules::CloseHour() {
    if (!m_bWhole) return;
    if (m_bBegun) Judge({m_lHour * Hour}, m_lMessages);
    if (!m_bLines) return;  // there was no recording
    auto& lPast = m_lPast[static_cast<std::size_t>(m_lHour % HoursOfDay)];
    lPast.push_back(m_lMessages);
    if (lPast.size() > LongestMemory) lPast.pop_front();
}

void WatchRules::Judge(runtime::DateTime dtHour, std::int64_t lHeard) {
    const auto dUsual = Usual(m_lHour);
    if (!m_tLimits.iBelow || !dUsual) return;
    const bool bBelow = static_cast<double>(lHeard) * 100 < *dUsual * *m_tLimits.iBelow;
    if (bBelow == std::exchange(m_bBelow, bBelow)) return;
    m_tEvents.push_back({Trouble::Below, !bBelow, 0, lHeard, dUsual, dtHour});
}

std::optional<double> WatchRules::Usual(std::int64_t lHour) const {
    const auto& lPast = m_lPast[static_cast<std::size_t>(lHour % HoursOfDay)];
    if (lPast.size() < static_cast<std::size_t>(m_tLimits.iDays)) return std::nullopt;
    std::vector<std::int64_t> lSorted(lPast.begin(), lPast.end());
    std::ranges::sort(lSorted);
    const std::size_t iMiddle = lSorted.size() / 2;
    if (lSorted.size() % 2 == 1) return static_cast<double>(lSorted[iMiddle]);
    return static_cast<double>(lSorted[iMiddle - 1] + lSorted[iMiddle]) / 2;
}

int WatchRules::HoursKnown() const {
    int iKnown = 0;
    for (std::int64_t l = 0; l < HoursOfDay; ++l) iKnown += Usual(l) ? 1 : 0;
    return iKnown;
}

void WatchRules::Begin(double dNow) {
    m_bBegun = true;
    m_bGrew = m_bMessage = m_bLine = false;
    m_tQuiet.dLast = m_tStopped.dLast = m_dGrowing = m_dLastRead = dNow;
}

std::vector<WatchEvent> WatchRules::Tick(double dNow) {
    if (std::exchange(m_bLine, false)) m_dLastRead = dNow;
    if (std::exchange(m_bGrew, false)) {
        if (m_tStopped.bOn) {
            Tell(Trouble::Stopped, true, dNow - m_tStopped.dLast);
            m_dGrowing = dNow;
        }
        m_tStopped = {false, dNow};
    }
    if (std::exchange(m_bMessage, false)) {
        if (m_tQuiet.bOn) Tell(Trouble::Quiet, true, dNow - m_tQuiet.dLast);
        m_tQuiet = {false, dNow};
    }
    // Quiet is what has grown without a message; what has not grown is stopped.
    if (!m_tQuiet.bOn && m_tStopped.dLast - std::max(m_tQuiet.dLast, m_dGrowing) >= m_tLimits.dQuiet) {
        m_tQuiet.bOn = true;
        Tell(Trouble::Quiet, false, dNow - m_tQuiet.dLast);
    }
    if (!m_tStopped.bOn && dNow - m_tStopped.dLast >= m_tLimits.dStopped) {
        m_tStopped.bOn = true;
        Tell(Trouble::Stopped, false, dNow - m_tStopped.dLast);
    }
    // An hour may end without a line behind it. While no line has come at all, nobody knows the recording's clock.
    while (m_bLive && static_cast<double>(m_dtLast.lSeconds) + (dNow - m_dLastRead) >=
                          static_cast<double>((m_lHour + 1) * Hour) + Grace) {
        CloseHour();
        OpenHour(m_lHour + 1, true);
    }
    return std::exchange(m_tEvents, {});
}

void WatchRules::Tell(Trouble e, bool bOver, double dSeconds) {
    m_tEvents.push_back({e, bOver, dSeconds, std::nullopt, std::nullopt, {}});
}

}  // namespace report
