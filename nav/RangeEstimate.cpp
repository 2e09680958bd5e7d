// The haversine formula with the first terms of the series. It keeps its digits at short ranges, where those of the
// cosine rule cancel: from a mile on the two differ by what is far below the errors that are promised.
#include "nav/RangeEstimate.h"

#include <algorithm>
#include <cmath>

#include "nav/Trigonometry.h"

namespace nav {

namespace {

constexpr double ToRadians = Pi / 180;
constexpr double ToDegrees = 180 / Pi;
constexpr double MilesPerRadian = 60 * 180 / Pi;
constexpr double NearestMiles = 1;
constexpr double FarthestDegrees = 5;
constexpr double HighestLatitude = 80;
constexpr double LeastEast = 2e-3;  // of the range; nearer to the meridian the cosine rule may find no bearing

// Exact to 10 digits up to FarthestDegrees / 2. Products, because quotients take several times as long.
double ShortSine(double x, double x2) { return x * (1 - x2 * (1.0 / 6 - x2 * (1.0 / 120))); }
double ShortCosine(double x2) { return 1 - x2 * (1.0 / 2 - x2 * (1.0 / 24)); }

// Up to 1 and to 0.00001 radians (Abramowitz and Stegun 4.4.47). In two halves, which the processor does side by side.
double NearArcTangent(double t) {
    const double t2 = t * t;
    const double t4 = t2 * t2;
    return t * ((0.9998660 - 0.3302995 * t2) + t4 * ((0.1801410 - 0.0851330 * t2) + 0.0208351 * t4));
}

}  // namespace

// Which octant it is cannot be foreseen, so signs are carried over instead of asked for.
double NearRange::Bearing() const {
    const double dAlong = std::fabs(dNorth), dAcross = std::fabs(dEast);
    double d = NearArcTangent(std::min(dAlong, dAcross) / std::max(dAlong, dAcross)) * ToDegrees;
    d = 45 - std::copysign(45 - d, dAlong - dAcross);
    d = 90 - std::copysign(90 - d, dNorth);
    return 180 - std::copysign(180 - d, dEast);
}

RangeEstimate::RangeEstimate(Position tFrom)
    : m_tFrom(tFrom),
      m_dSine(std::sin(tFrom.dLatitude * ToRadians)),
      m_dCosine(std::cos(tFrom.dLatitude * ToRadians)),
      m_bPolar(std::fabs(tFrom.dLatitude) > HighestLatitude) {}

bool RangeEstimate::To(Position tTo, NearRange& t) const {
    const double dUp = tTo.dLatitude - m_tFrom.dLatitude;
    const double dRound = tTo.dLongitude - m_tFrom.dLongitude;
    if (m_bPolar || !(std::fabs(dUp) <= FarthestDegrees && std::fabs(dRound) <= FarthestDegrees)) return false;
    const double x = dUp * (ToRadians / 2), y = dRound * (ToRadians / 2);
    const double x2 = x * x, y2 = y * y;
    const double dSineX = ShortSine(x, x2), dSineY = ShortSine(y, y2);
    const double dSineUp = 2 * dSineX * ShortCosine(x2);
    const double dCosine = m_dCosine * (1 - 2 * dSineX * dSineX) - m_dSine * dSineUp;  // of the other's latitude
    const double h = dSineX * dSineX + m_dCosine * dCosine * dSineY * dSineY;
    const double dAngle = 2 * std::sqrt(h) * (1 + h * (1.0 / 6 + h * (3.0 / 40)));
    t.dNorth = dSineUp + 2 * m_dSine * dCosine * dSineY * dSineY;
    t.dEast = 2 * dSineY * ShortCosine(y2) * dCosine;
    t.dRange = dAngle * MilesPerRadian;
    return t.dRange >= NearestMiles && std::fabs(t.dEast) >= LeastEast * dAngle;
}

}  // namespace nav
