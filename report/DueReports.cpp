// Stretches of reports.
#include "report/DueReports.h"

#include "decoders/VdmBits.h"
#include "report/StaticData.h"

namespace report {

namespace {

// Sending times scatter by a tenth of the interval and stamps are whole seconds: from 5 seconds on both together are
// less than half an interval, so that the number of reports within a time is a whole one; below, the scatter falls out
// of the sum.
constexpr double WholeFrom = 5;
constexpr double AtRest = 180;        // seconds: the interval of ships that do not move
constexpr double TurningDegrees = 5;  // another heading by more is a turn
constexpr double SteeredFrom = 2;     // knots: below, the course of a ship is chance
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

double ClassAInterval(double dSpeed, std::int32_t lStatus) {
    if ((lStatus == AtAnchor || lStatus == Moored) && dSpeed <= 3) return AtRest;
    if (dSpeed <= 14) return 10;
    return dSpeed <= 23 ? 6 : 2;
}

// Bit 141 tells the two kinds apart: those that reserve their slots send the faster the faster they go.
double ClassBInterval(double dSpeed, bool bCarrierSense) {
    if (dSpeed <= 2) return AtRest;
    if (bCarrierSense || dSpeed <= 14) return 30;
    return dSpeed <= 23 ? 15 : 5;
}

// By the rate-of-turn indicator of a ship that has one.
bool TellsTurn(const Report& t) {
    const std::int32_t lRaw = BitsOf(t.lData, 42, 8);
    return lRaw != RawNoTurnTold && std::min(lRaw, 256 - lRaw) >= RawTurning;
}

// The compass, or the course where there is none.
double HeadingOf(const Report& t) {
    const std::int32_t lHeading = BitsOf(t.lData, 128, 9);
    if (lHeading < RawHeadingUnavailable) return lHeading;
    const auto eLayout = decoders::LayoutOf(t.lType);
    const std::int32_t lCourse = decoders::RawCourse(t.lData, eLayout);
    const bool bSteered = decoders::RawSpeed(t.lData, eLayout) >= SteeredFrom * 10;
    return bSteered && lCourse < RawCourseUnavailable ? lCourse / 10.0 : 0;
}

}  // namespace

bool IsPositionReport(const Report& t) { return IsClassA(t) || t.lType == AssignedReport || t.lType == ClassBReport; }

std::optional<double> ExpectedInterval(const Report& t) {
    const auto eLayout = decoders::LayoutOf(t.lType);
    const std::int32_t lRaw = decoders::RawSpeed(t.lData, eLayout);
    if (lRaw < 0 || lRaw >= RawSpeedUnavailable) return std::nullopt;
    const double dSpeed = lRaw / 10.0;
    if (IsClassA(t)) return ClassAInterval(dSpeed, BitsOf(t.lData, 38, 4));
    if (t.lType == ClassBReport) return ClassBInterval(dSpeed, BitsOf(t.lData, 141, 1) != 0);
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

bool DueReports::Belongs(const Report& t, Place& tNow) {
    if (IsAssigned(t)) {
        ++m_tLeftOut.lAssigned;
        return false;
    }
    const auto dInterval = ExpectedInterval(t);
    if (!dInterval) {
        ++m_tLeftOut.lNoInterval;
        return false;
    }
    const bool bSteers = IsClassA(t) && *dInterval < AtRest;  // class B sends by its speed alone
    if (bSteers && TellsTurn(t)) {
        ++m_tLeftOut.lTurning;
        return false;
    }
    tNow = {t.dt, *dInterval, bSteers ? HeadingOf(t) : 0, t.tFromUs.Range()};
    return true;
}

// By a repeater, or because it stands in two files.
bool DueReports::IsRepeated(const Stretch& t, const Place& tNow) {
    const std::int64_t lSeconds = tNow.dt.lSeconds - t.tLast.dt.lSeconds;
    return lSeconds == 0 || (lSeconds == 1 && t.tLast.dInterval >= WholeFrom);
}

bool DueReports::GoesOn(const Stretch& t, const Place& tNow) {
    const auto dSeconds = static_cast<double>(tNow.dt.lSeconds - t.tLast.dt.lSeconds);
    if (dSeconds < 0 || dSeconds > m_dGap * t.tLast.dInterval) {
        ++m_tLeftOut.lGaps;
        return false;
    }
    if (t.tLast.dInterval != tNow.dInterval) return false;
    // A ship without an indicator that sends more often than it must is in a turn.
    if (tNow.dInterval >= WholeFrom && dSeconds < tNow.dInterval / 2) return false;
    return std::fabs(std::remainder(tNow.dHeading - t.dHeading, 360)) <= TurningDegrees;
}

double DueReports::MissedWithin(const Place& tLast, const Place& tNow) {
    const double dSent = static_cast<double>(tNow.dt.lSeconds - tLast.dt.lSeconds) / tNow.dInterval;
    return (tNow.dInterval < WholeFrom ? dSent : std::round(dSent)) - 1;
}

}  // namespace report
