// The window as a whole: it loads, starts, shows one report in every view, stops.
#include <QTest>

#include "tests/window/Bench.h"

using support::AnyReport;

class SmokeTest : public QObject {
    Q_OBJECT
private slots:
    void oneReportReachesEveryView();
};

void SmokeTest::oneReportReachesEveryView() {
    support::World tWorld;
    support::TestWindow t(tWorld);
    t.LoadAndShow();
    QCOMPARE(t.Panel(1), std::string("Stopped"));
    t.StartBoth();
    QCOMPARE(t.Panel(1), std::string("Running"));
    t.FeedLine(0, AnyReport);
    t.FeedLine(0, "$PNMLS,29,19,3*50");
    QCOMPARE(t.Lines(t.lstCommData(0)).size(), 2u);
    QCOMPARE(t.Lines(t.lstAisData).front(),
             std::string("Time=12:00:00, Ch=A, Id=1, MMSI=366053209, Position Scheduled"));
    QCOMPARE(t.Panel(2), std::string("1 Targets, 1 Messages"));
    QCOMPARE(t.Cell(t.grdTargetData, 1, 1), std::string("366053209"));
    QCOMPARE(t.Cell(t.grdTargetData, 1, 5), std::string("10"));
    t.Press("Stop");
    QCOMPARE(t.Panel(1), std::string("Stopped"));
}

QTEST_MAIN(SmokeTest)
#include "SmokeTest.moc"
