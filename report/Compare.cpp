// First the clocks, then both files side by side, message by message. Only what lies within seconds is kept.
#include "report/Compare.h"

#include <algorithm>
#include <cmath>

#include "report/ComparisonTables.h"
#include "report/Matcher.h"
#include "report/SideBySide.h"
#include "report/SpooledFile.h"

namespace report {

namespace {

constexpr std::int64_t MessagesPerProgress = 1 << 16;
// What clocks are looked for in first: so long a part from where both record, and what lies so much before it.
constexpr std::array<std::int64_t, 2> PartSeconds = {300, 3600};
constexpr std::int64_t NearSeconds = 300;

using Both = std::array<Recording*, 2>;

// Tells how much of both has been read.
class Reading {
public:
    Reading(const Both& t, const Sequence::Progress& Show) : m_t(t), m_Show(Show) {}

    void Step() {
        if ((++m_lMessages & (MessagesPerProgress - 1)) != 0) return;
        const auto dTaken = static_cast<double>(m_t[0]->BytesTaken() + m_t[1]->BytesTaken());
        const auto dAll = static_cast<double>(m_t[0]->Bytes() + m_t[1]->Bytes());
        m_Show(dAll > 0 ? dTaken / dAll : -1);
    }

private:
    const Both& m_t;
    const Sequence::Progress& m_Show;
    std::int64_t m_lMessages = 0;
};

PayloadSample Part(Recording& tRecording, std::int64_t lFrom, std::int64_t lTo) {
    PayloadSample tSample;
    Heard t;
    tRecording.Rewind();
    while (tRecording.Next(t) && t.dt.lSeconds <= lTo) {
        if (t.bOnce && t.dt.lSeconds >= lFrom) tSample.Add(t.lPayload, t.dt);
    }
    return tSample;
}

// Where clocks are so far apart, to some minutes. The beginning alone counts: later they may have drifted.
std::optional<ClockOffset> OffsetNear(const Both& tBoth, std::int64_t lOffset) {
    const std::int64_t lFrom = std::max(tBoth[0]->First().lSeconds, tBoth[1]->First().lSeconds - lOffset);
    for (const std::int64_t lPart : PartSeconds) {
        const auto tFirst = Part(*tBoth[0], lFrom - NearSeconds, lFrom + lPart);
        const auto tSecond = Part(*tBoth[1], lFrom + lOffset - NearSeconds, lFrom + lOffset + lPart);
        if (const auto t = EstimateOffset(tFirst, tSecond)) return t;
    }
    return std::nullopt;
}

// Clocks that are minutes apart agree at once. For those that are hours apart, or show another day, all of both files
// is looked through.
std::optional<ClockOffset> FindOffset(const Both& tBoth, Reading tReading) {
    Heard t;
    for (Recording* p : tBoth) {
        p->Rewind();
        if (!p->Next(t)) return std::nullopt;
    }
    if (const auto tNear = OffsetNear(tBoth, 0)) return tNear;
    std::array<PayloadSample, 2> tSamples;
    for (std::size_t i = 0; i < tBoth.size(); ++i) {
        tBoth[i]->Rewind();
        while (tBoth[i]->Next(t)) {
            if (t.bOnce) tSamples[i].Add(t.lPayload, t.dt);
            tReading.Step();
        }
    }
    const auto tFar = EstimateOffset(tSamples[0], tSamples[1]);
    if (!tFar) return std::nullopt;
    const auto tNear = OffsetNear(tBoth, tFar->lSeconds);
    return tNear ? tNear : tFar;
}

// The offset as it goes on: clocks that nobody sets drift by seconds in a day.
class OffsetFollower {
public:
    explicit OffsetFollower(const ClockOffset& t) : m_tTrack{t, t.lSeconds, t.lSeconds, t.lSeconds} {}

    std::int64_t Seconds() const { return m_tTrack.lAtEnd; }
    const ClockTrack& Track() const { return m_tTrack; }

    // The second's clock, or the first's, was set.
    void Shift(std::int64_t lSeconds) {
        m_tTrack.lAtEnd += lSeconds;
        m_tTrack.lLeast = std::min(m_tTrack.lLeast, m_tTrack.lAtEnd);
        m_tTrack.lMost = std::max(m_tTrack.lMost, m_tTrack.lAtEnd);
        m_lSum = m_lCount = 0;
    }

    // By how much the second still seemed late for a message that both heard.
    void Take(std::int64_t lLate) {
        m_lSum += lLate;
        if (++m_lCount < PairsPerStep) return;
        const double dMean = static_cast<double>(m_lSum) / PairsPerStep;
        Shift(std::fabs(dMean) > LeastStep ? std::lround(dMean) : 0);
    }

private:
    static constexpr std::int64_t PairsPerStep = 100;
    static constexpr double LeastStep = 0.75;  // seconds: half of one is what whole seconds leave open

