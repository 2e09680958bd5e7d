// See Harbour.h. Distances are small, so a flat chart does: a minute of latitude is a mile, one of longitude the cosine
// of the latitude.
#include "tools/Harbour.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace simulator {

namespace {

constexpr Fix Centre{50.7600, -1.2900};
constexpr double BeyondReach = 4.0;  // nautical miles: ships that come so far turn back
constexpr double OwnCircleMiles = 1.5;
constexpr double OwnSpeed = 4.0;
constexpr double Radian = std::numbers::pi / 180.0;

constexpr std::array<std::string_view, 16> FirstNames{"NORTHERN", "SILVER", "BLUE",  "GRAND",  "MORNING", "LITTLE",
                                                      "EASTERN",  "AMBER",  "SWIFT", "IRON",   "COASTAL", "RED",
                                                      "QUIET",    "NOBLE",  "WHITE", "EVENING"};
constexpr std::array<std::string_view, 20> LastNames{
    "HERON", "STAR",  "HORIZON", "PILOT", "TRADER", "MAID", "OSPREY",  "BREEZE", "SPIRIT", "ANCHOR",
    "TERN",  "QUEEN", "RIVER",   "PEARL", "WIND",   "LADY", "CARRIER", "SAILOR", "GULL",   "LIGHT"};
constexpr std::array<std::string_view, 8> Ports{"SOUTHAMPTON", "ROTTERDAM", "LE HAVRE", "BREMERHAVEN",
                                                "PORTSMOUTH",  "CADIZ",     "GDANSK",   ""};
constexpr std::array<std::string_view, 8> AidNames{"NORTH CARDINAL", "MID CHANNEL", "WEST SHOAL", "FAIRWAY",
                                                   "EAST LEDGE",     "WRECK",       "ENTRANCE",   "SPIT SAND"};
constexpr std::array<std::uint32_t, 12> Countries{232, 235, 244, 211, 219, 227, 257, 265, 311, 538, 636, 563};
constexpr std::array<int, 8> ShipTypes{70, 80, 60, 30, 52, 79, 69, 71};  // cargo, tanker, passenger, fishing, tug ...
constexpr std::array<int, 3> BoatTypes{37, 36, 30};                      // pleasure, sailing, fishing

// Out of a hundred targets. What remains is class A.
constexpr int BasePercent = 2;
constexpr int AidPercent = 5;
constexpr int ClassBPercent = 22;

double Wrapped(double dCourse) {
    const double d = std::fmod(dCourse, 360.0);
    return d < 0 ? d + 360.0 : d;
}

Fix Offset(const Fix& tFrom, double dMiles, double dCourse) {
    const double dNorth = dMiles * std::cos(dCourse * Radian);
    const double dEast = dMiles * std::sin(dCourse * Radian);
    return {tFrom.dLatitude + dNorth / 60.0, tFrom.dLongitude + dEast / (60.0 * std::cos(Centre.dLatitude * Radian))};
}

double CourseTo(const Fix& tFrom, const Fix& tTo) {
    const double dNorth = tTo.dLatitude - tFrom.dLatitude;
    const double dEast = (tTo.dLongitude - tFrom.dLongitude) * std::cos(Centre.dLatitude * Radian);
    return Wrapped(std::atan2(dEast, dNorth) / Radian);
}

// Spread over the list so that a small harbour has one of each kind too.
Station StationOf(int i) {
    const int iPlace = i * 37 % 100;  // 37 has no factor in common with 100: every place once in a hundred
    if (iPlace < BasePercent) return Station::Base;
    if (iPlace < BasePercent + AidPercent) return Station::Aid;
    if (iPlace < BasePercent + AidPercent + ClassBPercent) return Station::ClassB;
    return Station::ClassA;
}

template <class TList>
auto Pick(Random& tChance, const TList& tList) {
    return tList[tChance.Next() % tList.size()];
}

std::string CallSign(Random& tChance) {
    std::string s;
    for (int i = 0; i < 4; ++i) s += static_cast<char>('A' + tChance.Whole(0, 25));
    s += static_cast<char>('0' + tChance.Whole(2, 9));
    return s;
}

// Four in ten ships lie still; of those at sea most are slow, some fast, a few very fast.
double CruiseOf(Random& tChance, Station eStation) {
    if (eStation == Station::ClassB)
        return tChance.Percent(45) ? tChance.Between(0.0, 1.8) : tChance.Between(3.0, 16.0);
    const int iKind = tChance.Whole(1, 100);
    if (iKind <= 70) return tChance.Between(4.0, 13.5);
    if (iKind <= 94) return tChance.Between(14.5, 22.5);
    return tChance.Between(24.0, 34.0);
}

}  // namespace

