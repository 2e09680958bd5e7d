// The reception rate against range: of the position reports that ships at a distance must have sent by the reporting
// rules, the share that was heard.
//
// The rules (ITU-R M.1371, annex 1, tables 1 and 2) fix the seconds between two position reports by class, speed and
// navigational status. Two reports of a ship that came 30 seconds apart, at 10 knots, where it sends every 10: one was
// heard and two were not. So each pair of successive reports of a ship tells of one report heard among (time between)
// / (interval) that were sent. Summed up over pairs of all ships at a distance the numbers give the rate.
//
// What cannot be counted so is left out, and told of by number: ships that report in assigned mode; pairs that begin
// in a turn, in which a ship sends more often by how fast it turns; and pairs so far apart that the ship was out of
// reach or switched off rather than unheard. Of a pair in which a turn or another interval began only the first report
// due counts, heard or missed: to leave such pairs out would leave out more of the long ones, and the rate would come
// out too high.
#pragma once

#include <map>
#include <optional>
#include <vector>

#include "report/Options.h"
#include "report/TrackCheck.h"

namespace report {

// Seconds between two position reports of the sender of a class A or B position report; nothing where the report does
// not tell. Not for ships that turn.
std::optional<double> ExpectedInterval(const Report& t);

// The 95 % interval of a share, by Wilson's formula. dHeard of dSent, which is above 0.
struct ShareInterval {
    double dLow;
    double dHigh;
};
ShareInterval WilsonInterval(double dHeard, double dSent);

class Reception final : public Collector {
public:
    Reception(const Options& tOptions, Writer& tWriter);

    void Message(const Report& t) override;
    bool Finish() override;

private:
    struct Ring {
        std::int64_t lHeard = 0;
        double dSent = 0;
        std::int64_t lShips = 0;
    };
    // Of a ship: its last report.
    struct Last {
        bool bKnown = false;
        runtime::DateTime dt;
        double dInterval = 0;
        double dTurnInterval = 0;  // while it turns
        double dCourse = 0;
        double dRange = 0;
        bool bTurns = false;
        int iRing = -1;  // in which it was counted last
    };

    void Pair(Last& tLast, Last& tNow);
    void Count(Last& tLast, const Last& tNow, double dSent);
    double ReliableMiles() const;
    void WriteNotes() const;
    void DrawRates() const;

    const double m_dGap;    // intervals
    const double m_dShare;  // of reliable range
    Writer& m_tWriter;
    std::map<int, Ring> m_tRings;
    std::vector<Last> m_tLast;
    TrackCheck m_tTracks;
    std::int64_t m_lReports = 0, m_lNoRange = 0, m_lAssigned = 0, m_lNoInterval = 0;
    std::int64_t m_lPairs = 0, m_lTurning = 0, m_lChanged = 0, m_lGaps = 0;
};

}  // namespace report
