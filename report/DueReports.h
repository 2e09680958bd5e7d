// Which of the position reports that ships must have sent were heard.
//
// The rules (ITU-R M.1371, annex 1, tables 1 and 2) fix the seconds between two position reports by class, speed and
// navigational status. Two reports of a ship that came 30 seconds apart, at 10 knots, where it sends every 10: two were
// missed between them.
//
// So each ship's reports are cut into stretches in which its interval stays the same. A stretch ends where a turn or
// another interval begins, at a jump, and where the ship was silent for so long that it was out of reach or switched
// off. Its first and its last report are known to us because they were heard: they would count as heard whatever the
// receiver does, and what was missed before and behind them is not known. The reports between the two do not have that
// fault: each was sent and was heard or missed, and they alone count.
#pragma once

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <vector>

#include "report/Event.h"
#include "report/RingRates.h"

namespace report {

// Seconds between two position reports of the sender of a class A or B position report; nothing where the report does
// not tell. Not for ships that turn.
std::optional<int> ExpectedInterval(const Report& t);

// A type 1, 2, 3 or 18.
bool IsPositionReport(const Report& t);

// The 95 % interval of a share, by Wilson's formula. dHeard of dSent, which is above 0.
struct ShareInterval {
    double dLow;
    double dHigh;
};
ShareInterval WilsonInterval(double dHeard, double dSent);

class DueReports {
public:
    // What was left out, and why.
    struct LeftOut {
        std::int64_t lAssigned = 0, lNoInterval = 0, lTurning = 0, lRepeated = 0;
        std::int64_t lGaps = 0;  // silences longer than the gap, and steps of a clock that was set back
    };

    // iGap: intervals of silence that end a stretch.
    explicit DueReports(int iGap) : m_iGap(iGap) {}

    // A ship's next position report, heard there. Calls Count(tFrom, tTo, dMissed, bHeard) when it goes on with a
    // stretch: dMissed reports are missing between those places, and the one at tFrom counts as heard when bHeard.
    template <class Function>
    void Take(const Report& t, const RingPlace& tPlace, const Function& Count) {
        Stretch& tStretch = Of(t);
        int iInterval = 0, iHeading = 0;
        if (!Belongs(t, iInterval, iHeading)) {
            tStretch.bKnown = false;
            return;
        }
        // What follows is in this header, so that no report is put together in memory: that is most of the time.
        const Heard tNow{t.dt, iInterval, iHeading, tPlace};
        if (tStretch.bKnown && IsRepeated(tStretch, tNow)) {
            ++m_tLeftOut.lRepeated;
            return;
        }
        if (!tStretch.bKnown || !GoesOn(tStretch, tNow)) {
            tStretch = {true, false, tNow.iHeading, tNow};
            return;
        }
        Count(tStretch.tLast.tPlace, tNow.tPlace, MissedWithin(tStretch.tLast, tNow), tStretch.bInner);
        tStretch.bInner = true;
        tStretch.tLast = tNow;
    }
    // Ends the ship's stretch: what stands between two reports of it would be taken for missed ones.
    void End(const Report& t) { Of(t).bKnown = false; }

    const LeftOut& Left() const { return m_tLeftOut; }

private:
    // A report heard.
    struct Heard {
        runtime::DateTime dt;
        int iInterval = 0;  // seconds
        int iHeading = 0;   // tenths of a degree, of a class A ship under way; 0 for others and where it is not known
        RingPlace tPlace{};
    };
    struct Stretch {
        bool bKnown = false;
        bool bInner = false;  // its last report is not its first
        int iHeading = 0;     // of its first report
        Heard tLast;
    };

    Stretch& Of(const Report& t) {
        const auto iShip = static_cast<std::size_t>(t.iShip);
        if (iShip >= m_tStretches.size()) m_tStretches.resize(iShip + 1);
        return m_tStretches[iShip];
    }
    bool Belongs(const Report& t, int& iInterval, int& iHeading);
    // By a repeater, or because it stands in two files.
    static bool IsRepeated(const Stretch& t, const Heard& tNow) {
        const std::int64_t lSeconds = tNow.dt.lSeconds - t.tLast.dt.lSeconds;
        return lSeconds == 0 || (lSeconds == 1 && t.tLast.iInterval >= WholeFrom);
    }
    bool GoesOn(const Stretch& t, const Heard& tNow) {
        const std::int64_t lSeconds = tNow.dt.lSeconds - t.tLast.dt.lSeconds;
        if (lSeconds < 0 || lSeconds > std::int64_t{m_iGap} * t.tLast.iInterval) {
            ++m_tLeftOut.lGaps;
            return false;
        }
        if (t.tLast.iInterval != tNow.iInterval) return false;
        // A ship without an indicator that sends more often than it must is in a turn.
        if (tNow.iInterval >= WholeFrom && 2 * lSeconds < tNow.iInterval) return false;
        const int iTurned = std::abs(tNow.iHeading - t.iHeading);
        return std::min(iTurned, Circle - iTurned) <= TurningTenths;
    }
    static double MissedWithin(const Heard& tLast, const Heard& tNow) {
        const auto iSeconds = static_cast<int>(tNow.dt.lSeconds - tLast.dt.lSeconds);  // within the gap
        const int iInterval = tNow.iInterval;
        if (iInterval < WholeFrom) return static_cast<double>(iSeconds) / iInterval - 1;
        return (2 * iSeconds + iInterval) / (2 * iInterval) - 1;
    }

    // Sending times scatter by a tenth of the interval and stamps are whole seconds: from 5 seconds on both together
    // are less than half an interval, so that the number of reports within a time is a whole one; below, the scatter
    // falls out of the sum.
    static constexpr int WholeFrom = 5;
    static constexpr int TurningTenths = 50;  // of a degree: another heading by more is a turn
    static constexpr int Circle = 3600;       // tenths

    int m_iGap;
    std::vector<Stretch> m_tStretches;
    LeftOut m_tLeftOut;
};

}  // namespace report
