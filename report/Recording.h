// One recording, message by message, for those who read two beside each other. Its time only goes forward: where its
// clock was set back, what comes behind goes on from there, so that a night in which summer time ends is no hour lost.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "report/RecordReader.h"
#include "report/SentenceRoad.h"
#include "report/Sequence.h"

namespace report {

// A message as one of the recordings heard it.
struct Heard {
    std::uint64_t lPayload = 0;  // the same for the same payload, else another
    runtime::DateTime dt;
    int iShip = 0;
    std::int32_t lType = 0;
    Channel eChannel = Channel::Other;
    bool bOnce = false;  // of a ship that moves, or with the time in it: this payload comes only once
    bool bPosition = false;
    double dLatitude = 0;
    double dLongitude = 0;
    bool bRange = false;
    nav::RangeAndBearing tFromUs{};
    bool bLevels = false;
    Levels tLevels;
};

class Recording : private Collector {
public:
    struct Gap {
        runtime::DateTime dtFrom, dtTo;
    };
    // So long without any line, and the receiver, or the recording, was off.
    static constexpr std::int64_t GapSeconds = 600;
    // What is so near to an end of what was recorded does not count as covered: stamps are whole seconds.
    static constexpr std::int64_t MarginSeconds = 3;

    // sPath is opened, sName is told. The ships are numbered for both recordings; they must outlive this.
    Recording(std::size_t iFile, std::string sName, std::string sPath, const OwnPosition& tOwn, Ships& tShips);

    // From the beginning, by Next.
    void Rewind();
    // False at the end, which End() tells of.
    bool Next(Heard& t);

    const std::string& Name() const { return m_tEnd.sFile; }
    // A fault of any reading counts: what an earlier one has told would be wrong.
    FileEnd End() const;
    std::int64_t BytesTaken() const { return m_pReader ? m_pReader->BytesTaken() : m_lBytes; }
    std::int64_t Bytes() const { return m_lBytes; }

    // Of what was read so far.
    bool Timed() const { return m_bTimed; }
    runtime::DateTime First() const { return m_dtFirst; }
    runtime::DateTime Last() const { return m_dtLast; }
    const std::vector<Gap>& Gaps() const { return m_tGaps; }
    // Whether it was recording then, MarginSeconds before and behind included.
    bool Covers(runtime::DateTime dt) const;
    std::int64_t SetBacks() const { return m_lSetBacks; }
    std::int64_t Messages() const { return m_lMessages; }
    const std::optional<nav::Position>& Own() const { return m_tOwn.Get(); }

private:
    void Line(const LineEvent& t) override;
    void Message(const Report& t) override;
    bool Finish() override { return true; }
    void Read();

    const std::size_t m_iFile;
    const std::string m_sPath;
    const OwnPosition m_tOwnAtFirst;
    Ships& m_tShips;
    const std::int64_t m_lBytes;
    OwnPosition m_tOwn;
    std::optional<RecordReader> m_pReader;
    std::optional<SentenceRoad> m_tRoad;
    std::optional<Heard> m_tHeard;  // a line completes one message at the most
    FileEnd m_tEnd;
    std::string m_sEarlierFault;
    bool m_bTimed = false;
    runtime::DateTime m_dtStamp;  // of the line before, as it stands there
    runtime::DateTime m_dtFirst, m_dtLast;
    std::int64_t m_lAhead = 0;  // seconds by which stamps are taken for later than they say
    std::int64_t m_lSetBacks = 0;
    std::int64_t m_lMessages = 0;
    std::vector<Gap> m_tGaps;
};

}  // namespace report
