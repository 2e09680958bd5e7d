// Pairs of reports, put into rings.
#include "report/Reception.h"

#include <algorithm>
#include <cmath>

#include "decoders/VdmBits.h"
#include "report/StaticData.h"

namespace report {

namespace {

constexpr int RingMiles = 5;
constexpr double LeastSent = 30;      // a ring with fewer reports behind it ends no reliable range
constexpr double TurningDegrees = 5;  // a change of course by more between two reports is a turn
constexpr std::int32_t ClassBReport = 18;
constexpr std::int32_t AssignedReport = 2;
constexpr std::int32_t RawSpeedUnavailable = 1023;
constexpr std::int32_t RawCourseUnavailable = 3600;
constexpr std::int32_t AtAnchor = 1;
constexpr std::int32_t Moored = 5;
constexpr std::int32_t RawNoTurnTold = 128;

bool IsClassA(const Report& t) { return t.lType == 1 || t.lType == 3; }

// Bit 146 of a type 18.
bool IsAssigned(const Report& t) {
    return t.lType == AssignedReport || (t.lType == ClassBReport && BitsOf(t.lData, 146, 1) != 0);
}

double ClassAInterval(double dSpeed, std::int32_t lStatus) {
    if ((lStatus == AtAnchor || lStatus == Moored) && dSpeed <= 3) return 180;
    if (dSpeed <= 14) return 10;
    return dSpeed <= 23 ? 6 : 2;
}

// Bit 141 tells the two kinds apart: those that reserve their slots send the faster the faster they go.
double ClassBInterval(double dSpeed, bool bCarrierSense) {
    if (dSpeed <= 2) return 180;
    if (bCarrierSense || dSpeed <= 14) return 30;
    return dSpeed <= 23 ? 15 : 5;
}

// Of the rate-of-turn indicator; 0 and "not available" are no turn.
bool TellsTurn(const Report& t) {
    const std::int32_t lRaw = BitsOf(t.lData, 42, 8);
    return IsClassA(t) && lRaw != 0 && lRaw != RawNoTurnTold;
}

// How many reports were sent in that time, the one at its end included. Sending times scatter by a tenth of the
// interval and stamps are whole seconds: from 5 seconds on both together are less than half an interval, so the whole
// number is known; below, the scatter falls out of the sum over many pairs.
double SentWithin(double dSeconds, double dInterval) {
    constexpr double WholeFrom = 5;
    const double dSent = dSeconds / dInterval;
    return dInterval < WholeFrom ? dSent : std::max(1.0, std::round(dSent));
}

}  // namespace

std::optional<double> ExpectedInterval(const Report& t) {
    const auto eLayout = decoders::LayoutOf(t.lType);
    const std::int32_t lRaw = decoders::RawSpeed(t.lData, eLayout);
    if (lRaw < 0 || lRaw >= RawSpeedUnavailable) return std::nullopt;
    const double dSpeed = lRaw / 10.0;
    if (IsClassA(t)) return ClassAInterval(dSpeed, BitsOf(t.lData, 38, 4));
    if (t.lType == ClassBReport) return ClassBInterval(dSpeed, BitsOf(t.lData, 141, 1) != 0);
    return std::nullopt;
}

ShareInterval WilsonInterval(double dHeard, double dSent) {
    constexpr double z = 1.959964;
    const double dShare = std::min(1.0, dHeard / dSent);
    const double dCentre = (dShare + z * z / (2 * dSent)) / (1 + z * z / dSent);
    const double dHalf =
        z / (1 + z * z / dSent) * std::sqrt(dShare * (1 - dShare) / dSent + z * z / (4 * dSent * dSent));
    return {std::max(0.0, dCentre - dHalf), std::min(1.0, dCentre + dHalf)};
}

Reception::Reception(const Options& tOptions, Writer& tWriter)
    : m_dGap(tOptions.iGap), m_dShare(tOptions.iShare / 100.0), m_tWriter(tWriter) {}

void Reception::Message(const Report& t) {
    if (!IsClassA(t) && t.lType != AssignedReport && t.lType != ClassBReport) return;
    ++m_lReports;
    const auto iShip = static_cast<std::size_t>(t.iShip);
    if (iShip >= m_tLast.size()) m_tLast.resize(iShip + 1);
    Last& tLast = m_tLast[iShip];
    const bool bJump = t.bPosition && m_tTracks.Jumps(t);
    const auto dInterval = ExpectedInterval(t);
    if (IsAssigned(t)) {
        ++m_lAssigned;
    } else if (!t.bRange || bJump) {
        ++m_lNoRange;
    } else if (!dInterval) {
        ++m_lNoInterval;
    } else {
        const std::int32_t lCourse = decoders::RawCourse(t.lData, decoders::LayoutOf(t.lType));
        Last tNow{true, t.dt, *dInterval, *dInterval, lCourse / 10.0, t.tFromUs.dRange, TellsTurn(t), tLast.iRing};
        if (lCourse >= RawCourseUnavailable) tNow.dCourse = tLast.dCourse;
        if (t.lType != ClassBReport) tNow.dTurnInterval = *dInterval == 10 ? 10.0 / 3 : 2;
        if (tLast.bKnown) Pair(tLast, tNow);
        tNow.iRing = tLast.iRing;
        tLast = tNow;
        return;
    }
    tLast.bKnown = false;  // what stands between two reports would be taken for missed ones
}

void Reception::Pair(Last& tLast, Last& tNow) {
    const auto dSeconds = static_cast<double>(tNow.dt.lSeconds - tLast.dt.lSeconds);
    const bool bUnderWay = tNow.dInterval < 180;  // the course of a ship at rest is chance
    const bool bTurned = bUnderWay && std::fabs(std::remainder(tNow.dCourse - tLast.dCourse, 360)) > TurningDegrees;
    ++m_lPairs;
    if (dSeconds < 0 || dSeconds > m_dGap * tLast.dInterval) {
        ++m_lGaps;
    } else if (bUnderWay && tLast.bTurns) {
        ++m_lTurning;
    } else if (bTurned || (bUnderWay && tNow.bTurns) || tLast.dInterval != tNow.dInterval) {
        ++m_lChanged;
        const double dAfter = bTurned || tNow.bTurns ? tNow.dTurnInterval : tNow.dInterval;
        Count(tLast, tNow, std::max(1.0, (dSeconds / tLast.dInterval + dSeconds / dAfter) / 2));
    } else {
        Count(tLast, tNow, SentWithin(dSeconds, tNow.dInterval));
    }
    tNow.bTurns = tNow.bTurns || bTurned;  // without an indicator only the course tells
}

void Reception::Count(Last& tLast, const Last& tNow, double dSent) {
    const int iRing = static_cast<int>((tLast.dRange + tNow.dRange) / 2) / RingMiles;
    Ring& t = m_tRings[iRing];
    ++t.lHeard;
    t.dSent += dSent;
    if (tLast.iRing != iRing) ++t.lShips;
    tLast.iRing = iRing;
}

// From the inside out, up to the first ring that was heard too badly.
double Reception::ReliableMiles() const {
    double dMiles = 0;
    for (const auto& [iRing, t] : m_tRings) {
        if (t.dSent < LeastSent) continue;
        if (static_cast<double>(t.lHeard) < m_dShare * t.dSent) break;
        dMiles = (iRing + 1) * RingMiles;
    }
    return dMiles;
}

void Reception::DrawRates() const {
    Picture t{Picture::Kind::Lines, "rate", "Reception rate against range"};
    t.tX = {"range, nm", false, 0};
    t.tY = {"heard, %", false, 0, 100};
    t.tSeries = {{"heard", {}}};
    int iNext = m_tRings.empty() ? 0 : m_tRings.begin()->first;
    for (const auto& [iRing, tRing] : m_tRings) {
        if (tRing.dSent <= 0) continue;
        if (iRing > iNext) t.tSeries[0].tPoints.push_back({(iNext + 0.5) * RingMiles, NotKnown});
        iNext = iRing + 1;
        const auto dHeard = static_cast<double>(tRing.lHeard);
        const ShareInterval tShare = WilsonInterval(dHeard, tRing.dSent);
        const double dRate = std::min(1.0, dHeard / tRing.dSent);
        t.tSeries[0].tPoints.push_back({(iRing + 0.5) * RingMiles, dRate * 100, tShare.dLow * 100, tShare.dHigh * 100});
        t.lCount += tRing.lHeard;
    }
    t.sRule =
        "Of the position reports that ships in a ring of 5 nm must have sent by the reporting rules, the share that "
        "was heard; the band is its 95 % interval.";
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
    double dSent = 0;
    for (const auto& [iRing, t] : m_tRings) {
        dSent += t.dSent;
        std::vector<Cell> tCells = {std::int64_t{iRing} * RingMiles, std::int64_t{iRing + 1} * RingMiles};
        if (t.dSent <= 0) {
            tCells.insert(tCells.end(), 3, Cell());
        } else {
            const ShareInterval tShare = WilsonInterval(static_cast<double>(t.lHeard), t.dSent);
            const double dRate = std::min(1.0, static_cast<double>(t.lHeard) / t.dSent);
            for (const double d : {dRate, tShare.dLow, tShare.dHigh}) tCells.emplace_back(Number{d * 100, 1});
        }
        tCells.insert(tCells.end(), {t.lHeard, Number{t.dSent, 0}, t.lShips});
        m_tWriter.Row(tCells);
    }
    m_tWriter.EndTable();
    const double dReliable = ReliableMiles();
    m_tWriter.Fields("reliable", "Reliable range",
                     {{"share", "at least this share heard", Number{m_dShare * 100, 0}, "%"},
                      {"miles", "up to", dReliable > 0 ? Cell(Number{dReliable, 0}) : Cell(), "nm"}});
    WriteNotes();
    return dSent > 0;
}

void Reception::WriteNotes() const {
    const auto NoteCount = [this](std::int64_t l, const std::string& sText) {
        if (l > 0) m_tWriter.Note(std::to_string(l) + sText);
    };
    const std::string sGap = std::to_string(static_cast<int>(m_dGap));
    if (m_tRings.empty()) {
        m_tWriter.Note(
            "No ship was heard twice with a range: nothing can be said of the rate. A range needs an own "
            "position, from the files' GPS or --position.");
    }
    m_tWriter.Note(
        "Rule: two successive position reports of a ship tell of one heard among (time between) / (interval) that were "
        "sent. Interval: class A at anchor or moored up to 3 knots 180 s, else up to 14 knots 10 s, up to 23 knots 6 "
        "s, "
        "above 2 s; class B up to 2 knots 180 s, above 30 s, with reserved slots from 14 knots on 15 s and from 23 on "
        "5 s.");
    m_tWriter.Note("More than " + sGap +
                   " intervals without a report (--gap) count as out of reach or switched off, not as "
                   "missed; so rates below some " +
                   std::to_string(static_cast<int>(std::lround(300 / m_dGap))) + " % come out too high.");
    m_tWriter.Note(
        "At least, at most: the 95 % interval (Wilson) for reports that are lost one by one; where they are lost "
        "in rows it is wider. Visits: how often a ship came into the ring. The reliable range goes up to the "
        "first ring with 30 reports or more that was heard less.");
    m_tWriter.Note("A receiver that listens to one channel at a time hears half of the reports at best.");
    m_tWriter.Note("Of " + std::to_string(m_lReports) + " position reports (types 1, 2, 3, 18) and " +
                   std::to_string(m_lPairs) + " pairs of them were left out, if any:");
    NoteCount(m_lAssigned, " reports in assigned mode");
    NoteCount(m_lNoRange, " reports without range or dropped as jumps");
    NoteCount(m_lNoInterval, " reports that tell no speed");
    NoteCount(m_lGaps, " pairs more than " + sGap + " intervals apart, or at a clock set back");
    NoteCount(m_lTurning, " pairs that began in a turn");
    if (m_lChanged > 0)
        m_tWriter.Note(
            std::to_string(m_lChanged) +
            " pairs in which a turn or another interval began are counted as if it had begun in the middle.");
}

}  // namespace report
