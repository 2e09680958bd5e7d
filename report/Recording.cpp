// Lines until a message has come.
#include "report/Recording.h"

#include <algorithm>
#include <utility>

#include "decoders/VdmBits.h"

namespace report {

namespace {

// Mixes all characters into each bit (the finish is that of splitmix64).
std::uint64_t PayloadMark(const Report& t) {
    std::uint64_t l = static_cast<std::uint64_t>(t.lLength);
    for (const std::int32_t lValue : t.lData.subspan(1, static_cast<std::size_t>(t.lLength))) {
        l = (l ^ static_cast<std::uint64_t>(lValue)) * 0x100000001B3;
        l ^= l >> 29;
    }
    l = (l ^ (l >> 30)) * 0xBF58476D1CE4E5B9;
    l = (l ^ (l >> 27)) * 0x94D049BB133111EB;
    return l ^ (l >> 31);
}

// Static data, and positions of what lies still, are the same again after minutes, in many ships' step.
bool ComesOnce(const Report& t) {
    constexpr std::int32_t RawMoving = 5;  // half a knot, in 20 seconds 5 m: 27 of the position's steps
    constexpr std::int32_t RawSpeedUnavailable = 1023;
    constexpr std::int32_t BaseStation = 4, UtcResponse = 11;
    if (t.lType == BaseStation || t.lType == UtcResponse) return true;
    const std::int32_t lRaw = t.bPosition ? decoders::RawSpeed(t.lData, decoders::LayoutOf(t.lType)) : 0;
    return lRaw >= RawMoving && lRaw < RawSpeedUnavailable;
}

runtime::DateTime Later(runtime::DateTime dt, std::int64_t lSeconds) { return {dt.lSeconds + lSeconds}; }

}  // namespace

Recording::Recording(std::size_t iFile, std::string sName, std::string sPath, const OwnPosition& tOwn, Ships& tShips)
    : m_iFile(iFile),
      m_sPath(std::move(sPath)),
      m_tOwnAtFirst(tOwn),
      m_tShips(tShips),
      m_lBytes(RegularFileSize(m_sPath)) {
    m_tEnd.sFile = std::move(sName);
    Rewind();
}

void Recording::Rewind() {
    if (m_sEarlierFault.empty()) m_sEarlierFault = m_tEnd.sFault;
    m_tEnd = {m_tEnd.sFile, {}, false, 0, 0};
    m_tOwn = m_tOwnAtFirst;
    m_tHeard.reset();
    m_bTimed = false;
    m_lAhead = m_lSetBacks = m_lMessages = 0;
    m_tGaps.clear();
    m_tRoad.emplace(m_iFile, m_tOwn, m_tShips, static_cast<Collector&>(*this));
    try {
        m_pReader.emplace(m_sPath);
    } catch (const InputError& tError) {
        m_pReader.reset();
        m_tEnd.sFault = tError.what();
    }
}

FileEnd Recording::End() const {
    FileEnd t = m_tEnd;
    if (t.sFault.empty() && !m_sEarlierFault.empty()) {
        t.sFault = "could not be read to its end each time: " + m_sEarlierFault;
        t.lLines = 0;
    }
    return t;
}

bool Recording::Next(Heard& t) {
    while (!m_tHeard && m_pReader) Read();
    if (!m_tHeard) return false;
    t = *std::exchange(m_tHeard, std::nullopt);
    ++m_lMessages;
    return true;
}

// A line, or the end.
void Recording::Read() {
    try {
        Record t;
        if (m_pReader->Next(t)) {
            ++m_tEnd.lLines;
            if (t.tLine.eKind != LineKind::Other) return;
            ++m_tEnd.lStamped;
            if (t.tLine.bSetBack) {
                ++m_lSetBacks;
                m_lAhead += m_dtStamp.lSeconds - t.tLine.dt.lSeconds;
            }
            m_dtStamp = t.tLine.dt;
            t.tLine.dt = Later(m_dtStamp, m_lAhead);
            return m_tRoad->Take(t.tLine, t.sSentence);
        }
        m_tEnd.bUnfinished = m_pReader->Unfinished();
    } catch (const InputError& tError) {
        m_tEnd.sFault = tError.what();
    }
    m_pReader.reset();
    m_tRoad->Finish();
}

void Recording::Line(const LineEvent& t) {
    if (!std::exchange(m_bTimed, true)) m_dtFirst = m_dtLast = t.dt;
    if (t.dt.lSeconds - m_dtLast.lSeconds > GapSeconds) m_tGaps.push_back({m_dtLast, t.dt});
    m_dtLast = t.dt;
}

void Recording::Message(const Report& t) {
    m_tHeard = Heard{PayloadMark(t),
                     t.dt,
                     t.iShip,
                     t.lType,
                     t.eChannel,
                     ComesOnce(t),
                     t.bPosition,
                     t.dLatitude,
                     t.dLongitude,
                     t.bRange,
                     {t.tFromUs.Range(), t.tFromUs.Bearing()},
                     t.bLevels,
                     t.bLevels ? t.tLevels : Levels{}};
}

bool Recording::Covers(runtime::DateTime dt) const {
    if (!m_bTimed || dt < Later(m_dtFirst, MarginSeconds) || dt > Later(m_dtLast, -MarginSeconds)) return false;
    const auto Before = [](runtime::DateTime dtAt, const Gap& t) { return dtAt < Later(t.dtFrom, -MarginSeconds); };
    const auto pAfter = std::upper_bound(m_tGaps.begin(), m_tGaps.end(), dt, Before);
    return pAfter == m_tGaps.begin() || dt > Later(std::prev(pAfter)->dtTo, MarginSeconds);
}

}  // namespace report
