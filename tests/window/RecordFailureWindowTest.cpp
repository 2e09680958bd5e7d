// A recording that cannot go on: how it is noticed and told, and that everything else goes on.
#include <sched.h>
#include <sys/mount.h>

#include <QDir>
#include <QFile>
#include <QTest>
#include <functional>

#include "tests/support/FullDisk.h"
#include "tests/support/PrintString.h"
#include "tests/window/Bench.h"

using support::AnyReport;
using support::Bytes;
using support::FullDisk;
using support::Recording;

namespace {

const std::string Gone = "The file is no longer there";

using Log = std::vector<std::string>;
using Happening = std::function<void(Recording&)>;

void Remove(const QString& sFile) { QVERIFY(QFile::remove(sFile)); }

void Move(const QString& sFrom, const QString& sTo) { QVERIFY(QFile::rename(sFrom, sTo)); }

}  // namespace

class RecordFailureWindowTest : public QObject {
    Q_OBJECT

private slots:
    void fullDiskEndsTheRecordingOnly_data();
    void fullDiskEndsTheRecordingOnly();
    void diskThatFillsUpKeepsWhatItHas();
    void recordingCanBeginAnewAfterAFullDisk();
    void failureStaysInTheRawLog_data();
    void failureStaysInTheRawLog();
    void noticeIsNeitherRecordedNorForwarded();
    void fileThatIsGoneEndsTheRecording_data();
    void fileThatIsGoneEndsTheRecording();
    void fileThatIsGoneIsToldAtTheStop();
    void movedFileHoldsWhatWasRecorded();
    void mediumThatIsGoneEndsTheRecording();
    void fileThatIsStillThereIsRecordedOn_data();
    void fileThatIsStillThereIsRecordedOn();
};

void RecordFailureWindowTest::fullDiskEndsTheRecordingOnly_data() {
    QTest::addColumn<bool>("byStop");
    QTest::newRow("told by the wall clock") << false;
    QTest::newRow("told by the stop") << true;
}

void RecordFailureWindowTest::fullDiskEndsTheRecordingOnly() {
    QFETCH(bool, byStop);
    support::World tWorld;
    support::TestWindow t(tWorld);
    t.LoadAndShow();
    t.StartBoth();
    tWorld.tFileAnswers = {QStringLiteral("/dev/full")};
    t.Press("Record");
    QCOMPARE(t.Panel(1), std::string("Record"));
    t.FeedLine(0, AnyReport);
    if (byStop) {
        t.Press("Stop");
        QCOMPARE(t.Panel(1), std::string("Stopped"));
    } else {
        t.Advance(1);
        QCOMPARE(t.Panel(1), std::string("Running"));
        QVERIFY(t.MSComm(0).PortOpen());
        QVERIFY(t.tmrComm.isActive());
        QVERIFY(t.Toolbar.Action(QStringLiteral("Record")).isEnabled());
    }
    QVERIFY2(t.Panel(2).find("No space left on device") != std::string::npos, t.Panel(2).c_str());
    QVERIFY(!t.m_bRecording);
    QVERIFY(!t.Toolbar.Action(QStringLiteral("Record")).isChecked());
    QCOMPARE(t.grdTargetData.Cells.Rows(), 2);
    QCOMPARE(t.Lines(t.lstCommData(0)).front(), std::string(AnyReport));
    QVERIFY(tWorld.sMessages.isEmpty());
    if (byStop) return;
    t.FeedLine(0, AnyReport);  // the run goes on
    t.Advance(1);
    QCOMPARE(t.Panel(2), std::string("1 Targets, 2 Messages"));
    QCOMPARE(t.Panel(1), std::string("Running"));
}

void RecordFailureWindowTest::diskThatFillsUpKeepsWhatItHas() {
    Recording r;
    const QByteArray sLine = QByteArray("05/15/2011 12:00:00 ") + AnyReport + "\r\n";
    constexpr int Limit = 20000;
    {
        const FullDisk tFull(Limit);
        for (int i = 0; i < 1000; ++i) {
            r.t.FeedLine(0, AnyReport);
            if (i % 100 == 99) r.t.tmrTime_Timer();
        }
    }
    QVERIFY(!r.t.m_bRecording);
    QCOMPARE(r.t.Panel(1), std::string("Running"));
    QCOMPARE(r.Content(), sLine.repeated(1000).left(Limit));
    QCOMPARE(r.t.Cell(r.t.grdMessageData, 34, 1), std::string("1000"));
}

