// Range and bearing of the pairs on standard input, for a comparison with another library (GreatCircle.py): a line of
// latitude 1, longitude 1, latitude 2, longitude 2 gives a line of both with all their digits, or "division by zero".
#include <cstdio>
#include <iostream>

#include "nav/RangeBearing.h"
#include "nav/Trigonometry.h"

int main() {
    double dLatitude1 = 0, dLongitude1 = 0, dLatitude2 = 0, dLongitude2 = 0;
    while (std::cin >> dLatitude1 >> dLongitude1 >> dLatitude2 >> dLongitude2) {
        try {
            const auto t = nav::RangeBearing(dLatitude1, dLongitude1, dLatitude2, dLongitude2);
            std::printf("%.17g %.17g\n", t.dRange, t.dBearing);
        } catch (const nav::DivisionByZero&) {
            std::puts("division by zero");
        }
    }
}
