// The harbour itself: how often each kind of ship must report, that the ships go where their course and speed say, and
// that a seed tells it all.
#include "tools/Harbour.h"

#include <QTest>
#include <cmath>
#include <set>

using namespace simulator;

class HarbourTest : public QObject {
    Q_OBJECT

private slots:
    void reportingIntervalFollowsSpeed_data();
    void reportingIntervalFollowsSpeed();
    void sameSeedSameHarbour();
    void otherSeedOtherHarbour();
    void everyTargetHasItsOwnMmsi();
    void smallHarbourHasEveryKind();
    void shipGoesItsSpeedAlongItsCourse();
    void turningShipTurns();
    void shipsStayAround();
};

void HarbourTest::reportingIntervalFollowsSpeed_data() {
    QTest::addColumn<Station>("eStation");
    QTest::addColumn<bool>("bMoored");
    QTest::addColumn<double>("dSpeed");
    QTest::addColumn<double>("dTurn");
    QTest::addColumn<double>("dSeconds");
    QTest::newRow("at anchor") << Station::ClassA << true << 0.1 << 0.0 << 180.0;
    QTest::newRow("at anchor, dragging") << Station::ClassA << true << 3.1 << 0.0 << 10.0;
    QTest::newRow("slow") << Station::ClassA << false << 0.0 << 0.0 << 10.0;
    QTest::newRow("14 knots") << Station::ClassA << false << 14.0 << 0.0 << 10.0;
    QTest::newRow("14 knots, turning") << Station::ClassA << false << 14.0 << -5.0 << 10.0 / 3.0;
    QTest::newRow("14.1 knots") << Station::ClassA << false << 14.1 << 0.0 << 6.0;
    QTest::newRow("23 knots") << Station::ClassA << false << 23.0 << 0.0 << 6.0;
    QTest::newRow("23 knots, turning") << Station::ClassA << false << 23.0 << 5.0 << 2.0;
    QTest::newRow("23.1 knots") << Station::ClassA << false << 23.1 << 0.0 << 2.0;
    QTest::newRow("23.1 knots, turning") << Station::ClassA << false << 23.1 << 5.0 << 2.0;
    QTest::newRow("boat, 2 knots") << Station::ClassB << false << 2.0 << 0.0 << 180.0;
    QTest::newRow("boat, 2.1 knots") << Station::ClassB << false << 2.1 << 0.0 << 30.0;
    QTest::newRow("boat, turning") << Station::ClassB << false << 14.0 << 9.0 << 30.0;
    QTest::newRow("boat, 14.1 knots") << Station::ClassB << false << 14.1 << 0.0 << 15.0;
    QTest::newRow("boat, 23.1 knots") << Station::ClassB << false << 23.1 << 0.0 << 5.0;
    QTest::newRow("base station") << Station::Base << false << 0.0 << 0.0 << 10.0;
    QTest::newRow("aid to navigation") << Station::Aid << false << 0.0 << 0.0 << 180.0;
}

void HarbourTest::reportingIntervalFollowsSpeed() {
    QFETCH(Station, eStation);
    QFETCH(bool, bMoored);
    QFETCH(double, dSpeed);
    QFETCH(double, dTurn);
    QFETCH(double, dSeconds);
    Target t;
    t.eStation = eStation;
    t.bMoored = bMoored;
    t.dSpeed = dSpeed;
    t.dTurn = dTurn;
    QCOMPARE(ReportingSeconds(t), dSeconds);
}

void HarbourTest::sameSeedSameHarbour() {
    Harbour tOne(42, 100);
    Harbour tOther(42, 100);
    for (int i = 0; i < 100; ++i) {
        tOne.Steer(i, 100.0);
        tOther.Steer(i, 100.0);
        QCOMPARE(tOne.At(i).lMmsi, tOther.At(i).lMmsi);
        QCOMPARE(tOne.At(i).sName, tOther.At(i).sName);
        QCOMPARE(tOne.At(i).tFix.dLatitude, tOther.At(i).tFix.dLatitude);
        QCOMPARE(tOne.At(i).tFix.dLongitude, tOther.At(i).tFix.dLongitude);
    }
}

