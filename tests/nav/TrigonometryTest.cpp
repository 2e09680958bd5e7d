// The inverse functions against the library's own in higher precision, and at the places where they differ on purpose.
#include "nav/Trigonometry.h"

#include <QByteArray>
#include <QTest>
#include <cmath>
#include <limits>

using namespace nav;

namespace {

constexpr double Infinity = std::numeric_limits<double>::infinity();

}  // namespace

class TrigonometryTest : public QObject {
    Q_OBJECT

private slots:
    void constantsHaveFifteenDigits();
    void inverseSineAndCosineAgreeWithTheLibrarys();
    void inverseCosineIsMadeFromArctangents_data();
    void inverseCosineIsMadeFromArctangents();
    void oneAndMinusOneDivideByZero();
    void beyondOneIsNotANumber_data();
    void beyondOneIsNotANumber();
    void besideOneIsANumber();
    void arctangentOfTwoTakesTheFirstAsAbscissa_data();
    void arctangentOfTwoTakesTheFirstAsAbscissa();
    void arctangentOfTwoAgreesWithTheLibrarys();
};

void TrigonometryTest::constantsHaveFifteenDigits() {
    QVERIFY(Pi == 3.14159265358979);
    QVERIFY(TwoPi == 6.28318530717959);
    QVERIFY(Pi < std::acos(-1.0));  // not the nearest double
}

void TrigonometryTest::inverseSineAndCosineAgreeWithTheLibrarys() {
    for (int i = -9999; i <= 9999; ++i) {
        const double X = i / 10000.0;
        // 1 - X * X carries a rounding error that grows towards the ends.
        const double dTolerance = 4e-16 / std::sqrt(1 - X * X) + 4e-16;
        QVERIFY(std::fabs(ArcSin(X) - static_cast<double>(std::asin(static_cast<long double>(X)))) < dTolerance);
        QVERIFY(std::fabs(ArcCos(X) - static_cast<double>(std::acos(static_cast<long double>(X)))) < dTolerance);
    }
}

void TrigonometryTest::inverseCosineIsMadeFromArctangents_data() {
    QTest::addColumn<double>("X");
    QTest::addColumn<double>("dAngle");
    const double dQuarter = std::atan(1.0);
    QTest::newRow("0 is twice the arctangent of 1, not the short pi by 2") << 0.0 << 2 * dQuarter;
    QTest::newRow("0.6: sine 0.8") << 0.6 << std::atan(-0.6 / 0.8) + 2 * dQuarter;
    QTest::newRow("-0.8: sine 0.6") << -0.8 << std::atan(0.8 / std::sqrt(1 - 0.8 * 0.8)) + 2 * dQuarter;
}

void TrigonometryTest::inverseCosineIsMadeFromArctangents() {
    QFETCH(double, X);
    QFETCH(double, dAngle);
    QVERIFY(ArcCos(X) == dAngle);
}

void TrigonometryTest::oneAndMinusOneDivideByZero() {
    QVERIFY_EXCEPTION_THROWN(ArcSin(1), DivisionByZero);
    QVERIFY_EXCEPTION_THROWN(ArcSin(-1), DivisionByZero);
    QVERIFY_EXCEPTION_THROWN(ArcCos(1), DivisionByZero);
    QVERIFY_EXCEPTION_THROWN(ArcCos(-1), DivisionByZero);
    try {
        ArcCos(1);
    } catch (const DivisionByZero& tError) {
        QCOMPARE(QByteArray(tError.what()), QByteArray("Division by zero"));
    }
}

void TrigonometryTest::beyondOneIsNotANumber_data() {
    QTest::addColumn<double>("X");
    QTest::newRow("a hair beyond") << std::nextafter(1.0, 2.0);
    QTest::newRow("a hair beyond, negative") << std::nextafter(-1.0, -2.0);
    QTest::newRow("2") << 2.0;
    QTest::newRow("infinite") << Infinity;
    QTest::newRow("minus infinite") << -Infinity;
    QTest::newRow("not a number") << std::numeric_limits<double>::quiet_NaN();
}

void TrigonometryTest::beyondOneIsNotANumber() {
    QFETCH(double, X);
    QVERIFY(std::isnan(ArcSin(X)));
    QVERIFY(std::isnan(ArcCos(X)));
}

void TrigonometryTest::besideOneIsANumber() {
    const double X = std::nextafter(1.0, 0.0);
    QVERIFY(ArcCos(X) > 0);
    QVERIFY(ArcCos(X) < 1e-7);
    QVERIFY(ArcCos(-X) > 3.1415);
}

void TrigonometryTest::arctangentOfTwoTakesTheFirstAsAbscissa_data() {
    QTest::addColumn<double>("X");
    QTest::addColumn<double>("Y");
    QTest::addColumn<double>("dAngle");
    const double dEighth = std::atan(1.0);
    QTest::newRow("origin") << 0.0 << 0.0 << 0.0;
    QTest::newRow("up: half the short pi") << 0.0 << 2.0 << 3.14159265358979 / 2;
    QTest::newRow("down") << 0.0 << -2.0 << -3.14159265358979 / 2;
    QTest::newRow("right") << 3.0 << 0.0 << 0.0;
    QTest::newRow("left is minus pi") << -1.0 << 0.0 << -3.14159265358979;
    QTest::newRow("first quadrant") << 1.0 << 1.0 << dEighth;
    QTest::newRow("second quadrant") << -1.0 << 1.0 << -dEighth + 3.14159265358979;
    QTest::newRow("third quadrant") << -1.0 << -1.0 << dEighth - 3.14159265358979;
    QTest::newRow("fourth quadrant") << 1.0 << -1.0 << -dEighth;
}

void TrigonometryTest::arctangentOfTwoTakesTheFirstAsAbscissa() {
    QFETCH(double, X);
    QFETCH(double, Y);
    QFETCH(double, dAngle);
    QVERIFY(Atan2(X, Y) == dAngle);
}

void TrigonometryTest::arctangentOfTwoAgreesWithTheLibrarys() {
    for (int iX = -50; iX <= 50; ++iX) {
        for (int iY = -50; iY <= 50; ++iY) {
            if (iX < 0 && iY == 0) continue;  // -pi here, pi there
            QVERIFY(std::fabs(Atan2(iX, iY) - std::atan2(static_cast<double>(iY), static_cast<double>(iX))) < 1e-14);
        }
    }
}

QTEST_GUILESS_MAIN(TrigonometryTest)
#include "TrigonometryTest.moc"
