// Range and bearing by the cosine rule. The order of the operations is part of the result: the last digits, and
// whether a meridian or a coincident position divides by zero, hang on it.
#include "nav/RangeBearing.h"

#include <cmath>

#include "nav/Trigonometry.h"
#include "platform/runtime/Format.h"

namespace nav {
namespace {

double ToRadians(double dDegrees) { return dDegrees * Pi / 180; }

// Whether point 2 lies to the west, by the shorter way round.
bool IsWest(double dLongitude1, double dLongitude2) {
    double dDifference = dLongitude2 - dLongitude1;
    if (dDifference < -Pi) {
        dDifference += TwoPi;
    } else if (dDifference > Pi) {
        dDifference -= TwoPi;
    }
    return dDifference < 0;
}

}  // namespace

RangeAndBearing RangeBearing(double dLatitude1, double dLongitude1, double dLatitude2, double dLongitude2) {
    const double dLat1 = ToRadians(dLatitude1);
    const double dLon1 = ToRadians(dLongitude1);
    const double dLat2 = ToRadians(dLatitude2);
    const double dLon2 = ToRadians(dLongitude2);

    const double dCosine =
        std::sin(dLat1) * std::sin(dLat2) + std::cos(dLat1) * std::cos(dLat2) * std::cos(dLon1 - dLon2);
    const double dAngle = ArcCos(dCosine);
    const double dRange = dAngle * 60 * 180 / Pi;

    // Kept on purpose: due north and south, and at a pole, the quotient is 1, -1, a hair beyond or no number at all;
    // only the division inside ArcCos is an error.
    const double dQuotient = (std::sin(dLat2) - std::sin(dLat1) * dCosine) / (std::sin(dAngle) * std::cos(dLat1));
    const double dBearing = ArcCos(dQuotient) * 180 / Pi;
    return {dRange, IsWest(dLon1, dLon2) ? 360 - dBearing : dBearing};
}

void RangeBearingText(double dLatitude1, double dLongitude1, double dLatitude2, double dLongitude2, std::string& sRange,
                      std::string& sBearing) {
    const RangeAndBearing tResult = RangeBearing(dLatitude1, dLongitude1, dLatitude2, dLongitude2);
    sBearing.clear();
    runtime::AppendFormat(sBearing, tResult.dBearing, runtime::PictureWhole);
    sRange.clear();
    runtime::AppendFormat(sRange, tResult.dRange, runtime::PictureTenths);
}

}  // namespace nav
