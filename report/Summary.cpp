// Counting for the summary.
#include "report/Summary.h"

#include <algorithm>

namespace report {

namespace {

// A receiver in reach of anything hears a base station every ten seconds and a moored ship every three to six minutes:
// longer without a line, and it was off, or deaf, or the recording was.
constexpr std::int64_t GapSeconds = 600;

const char* NameOf(Period e) { return e == Period::Hour ? "hour" : e == Period::Day ? "day" : "week"; }

}  // namespace

Summary::Summary(const Options& tOptions, Writer& tWriter)
    : m_eBy(tOptions.eBy),
      m_bPosition(tOptions.tPosition),
      m_tScale(tOptions.bRaw),
      m_tWriter(tWriter),
      m_tCounts(tOptions.eBy),
      m_tDue(tOptions.iGap) {}

void Summary::Line(const LineEvent& t) {
    ++m_tAll.lLines[IndexOf(t.eKind)];
    if (t.bSetBack) ++m_tAll.lSetBacks;
    if (!t.bTimed) return;
    if (!m_bTimed || t.dt != m_dtLast) Elapse(t.dt);
    if (m_eBy) ++PeriodOf(t.dt)->lLines[IndexOf(t.eKind)];
}

// From the line before to one of another second.
void Summary::Elapse(runtime::DateTime dt) {
    m_tAll.AddTime(dt);
    if (m_tWriter.Draws()) m_tCounts.At(dt);  // recorded, though perhaps nothing was heard
    const std::int64_t lStep = m_bTimed ? dt.lSeconds - m_dtLast.lSeconds : 0;
    const runtime::DateTime dtBefore = m_dtLast;
    m_dtLast = dt;
    m_bTimed = true;
    if (lStep > GapSeconds) {
        ++m_tAll.lGaps;
        m_tAll.lGapSeconds += lStep;
    }
    const bool bCounts = lStep > 0 && lStep <= GapSeconds;
    if (bCounts) m_tAll.lSeconds += lStep;
    if (!m_eBy) return;
    if (bCounts) {  // a step is shorter than a period, so it lies in two at the most
        SummaryFigures* pBefore = PeriodOf(dtBefore);
        const std::int64_t lInBefore = std::min(lStep, m_dtEnd.lSeconds - dtBefore.lSeconds);
        pBefore->lSeconds += lInBefore;
        if (lInBefore < lStep) PeriodOf(dt)->lSeconds += lStep - lInBefore;
    }
    PeriodOf(dt)->AddTime(dt);
}

SummaryFigures* Summary::PeriodOf(runtime::DateTime dt) {
    if (m_pPeriod && dt >= m_dtStart && dt < m_dtEnd) return m_pPeriod;
    m_dtStart = StartOf(*m_eBy, dt);
    m_dtEnd = EndOf(*m_eBy, m_dtStart);
    m_pPeriod = &m_tPeriods[m_dtStart];
    return m_pPeriod;
}

void Summary::Message(const Report& t) {
    const auto iShip = static_cast<std::size_t>(t.iShip);
    if (t.bNewShip) {
        ++m_tAll.lShips;
        m_pHeardIn.resize(iShip + 1);
    }
    SummaryFigures* pPeriod = m_eBy ? PeriodOf(t.dt) : nullptr;
    if (pPeriod && m_pHeardIn[iShip] != pPeriod) {
        m_pHeardIn[iShip] = pPeriod;
        ++pPeriod->lShips;
    }
    m_tMinutes.Add(t.dt, [this](const MinuteCounts::Minute& tMinute) { CountMinute(tMinute); });
    const bool bJump = t.bPosition && m_tTracks.Jumps(t);
    if (t.bPosition && !t.bOwnPosition) ++m_lNoOwnPosition;
    if (t.bPosition && t.bOwnPosition && !t.bRange) ++m_lNoRange;
    CountDue(t, bJump, pPeriod);
    const bool bKnownType = t.lType > 0 && t.lType < static_cast<std::int32_t>(SummaryFigures::Types);
    const std::size_t iType = bKnownType ? static_cast<std::size_t>(t.lType) : 0;
    const auto iChannel = static_cast<std::size_t>(t.eChannel);
    const ShownLevels tShown = t.bLevels ? m_tScale.Show(t.tLevels) : ShownLevels{};
    for (SummaryFigures* p : {&m_tAll, pPeriod}) {
        if (!p) continue;
        ++p->lMessages;
        ++p->lTypes[iType];
        ++p->lChannels[iChannel];
        if (t.bLevels) p->tLevels[iChannel].Add(tShown);
        if (bJump) ++p->lJumps;
        if (t.bRange && !bJump) p->AddRange(t);
    }
}

void Summary::CountDue(const Report& t, bool bJump, SummaryFigures* pPeriod) {
    if (!IsPositionReport(t)) return;
    if (!t.bRange || bJump) return m_tDue.End(t);
    m_tDue.Take(t, m_tAll.tRates.PlaceOf(t.tFromUs),
                [&](const RingPlace& tFrom, const RingPlace& tTo, double dMissed, bool bHeard) {
                    m_tAll.tRates.Count(tFrom, tTo, dMissed, bHeard);
                    if (pPeriod) pPeriod->tRates.Count(tFrom, tTo, dMissed, bHeard);
                });
}

void Summary::CountMinute(const MinuteCounts::Minute& t) {
    if (m_tWriter.Draws()) m_tCounts.At(t.Start()).lMessages += t.lCount;
    for (SummaryFigures* p : {&m_tAll, m_eBy ? &m_tPeriods[StartOf(*m_eBy, t.Start())] : nullptr}) {
        if (!p || t.lCount <= p->lBusiest) continue;
        p->lBusiest = t.lCount;
        p->dtBusiest = t.Start();
    }
}

void Summary::DrawCounts() const {
    Picture t{Picture::Kind::Steps, "messages", std::string("Messages per ") + m_tCounts.StepName()};
    t.tX = {"time", true};
    t.tY = {"messages", false, 0};
    t.tSeries = {{"messages", {}}};
    std::vector<Point>& tPoints = t.tSeries[0].tPoints;
    runtime::DateTime dtNext;
    for (const auto& [dt, tCount] : m_tCounts.All()) {
        if (!tPoints.empty() && dt > dtNext) tPoints.push_back({static_cast<double>(dtNext.lSeconds), NotKnown});
        tPoints.push_back({static_cast<double>(dt.lSeconds), static_cast<double>(tCount.lMessages)});
        dtNext = m_tCounts.EndOf(dt);
        t.lCount += tCount.lMessages;
    }
    t.sRule = std::string("Whole AIS messages of all types by ") + m_tCounts.StepName() +
              " of the clock; the first and the last may be recorded in part only.";
    t.sCounted = "messages";
    m_tWriter.Draw(t);
}

bool Summary::Finish() {
    m_tMinutes.Finish([this](const MinuteCounts::Minute& t) { CountMinute(t); });
    if (m_tWriter.Draws()) DrawCounts();
    if (!m_tWriter.OneTable()) WriteSummary(m_tAll, m_tScale, m_tWriter);
    PeriodTable tTable(m_tScale, m_tWriter);
    if (m_eBy) {
        tTable.Begin(std::string("By ") + NameOf(*m_eBy));
        for (const auto& [dtStart, t] : m_tPeriods) tTable.Row(dtStart, t);
        tTable.End();
    } else if (m_tWriter.OneTable()) {
        tTable.Begin("Summary");
        tTable.Row(m_tAll.dtFirst, m_tAll);
        tTable.End();
    }
    WriteNotes();
    return m_tAll.lMessages > 0;
}

void Summary::WriteNotes() const {
    if (!m_tAll.bTimed) return m_tWriter.Note("No line has a date and time: nothing can be said.");
    m_tWriter.Note(
        "More than 10 minutes without any line are a gap: they do not count as recorded, nor in the means of a "
        "minute.");
    if (m_tAll.lSetBacks > 0) {
        m_tWriter.Note("The clock went back " + std::to_string(m_tAll.lSetBacks) +
                       " times: what came then is counted at the times that the lines bear.");
    }
    if (m_tAll.lMessages == 0) return m_tWriter.Note("There is no AIS message.");
    if (m_tAll.AllLevels().tSnr.Empty()) {
        m_tWriter.Note("No message is followed by a $PNMLS sentence: nothing can be said of levels.");
    } else {
        m_tWriter.Note("A level belongs to the message right before it. Quartiles and medians are values that came.");
    }
    const std::string sNoOwn = std::to_string(m_lNoOwnPosition);
    if (m_tAll.tRange.Empty() && m_lNoOwnPosition > 0) {
        m_tWriter.Note("No range: the own position is in none of the files. --position tells it.");
    } else if (m_tAll.tRange.Empty()) {
        m_tWriter.Note("No range: no message tells a position.");
    } else if (m_lNoOwnPosition > 0) {
        m_tWriter.Note(sNoOwn + " positions came before the first own one and have no range.");
    }
    if (m_lNoRange > 0) {
        m_tWriter.Note(std::to_string(m_lNoRange) +
                       " positions have no range: the own one, or due north or south of it to the last digit.");
    }
    if (!m_tAll.tRange.Empty()) {
        m_tWriter.Note(
            "A position counts as a jump when it lies farther from the ship's last one than 102.2 knots and 1 nm "
            "allow. The greatest range is that of a single report. Reliable range: the rings of 5 nm up to the first "
            "of "
            "which less than 80 % was heard of what ships there must have sent; the command range tells the rule.");
        m_tWriter.Note(m_bPosition ? "Ranges are from the position that --position tells."
                                   : "Ranges are from the GPS position in the files.");
    }
}

}  // namespace report
