// Range and bearing against another computation of the great circle, in higher precision, and at the places where the
// cosine rule fails: the same position, the opposite one, and the own meridian.
#include "nav/RangeBearing.h"

#include <QByteArray>
#include <QTest>
#include <cmath>
#include <numbers>
#include <random>
#include <string>

#include "nav/RangeEstimate.h"
#include "nav/Trigonometry.h"

using namespace nav;

namespace {

constexpr long double ExactPi = std::numbers::pi_v<long double>;

struct Circle {
    long double dRange;
    long double dBearing;
};

// Haversine for the distance, the four-quadrant arctangent for the bearing.
Circle GreatCircle(double dLatitude1, double dLongitude1, double dLatitude2, double dLongitude2) {
    const long double dRadian = ExactPi / 180;
    const long double dLat1 = dLatitude1 * dRadian;
    const long double dLat2 = dLatitude2 * dRadian;
    const long double dLon = (static_cast<long double>(dLongitude2) - dLongitude1) * dRadian;
    const long double dSineLat = std::sin((dLat2 - dLat1) / 2);
    const long double dSineLon = std::sin(dLon / 2);
    const long double dHaversine = dSineLat * dSineLat + std::cos(dLat1) * std::cos(dLat2) * dSineLon * dSineLon;
    const long double dBearing =
        std::atan2(std::sin(dLon) * std::cos(dLat2),
                   std::cos(dLat1) * std::sin(dLat2) - std::sin(dLat1) * std::cos(dLat2) * std::cos(dLon));
    const long double dDegrees = dBearing / dRadian;
    return {2 * std::atan2(std::sqrt(dHaversine), std::sqrt(1 - dHaversine)) / dRadian * 60,
            dDegrees < 0 ? dDegrees + 360 : dDegrees};
}

// The position at a range and bearing from the origin of both degrees.
struct Place {
    double dLatitude;
    double dLongitude;
};

Place FromOrigin(double dRange, double dBearing) {
    const long double dAngle = dRange / 60 * ExactPi / 180;
    const long double dCourse = dBearing * ExactPi / 180;
    return {static_cast<double>(std::asin(std::sin(dAngle) * std::cos(dCourse)) * 180 / ExactPi),
            static_cast<double>(std::atan2(std::sin(dCourse) * std::sin(dAngle), std::cos(dAngle)) * 180 / ExactPi)};
}

}  // namespace

class RangeBearingTest : public QObject {
    Q_OBJECT

private slots:
    void knownPairs_data();
    void knownPairs();
    void anyPairAgreesWithAnotherComputation();
    void westIsMirrored();
    void shortPiIsUsed();
    void texts_data();
    void texts();
    void textsReplaceWhatWasThere();
    void samePositionDividesByZero();
    void samePositionMayBeAHairOff();
    void oppositePositionDividesByZero();
    void ownMeridianIsNorthSouthOrNothing();
    void failureLeavesTheTexts();
    void estimateStaysWithinItsErrors();
    void estimateKnowsWhereItPromisesNothing_data();
    void estimateKnowsWhereItPromisesNothing();
};

void RangeBearingTest::knownPairs_data() {
    QTest::addColumn<double>("dLatitude1");
    QTest::addColumn<double>("dLongitude1");
    QTest::addColumn<double>("dLatitude2");
    QTest::addColumn<double>("dLongitude2");
    QTest::addColumn<double>("dRange");
    QTest::addColumn<double>("dBearing");
    QTest::newRow("a degree east") << 0.0 << 0.0 << 0.0 << 1.0 << 60.0 << 90.0;
    QTest::newRow("a degree west") << 0.0 << 0.0 << 0.0 << -1.0 << 60.0 << 270.0;
    QTest::newRow("east across the date line") << 0.0 << 179.0 << 0.0 << -179.0 << 120.0 << 90.0;
    QTest::newRow("west across the date line") << 0.0 << -179.0 << 0.0 << 179.0 << 120.0 << 270.0;
    QTest::newRow("a quarter of the equator") << 0.0 << 0.0 << 0.0 << 90.0 << 5400.0 << 90.0;
    QTest::newRow("three quarters east is a quarter west") << 0.0 << -135.0 << 0.0 << 135.0 << 5400.0 << 270.0;
    // From the equator to a point 90 degrees of longitude away the angle is 90 degrees whatever its latitude, and the
    // bearing is the complement of that latitude.
    QTest::newRow("north-east by the octant") << 0.0 << 0.0 << 30.0 << 90.0 << 5400.0 << 60.0;
    QTest::newRow("south-east by the octant") << 0.0 << 10.0 << -30.0 << 100.0 << 5400.0 << 120.0;
    QTest::newRow("south-west by the octant") << 0.0 << 0.0 << -60.0 << -90.0 << 5400.0 << 210.0;
    // 60 north, a quarter round: cosine 3/4; the bearing's tangent is 1 / (sin 60).
    QTest::newRow("quarter round at 60 north")
        << 60.0 << 0.0 << 60.0 << 90.0 << std::acos(0.75) * 10800 / std::numbers::pi
        << std::atan2(1.0, std::sqrt(3.0) / 2) * 180 / std::numbers::pi;
}

