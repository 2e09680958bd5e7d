// Recording onto a slow disk: everything goes on while it works, what it does not take is told, and a stop waits for
// it.
#include <QDir>
#include <QTest>
#include <cerrno>

#include "tests/support/FullDisk.h"
#include "tests/support/PrintString.h"
#include "tests/support/SlowDisk.h"
#include "tests/window/Bench.h"

using support::AnyReport;
using support::FullDisk;
using support::Recording;
using support::SlowDisk;

namespace {

using Log = std::vector<std::string>;

qsizetype Threads() {
    return QDir(QStringLiteral("/proc/self/task")).entryList(QDir::Dirs | QDir::NoDotAndDotDot).size();
}

QByteArray Recorded(int iSecond, int iLine) {
    return "05/15/2011 12:00:" + QByteArray::number(iSecond).rightJustified(2, '0') + " $PNMLS," +
           QByteArray::number(iLine) + ",1,3*\r\n";
}

std::string Sentence(int iLine) { return "$PNMLS," + std::to_string(iLine) + ",1,3*"; }

}  // namespace

class SlowDiskWindowTest : public QObject {
    Q_OBJECT

private slots:
    void diskIsAskedOnceASecond();
    void everythingGoesOnWhileTheDiskWorks();
    void stopWaitsWithTheBusyPointer_data();
    void stopWaitsWithTheBusyPointer();
    void quickDiskNeedsNoBusyPointer();
    void diskThatFailsEndsTheRecording();
    void diskThatFailsAtTheStopIsTold();
    void failedRecordingDoesNotWaitForTheDisk();
    void nothingRunsWithoutARecording();
};

void SlowDiskWindowTest::diskIsAskedOnceASecond() {
    const SlowDisk tDisk;
    tDisk.ReleaseAll();
    Recording r(QStringLiteral("record.txt"), tDisk.Function());
    r.t.Advance(3);
    QCOMPARE(tDisk.Begun(), 0);  // nothing new: the disk is left alone
    for (int i = 1; i <= 4; ++i) {
        for (int j = 0; j < 50; ++j) r.t.FeedLine(0, AnyReport);
        QCOMPARE(tDisk.Begun(), i - 1);
        r.t.Advance(1);
        tDisk.AwaitBegun(i);
    }
    r.t.FeedLine(0, AnyReport);
    r.t.Press("Stop");
    QCOMPARE(tDisk.Ended(), 5);
}

void SlowDiskWindowTest::everythingGoesOnWhileTheDiskWorks() {
    const SlowDisk tDisk;
    Recording r(QStringLiteral("record.txt"), tDisk.Function());
    r.t.Press("Stop");
    r.t.chkOutputEnabled.setChecked(true);
    r.t.txtOutputPort.SetText("3");
    r.tWorld.tFileAnswers = {r.sFile};
    r.t.StartBoth();
    r.t.Press("Record");
    r.t.FeedLine(0, Sentence(0));
    r.t.Advance(1);
    tDisk.AwaitBegun(1);

    QByteArray sExpected = Recorded(0, 0);
    std::string sForwarded = Sentence(0) + "\r\n";
    for (int i = 1; i <= 10; ++i) {
        r.t.FeedLine(0, Sentence(i));
        sExpected += Recorded(i, i);
        sForwarded += Sentence(i) + "\r\n";
        QCOMPARE(r.t.LastLine(r.t.lstCommData(0)), Sentence(i));
        QCOMPARE(r.t.Device(r.t.MSCommOutput)->Written(), sForwarded);
        r.t.Advance(1);
        QCOMPARE(r.Content(), sExpected);  // the system has it already: a kill does not lose it
        QCOMPARE(r.t.Panel(5), i < 9 ? "12:00:0" + std::to_string(i + 1) : "12:00:" + std::to_string(i + 1));
        QCOMPARE(r.t.Panel(3), std::string("00:00"));
    }
    QCOMPARE(tDisk.Begun(), 1);  // and no queue of them
    QCOMPARE(tDisk.Ended(), 0);
    tDisk.ReleaseAll();
    r.t.Press("Stop");
    QCOMPARE(tDisk.Ended(), 2);
    QCOMPARE(tDisk.MostAtOnce(), 1);
    QCOMPARE(r.Content(), sExpected);
}

void SlowDiskWindowTest::stopWaitsWithTheBusyPointer_data() {
    QTest::addColumn<bool>("underWay");
    QTest::addColumn<bool>("close");
    QTest::newRow("for the last lines") << false << false;
    QTest::newRow("for what is under way") << true << false;
    QTest::newRow("closing the window") << false << true;
}