void RecordFailureWindowTest::recordingCanBeginAnewAfterAFullDisk() {
    Recording r;
    {
        const FullDisk tFull(10);
        r.t.FeedLine(0, AnyReport);
        r.t.Advance(1);
    }
    QVERIFY(!r.t.m_bRecording);
    const QString sSecond = r.tWorld.Path(QStringLiteral("second.txt"));
    r.tWorld.tFileAnswers = {sSecond};
    r.t.Press("Record");
    QCOMPARE(r.t.Panel(1), std::string("Record"));
    r.t.FeedLine(0, "$PNMLS,1,1,1*");
    r.t.Press("Stop");
    QCOMPARE(Bytes(r.tWorld.ReadFile(sSecond)), QByteArray("05/15/2011 12:00:01 $PNMLS,1,1,1*\r\n"));
}

void RecordFailureWindowTest::failureStaysInTheRawLog_data() {
    QTest::addColumn<bool>("byStop");
    QTest::newRow("told by the wall clock") << false;
    QTest::newRow("told by the stop") << true;
}

void RecordFailureWindowTest::failureStaysInTheRawLog() {
    QFETCH(bool, byStop);
    Recording r(QStringLiteral("/dev/full"));
    r.t.FeedLine(1, "$GPZDA,1");
    r.t.FeedLine(1, AnyReport);
    if (byStop) {
        r.t.Press("Stop");
    } else {
        r.t.Advance(1);
        QCOMPARE(r.t.Panel(2), std::string("Record - No space left on device"));
        r.t.FeedLine(0, AnyReport);  // takes the panel
        QCOMPARE(r.t.Panel(2), std::string("1 Targets, 2 Messages"));
    }
    Log sExpected = {"<<Record - No space left on device>>"};
    if (!byStop) sExpected.emplace_back(AnyReport);
    QCOMPARE(r.t.Lines(r.t.lstCommData(0)), sExpected);
    QVERIFY(!r.t.Marks(r.t.lstCommData(0)).front());
    QCOMPARE(r.t.Lines(r.t.lstCommData(1)), (Log{"$GPZDA,1", AnyReport}));
}

void RecordFailureWindowTest::noticeIsNeitherRecordedNorForwarded() {
    support::World tWorld;
    support::TestWindow t(tWorld);
    t.LoadAndShow();
    t.chkOutputEnabled.setChecked(true);
    t.txtOutputPort.SetText("3");
    t.StartBoth();
    const QString sFile = tWorld.Path(QStringLiteral("record.txt"));
    const QString sSecond = tWorld.Path(QStringLiteral("second.txt"));
    tWorld.tFileAnswers = {sFile, sSecond};
    t.Press("Record");
    Remove(sFile);
    t.FeedLine(0, AnyReport);
    t.Advance(1);
    QCOMPARE(t.LastLine(t.lstCommData(0)), "<<Record - " + Gone + ">>");
    t.Press("Record");
    t.FeedLine(0, "$PNMLS,1,1,1*");
    const std::string sWritten = t.Device(t.MSCommOutput)->Written();
    t.Press("Stop");
    QCOMPARE(t.Lines(t.lstOutputData), (Log{AnyReport, "$PNMLS,1,1,1*"}));
    QCOMPARE(sWritten, std::string(AnyReport) + "\r\n$PNMLS,1,1,1*\r\n");
    QCOMPARE(Bytes(tWorld.ReadFile(sSecond)), QByteArray("05/15/2011 12:00:01 $PNMLS,1,1,1*\r\n"));
}

void RecordFailureWindowTest::fileThatIsGoneEndsTheRecording_data() {
    QTest::addColumn<Happening>("happening");
    QTest::newRow("removed") << Happening([](Recording& r) { Remove(r.sFile); });
    QTest::newRow("moved") << Happening(
        [](Recording& r) { Move(r.sFile, r.tWorld.Path(QStringLiteral("moved.txt"))); });
    QTest::newRow("its folder is moved") << Happening(
        [](Recording& r) { QVERIFY(QDir(r.tWorld.Folder()).rename(QStringLiteral("sub"), QStringLiteral("moved"))); });
    QTest::newRow("removed, and another one made") << Happening([](Recording& r) {
        Remove(r.sFile);
        r.tWorld.WriteFile(r.sFile, "another");
    });
    QTest::newRow("another one is put in its place") << Happening([](Recording& r) {
        const QString sOther = r.tWorld.Path(QStringLiteral("other.txt"));
        r.tWorld.WriteFile(sOther, "another");
        QCOMPARE(std::rename(QFile::encodeName(sOther).constData(), QFile::encodeName(r.sFile).constData()), 0);
    });
}