double ReportingSeconds(const Target& t) {
    constexpr double Still = 180.0;
    const double d = t.dSpeed;
    switch (t.eStation) {
        case Station::Base:
            return 10.0;
        case Station::Aid:
            return Still;
        case Station::ClassB:
            return d <= 2.0 ? Still : d <= 14.0 || t.bCarrierSense ? 30.0 : d <= 23.0 ? 15.0 : 5.0;
        case Station::ClassA:
            break;
    }
    if (t.bMoored && d <= 3.0) return Still;
    const bool bTurning = t.dTurn != 0.0;
    if (d <= 14.0) return bTurning ? 10.0 / 3.0 : 10.0;
    if (d <= 23.0) return bTurning ? 2.0 : 6.0;
    return 2.0;
}

double DistanceMiles(const Fix& tFrom, const Fix& tTo) {
    const double dNorth = (tTo.dLatitude - tFrom.dLatitude) * 60.0;
    const double dEast = (tTo.dLongitude - tFrom.dLongitude) * 60.0 * std::cos(Centre.dLatitude * Radian);
    return std::hypot(dNorth, dEast);
}

double GlobeMiles(const Fix& tFrom, const Fix& tTo) {
    const double dNorth = std::sin((tTo.dLatitude - tFrom.dLatitude) * Radian / 2);
    const double dEast = std::sin((tTo.dLongitude - tFrom.dLongitude) * Radian / 2);
    const double dSquares =
        dNorth * dNorth + std::cos(tFrom.dLatitude * Radian) * std::cos(tTo.dLatitude * Radian) * dEast * dEast;
    return 2 * std::asin(std::sqrt(dSquares)) / Radian * 60;
}

double GlobeBearing(const Fix& tFrom, const Fix& tTo) {
    const double dFrom = tFrom.dLatitude * Radian;
    const double dTo = tTo.dLatitude * Radian;
    const double dEast = (tTo.dLongitude - tFrom.dLongitude) * Radian;
    return Wrapped(std::atan2(std::sin(dEast) * std::cos(dTo),
                              std::cos(dFrom) * std::sin(dTo) - std::sin(dFrom) * std::cos(dTo) * std::cos(dEast)) /
                   Radian);
}

Harbour::Harbour(std::uint64_t lSeed, int iTargets, const HarbourOptions& tOptions)
    : m_tOptions(tOptions), m_tChance(lSeed) {
    m_tTargets.resize(static_cast<std::size_t>(std::max(iTargets, 0)));
    for (int i = 0; i < Count(); ++i) MakeTarget(i);
}

void Harbour::MakeTarget(int i) {
    Target& t = m_tTargets[static_cast<std::size_t>(i)];
    const auto lNumber = static_cast<std::uint32_t>(i + 1);
    t.eStation = StationOf(i);
    t.tFix = Offset(Centre, m_tOptions.dReach * std::sqrt(m_tChance.Unit()), m_tChance.Between(0, 360));
    t.sName = Pick(m_tChance, AidNames);
    if (t.eStation == Station::Base) {
        t.lMmsi = 2320000 + lNumber;
    } else if (t.eStation == Station::Aid) {
        t.lMmsi = 992320000 + lNumber;
        t.iAidType = m_tChance.Whole(9, 28);
        t.tHull = {0, 2, 2, 2, 2};
    } else {
        MakeShip(t, i);
    }
}

