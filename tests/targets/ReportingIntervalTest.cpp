// The interval that a speed asks for, in both classes.
#include "targets/ReportingInterval.h"

#include <QTest>
#include <cmath>

using targets::SpecifiedInterval;

class ReportingIntervalTest : public QObject {
    Q_OBJECT

private slots:
    void speedAsksForInterval_data();
    void speedAsksForInterval();
    void classFollowsFromTheMessageId_data();
    void classFollowsFromTheMessageId();
    void toleranceIsTwoSeconds();
};

void ReportingIntervalTest::speedAsksForInterval_data() {
    QTest::addColumn<double>("speed");
    QTest::addColumn<int>("classA");
    QTest::addColumn<int>("classB");
    QTest::newRow("102.2") << 102.2 << 2 << 5;
    QTest::newRow("23.1") << 23.1 << 2 << 5;
    QTest::newRow("exactly 23: the slower band") << 23.0 << 6 << 15;
    QTest::newRow("14.1") << 14.1 << 6 << 15;
    QTest::newRow("exactly 14: the slower band") << 14.0 << 10 << 30;
    QTest::newRow("10") << 10.0 << 10 << 30;
    QTest::newRow("2.1") << 2.1 << 10 << 30;
    QTest::newRow("exactly 2: the slower band") << 2.0 << 10 << 180;
    QTest::newRow("0.1") << 0.1 << 10 << 180;
    QTest::newRow("at rest: class B has no check") << 0.0 << 180 << 0;
    QTest::newRow("negative zero is at rest") << -0.0 << 180 << 0;
    QTest::newRow("below zero: no check") << -0.1 << 0 << 0;
    QTest::newRow("no number: no check") << std::nan("") << 0 << 0;
}

void ReportingIntervalTest::speedAsksForInterval() {
    QFETCH(double, speed);
    QFETCH(int, classA);
    QFETCH(int, classB);
    QCOMPARE(SpecifiedInterval(1, speed), classA);
    QCOMPARE(SpecifiedInterval(18, speed), classB);
}

void ReportingIntervalTest::classFollowsFromTheMessageId_data() {
    QTest::addColumn<int>("id");
    QTest::addColumn<int>("seconds");  // at 20 knots: 6 in class A, 15 in class B
    for (const int iId : {0, 1, 2, 3, 4, 5, 17, 20, 23, 25, 63, -1}) {
        QTest::addRow("%d is class A", iId) << iId << 6;
    }
    for (const int iId : {18, 19, 24}) QTest::addRow("%d is class B", iId) << iId << 15;
}

void ReportingIntervalTest::classFollowsFromTheMessageId() {
    QFETCH(int, id);
    QFETCH(int, seconds);
    QCOMPARE(SpecifiedInterval(id, 20.0), seconds);
}

void ReportingIntervalTest::toleranceIsTwoSeconds() { QCOMPARE(targets::IntervalTolerance, 2); }

QTEST_GUILESS_MAIN(ReportingIntervalTest)
#include "ReportingIntervalTest.moc"
