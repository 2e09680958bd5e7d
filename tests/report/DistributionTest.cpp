// Quantiles by rank, against sorting.
#include "report/Distribution.h"

#include <QTest>
#include <algorithm>
#include <cmath>
#include <random>

class DistributionTest : public QObject {
    Q_OBJECT

private slots:
    void quantileIsTheValueOfItsRank_data();
    void quantileIsTheValueOfItsRank();
    void anyValuesGiveWhatSortingGives();
    void twoTogetherAreOne();
    void farValuesTakeBoundedRoom();
};

void DistributionTest::quantileIsTheValueOfItsRank_data() {
    QTest::addColumn<QList<double>>("dValues");
    QTest::addColumn<double>("dShare");
    QTest::addColumn<double>("dExpected");
    const QList<double> dFour = {4, 1, 3, 2};
    QTest::newRow("lower quartile of four") << dFour << 0.25 << 1.0;
    QTest::newRow("median of four is the second") << dFour << 0.5 << 2.0;
    QTest::newRow("upper quartile of four") << dFour << 0.75 << 3.0;
    QTest::newRow("greatest") << dFour << 1.0 << 4.0;
    QTest::newRow("share 0 is the smallest") << dFour << 0.0 << 1.0;
    QTest::newRow("median of five") << QList<double>{9, -1, 5, 7, 3} << 0.5 << 5.0;
    QTest::newRow("95 % of twenty is the nineteenth")
        << QList<double>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20} << 0.95 << 19.0;
    QTest::newRow("one value") << QList<double>{-107.25} << 0.5 << -107.3;
    QTest::newRow("equal ones") << QList<double>{2, 2, 2, 8} << 0.75 << 2.0;
}

void DistributionTest::quantileIsTheValueOfItsRank() {
    QFETCH(QList<double>, dValues);
    QFETCH(double, dShare);
    QFETCH(double, dExpected);
    report::Distribution t;
    for (const double d : dValues) t.Add(d);
    QCOMPARE(t.Quantile(dShare), dExpected);
}

void DistributionTest::anyValuesGiveWhatSortingGives() {
    std::mt19937 tChance(1);
    for (int iRound = 0; iRound < 200; ++iRound) {
        report::Distribution t;
        std::vector<double> dValues(1 + tChance() % 300);
        for (double& d : dValues) {
            d = static_cast<double>(tChance() % 4000) / 10.0 - 200;
            t.Add(d);
        }
        std::ranges::sort(dValues);
        for (const double dShare : {0.05, 0.25, 0.5, 0.75, 0.95, 1.0}) {
            const double dRank = std::ceil(dShare * static_cast<double>(dValues.size()));
            const double dExpected = dValues[static_cast<std::size_t>(dRank) - 1];
            QVERIFY(std::fabs(t.Quantile(dShare) - dExpected) < 1e-9);
        }
    }
}

void DistributionTest::twoTogetherAreOne() {
    report::Distribution tOne, tOther, tBoth;
    for (int i = 0; i < 100; ++i) {
        (i % 3 == 0 ? tOne : tOther).Add(i * 0.7 - 20);
        tBoth.Add(i * 0.7 - 20);
    }
    tOne.Add(tOther);
    QCOMPARE(tOne.Count(), tBoth.Count());
    for (const double dShare : {0.1, 0.5, 0.9, 1.0}) QCOMPARE(tOne.Quantile(dShare), tBoth.Quantile(dShare));
}

void DistributionTest::farValuesTakeBoundedRoom() {
    report::Distribution t;
    for (const double d : {1e300, -1e300, 0.0}) t.Add(d);
    QCOMPARE(t.Quantile(1), report::Distribution::Limit);
    QCOMPARE(t.Quantile(0), -report::Distribution::Limit);
    QCOMPARE(t.Median(), 0.0);
}

QTEST_GUILESS_MAIN(DistributionTest)
#include "DistributionTest.moc"
