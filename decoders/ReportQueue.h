// The reports that wait to be shown, oldest first. No more than the target table has rows: a burst of a million reports
// leaves 256 rows and 101 log lines, so most reports never become text.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "decoders/AisReport.h"

namespace decoders {

class ReportQueue {
public:
    static constexpr std::size_t Capacity = 256;

    bool Empty() const { return m_iCount == 0; }
    bool Full() const { return m_iCount == Capacity; }
    // How many of them carry signal levels.
    int Signals() const { return m_iSignals; }

    // A report behind the others, without levels, its values still those of an earlier one. Not while Full().
    AisReport& Add() {
        AisReport& t = m_tReports[(m_iFirst + m_iCount++) % Capacity];
        t.sSignal = {};
        return t;
    }

    // A signal sentence for the newest report, if it has none yet; false where it belongs to no report here.
    bool AttachSignal(std::string_view sSentence, bool bDbm) {
        if (Empty()) return false;
        AisReport& t = m_tReports[(m_iFirst + m_iCount - 1) % Capacity];
        if (!t.sSignal.empty()) return false;
        t.sSignal = sSentence;
        t.bDbm = bDbm;
        ++m_iSignals;
        return true;
    }

    // Copies the texts of all that wait: call it before the lines go that they look at.
    void KeepTexts() {
        for (std::size_t i = 0; i < m_iCount; ++i) m_tReports[(m_iFirst + i) % Capacity].KeepTexts();
    }

    // Not while Empty().
    const AisReport& Oldest() const { return m_tReports[m_iFirst]; }
    void DropOldest() {
        if (!m_tReports[m_iFirst].sSignal.empty()) --m_iSignals;
        m_iFirst = (m_iFirst + 1) % Capacity;
        --m_iCount;
    }

    // Hands every report to tTake, oldest first; each is gone from here once it has been taken.
    template <class Take>
    void Drain(const Take& tTake) {
        for (; !Empty(); DropOldest()) tTake(Oldest());
    }

private:
    std::array<AisReport, Capacity> m_tReports;  // a ring: places are used again with their strings
    std::size_t m_iFirst = 0;
    std::size_t m_iCount = 0;
    int m_iSignals = 0;
};

}  // namespace decoders