void RangeBearingTest::knownPairs() {
    QFETCH(double, dLatitude1);
    QFETCH(double, dLongitude1);
    QFETCH(double, dLatitude2);
    QFETCH(double, dLongitude2);
    QFETCH(double, dRange);
    QFETCH(double, dBearing);
    const RangeAndBearing tResult = RangeBearing(dLatitude1, dLongitude1, dLatitude2, dLongitude2);
    QVERIFY2(std::fabs(tResult.dRange - dRange) < 1e-9, QByteArray::number(tResult.dRange, 'g', 17).constData());
    QVERIFY2(std::fabs(tResult.dBearing - dBearing) < 1e-9, QByteArray::number(tResult.dBearing, 'g', 17).constData());
}

void RangeBearingTest::anyPairAgreesWithAnotherComputation() {
    std::mt19937_64 tRandom(3);
    std::uniform_real_distribution<double> tLatitude(-85, 85);
    std::uniform_real_distribution<double> tLongitude(-180, 180);
    std::uniform_real_distribution<double> tNear(-2, 2);
    int iCompared = 0;
    for (int i = 0; i < 40000; ++i) {
        const double dLatitude1 = tLatitude(tRandom);
        const double dLongitude1 = tLongitude(tRandom);
        const bool bNear = i % 2 == 0;
        const double dLatitude2 = bNear ? dLatitude1 + tNear(tRandom) : tLatitude(tRandom);
        double dLongitude2 = bNear ? dLongitude1 + tNear(tRandom) : tLongitude(tRandom);
        if (dLongitude2 > 180) dLongitude2 -= 360;
        if (dLongitude2 < -180) dLongitude2 += 360;
        const Circle tExact = GreatCircle(dLatitude1, dLongitude1, dLatitude2, dLongitude2);
        const bool bMeridian = std::fabs(std::sin(static_cast<double>(tExact.dBearing * ExactPi / 180))) < 0.01;
        const double dSine = std::sin(static_cast<double>(tExact.dRange / 60 * ExactPi / 180));
        if (bMeridian || dSine < 0.001) continue;  // the cosine rule loses its digits there
        ++iCompared;
        const RangeAndBearing tResult = RangeBearing(dLatitude1, dLongitude1, dLatitude2, dLongitude2);
        QVERIFY(std::fabs(tResult.dRange - static_cast<double>(tExact.dRange)) < 1e-8);
        QVERIFY(std::fabs(tResult.dBearing - static_cast<double>(tExact.dBearing)) < 1e-5);
    }
    QVERIFY(iCompared > 30000);
}

void RangeBearingTest::westIsMirrored() {
    for (int i = 1; i < 180; ++i) {
        const RangeAndBearing tEast = RangeBearing(48, 10, 40, 10 + i * 0.99);
        const RangeAndBearing tWest = RangeBearing(48, 10, 40, 10 - i * 0.99);
        QVERIFY(tEast.dBearing > 0 && tEast.dBearing < 180);
        QVERIFY(std::fabs(tEast.dRange - tWest.dRange) < 1e-8);
        QVERIFY(std::fabs(360 - tEast.dBearing - tWest.dBearing) < 1e-8);
    }
}

// The angle of a cosine of 0 is the exact quarter turn; divided by the short pi it is more than 90 in the 14th decimal.
void RangeBearingTest::shortPiIsUsed() {
    const double dBearing = RangeBearing(0, 0, 0, 1).dBearing;
    QVERIFY(dBearing == 2 * std::atan(1.0) * 180 / 3.14159265358979);
    QVERIFY(dBearing > 90);
    QVERIFY(RangeBearing(0, 0, 0, -1).dBearing == 360 - dBearing);
}

