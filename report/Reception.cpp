// The table of rings, and the rule beside it.
#include "report/Reception.h"

#include <algorithm>
#include <cmath>

namespace report {

Reception::Reception(const Options& tOptions, Writer& tWriter)
    : m_iGap(tOptions.iGap),
      m_iShare(tOptions.iShare),
      m_tWriter(tWriter),
      m_tDue(tOptions.iGap),
      m_tRates(tOptions.iRing) {}

void Reception::Message(const Report& t) {
    if (!IsPositionReport(t)) return;
    ++m_lReports;
    const bool bJump = t.bPosition && m_tTracks.Jumps(t);
    if (!t.bRange || bJump) {
        ++m_lNoRange;
        m_tDue.End(t);
        return;
    }
    m_tDue.Take(t, m_tRates.PlaceOf(t.tFromUs),
                [&](const RingPlace& tFrom, const RingPlace& tTo, double dMissed, bool bHeard) {
                    m_tRates.Count(tFrom, tTo, dMissed, bHeard);
                    if (!bHeard) return;
                    ++m_lCounted;
                    CountVisit(static_cast<std::size_t>(t.iShip), tFrom.iRing);
                });
}

void Reception::CountVisit(std::size_t iShip, std::size_t iRing) {
    if (iShip >= m_iLastRing.size()) m_iLastRing.resize(iShip + 1);
    if (iRing >= m_lVisits.size()) m_lVisits.resize(iRing + 1);
    if (m_iLastRing[iShip] != iRing + 1) ++m_lVisits[iRing];
    m_iLastRing[iShip] = iRing + 1;
}

void Reception::DrawRates() const {
    Picture t{Picture::Kind::Lines, "rate", "Reception rate against range"};
    t.tY = {"heard, %", false, 0, 100};
    t.tSeries = {{"heard", {}}};
    const double dMiles = m_tRates.Miles();
    const auto dRings = static_cast<double>(m_tRates.Rings().size());
    t.tX = {"range, nm", false, 0, dRings > 0 ? dRings * dMiles : NotKnown};
    for (std::size_t i = 0; i < m_tRates.Rings().size(); ++i) {
        const RingRate& tRing = m_tRates.Rings()[i];
        Point tPoint{(static_cast<double>(i) + 0.5) * dMiles, NotKnown};
        if (tRing.dSent > 0) {
            const auto dHeard = static_cast<double>(tRing.lHeard);
            const ShareInterval tShare = WilsonInterval(dHeard, tRing.dSent);
            tPoint = {tPoint.dX, std::min(1.0, dHeard / tRing.dSent) * 100, tShare.dLow * 100, tShare.dHigh * 100};
        } else if (t.tSeries[0].tPoints.empty()) {
            continue;  // a line does not begin with a gap
        }
        t.tSeries[0].tPoints.push_back(tPoint);
        t.lCount += tRing.lHeard;
    }
    t.sRule = "Of the position reports that ships in a ring of " + std::to_string(m_tRates.Miles()) +
              " nm must have sent by the reporting rules, the share that was heard; the band is its 95 % interval.";
    t.sCounted = "reports heard";
    m_tWriter.Draw(t);
}

bool Reception::Finish() {
    if (m_tWriter.Draws()) DrawRates();
    m_tWriter.BeginTable("rings", "Reception rate against range",
                         {{"from", "from nm", 7},
                          {"to", "to nm", 6},
                          {"rate", "heard %", 8},
                          {"low", "at least", 9},
                          {"high", "at most", 8},
                          {"heard", "reports", 9},
                          {"sent", "of about", 10},
                          {"visits", "visits", 7}});
    WriteRings();
    m_tWriter.EndTable();
    const double dReliable = m_tRates.ReliableMiles(m_iShare / 100.0);
    m_tWriter.Fields("reliable", "Reliable range",
                     {{"share", "at least this share heard", std::int64_t{m_iShare}, "%"},
                      {"miles", "up to", dReliable > 0 ? Cell(Number{dReliable, 0}) : Cell(), "nm"}});
    WriteNotes();
    return !m_tRates.Rings().empty();
}

void Reception::WriteRings() const {
    for (std::size_t i = 0; i < m_tRates.Rings().size(); ++i) {
        const RingRate& t = m_tRates.Rings()[i];
        if (t.Empty()) continue;
        const std::int64_t lFrom = static_cast<std::int64_t>(i) * m_tRates.Miles();
        std::vector<Cell> tCells = {lFrom, lFrom + m_tRates.Miles()};
        if (t.dSent <= 0) {
            tCells.insert(tCells.end(), 3, Cell());
        } else {
            const ShareInterval tShare = WilsonInterval(static_cast<double>(t.lHeard), t.dSent);
            const double dRate = std::min(1.0, static_cast<double>(t.lHeard) / t.dSent);
            for (const double d : {dRate, tShare.dLow, tShare.dHigh}) tCells.emplace_back(Number{d * 100, 1});
        }
        tCells.insert(tCells.end(), {t.lHeard, Number{t.dSent, 0}, i < m_lVisits.size() ? m_lVisits[i] : 0});
        m_tWriter.Row(tCells);
    }
}

void Reception::WriteNotes() const {
    const auto NoteCount = [this](std::int64_t l, const std::string& sText) {
        if (l > 0) m_tWriter.Note(std::to_string(l) + sText);
    };
    const std::string sGap = std::to_string(m_iGap);
    if (m_tRates.Rings().empty()) {
        m_tWriter.Note(
            "No ship was heard three times in a row with a range: nothing can be said of the rate. A range needs an "
            "own position, from the files' GPS or --position.");
    }
    m_tWriter.Note(
        "Rule: between two position reports of a ship, (time between) / (interval) - 1 were missed. Interval: class A "
        "at anchor or moored up to 3 knots 180 s, else up to 14 knots 10 s, up to 23 knots 6 s, above 2 s; class B up "
        "to 2 knots 180 s, above 30 s, with reserved slots from 14 knots on 15 s and from 23 on 5 s.");
    m_tWriter.Note(
        "A stretch of reports ends where a turn or another interval begins, and at more than " + sGap +
        " intervals of silence (--gap), which are out of reach or switched off, not missed; so rates below some " +
        std::to_string(static_cast<int>(std::lround(300.0 / m_iGap))) +
        " % come out too high. Its first and last report are known only because they were heard and do not count; "
        "those "
        "between them do, heard or missed.");
    m_tWriter.Note(
        "At least, at most: the 95 % interval (Wilson) for reports that are lost one by one; where they are lost "
        "in rows it is wider. Visits: how often a ship came into the ring. The reliable range goes up to the "
        "first ring with 30 reports or more that was heard less.");
    m_tWriter.Note("A receiver that listens to one channel at a time hears half of the reports at best.");
    const DueReports::LeftOut& t = m_tDue.Left();
    const std::int64_t lEnds =
        m_lReports - m_lCounted - m_lNoRange - t.lAssigned - t.lNoInterval - t.lTurning - t.lRepeated;
    m_tWriter.Note("Of " + std::to_string(m_lReports) + " position reports (types 1, 2, 3, 18) " +
                   std::to_string(m_lCounted) + " count as heard; left out are, if any:");
    NoteCount(t.lAssigned, " reports in assigned mode");
    NoteCount(m_lNoRange, " reports without range or dropped as jumps");
    NoteCount(t.lNoInterval, " reports that tell no speed");
    NoteCount(t.lTurning, " reports in a turn");
    NoteCount(t.lRepeated, " reports heard twice");
    NoteCount(lEnds, " reports that begin or end a stretch");
    NoteCount(t.lGaps, " silences of more than " + sGap + " intervals, or where a clock was set back");
}

}  // namespace report
