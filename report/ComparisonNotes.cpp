// The rules behind the figures of two recordings of the same time, and what cannot be said.
#include <filesystem>

#include "nav/Trigonometry.h"
#include "platform/runtime/Format.h"
#include "report/ComparisonTables.h"
#include "report/Matcher.h"

namespace report {

namespace {

constexpr double PlacesApartMiles = 0.1;

std::string Tenths(double d) { return runtime::Format(d, {1, 1}); }

double MilesBetween(const nav::Position& t1, const nav::Position& t2) {
    try {
        return nav::RangeBearing(t1.dLatitude, t1.dLongitude, t2.dLatitude, t2.dLongitude).dRange;
    } catch (const nav::DivisionByZero&) {
        return 0;
    }
}

}  // namespace

void ComparisonTables::WriteNotes() const {
    m_tWriter.Note("Rule: the same payload within " + std::to_string(Matcher::ToleranceSeconds) +
                   " seconds, after the clocks' offset has been taken off, is one transmission that both heard. "
                   "Payloads that come "
                   "again are matched one to one, the nearest in time first.");
    WriteNotesOfTime();
    if (m_tFigures.tTotal.Either() == 0) {
        m_tWriter.Note("No message lies in the time that both recorded: nothing can be compared.");
        return;
    }
    m_tWriter.Note(
        "From, to: 95 % intervals. The messages of one ship hang together, and so do those of one minute, so that the "
        "intervals come from how ships differ from each other, and stretches of time (a minute or more, 64 at the "
        "most), "
        "the wider one being told. They hold for ships and times such as these; where the ships tell as much as less "
        "than "
        "two there is none. Ends are rounded outward.");
    if (m_tFigures.tSignal.tShips.Count() > 0) {
        m_tWriter.Note(
            "Levels: A less B, paired message by message. Median: each ship counts once, with the mean of its pairs, "
            "because a level is a whole step of the board; its interval is by the ranks of the ships (sign test), and "
            "there is none with fewer than 6. Pairs med: the middle one of all pairs.");
    }
    if (m_tFigures.lWeakPairs > 0) {
        m_tWriter.Note(std::to_string(m_tFigures.lWeakPairs) +
                       " pairs are left out of signal and SNR: less than 3 dB above the thresholds in the mean of the "
                       "two, where the weaker is cut off.");
    }
    for (std::size_t i = 0; i < m_tRecordings.size(); ++i) {
        if (m_tFigures.lWithLevels[i] > 0) continue;
        m_tWriter.Note(std::string(i == 0 ? "A" : "B") +
                       " has no levels: no message in the time that both recorded is followed by a $PNMLS sentence.");
    }
    WriteNotesOfPlaces();
    std::error_code tNone;
    if (std::filesystem::equivalent(m_tRecordings[0]->Name(), m_tRecordings[1]->Name(), tNone)) {
        m_tWriter.Note("A and B are the same file.");
    } else if (m_tFigures.bSameThroughout) {
        m_tWriter.Note(
            "Every message was heard by both in the same second with the same levels: this looks like one "
            "recording twice.");
    }
}

void ComparisonTables::WriteNotesOfTime() const {
    m_tWriter.Note("Only time in which both recorded counts, less " + std::to_string(Recording::MarginSeconds) +
                   " seconds at each end. More than 10 minutes without any line in a file are taken for a time in "
                   "which it did not "
                   "record; if that receiver was on and heard nothing, the figures favour it.");
    if (m_tClocks.lLeast != m_tClocks.lMost) {
        m_tWriter.Note("The clocks drifted apart or were set; the offset was followed: it went from " +
                       std::to_string(m_tClocks.lLeast) + " to " + std::to_string(m_tClocks.lMost) + " seconds.");
    }
    const char* sName = "A";
    for (const Recording* p : m_tRecordings) {
        if (p->SetBacks() > 0) {
            m_tWriter.Note(std::string(sName) + "'s clock was set back " + std::to_string(p->SetBacks()) +
                           " times: what came then is taken to have come right behind what came before.");
        }
        if (!p->Gaps().empty()) {
            m_tWriter.Note(std::string(sName) + " did not record " + std::to_string(p->Gaps().size()) +
                           " times for more than 10 minutes.");
        }
        sName = "B";
    }
    for (const Recording::Gap& t : m_tFigures.tLost) {
        m_tWriter.Note("From " + IsoText(t.dtFrom) + " to " + IsoText(t.dtTo) +
                       " both heard messages, but none the same: a clock was set forward, or the receivers were apart. "
                       "This time is left out.");
    }
}

void ComparisonTables::WriteNotesOfPlaces() const {
    const auto& tA = m_tRecordings[0]->Own();
    const auto& tB = m_tRecordings[1]->Own();
    if (!tA && !tB) {
        m_tWriter.Note("The own position is in neither file: nothing can be said by range. --position tells it.");
    } else if (m_tOptions.tPosition) {
        m_tWriter.Note("Ranges and bearings are from the position that --position tells.");
    } else {
        m_tWriter.Note("Ranges and bearings are from the GPS position in A's file" +
                       std::string(m_tFigures.lPlacesOfSecond == 0 ? "."
                                   : tA                            ? ", in B's until A had one."
                                                                   : "; A has none, so they are from B's."));
    }
    if (tA && tB && MilesBetween(*tA, *tB) > PlacesApartMiles) {
        m_tWriter.Note("A and B stood " + Tenths(MilesBetween(*tA, *tB)) +
                       " nm apart: the places as well as the antennas make the difference.");
    }
    if (m_tFigures.lJumps > 0) {
        m_tWriter.Note(std::to_string(m_tFigures.lJumps) +
                       " positions jump farther than 102.2 knots and 1 nm allow and stand under \"no range\".");
    }
}

}  // namespace report