void RangeBearingTest::texts_data() {
    QTest::addColumn<double>("dRange");
    QTest::addColumn<double>("dBearing");
    QTest::addColumn<QByteArray>("sRange");
    QTest::addColumn<QByteArray>("sBearing");
    const auto Row = [](const char* sName, double dRange, double dBearing, const char* sRange, const char* sBearing) {
        QTest::newRow(sName) << dRange << dBearing << QByteArray(sRange) << QByteArray(sBearing);
    };
    Row("tenths of a mile", 60.04, 45, "60.0", "45");
    Row("rounded up", 60.06, 45, "60.1", "45");
    Row("near", 0.26, 200.2, "0.3", "200");
    Row("just above a half", 10, 89.5001, "10.0", "90");
    Row("just below a half", 10, 89.4999, "10.0", "89");
    Row("bearing prints 360", 10, 359.7, "10.0", "360");
    Row("bearing prints 359", 10, 359.3, "10.0", "359");
    Row("bearing prints 0", 10, 0.3, "10.0", "0");
    Row("far", 5432.1, 300.4, "5432.1", "300");
}

void RangeBearingTest::texts() {
    QFETCH(double, dRange);
    QFETCH(double, dBearing);
    QFETCH(QByteArray, sRange);
    QFETCH(QByteArray, sBearing);
    const Place tTarget = FromOrigin(dRange, dBearing);
    std::string sRangeText;
    std::string sBearingText;
    RangeBearingText(0, 0, tTarget.dLatitude, tTarget.dLongitude, sRangeText, sBearingText);
    QCOMPARE(QByteArray::fromStdString(sRangeText), sRange);
    QCOMPARE(QByteArray::fromStdString(sBearingText), sBearing);
}

void RangeBearingTest::textsReplaceWhatWasThere() {
    std::string sRange = "former range";
    std::string sBearing = "former bearing";
    RangeBearingText(0, 0, 0, 1, sRange, sBearing);
    QCOMPARE(sRange, std::string("60.0"));
    QCOMPARE(sBearing, std::string("90"));
}

void RangeBearingTest::samePositionDividesByZero() {
    std::string sRange;
    std::string sBearing;
    QVERIFY_EXCEPTION_THROWN(RangeBearing(0, 0, 0, 0), DivisionByZero);
    QVERIFY_EXCEPTION_THROWN(RangeBearing(0, 42, 0, 42), DivisionByZero);
    QVERIFY_EXCEPTION_THROWN(RangeBearingText(0, 0, 0, 0, sRange, sBearing), DivisionByZero);
}

// The squares of sine and cosine add up to 1 only up to the last bit.
void RangeBearingTest::samePositionMayBeAHairOff() {
    int iExact = 0;
    int iBeyond = 0;
    int iBelow = 0;
    for (int i = 0; i <= 8900; ++i) {
        const double dLatitude = i / 100.0;
        const double dRadians = dLatitude * 3.14159265358979 / 180;
        const double dCosine = std::sin(dRadians) * std::sin(dRadians) + std::cos(dRadians) * std::cos(dRadians);
        if (dCosine == 1) {
            ++iExact;
            QVERIFY_EXCEPTION_THROWN(RangeBearing(dLatitude, 9, dLatitude, 9), DivisionByZero);
            continue;
        }
        std::string sRange;
        std::string sBearing;
        if (dCosine > 1) {
            ++iBeyond;
            RangeBearingText(dLatitude, 9, dLatitude, 9, sRange, sBearing);
            QCOMPARE(sRange, std::string("nan"));
            QCOMPARE(sBearing, std::string("nan"));
            continue;
        }
        ++iBelow;
        try {
            RangeBearingText(dLatitude, 9, dLatitude, 9, sRange, sBearing);
            QCOMPARE(sRange, std::string("0.0"));
        } catch (const DivisionByZero&) {
            QVERIFY(sRange.empty());  // out of the bearing
        }
    }
    QVERIFY(iExact > 0 && iBeyond > 0 && iBelow > 0);
}

void RangeBearingTest::oppositePositionDividesByZero() {
    QVERIFY_EXCEPTION_THROWN(RangeBearing(0, 0, 0, 180), DivisionByZero);
    QVERIFY_EXCEPTION_THROWN(RangeBearing(0, -90, 0, 90), DivisionByZero);
}

