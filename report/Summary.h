// The summary: what was heard from when to when, altogether and by hours, days or weeks.
#pragma once

#include <map>
#include <vector>

#include "report/DueReports.h"
#include "report/MinuteCounts.h"
#include "report/Options.h"
#include "report/SummaryFigures.h"
#include "report/TimeBins.h"
#include "report/TrackCheck.h"

namespace report {

class Summary final : public Collector {
public:
    Summary(const Options& tOptions, Writer& tWriter);

    void Line(const LineEvent& t) override;
    void Message(const Report& t) override;
    bool Finish() override;

private:
    void Elapse(runtime::DateTime dt);
    SummaryFigures* PeriodOf(runtime::DateTime dt);
    void CountDue(const Report& t, bool bJump, SummaryFigures* pPeriod);
    void CountMinute(const MinuteCounts::Minute& t);
    void WriteNotes() const;
    void DrawCounts() const;

    const std::optional<Period> m_eBy;
    const bool m_bPosition;  // it was told
    const LevelScale m_tScale;
    Writer& m_tWriter;
    SummaryFigures m_tAll;
    std::map<runtime::DateTime, SummaryFigures> m_tPeriods;
    // The period that was looked up last.
    SummaryFigures* m_pPeriod = nullptr;
    runtime::DateTime m_dtStart, m_dtEnd;

    // For the picture.
    struct Count {
        std::int64_t lMessages = 0;
        void Add(const Count& t) { lMessages += t.lMessages; }
    };
    TimeBins<Count> m_tCounts;

    TrackCheck m_tTracks;
    DueReports m_tDue;
    MinuteCounts m_tMinutes;
    std::vector<const SummaryFigures*> m_pHeardIn;  // of each ship: the period in which it was heard last
    bool m_bTimed = false;                          // m_dtLast has been set
    runtime::DateTime m_dtLast;
    std::int64_t m_lNoOwnPosition = 0;  // positions heard while the own one was not known
    std::int64_t m_lNoRange = 0;        // positions for which the arithmetic has none though both are known
};

}  // namespace report
