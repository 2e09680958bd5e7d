// Distances on a flat chart: exact enough to tell a ship from a jump.
#include "report/TrackCheck.h"

#include <cmath>
#include <cstdlib>
#include <numbers>

namespace report {

namespace {

constexpr double MilesPerDegree = 60;
constexpr double SecondsPerHour = 3600;

}  // namespace

bool TrackCheck::Jumps(int iShip, runtime::DateTime dt, double dLatitude, double dLongitude) {
    const auto iTrack = static_cast<std::size_t>(iShip);
    if (iTrack >= m_tTracks.size()) m_tTracks.resize(iTrack + 1);
    Track& tTrack = m_tTracks[iTrack];
    const Place tHere{dt.lSeconds, dLatitude, dLongitude};
    const bool bAgrees = tTrack.bDoubtful && Reaches(tTrack.tDoubtful, tHere);
    const bool bJump = tTrack.bGood && !bAgrees && !Reaches(tTrack.tGood, tHere);
    (bJump ? tTrack.tDoubtful : tTrack.tGood) = tHere;
    tTrack.bGood = true;
    tTrack.bDoubtful = bJump;
    return bJump;
}

bool TrackCheck::Reaches(const Place& tFrom, const Place& tTo) {
    const auto dSeconds = static_cast<double>(std::llabs(tTo.lSeconds - tFrom.lSeconds));
    const double dAllowed = SlackMiles + FastestKnots / SecondsPerHour * dSeconds;
    const double dNorth = std::fabs(tTo.dLatitude - tFrom.dLatitude) * MilesPerDegree;
    double dEast = std::fabs(tTo.dLongitude - tFrom.dLongitude);
    if (dEast > 180) dEast = 360 - dEast;
    dEast *= MilesPerDegree;
    if (dNorth + dEast <= dAllowed) return true;  // nearly always; degrees of longitude are no longer than this
    dEast *= std::cos(tFrom.dLatitude * std::numbers::pi / 180);
    return std::hypot(dNorth, dEast) <= dAllowed;
}

}  // namespace report
