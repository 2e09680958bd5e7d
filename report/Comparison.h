// The figures of two recordings of the same time: who heard what, by range, sector, channel and type, and the levels of
// what both heard.
#pragma once

#include <map>
#include <utility>
#include <vector>

#include "report/ClockOffset.h"
#include "report/LevelFigures.h"
#include "report/Options.h"
#include "report/Recording.h"
#include "report/Tally.h"
#include "report/TrackCheck.h"

namespace report {

class Comparison {
public:
    static constexpr int RingMiles = 5;
    static constexpr int NoPlace = -1;  // of messages without a range
    // What would lie below the threshold is told as the threshold, or not heard: a difference is cut off there. Where
    // the two levels lie so many dB above theirs in the mean, differences up to twice as much are whole.
    static constexpr double LeastSnr = 3;

    // The paired differences of a level, the first's less the second's.
    struct LevelDifference {
        Distribution tPairs;
        ShipMeans tShips;
        void Add(int iShip, double d) {
            tPairs.Add(d);
            tShips.Add(iShip, d);
        }
    };

    Comparison(const Options& tOptions, const Recording& tFirst, const Recording& tSecond, bool bReach);

    // A message as the two heard it, or one of them: null for the other. Times are in the first's clock, to which the
    // second's is lOffset seconds ahead. In order of time but for some seconds.
    void Take(const Heard* pFirst, const Heard* pSecond, std::int64_t lOffset);
    // After the last.
    void Finish();
    // While nothing is heard by both because a clock was set: by how many seconds the second is ahead of what lOffset
    // said, once that can be told. It is told once; what comes behind must go by it.
    std::int64_t TakeShift() { return std::exchange(m_lShift, 0); }

    Tally tTotal;
    std::map<int, Tally> tRings, tSectors, tChannels, tTypes;  // by number; of a sector and a ring from 0 on
    LevelDifference tSignal, tThreshold, tSnr;
    std::array<std::int64_t, 2> lWithLevels{};          // messages in common time that came with levels
    std::array<std::map<int, Distribution>, 2> tReach;  // own ranges by sector, if asked for
    std::array<std::int64_t, 2> lLeftOut{};             // messages at times at which the other did not record
    std::array<std::int64_t, 2> lLost{};                // messages in stretches without any that both heard
    std::vector<Recording::Gap> tLost;                  // these stretches
    std::int64_t lWeakPairs = 0;                        // pairs of levels too near to their thresholds to be compared
    std::int64_t lJumps = 0;
    std::int64_t lPlacesOfSecond = 0;  // ranges from the second's position, the first's being unknown
    bool bSameThroughout = true;       // all that was counted was heard by both in the same second with the same levels

private:
    struct Alone {
        HeardBy e;
        Heard t;
    };

    void TakePair(const Heard& tFirst, const Heard& tSecond);
    void TakeAlone(HeardBy e, const Heard& t);
    bool IsLost() const;
    void Lose();
    void TakeLost(HeardBy e, const Heard& t);
    void Release();
    void Count(HeardBy e, const Heard& t, const Heard* pSecond);
    bool Place(const Heard& t, HeardBy e, const Heard* pSecond, nav::RangeAndBearing& tPlace);
    void CountLevels(const Heard& tFirst, const Heard& tSecond, std::span<Tally* const> pTallies);

    const int m_iSectorDegrees;
    const LevelScale m_tScale;
    const LevelScale m_tDbm{false};
    const Recording& m_tFirst;
    const Recording& m_tSecond;
    const bool m_bReach;
    TrackCheck m_tTracks;
    // Heard by one alone since both heard something. It is counted when both hear something again: then the clocks
    // were still those that are known.
    std::vector<Alone> m_tWaiting;
    std::array<std::int64_t, 2> m_lWaiting{};
    bool m_bLost = false;
    // Of the stretch that is lost, to find the clocks' new offset in.
    std::array<PayloadSample, 2> m_tLostSamples;
    std::int64_t m_lInSamples = 0;
    std::int64_t m_lNextLook = 0;
    runtime::DateTime m_dtSeen;  // the latest of what was taken, which may come again by another offset
    std::int64_t m_lShift = 0;
    runtime::DateTime m_dtLast;  // of what was heard in common time
};

}  // namespace report
