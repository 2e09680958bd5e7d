// The two clocks: how long each input port has been silent, and the time of day.
#include <QTest>

#include "tests/support/PrintString.h"
#include "tests/window/Bench.h"

using support::ShownWindow;
using support::TestWindow;
using support::World;

class ClocksWindowTest : public QObject {
    Q_OBJECT

private slots:
    void silenceShowsInItsPanel_data();
    void silenceShowsInItsPanel();
    void lineSetsItsPortsSilenceBack();
    void portsCountApart();
    void badLineCountsAsTraffic_data();
    void badLineCountsAsTraffic();
    void portEventIsNoTraffic();
    void unfinishedLineIsNoTraffic();
    void closedPortDoesNotCount();
    void bothCountDuringAPlayback();
    void stoppedMessageClockLeavesItsPanels();
    void wallClockShowsTheTimeRunningOrNot();
    void wallClockStepsAPlaybackOnly();
};

void ClocksWindowTest::silenceShowsInItsPanel_data() {
    QTest::addColumn<int>("seconds");
    QTest::addColumn<QByteArray>("shown");
    QTest::newRow("1") << 1 << QByteArray("00:01");
    QTest::newRow("9") << 9 << QByteArray("00:09");
    QTest::newRow("10") << 10 << QByteArray("00:10");
    QTest::newRow("59") << 59 << QByteArray("00:59");
    QTest::newRow("60") << 60 << QByteArray("00:60");
    QTest::newRow("61") << 61 << QByteArray("01:01");
    QTest::newRow("119") << 119 << QByteArray("01:59");
    QTest::newRow("120") << 120 << QByteArray("02:00");
    QTest::newRow("3600") << 3600 << QByteArray("60:00");
    QTest::newRow("6000") << 6000 << QByteArray("100:00");
}

void ClocksWindowTest::silenceShowsInItsPanel() {
    QFETCH(int, seconds);
    QFETCH(QByteArray, shown);
    ShownWindow t;
    t.StartBoth();
    t.Advance(seconds);
    QCOMPARE(t.Panel(3), shown.toStdString());
    QCOMPARE(t.Panel(4), shown.toStdString());
}

void ClocksWindowTest::lineSetsItsPortsSilenceBack() {
    ShownWindow t;
    t.StartBoth();
    t.Advance(61);
    t.FeedLine(0, "$GPZDA,1");
    t.FeedLine(0, "$GPZDA,2");
    QCOMPARE(t.Panel(3), std::string("01:01"));
    t.Advance(1);
    QCOMPARE(t.Panel(3), std::string("00:00"));
    QCOMPARE(t.Panel(4), std::string("01:02"));
    t.Advance(1);
    QCOMPARE(t.Panel(3), std::string("00:01"));
}

void ClocksWindowTest::portsCountApart() {
    ShownWindow t;
    t.StartBoth();
    t.Advance(5);
    t.FeedLine(1, "$GPZDA,1");
    t.Advance(3);
    QCOMPARE(t.Panel(3), std::string("00:08"));
    QCOMPARE(t.Panel(4), std::string("00:02"));
}

void ClocksWindowTest::badLineCountsAsTraffic_data() {
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("size") << QByteArray("$X");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("checksum") << QByteArray("$GPZDA,1*00");
    QTest::newRow("not decoded") << QByteArray("$GPZDA,1");
    QTest::newRow("decoding fails") << QByteArray("$GPGLL,,,");
}

void ClocksWindowTest::badLineCountsAsTraffic() {
    QFETCH(QByteArray, line);
    ShownWindow t;
    t.StartBoth();
    t.Advance(20);
    t.FeedLine(0, line.toStdString());
    t.Advance(1);
    QCOMPARE(t.Panel(3), std::string("00:00"));
}

void ClocksWindowTest::portEventIsNoTraffic() {
    ShownWindow t;
    t.StartBoth();
    t.Advance(4);
    t.MSComm(0).RaiseEvent(1001);
    t.Advance(1);
    QCOMPARE(t.Panel(3), std::string("00:05"));
}