void Harbour::MakeShip(Target& t, int i) {
    const bool bA = t.eStation == Station::ClassA;
    const int iHalf = bA ? m_tChance.Whole(12, 150) : m_tChance.Whole(3, 9);
    t.lMmsi = Pick(m_tChance, Countries) * 1000000 + static_cast<std::uint32_t>(m_tChance.Whole(0, 9)) * 100000 +
              static_cast<std::uint32_t>(i + 1);
    t.lImo = bA ? 9000000 + static_cast<std::uint32_t>(m_tChance.Whole(0, 899999)) : 0;
    t.sName = std::string(Pick(m_tChance, FirstNames)) + " " + std::string(Pick(m_tChance, LastNames));
    t.sCallSign = CallSign(m_tChance);
    t.sDestination = Pick(m_tChance, Ports);
    t.tHull = {bA ? Pick(m_tChance, ShipTypes) : Pick(m_tChance, BoatTypes), iHalf, iHalf / 2, 3 + iHalf / 12,
               3 + iHalf / 14};
    t.bMoored = bA && m_tChance.Percent(40);
    t.bAssigned = bA && !t.bMoored && i % 97 == 5;
    t.bExtended = !bA && i % 5 == 0;
    t.bCarrierSense = !bA && m_tOptions.bCarrierSense;
    t.bNoFix = i % 61 == 48;
    t.bNoTurn = m_tChance.Percent(12);
    t.bNoHeading = m_tChance.Percent(bA ? 8 : 70);
    t.dCruise = t.bMoored ? m_tChance.Between(0.0, 0.2) : CruiseOf(m_tChance, t.eStation);
    t.dSpeed = t.dCruise;
    t.dCourse = m_tChance.Between(0, 360);
    t.dLegEnd = m_tChance.Between(5, 300);
}

void Harbour::Move(int i, double dTime) {
    Target& t = m_tTargets[static_cast<std::size_t>(i)];
    const double dSeconds = dTime - t.dMoved;
    t.dMoved = dTime;
    if (t.dSpeed == 0.0) return;
    const double dTurned = t.dTurn * dSeconds / 60.0;
    // The chord of a short arc points along its middle course.
    t.tFix = Offset(t.tFix, t.dSpeed * dSeconds / 3600.0, t.dCourse + dTurned / 2);
    t.dCourse = Wrapped(t.dCourse + dTurned);
}

void Harbour::Steer(int i, double dTime) {
    Move(i, dTime);
    Target& t = m_tTargets[static_cast<std::size_t>(i)];
    if (t.bMoored || t.dCruise == 0.0) {
        t.dLegEnd = dTime + 3600.0;
        return;
    }
    const bool bOutside = DistanceMiles(t.tFix, Centre) > m_tOptions.dReach + BeyondReach;
    const double dHome = Wrapped(CourseTo(t.tFix, Centre) - t.dCourse + 180.0) - 180.0;  // -180 to 180: how far to turn
    if (t.dTurn == 0.0 && (!bOutside || std::abs(dHome) > 45.0)) {
        const double dAngle = bOutside ? dHome : m_tChance.Between(-60, 60);
        t.dTurn = std::copysign(m_tChance.Between(20, 90), dAngle);
        t.dLegEnd = dTime + std::max(4.0, std::abs(dAngle / t.dTurn) * 60.0);
        return;
    }
    t.dTurn = 0.0;
    t.dSpeed = std::max(0.1, t.dCruise * m_tChance.Between(0.7, 1.15));
    t.dLegEnd = dTime + m_tChance.Between(180, 900);
}

Motion Harbour::Own(double dTime) const {
    const double dMilesSailed = OwnSpeed * dTime / 3600.0;
    const double dAngle = Wrapped(dMilesSailed / OwnCircleMiles / Radian);  // of the radius, clockwise from north
    Motion t;
    t.tFix = Offset(Centre, OwnCircleMiles, dAngle);
    t.dSpeed = OwnSpeed;
    t.dCourse = Wrapped(dAngle + 90.0);
    t.iHeading = static_cast<int>(t.dCourse);
    return t;
}

}  // namespace simulator
