// A harbour with its ships, buoys and shore stations: who is there, where everybody is, and how each moves. The same
// seed makes the same harbour and the same voyages. Nothing here knows of messages, sentences or of the receiver.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tools/AisEncoding.h"
#include "tools/Random.h"

namespace simulator {

enum class Station { ClassA, ClassB, Base, Aid };

// One target. Speeds in knots, angles in degrees, times in seconds since the start of the simulation.
struct Target {
    Station eStation = Station::ClassA;
    bool bMoored = false;    // at anchor or at a berth: stays so
    bool bAssigned = false;  // told by a shore station how often to report: sends type 2
    bool bExtended = false;  // a class B unit that tells its name by type 19 instead of 24
    bool bNoFix = false;     // has lost its satellites
    bool bNoTurn = false;    // has no rate-of-turn indicator
    bool bNoHeading = false;
    bool bCarrierSense = false;  // a class B unit that keeps to 30 seconds at any speed
    std::string sName;
    std::string sCallSign;
    std::string sDestination;
    std::uint32_t lMmsi = 0;
    std::uint32_t lImo = 0;
    int iAidType = 0;
    Hull tHull;
    Fix tFix;
    double dCruise = 0;  // the speed at which it likes to go
    double dSpeed = 0;
    double dCourse = 0;
    double dTurn = 0;    // degrees per minute, positive to starboard; 0: keeps its course
    double dMoved = 0;   // the time that tFix and dCourse belong to
    double dLegEnd = 0;  // when it next thinks about its way
};

// Seconds between two position reports (ITU-R M.1371, annex 1, tables 1 and 2): by speed, and for class A also by
// whether the course is changing.
double ReportingSeconds(const Target& t);

// Nautical miles between two places a few dozen miles apart, on a flat chart.
double DistanceMiles(const Fix& tFrom, const Fix& tTo);

// Nautical miles and degrees on the globe, as a receiver reckons them: at forty miles the flat chart is a third of a
// mile off.
double GlobeMiles(const Fix& tFrom, const Fix& tTo);
double GlobeBearing(const Fix& tFrom, const Fix& tTo);

struct HarbourOptions {
    double dReach = 14;  // nautical miles within which ships appear; four miles farther they turn back
    // Class B units send as seldom as they say that they do: their reports tell of carrier sense. Without it they send
    // by the table for those that reserve their slots.
    bool bCarrierSense = false;
};

class Harbour {
public:
    Harbour(std::uint64_t lSeed, int iTargets, const HarbourOptions& tOptions = {});

    int Count() const { return static_cast<int>(m_tTargets.size()); }
    const Target& At(int i) const { return m_tTargets[static_cast<std::size_t>(i)]; }
    // Moves the target to where it is at dTime, which must not lie before its last move.
    void Move(int i, double dTime);
    // Moves the target and begins its next leg: another course or speed, or a turn towards them.
    void Steer(int i, double dTime);
    // The listening ship: a launch that sails slow circles in the middle. Its course and speed in dCourse and dSpeed.
    Motion Own(double dTime) const;

private:
    void MakeTarget(int i);
    void MakeShip(Target& t, int i);

    const HarbourOptions m_tOptions;
    Random m_tChance;
    std::vector<Target> m_tTargets;
};

}  // namespace simulator
