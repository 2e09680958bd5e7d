// Stretches of reports.
#include "report/DueReports.h"

#include <algorithm>
#include <cmath>

#include "decoders/VdmBits.h"
#include "report/StaticData.h"

namespace report {

namespace {

constexpr int AtRest = 180;         // seconds: the interval of ships that do not move
constexpr int RawSteeredFrom = 20;  // tenths of a knot: below, the course of a ship is chance
// The transponder sends more often from some 20 degrees a minute on; that is 21 on its rate-of-turn scale, 4.733 times
// the root. Half of it is 5 degrees a minute.
constexpr std::int32_t RawTurning = 11;
constexpr std::int32_t RawNoTurnTold = 128;
constexpr std::int32_t ClassBReport = 18;
constexpr std::int32_t AssignedReport = 2;
constexpr std::int32_t RawSpeedUnavailable = 1023;
constexpr std::int32_t RawCourseUnavailable = 3600;
constexpr std::int32_t RawHeadingUnavailable = 360;
constexpr std::int32_t AtAnchor = 1;
constexpr std::int32_t Moored = 5;

bool IsClassA(const Report& t) { return t.lType == 1 || t.lType == 3; }

// Bit 146 of a type 18.
bool IsAssigned(const Report& t) {
    return t.lType == AssignedReport || (t.lType == ClassBReport && BitsOf(t.lData, 146, 1) != 0);
}

// By the speed in tenths of a knot.
int ClassAInterval(std::int32_t lSpeed, std::int32_t lStatus) {
    if ((lStatus == AtAnchor || lStatus == Moored) && lSpeed <= 30) return AtRest;
    if (lSpeed <= 140) return 10;
    return lSpeed <= 230 ? 6 : 2;
}

// Bit 141 tells the two kinds apart: those that reserve their slots send the faster the faster they go.
int ClassBInterval(std::int32_t lSpeed, bool bCarrierSense) {
    if (lSpeed <= 20) return AtRest;
    if (bCarrierSense || lSpeed <= 140) return 30;
    return lSpeed <= 230 ? 15 : 5;
}

// By the rate-of-turn indicator of a ship that has one.
bool TellsTurn(const Report& t) {
    const std::int32_t lRaw = BitsOf(t.lData, 42, 8);
    return lRaw != RawNoTurnTold && std::min(lRaw, 256 - lRaw) >= RawTurning;
}

// The compass, or the course where there is none.
int HeadingOf(const Report& t) {
    const auto eLayout = decoders::LayoutOf(t.lType);
    const std::int32_t lHeading = decoders::RawHeading(t.lData, eLayout);
    if (lHeading < RawHeadingUnavailable) return lHeading * 10;
    const std::int32_t lCourse = decoders::RawCourse(t.lData, eLayout);
    const bool bSteered = decoders::RawSpeed(t.lData, eLayout) >= RawSteeredFrom;
    return bSteered && lCourse < RawCourseUnavailable ? lCourse : 0;
}

}  // namespace

bool IsPositionReport(const Report& t) { return IsClassA(t) || t.lType == AssignedReport || t.lType == ClassBReport; }

std::optional<int> ExpectedInterval(const Report& t) {
    const auto eLayout = decoders::LayoutOf(t.lType);
    const std::int32_t lSpeed = decoders::RawSpeed(t.lData, eLayout);
    if (lSpeed < 0 || lSpeed >= RawSpeedUnavailable) return std::nullopt;
    if (IsClassA(t)) return ClassAInterval(lSpeed, BitsOf(t.lData, 38, 4));
    if (t.lType == ClassBReport) return ClassBInterval(lSpeed, BitsOf(t.lData, 141, 1) != 0);
    return std::nullopt;
}

ShareInterval WilsonInterval(double dHeard, double dSent) {
    constexpr double z = 1.959964;
    const double dShare = std::min(1.0, dHeard / dSent);
    const double dCentre = (dShare + z * z / (2 * dSent)) / (1 + z * z / dSent);
    const double dHalf =
        z / (1 + z * z / dSent) * std::sqrt(dShare * (1 - dShare) / dSent + z * z / (4 * dSent * dSent));
    return {std::max(0.0, dCentre - dHalf), std::min(1.0, dCentre + dHalf)};
}

bool DueReports::Belongs(const Report& t, int& iInterval, int& iHeading) {
    if (IsAssigned(t)) {
        ++m_tLeftOut.lAssigned;
        return false;
    }
    const auto iExpected = ExpectedInterval(t);
    if (!iExpected) {
        ++m_tLeftOut.lNoInterval;
        return false;
    }
    const bool bSteers = IsClassA(t) && *iExpected < AtRest;  // class B sends by its speed alone
    if (bSteers && TellsTurn(t)) {
        ++m_tLeftOut.lTurning;
        return false;
    }
    iInterval = *iExpected;
    iHeading = bSteers ? HeadingOf(t) : 0;
    return true;
}

}  // namespace report
