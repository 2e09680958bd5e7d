// What is kept of each sender, and the table.
#include "report/ShipList.h"

#include <algorithm>

namespace report {

namespace {

Cell TextCell(const std::string& s) { return s.empty() ? Cell() : Cell(s); }
Cell CountCell(std::int32_t l) { return l == 0 ? Cell() : Cell(std::int64_t{l}); }

Cell FigureCell(bool bKnown, double d, int iDecimals) {
    if (!bKnown) return {};
    return Number{d, iDecimals};
}

}  // namespace

ShipList::ShipList(const Options& tOptions, Writer& tWriter)
    : m_tScale(tOptions.bRaw), m_tWriter(tWriter), m_tDue(tOptions.iGap) {}

void ShipList::Message(const Report& t) {
    if (t.bNewShip) {
        m_tShips.emplace_back();
        m_tShips.back().lMmsi = t.lMmsi;
        m_tShips.back().dtFirst = m_tShips.back().dtLast = t.dt;
    }
    Ship& tShip = m_tShips[static_cast<std::size_t>(t.iShip)];
    tShip.dtFirst = std::min(tShip.dtFirst, t.dt);
    tShip.dtLast = std::max(tShip.dtLast, t.dt);
    ++tShip.lReports;
    ReadStaticData(t.lData, t.lLength, tShip.tStatic);
    if (t.bLevels) {
        const double dSnr = m_tScale.Show(t.tLevels).dSnr;
        tShip.dSnrBest = tShip.lLevels == 0 ? dSnr : std::max(tShip.dSnrBest, dSnr);
        tShip.dSnrSum += dSnr;
        ++tShip.lLevels;
    }
    const bool bJump = t.bPosition && m_tTracks.Jumps(t);
    CountDue(t, bJump, tShip);
    if (!t.bPosition) return;
    if (!t.bOwnPosition) ++m_lNoOwnPosition;
    if (bJump || !t.bRange) return;
    ++tShip.lPositions;
    if (t.tFromUs.Beyond(tShip.dGreatest)) tShip.dGreatest = t.tFromUs.Range();
}

// Wherever the ship is: its range is not needed for this.
void ShipList::CountDue(const Report& t, bool bJump, Ship& tShip) {
    if (!IsPositionReport(t)) return;
    if (bJump) return m_tDue.End(t);
    m_tDue.Take(t, {}, [&](const RingPlace&, const RingPlace&, double dMissed, bool bHeard) {
        tShip.lHeard += bHeard ? 1 : 0;
        tShip.dDue += dMissed + (bHeard ? 1 : 0);
    });
}

bool ShipList::Finish() {
    m_tWriter.BeginTable("ships", "Ships and stations",
                         {{"mmsi", "MMSI", 9},
                          {"name", "name", 20, true},
                          {"call_sign", "call", 7, true},
                          {"type", "type", 4},
                          {"length", "m", 4},
                          {"beam", "m wide", 6},
                          {"first", "first heard", 19, true},
                          {"last", "last heard", 19, true},
                          {"reports", "reports", 7},
                          {"snr_best", "best SNR", 8},
                          {"snr_mean", "mean SNR", 8},
                          {"range_greatest", "nm", 6},
                          {"rate", "heard %", 7},
                          {"due", "of", 6}});
    std::ranges::sort(m_tShips, {}, &Ship::lMmsi);
    for (const Ship& t : m_tShips) Row(t);
    m_tWriter.EndTable();
    m_tWriter.Note(
        "reports: messages of all types. nm: the greatest range of a position, jumps left out. Names and "
        "sizes are the last that a ship told of itself (message types 5, 19, 21, 24). heard %: of so many position "
        "reports due in its stretches of one interval, the first and last of each left out; the command range tells "
        "the "
        "rule.");
    if (m_tShips.empty()) m_tWriter.Note("There is no AIS message.");
    if (m_lNoOwnPosition > 0) {
        m_tWriter.Note(std::to_string(m_lNoOwnPosition) +
                       " positions came while the own one was not known and have no range.");
    }
    return !m_tShips.empty();
}

void ShipList::Row(const Ship& t) {
    m_tWriter.Row({std::int64_t{t.lMmsi}, TextCell(t.tStatic.sName), TextCell(t.tStatic.sCallSign),
                   CountCell(t.tStatic.lShipType), CountCell(t.tStatic.lLength), CountCell(t.tStatic.lBeam),
                   IsoText(t.dtFirst), IsoText(t.dtLast), t.lReports, FigureCell(t.lLevels > 0, t.dSnrBest, 1),
                   FigureCell(t.lLevels > 0, t.dSnrSum / static_cast<double>(t.lLevels), 1),
                   FigureCell(t.lPositions > 0, t.dGreatest, 1),
                   FigureCell(t.dDue > 0, std::min(100.0, 100 * static_cast<double>(t.lHeard) / t.dDue), 1),
                   FigureCell(t.dDue > 0, t.dDue, 0)});
}

}  // namespace report
