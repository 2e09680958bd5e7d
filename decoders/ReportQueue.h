// The reports that wait to be shown, oldest first. No more than the target table has rows: a burst of a million reports
// leaves 256 rows and 101 log lines, so most reports never become text.
#pragma once

#include <cstddef>
#include <string_view>

#include "decoders/AisReport.h"
#include "platform/runtime/Ring.h"

namespace decoders {

class ReportQueue {
public:
    bool Empty() const { return m_tReports.Empty(); }
    bool Full() const { return m_tReports.Full(); }
    // How many of them carry signal levels.
    int Signals() const { return m_iSignals; }

    // A report behind the others, without levels, its values still those of an earlier one. Not while Full().
    AisReport& Add() {
        AisReport& t = m_tReports.Add();
        t.sSignal = {};
        return t;
    }

    // A signal sentence for the newest report, if it has none yet; false where it belongs to no report here.
    bool AttachSignal(std::string_view sSentence, bool bDbm) {
        if (Empty() || !m_tReports.Newest().sSignal.empty()) return false;
        m_tReports.Newest().sSignal = sSentence;
        m_tReports.Newest().bDbm = bDbm;
        ++m_iSignals;
        return true;
    }

    // Copies the texts of all that wait: call it before the lines go that they look at.
    void KeepTexts() {
        for (std::size_t i = 0; i < m_tReports.Count(); ++i) m_tReports.At(i).KeepTexts();
    }

    // Not while Empty().
    const AisReport& Oldest() { return m_tReports.Oldest(); }
    void DropOldest() {
        if (!Oldest().sSignal.empty()) --m_iSignals;
        m_tReports.DropOldest();
    }

    // Hands every report to tTake, oldest first; each is gone from here once it has been taken.
    template <class Take>
    void Drain(const Take& tTake) {
        for (; !Empty(); DropOldest()) tTake(Oldest());
    }

private:
    runtime::Ring<AisReport, 256> m_tReports;
    int m_iSignals = 0;
};

}  // namespace decoders
