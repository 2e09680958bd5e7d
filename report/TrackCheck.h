// Whether a ship can have come to where a report says that it is.
#pragma once

#include <vector>

#include "report/Event.h"

namespace report {

class TrackCheck {
public:
    // More than a report can tell of, so nothing that tells its speed is dropped for going fast.
    static constexpr double FastestKnots = 102.2;
    // Times are whole seconds of arrival, so a step is longer than its time says.
    static constexpr double SlackMiles = 1;

    // True when the position of a report that has one is farther from the ship's last good one than FastestKnots and
    // SlackMiles allow. The second in a row that agrees with the one before is taken: then it was the other that was
    // wrong. A ship's first is always taken.
    bool Jumps(const Report& t) { return Jumps(t.iShip, t.dt, t.dLatitude, t.dLongitude); }
    bool Jumps(int iShip, runtime::DateTime dt, double dLatitude, double dLongitude);

private:
    struct Place {
        std::int64_t lSeconds = 0;
        double dLatitude = 0;
        double dLongitude = 0;
    };
    struct Track {
        Place tGood;
        Place tDoubtful;
        bool bGood = false;  // there is one
        bool bDoubtful = false;
    };

    static bool Reaches(const Place& tFrom, const Place& tTo);

    std::vector<Track> m_tTracks;
};

}  // namespace report
