// The inverse functions made from arctangent and square root, with the divisions checked as the run-time's were.
#include "nav/Trigonometry.h"

#include <cmath>

namespace nav {
namespace {

// sqrt(1 - X * X), by which both functions divide.
double Divisor(double X) {
    const double dDivisor = std::sqrt(1 - X * X);
    if (dDivisor == 0) throw DivisionByZero();
    return dDivisor;
}

}  // namespace

double ArcSin(double X) { return std::atan(X / Divisor(X)); }

double ArcCos(double X) { return std::atan(-X / Divisor(X)) + 2 * std::atan(1.0); }

double Atan2(double X, double Y) {
    if (X == 0) {
        if (Y == 0) return 0;
        return Y > 0 ? Pi / 2 : -Pi / 2;
    }
    if (X > 0) return std::atan(Y / X);
    // Kept on purpose: the negative axis itself (Y = 0) is -pi, not +pi.
    return Y > 0 ? std::atan(Y / X) + Pi : std::atan(Y / X) - Pi;
}

}  // namespace nav
