// The same result on every processor: compiled with fused multiply-add the range and bearing are, to the bit, what they
// are without, above all where one bit decides between a number, "nan" and nothing.
#include <QTest>
#include <array>
#include <bit>
#include <cstdint>
#include <optional>
#include <random>

#include "nav/RangeBearing.h"
#include "nav/Trigonometry.h"
#include "tests/nav/FusedRangeBearing.h"

namespace {

std::optional<std::array<double, 2>> Plain(double dLatitude1, double dLongitude1, double dLatitude2,
                                           double dLongitude2) {
    try {
        const nav::RangeAndBearing t = nav::RangeBearing(dLatitude1, dLongitude1, dLatitude2, dLongitude2);
        return std::array{t.dRange, t.dBearing};
    } catch (const nav::DivisionByZero&) {
        return std::nullopt;
    }
}

bool Same(double dLatitude1, double dLongitude1, double dLatitude2, double dLongitude2) {
    const auto tPlain = Plain(dLatitude1, dLongitude1, dLatitude2, dLongitude2);
    const auto tFused = FusedRangeBearing(dLatitude1, dLongitude1, dLatitude2, dLongitude2);
    if (!tPlain || !tFused) return tPlain.has_value() == tFused.has_value();
    using Bits = std::array<std::uint64_t, 2>;
    return std::bit_cast<Bits>(*tPlain) == std::bit_cast<Bits>(*tFused);
}

}  // namespace

class FusedRangeBearingTest : public QObject {
    Q_OBJECT

private slots:
    void samePosition();
    void ownMeridian();
    void anyPair();
};

void FusedRangeBearingTest::samePosition() {
    for (int i = 0; i <= 8900; ++i) QVERIFY2(Same(i / 100.0, 9, i / 100.0, 9), qPrintable(QString::number(i)));
}

void FusedRangeBearingTest::ownMeridian() {
    for (int iFrom = -80; iFrom <= 80; ++iFrom) {
        for (int iTo = -80; iTo <= 80; ++iTo) QVERIFY(Same(iFrom, 9, iTo, 9));
    }
}

void FusedRangeBearingTest::anyPair() {
    std::mt19937_64 tRandom(15);
    std::uniform_real_distribution<double> tLatitude(-90, 90);
    std::uniform_real_distribution<double> tLongitude(-180, 180);
    for (int i = 0; i < 10000; ++i) {
        const double dLatitude = tLatitude(tRandom);
        const double dLongitude = tLongitude(tRandom);
        QVERIFY(Same(dLatitude, dLongitude, tLatitude(tRandom), tLongitude(tRandom)));
    }
}

QTEST_GUILESS_MAIN(FusedRangeBearingTest)
#include "FusedRangeBearingTest.moc"