void ClocksWindowTest::unfinishedLineIsNoTraffic() {
    ShownWindow t;
    t.StartBoth();
    t.Advance(4);
    t.Feed(0, "$GPZDA");
    t.Advance(1);
    QCOMPARE(t.Panel(3), std::string("00:05"));
}

void ClocksWindowTest::closedPortDoesNotCount() {
    ShownWindow t;
    t.Press("Start");  // the first port alone
    t.Advance(12);
    QCOMPARE(t.Panel(3), std::string("00:12"));
    QCOMPARE(t.Panel(4), std::string());
    QCOMPARE(t.m_lCommSeconds(1), 0);
}

void ClocksWindowTest::bothCountDuringAPlayback() {
    World tWorld;
    const QString sFile = tWorld.Path(QStringLiteral("played.txt"));
    tWorld.WriteFile(sFile, "05/15/2011 12:00:00 $GPZDA,1\r\n05/15/2011 13:00:00 $GPZDA,2\r\n");
    TestWindow t(tWorld);
    t.LoadAndShow();
    tWorld.tFileAnswers = {sFile};
    t.Press("Playback");
    QVERIFY(t.tmrComm.isActive());
    t.Advance(6);
    // The message clock ticks first: the line of the first second is told at the second tick.
    QCOMPARE(t.Panel(3), std::string("00:04"));
    QCOMPARE(t.Panel(4), std::string("00:06"));
}

void ClocksWindowTest::stoppedMessageClockLeavesItsPanels() {
    ShownWindow t;
    t.StartBoth();
    t.Advance(8);
    t.Press("Stop");
    t.Advance(5);
    QCOMPARE(t.Panel(3), std::string("00:08"));
    QCOMPARE(t.Panel(4), std::string("00:08"));
    t.Press("Start");
    QCOMPARE(t.Panel(3), std::string());
    QCOMPARE(t.Panel(4), std::string("00:08"));  // left as it is
    t.Advance(1);
    QCOMPARE(t.Panel(4), std::string("00:01"));
}

void ClocksWindowTest::wallClockShowsTheTimeRunningOrNot() {
    World tWorld;
    tWorld.SetClock("2011-05-15T23:59:58");
    TestWindow t(tWorld);
    t.LoadAndShow();
    QVERIFY(t.tmrTime.isActive());
    t.Advance(1);
    QCOMPARE(t.Panel(5), std::string("23:59:59"));
    t.StartBoth();
    QVERIFY(t.tmrTime.isActive());
    t.Advance(1);
    QCOMPARE(t.Panel(5), std::string("00:00:00"));
    t.Press("Stop");
    t.Advance(1);
    QCOMPARE(t.Panel(5), std::string("00:00:01"));
    // The timer itself runs it, within a second.
    tWorld.SetClock("2011-05-16T07:08:09");
    QTRY_COMPARE_WITH_TIMEOUT(t.Panel(5), std::string("07:08:09"), 5000);
}

void ClocksWindowTest::wallClockStepsAPlaybackOnly() {
    World tWorld;
    const QString sFile = tWorld.Path(QStringLiteral("played.txt"));
    tWorld.WriteFile(sFile, "05/15/2011 12:00:00 $GPZDA,1\r\n05/15/2011 13:00:00 $GPZDA,2\r\n");
    TestWindow t(tWorld);
    t.LoadAndShow();
    t.Advance(3);  // no file is open: nothing is read
    QVERIFY(t.Lines(t.lstCommData(0)).empty());
    tWorld.tFileAnswers = {sFile};
    t.Press("Playback");
    QVERIFY(t.Lines(t.lstCommData(0)).empty());
    t.tmrComm_Timer();
    QVERIFY(t.Lines(t.lstCommData(0)).empty());
    t.tmrTime_Timer();
    QCOMPARE(t.Lines(t.lstCommData(0)).size(), std::size_t{1});
}

QTEST_MAIN(ClocksWindowTest)
#include "ClocksWindowTest.moc"