void RecordFailureWindowTest::fileThatIsGoneEndsTheRecording() {
    QFETCH(Happening, happening);
    Recording r(QStringLiteral("sub/record.txt"));
    r.t.FeedLine(0, AnyReport);
    r.t.Advance(2);
    QVERIFY(r.t.m_bRecording);
    happening(r);
    r.t.Advance(1);  // also when no line comes
    QVERIFY(!r.t.m_bRecording);
    QCOMPARE(r.t.Panel(1), std::string("Running"));
    QCOMPARE(r.t.Panel(2), "Record - " + Gone);
    QCOMPARE(r.t.Lines(r.t.lstCommData(0)), (Log{AnyReport, "<<Record - " + Gone + ">>"}));
    QVERIFY(r.t.Toolbar.Action(QStringLiteral("Record")).isEnabled());
    QVERIFY(!r.t.Toolbar.Action(QStringLiteral("Record")).isChecked());
    r.t.Advance(5);
    QCOMPARE(r.t.Lines(r.t.lstCommData(0)).size(), std::size_t{2});  // told once
    r.t.FeedLine(0, AnyReport);                                      // the run goes on
    QCOMPARE(r.t.Panel(2), std::string("1 Targets, 2 Messages"));
    QVERIFY(r.tWorld.sMessages.isEmpty());
}

void RecordFailureWindowTest::fileThatIsGoneIsToldAtTheStop() {
    Recording r;
    r.t.FeedLine(0, AnyReport);
    Remove(r.sFile);
    r.t.Press("Stop");
    QCOMPARE(r.t.Panel(1), std::string("Stopped"));
    QCOMPARE(r.t.Panel(2), "Record - " + Gone);
    QCOMPARE(r.t.LastLine(r.t.lstCommData(0)), "<<Record - " + Gone + ">>");
}

void RecordFailureWindowTest::movedFileHoldsWhatWasRecorded() {
    Recording r;
    const QString sMoved = r.tWorld.Path(QStringLiteral("moved.txt"));
    r.t.FeedLine(0, "$PNMLS,1,1,1*");
    r.t.Advance(1);
    r.t.FeedLine(0, "$PNMLS,2,2,2*");
    Move(r.sFile, sMoved);
    r.t.FeedLine(0, "$PNMLS,3,3,3*");
    r.t.Advance(1);
    r.t.FeedLine(0, "$PNMLS,4,4,4*");
    r.t.Press("Stop");
    QCOMPARE(Bytes(r.tWorld.ReadFile(sMoved)), QByteArray("05/15/2011 12:00:00 $PNMLS,1,1,1*\r\n"
                                                          "05/15/2011 12:00:01 $PNMLS,2,2,2*\r\n"
                                                          "05/15/2011 12:00:01 $PNMLS,3,3,3*\r\n"));
}

// As when a stick is pulled: the desktop takes it out of the tree of folders at once, whoever still holds files there.
void RecordFailureWindowTest::mediumThatIsGoneEndsTheRecording() {
    const QTemporaryDir tStick;
    const QByteArray sStick = QFile::encodeName(tStick.path());
    if (::unshare(CLONE_NEWNS) != 0 || ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
        ::mount("none", sStick.constData(), "tmpfs", 0, "size=64k") != 0) {
        QSKIP("no right to mount here");
    }
    Recording r(tStick.filePath(QStringLiteral("record.txt")));
    r.t.FeedLine(0, AnyReport);
    r.t.Advance(2);
    QVERIFY(r.t.m_bRecording);
    QCOMPARE(::umount2(sStick.constData(), MNT_DETACH), 0);
    r.t.FeedLine(0, AnyReport);
    r.t.Advance(1);
    QVERIFY(!r.t.m_bRecording);
    QCOMPARE(r.t.LastLine(r.t.lstCommData(0)), "<<Record - " + Gone + ">>");
}

void RecordFailureWindowTest::fileThatIsStillThereIsRecordedOn_data() {
    QTest::addColumn<Happening>("happening");
    QTest::newRow("nothing happens") << Happening([](Recording&) {});
    QTest::newRow("moved and moved back") << Happening([](Recording& r) {
        Move(r.sFile, r.tWorld.Path(QStringLiteral("moved.txt")));
        Move(r.tWorld.Path(QStringLiteral("moved.txt")), r.sFile);
    });
    QTest::newRow("moved, a link left behind") << Happening([](Recording& r) {
        Move(r.sFile, r.tWorld.Path(QStringLiteral("moved.txt")));
        QVERIFY(QFile::link(QStringLiteral("moved.txt"), r.sFile));
    });
    QTest::newRow("read by another program") << Happening([](Recording& r) { r.tWorld.ReadFile(r.sFile); });
}

void RecordFailureWindowTest::fileThatIsStillThereIsRecordedOn() {
    QFETCH(Happening, happening);
    Recording r;
    happening(r);
    r.t.FeedLine(0, "$PNMLS,1,1,1*");
    r.t.Advance(3);
    QVERIFY(r.t.m_bRecording);
    r.t.Press("Stop");
    QCOMPARE(r.Content(), QByteArray("05/15/2011 12:00:00 $PNMLS,1,1,1*\r\n"));
    QCOMPARE(r.t.Lines(r.t.lstCommData(0)), Log{"$PNMLS,1,1,1*"});
}

QTEST_MAIN(RecordFailureWindowTest)
#include "RecordFailureWindowTest.moc"