void RangeBearingTest::ownMeridianIsNorthSouthOrNothing() {
    int iDivided = 0;
    int iNotANumber = 0;
    int iNumber = 0;
    for (int iFrom = -80; iFrom <= 80; ++iFrom) {
        for (int iTo = -80; iTo <= 80; ++iTo) {
            if (iFrom == iTo) continue;
            try {
                const RangeAndBearing tResult = RangeBearing(iFrom, 9, iTo, 9);
                QVERIFY(std::fabs(tResult.dRange - 60 * std::abs(iTo - iFrom)) < 1e-8);
                if (std::isnan(tResult.dBearing)) {
                    ++iNotANumber;
                    continue;
                }
                ++iNumber;
                QVERIFY(std::fabs(tResult.dBearing - (iTo > iFrom ? 0 : 180)) < 0.001);
            } catch (const DivisionByZero&) {
                ++iDivided;
            }
        }
    }
    QVERIFY(iDivided > 0 && iNotANumber > 0 && iNumber > 0);
}

void RangeBearingTest::failureLeavesTheTexts() {
    std::string sRange = "as before";
    std::string sBearing = "as before";
    QVERIFY_EXCEPTION_THROWN(RangeBearingText(0, 9, 0, 9, sRange, sBearing), DivisionByZero);
    QCOMPARE(sRange, std::string("as before"));
    QCOMPARE(sBearing, std::string("as before"));
}

// All directions at all ranges that it answers for, from both hemispheres.
void RangeBearingTest::estimateStaysWithinItsErrors() {
    std::mt19937_64 tRandom(5);
    std::uniform_real_distribution<double> tLatitude(-80, 80), tLongitude(-174, 174), tNear(-5, 5);
    int iEstimated = 0;
    for (int i = 0; i < 20000; ++i) {
        const Position tFrom{tLatitude(tRandom), tLongitude(tRandom)};
        const Position tTo{tFrom.dLatitude + tNear(tRandom), tFrom.dLongitude + tNear(tRandom)};
        NearRange tEstimate{};
        if (!RangeEstimate(tFrom).To(tTo, tEstimate)) continue;
        ++iEstimated;
        const Circle tExact = GreatCircle(tFrom.dLatitude, tFrom.dLongitude, tTo.dLatitude, tTo.dLongitude);
        const double dTurn = std::remainder(tEstimate.Bearing() - static_cast<double>(tExact.dBearing), 360.0);
        QVERIFY(std::fabs(tEstimate.dRange - static_cast<double>(tExact.dRange)) < RangeEstimate::RangeError);
        QVERIFY(std::fabs(dTurn) < RangeEstimate::BearingError);
    }
    QVERIFY(iEstimated > 19000);
}

void RangeBearingTest::estimateKnowsWhereItPromisesNothing_data() {
    QTest::addColumn<double>("dLatitude1");
    QTest::addColumn<double>("dLongitude1");
    QTest::addColumn<double>("dLatitude2");
    QTest::addColumn<double>("dLongitude2");
    QTest::newRow("within a mile") << 50.0 << -4.0 << 50.005 << -3.995;
    QTest::newRow("too far north") << 50.0 << -4.0 << 55.01 << -3.0;
    QTest::newRow("too far east") << 50.0 << -4.0 << 51.0 << 1.01;
    QTest::newRow("across the 180th meridian") << 50.0 << 179.5 << 50.5 << -179.5;
    QTest::newRow("due north") << 50.0 << -4.0 << 51.0 << -4.0;
    QTest::newRow("nearly due south") << 50.0 << -4.0 << 49.0 << -4.001;
    QTest::newRow("from the far north") << 80.01 << -4.0 << 80.5 << -3.0;
    QTest::newRow("from the far south") << -80.01 << -4.0 << -80.5 << -3.0;
    QTest::newRow("no position") << 50.0 << -4.0 << std::nan("") << -3.0;
}

void RangeBearingTest::estimateKnowsWhereItPromisesNothing() {
    QFETCH(double, dLatitude1);
    QFETCH(double, dLongitude1);
    QFETCH(double, dLatitude2);
    QFETCH(double, dLongitude2);
    NearRange t{};
    QVERIFY(!RangeEstimate({dLatitude1, dLongitude1}).To({dLatitude2, dLongitude2}, t));
}

QTEST_GUILESS_MAIN(RangeBearingTest)
#include "RangeBearingTest.moc"