void HarbourTest::otherSeedOtherHarbour() {
    const Harbour tOne(1, 50);
    const Harbour tOther(2, 50);
    int iEqual = 0;
    for (int i = 0; i < 50; ++i) iEqual += tOne.At(i).tFix.dLatitude == tOther.At(i).tFix.dLatitude ? 1 : 0;
    QCOMPARE(iEqual, 0);
}

void HarbourTest::everyTargetHasItsOwnMmsi() {
    const Harbour tHarbour(3, 2000);
    std::set<std::uint32_t> lSeen;
    for (int i = 0; i < tHarbour.Count(); ++i) {
        QVERIFY(tHarbour.At(i).lMmsi > 0 && tHarbour.At(i).lMmsi <= 999999999);
        lSeen.insert(tHarbour.At(i).lMmsi);
    }
    QCOMPARE(lSeen.size(), std::size_t{2000});
}

void HarbourTest::smallHarbourHasEveryKind() {
    const Harbour tHarbour(4, 40);
    std::set<Station> eSeen;
    bool bMoored = false;
    for (int i = 0; i < tHarbour.Count(); ++i) {
        eSeen.insert(tHarbour.At(i).eStation);
        bMoored = bMoored || tHarbour.At(i).bMoored;
    }
    QCOMPARE(eSeen.size(), std::size_t{4});
    QVERIFY(bMoored);
}

void HarbourTest::shipGoesItsSpeedAlongItsCourse() {
    Harbour tHarbour(5, 100);
    int iMoving = 0;
    for (int i = 0; i < tHarbour.Count(); ++i) {
        const Target tBefore = tHarbour.At(i);
        tHarbour.Move(i, 60.0);
        const Target& tAfter = tHarbour.At(i);
        const double dNorth = (tAfter.tFix.dLatitude - tBefore.tFix.dLatitude) * 60.0;
        const double dEast = (tAfter.tFix.dLongitude - tBefore.tFix.dLongitude) * 60.0 * std::cos(0.8859);  // 50.76 deg
        QVERIFY(std::abs(std::hypot(dNorth, dEast) - tBefore.dSpeed / 60.0) < 1e-3);
        if (tBefore.dSpeed < 1.0) continue;
        ++iMoving;
        double dCourse = std::atan2(dEast, dNorth) * 57.29577951308232;
        if (dCourse < 0) dCourse += 360.0;
        const double dOff = std::abs(dCourse - tBefore.dCourse);
        QVERIFY(std::min(dOff, 360.0 - dOff) < 0.1);
    }
    QVERIFY(iMoving > 20);
}

void HarbourTest::turningShipTurns() {
    Harbour tHarbour(6, 100);
    int iTurning = 0;
    for (int i = 0; i < tHarbour.Count(); ++i) {
        tHarbour.Steer(i, 10.0);
        const Target tBefore = tHarbour.At(i);
        if (tBefore.dTurn == 0.0) continue;
        ++iTurning;
        tHarbour.Move(i, 16.0);
        const double dTurned = std::remainder(tHarbour.At(i).dCourse - tBefore.dCourse, 360.0);
        QVERIFY(std::abs(dTurned - tBefore.dTurn / 10.0) < 1e-6);
    }
    QVERIFY(iTurning > 20);
}

void HarbourTest::shipsStayAround() {
    Harbour tHarbour(7, 60);
    const Fix tStart = tHarbour.Own(0).tFix;
    for (int i = 0; i < tHarbour.Count(); ++i) {
        while (tHarbour.At(i).dLegEnd < 24 * 3600.0) {
            tHarbour.Steer(i, tHarbour.At(i).dLegEnd);
            QVERIFY(DistanceMiles(tStart, tHarbour.At(i).tFix) < 40.0);
        }
    }
}

QTEST_GUILESS_MAIN(HarbourTest)
#include "HarbourTest.moc"
