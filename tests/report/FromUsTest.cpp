// Steps, sectors and limits of a range and bearing are those of nav::RangeBearing's doubles, whether the estimate or
// the arithmetic answered; and the estimate keeps what it promises.
#include "report/FromUs.h"

#include <QTest>
#include <cmath>
#include <random>

#include "nav/Trigonometry.h"
#include "report/Distribution.h"

namespace {

// Pairs of positions as receivers and ships have them, and as they should not: near, far, on the own meridian.
class Places {
public:
    void Next() {
        tOwn = {Latitude(m_tRandom), Longitude(m_tRandom)};
        const double dMiles = std::exp(LogMiles(m_tRandom));
        double dBearing = Bearing(m_tRandom);
        if (m_iCount % 8 == 1) dBearing = std::round(dBearing / 5) * 5 + Hair(m_tRandom);  // at the edge of a sector
        const double dEast = dMiles / 60 * std::sin(dBearing * nav::Pi / 180);
        tOther.dLatitude = tOwn.dLatitude + dMiles / 60 * std::cos(dBearing * nav::Pi / 180);
        tOther.dLongitude = tOwn.dLongitude + dEast / std::cos(tOwn.dLatitude * nav::Pi / 180);
        if (m_iCount % 64 == 2) tOther.dLongitude = tOwn.dLongitude;
        if (m_iCount % 64 == 3) tOther = tOwn;
        ++m_iCount;
    }
    bool OnEarth() const { return std::fabs(tOther.dLatitude) <= 90 && std::fabs(tOther.dLongitude) <= 180; }

    nav::Position tOwn, tOther;

private:
    std::mt19937 m_tRandom{20250614};
    std::uniform_real_distribution<double> Latitude{-88, 88}, Longitude{-180, 180}, LogMiles{-3, 7}, Bearing{0, 360},
        Hair{-0.03, 0.03};
    int m_iCount = 0;
};

constexpr int Rounds = 300000;

}  // namespace

class FromUsTest : public QObject {
    Q_OBJECT

private slots:
    void answersAreThoseOfTheArithmetic();
    void nothingIsNotANumber();
    void estimateKeepsItsPromise();
    void estimateServesOrdinaryRanges();
};

void FromUsTest::answersAreThoseOfTheArithmetic() {
    Places t;
    int iCompared = 0;
    for (int i = 0; i < Rounds; ++i) {
        t.Next();
        if (!t.OnEarth()) continue;
        const report::OwnPlace tOwn(t.tOwn);
        report::FromUs tFromUs;
        nav::RangeAndBearing tExpected{std::nan(""), 0};
        try {
            tExpected = nav::RangeBearing(t.tOwn.dLatitude, t.tOwn.dLongitude, t.tOther.dLatitude, t.tOther.dLongitude);
        } catch (const nav::DivisionByZero&) {
        }
        QCOMPARE(tFromUs.Measure(tOwn, t.tOther), !std::isnan(tExpected.dRange));
        if (std::isnan(tExpected.dRange)) {
            QVERIFY(std::isnan(tFromUs.Range()));
            continue;
        }
        QCOMPARE(tFromUs.RangeStep(), report::Distribution::StepOf(tExpected.dRange));
        for (const int iMiles : {1, 5, 7}) {
            QCOMPARE(tFromUs.Ring(iMiles), static_cast<std::int64_t>(tExpected.dRange / iMiles));
        }
        for (const double dMiles : {0.0, tExpected.dRange, std::nextafter(tExpected.dRange, 0), 50.0}) {
            QCOMPARE(tFromUs.Beyond(dMiles), tExpected.dRange > dMiles);
        }
        QCOMPARE(tFromUs.HasBearing(), !std::isnan(tExpected.dBearing));
        if (!std::isnan(tExpected.dBearing)) {
            for (const int iDegrees : {1, 5, 8, 10, 180}) {
                QCOMPARE(tFromUs.Sector(iDegrees), static_cast<std::int64_t>(tExpected.dBearing / iDegrees));
            }
            QVERIFY(tFromUs.Bearing() == tExpected.dBearing);
        }
        QVERIFY(tFromUs.Range() == tExpected.dRange);
        ++iCompared;
    }
    QVERIFY(iCompared > Rounds / 2);
}

void FromUsTest::nothingIsNotANumber() {
    report::FromUs t;
    QVERIFY(std::isnan(t.Range()) && std::isnan(t.Bearing()));
    for (const nav::Position tFrom : {nav::Position{50, 1}, nav::Position{50.5, 1.5}}) {
        const nav::Position tHere{50, 1};
        QCOMPARE(t.Measure(report::OwnPlace(tFrom), tHere), tFrom.dLatitude != tHere.dLatitude);
        QCOMPARE(std::isnan(t.Range()), tFrom.dLatitude == tHere.dLatitude);
    }
    t.Forget();
    QVERIFY(std::isnan(t.Range()) && std::isnan(t.Bearing()));
}

void FromUsTest::estimateKeepsItsPromise() {
    Places t;
    int iPromised = 0;
    for (int i = 0; i < Rounds; ++i) {
        t.Next();
        nav::NearRange tNear{};
        if (!t.OnEarth() || !nav::RangeEstimate(t.tOwn).To(t.tOther, tNear)) continue;
        const nav::RangeAndBearing tExact =
            nav::RangeBearing(t.tOwn.dLatitude, t.tOwn.dLongitude, t.tOther.dLatitude, t.tOther.dLongitude);
        QVERIFY(std::fabs(tNear.dRange - tExact.dRange) < nav::RangeEstimate::RangeError);
        const double dTurn = std::remainder(tNear.Bearing() - tExact.dBearing, 360);
        QVERIFY(std::fabs(dTurn) < nav::RangeEstimate::BearingError);
        ++iPromised;
    }
    QVERIFY(iPromised > Rounds / 4);
}

// It is there for speed: where it promised nothing, everything would come out right as well.
void FromUsTest::estimateServesOrdinaryRanges() {
    const nav::RangeEstimate tEstimate({50.8, -1.3});
    int iPromised = 0;
    for (int iBearing = 1; iBearing < 360; iBearing += 2) {
        const double dAngle = iBearing * nav::Pi / 180;
        nav::NearRange tNear{};
        iPromised += tEstimate.To({50.8 + 0.4 * std::cos(dAngle), -1.3 + 0.6 * std::sin(dAngle)}, tNear) ? 1 : 0;
    }
    QCOMPARE(iPromised, 180);
}

QTEST_GUILESS_MAIN(FromUsTest)
#include "FromUsTest.moc"