    ClockTrack m_tTrack;
    std::int64_t m_lSum = 0;
    std::int64_t m_lCount = 0;
};

void PlaySameTime(const Both& tBoth, Comparison& tComparison, OffsetFollower& tOffset, Reading tReading) {
    Matcher tMatcher([&](const Heard* pFirst, const Heard* pSecond) {
        if (pFirst && pSecond) tOffset.Take(pSecond->dt.lSeconds - pFirst->dt.lSeconds);
        tComparison.Take(pFirst, pSecond, tOffset.Seconds());
    });
    std::array<Heard, 2> tHeads;
    std::array<bool, 2> bThere{};
    for (std::size_t i = 0; i < tBoth.size(); ++i) {
        tBoth[i]->Rewind();
        bThere[i] = tBoth[i]->Next(tHeads[i]);
    }
    while (bThere[0] || bThere[1]) {
        const std::int64_t lSecond = tHeads[1].dt.lSeconds - tOffset.Seconds();
        const std::size_t i = bThere[0] && (!bThere[1] || tHeads[0].dt.lSeconds <= lSecond) ? 0 : 1;
        if (i == 1) tHeads[1].dt.lSeconds = lSecond;
        tMatcher.Take(i, tHeads[i]);
        if (const std::int64_t lShift = tComparison.TakeShift()) {
            tMatcher.Finish();  // what waits there bears times by the offset so far
            tOffset.Shift(lShift);
        }
        bThere[i] = tBoth[i]->Next(tHeads[i]);
        tReading.Step();
    }
    tMatcher.Finish();
    tComparison.Finish();
}

// What keeps the two from being held against each other.
std::string ReasonOf(const Both& tBoth) {
    if (tBoth[0]->Messages() == 0 && tBoth[1]->Messages() == 0) {
        return "Neither A nor B has an AIS message: nothing can be said.";
    }
    for (const Recording* p : tBoth) {
        if (p->Messages() > 0) continue;
        return std::string(p == tBoth[0] ? "A" : "B") + " has no AIS message: nothing can be compared.";
    }
    const auto dtFrom = std::max(tBoth[0]->First(), tBoth[1]->First());
    const auto dtTo = std::min(tBoth[0]->Last(), tBoth[1]->Last());
    if (dtFrom < dtTo) {
        return "By their stamps both recorded from " + IsoText(dtFrom) + " to " + IsoText(dtTo) +
               ", but too few payloads stand in both to tell how far their clocks are apart (fewer than 5 that agree, "
               "of base stations and ships that move): they can be compared side by side only, as recordings of "
               "different times.";
    }
    return "The recordings are of different times, whatever their clocks: no payloads stand in both that tell of one "
           "time. They can be compared side by side only.";
}

bool WriteSideBySide(const Both& tBoth, const Options& tOptions, Writer& tWriter, Reading tReading) {
    SideBySide tFigures(tOptions);
    Heard t;
    for (std::size_t i = 0; i < tBoth.size(); ++i) {
        tBoth[i]->Rewind();
        while (tBoth[i]->Next(t)) {
            tFigures.Take(i, t);
            tReading.Step();
        }
    }
    const std::string sReason = ReasonOf(tBoth);
    if (!tWriter.OneTable())
        tWriter.Fields("verdict", "Verdict", {{"text", "", "None: these are not the same messages."}});
    const bool bBoth = tBoth[0]->Messages() > 0 && tBoth[1]->Messages() > 0;
    if (tBoth[0]->Messages() + tBoth[1]->Messages() > 0) tFigures.Write(tBoth, tWriter);
    tWriter.Note(sReason);
    if (bBoth) {
        tWriter.Note(
            "Warning: at different times traffic and propagation differ, often by more than antennas do. The figures "
            "stand side by side; a difference of them says little of the receivers.");
    }
    tWriter.Note("An hour: messages in an hour of recorded time; more than 10 minutes without any line do not count.");
    if (!tBoth[0]->Own() || !tBoth[1]->Own()) {
        tWriter.Note("A file without GPS has no ranges; --position tells the own position.");
    }
    return bBoth;
}

}  // namespace

bool Compare(const Options& tOptions, Writer& tWriter, const Sequence::Progress& ShowProgress,
             std::vector<FileEnd>& tEnds) {
    const OwnPosition tOwn = tOptions.tPosition ? OwnPosition(*tOptions.tPosition) : OwnPosition();
    Ships tShips;
    std::array<std::optional<SpooledFile>, 2> tFiles;
    for (std::size_t i = 0; i < tFiles.size(); ++i) {
        try {
            tFiles[i].emplace(tOptions.sFiles[i]);
        } catch (const InputError& tError) {
            tEnds.push_back({tOptions.sFiles[i], tError.what(), false, 0, 0});
            tWriter.Note("Nothing can be compared.");
            return false;
        }
    }
    Recording tA(0, tOptions.sFiles[0], tFiles[0]->Path(), tOwn, tShips);
    Recording tB(1, tOptions.sFiles[1], tFiles[1]->Path(), tOwn, tShips);
    const Both tBoth = {&tA, &tB};
    const auto tOffset = FindOffset(tBoth, Reading(tBoth, ShowProgress));
    const Reading tReading(tBoth, ShowProgress);
    bool bSaid = false;
    if (tOffset) {
        Comparison tComparison(tOptions, tA, tB, tWriter.Draws());
        OffsetFollower tFollower(*tOffset);
        PlaySameTime(tBoth, tComparison, tFollower, tReading);
        ComparisonTables(tOptions, tBoth, tFollower.Track(), tComparison, tWriter).Write();
        bSaid = tComparison.tTotal.Either() > 0;
    } else {
        bSaid = WriteSideBySide(tBoth, tOptions, tWriter, tReading);
    }
    for (const Recording* p : tBoth) tEnds.push_back(p->End());
    return bSaid;
}

}  // namespace report