void SlowDiskWindowTest::stopWaitsWithTheBusyPointer() {
    QFETCH(bool, underWay);
    QFETCH(bool, close);
    const SlowDisk tDisk;
    Recording r(QStringLiteral("record.txt"), tDisk.Function());
    r.t.FeedLine(0, Sentence(1));
    if (underWay) r.t.Advance(1);
    std::vector<bool> bPointer;
    int iEndedBefore = -1;
    r.t.m_tPlatform.ShowBusyPointer = [&](bool bBusy) {
        bPointer.push_back(bBusy);
        if (!bBusy) return;
        iEndedBefore = tDisk.Ended();
        tDisk.ReleaseAll();
    };
    if (close) {
        r.t.close();
    } else {
        r.t.Press("Stop");
    }
    QCOMPARE(bPointer, (std::vector<bool>{true, false}));
    QCOMPARE(iEndedBefore, 0);
    QCOMPARE(tDisk.Ended(), 1);
    QCOMPARE(r.t.Panel(1), std::string("Stopped"));
    QCOMPARE(r.Content(), Recorded(0, 1));
}

void SlowDiskWindowTest::quickDiskNeedsNoBusyPointer() {
    Recording r;
    r.t.FeedLine(0, Sentence(1));
    r.t.Advance(1);
    r.t.m_tFiles.AwaitDisk(r.t.m_iRecordFile);
    r.t.Press("Stop");
    QVERIFY(r.tWorld.bBusyPointer.empty());
}

void SlowDiskWindowTest::diskThatFailsEndsTheRecording() {
    const SlowDisk tDisk;
    tDisk.Answer(EIO);
    Recording r(QStringLiteral("record.txt"), tDisk.Function());
    r.t.FeedLine(0, AnyReport);
    r.t.Advance(1);
    tDisk.AwaitBegun(1);
    r.t.Advance(1);
    QVERIFY(r.t.m_bRecording);  // not known yet
    tDisk.ReleaseAll();
    while (r.t.m_bRecording) r.t.tmrTime_Timer();
    QCOMPARE(r.t.Panel(1), std::string("Running"));
    QCOMPARE(r.t.Panel(2), std::string("Record - Input/output error"));
    QCOMPARE(r.t.Lines(r.t.lstCommData(0)), (Log{AnyReport, "<<Record - Input/output error>>"}));
    QVERIFY(r.t.MSComm(0).PortOpen());
}

void SlowDiskWindowTest::diskThatFailsAtTheStopIsTold() {
    const SlowDisk tDisk;
    tDisk.Answer(ENOSPC);
    tDisk.ReleaseAll();
    Recording r(QStringLiteral("record.txt"), tDisk.Function());
    r.t.FeedLine(0, AnyReport);
    r.t.Press("Stop");
    QCOMPARE(r.t.Panel(1), std::string("Stopped"));
    QCOMPARE(r.t.Panel(2), std::string("Record - No space left on device"));
    QCOMPARE(r.t.LastLine(r.t.lstCommData(0)), std::string("<<Record - No space left on device>>"));
}

void SlowDiskWindowTest::failedRecordingDoesNotWaitForTheDisk() {
    const qsizetype lThreads = Threads();
    const SlowDisk tDisk;
    Recording r(QStringLiteral("record.txt"), tDisk.Function());
    const FullDisk tFull(60);
    r.t.FeedLine(0, Sentence(1));
    r.t.Advance(1);
    tDisk.AwaitBegun(1);
    for (int i = 0; i < 3; ++i) r.t.FeedLine(0, Sentence(2));
    r.t.Advance(1);
    QVERIFY(!r.t.m_bRecording);
    QCOMPARE(r.t.Panel(2), std::string("Record - File too large"));
    QCOMPARE(tDisk.Ended(), 0);
    QVERIFY(r.tWorld.bBusyPointer.empty());
    tDisk.ReleaseAll();
    while (Threads() > lThreads) std::this_thread::yield();
}

void SlowDiskWindowTest::nothingRunsWithoutARecording() {
    const SlowDisk tDisk;
    tDisk.ReleaseAll();
    Recording r(QStringLiteral("record.txt"), tDisk.Function());
    const qsizetype lThreads = Threads();
    r.t.FeedLine(0, AnyReport);
    r.t.Advance(1);
    QCOMPARE(Threads(), lThreads);
    r.t.Press("Stop");
    while (Threads() >= lThreads) std::this_thread::yield();  // the system lists an ended thread for a moment longer
}

QTEST_MAIN(SlowDiskWindowTest)
#include "SlowDiskWindowTest.moc"
