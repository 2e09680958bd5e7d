// What failing calls have brought to light, each by itself: what was wrong is named, and stays mended.
#include <QTest>
#include <cerrno>

#include "platform/runtime/DiskSync.h"
#include "platform/runtime/TextFiles.h"
#include "platform/toolkit/Latin1.h"
#include "platform/toolkit/SafeFile.h"
#include "tests/failing/FailingCalls.h"
#include "tests/support/Bytes.h"
#include "tests/support/PtyPort.h"
#include "tests/support/TestWindow.h"

using namespace failing;
using support::Bytes;

namespace {

State g_tState;

// Of the calls that follow, for what is below a name, one fails.
class Failing {
public:
    Failing(const QString& sName, Call e, Mode eMode) {
        UseState(&g_tState);
        Watch(sName.toStdString());
        for (auto& iCounts : g_tState.iCounts) {
            for (auto& i : iCounts) i = 0;
        }
        g_tState.iFired = 0;
        g_tState.tPlan = {eMode, e, 0, 1};
        g_tState.bArmed = true;
    }
    ~Failing() { g_tState.bArmed = false; }
    Failing(const Failing&) = delete;
    Failing& operator=(const Failing&) = delete;
};

}  // namespace

class FailingCallsTest : public QObject {
    Q_OBJECT

private slots:
    void portReadsOnAfterAReadThatFailed();
    void portThatFailsAllTheTimeIsToldOf();
    void interruptedSaveSaves();
    void interruptedDiskIsNoFailure();
    void fileStaysAsItIsWhereNoRecordingBegins_data();
    void fileStaysAsItIsWhereNoRecordingBegins();
    void endOfAFileIsReadInPieces();
};

namespace {

struct Running {
    support::World tWorld;
    support::PtyPort tPty;
    support::TestWindow t{tWorld};

    Running() {
        tWorld.bNativeDevices = true;
        t.LoadAndShow();
        t.chkCommEnabled(0).setChecked(true);
        t.chkCommEnabled(1).setChecked(false);
        t.txtCommPort(0).SetText(tPty.Device().toStdString());
        t.Press("Start");
    }
};

}  // namespace

// The serial layer stops reading at such an error; nothing told of it, and no line came any more.
void FailingCallsTest::portReadsOnAfterAReadThatFailed() {
    Running r;
    r.t.Press("Stop");
    const Failing tFailing(r.tPty.Device(), Call::Read, Mode::Once);
    r.t.Press("Start");
    QCOMPARE(r.t.Panel(1), std::string("Running"));
    QVERIFY(r.tPty.Write("$GPZDA,1\r\n"));
    QTRY_COMPARE(r.t.LastLine(r.t.lstCommData(0)), std::string("$GPZDA,1"));
    QCOMPARE(Fired(), 1);
    QVERIFY(!r.t.MSComm(0).Away());
}

void FailingCallsTest::portThatFailsAllTheTimeIsToldOf() {
    Running r;
    r.t.Press("Stop");
    {
        const Failing tFailing(r.tPty.Device(), Call::Read, Mode::Stays);
        r.t.Press("Start");
        QVERIFY(r.tPty.Write("$GPZDA,1\r\n"));
        QTRY_VERIFY(r.t.MSComm(0).Away());
        QCOMPARE(r.t.LastLine(r.t.lstCommData(0)), std::string("<<Event 2001>>"));
    }
    r.t.MSComm(0).Retry();
    QTRY_COMPARE(r.t.LastLine(r.t.lstCommData(0)), std::string("$GPZDA,1"));
}

void FailingCallsTest::interruptedSaveSaves() {
    const support::World tWorld;
    const QString sFile = tWorld.Path(QStringLiteral("settings"));
    tWorld.WriteFile(sFile, "old");
    const Failing tFailing(tWorld.Folder(), Call::Sync, Mode::Interrupted);
    QVERIFY(toolkit::ReplaceFile(sFile, "new"));
    QCOMPARE(Fired(), 1);
    QCOMPARE(Bytes(tWorld.ReadFile(sFile)), QByteArray("new"));
}

void FailingCallsTest::interruptedDiskIsNoFailure() {
    const support::World tWorld;
    runtime::TextFiles tFiles;
    const Failing tFailing(tWorld.Folder(), Call::Sync, Mode::Interrupted);
    tFiles.OpenForOutput(1, toolkit::ToPath(tWorld.Path(QStringLiteral("record.txt"))));
    g_tState.tPlan.iThread = 1;  // the disk's own
    tFiles.WriteLine(1, "line");
    tFiles.Flush(1);
    tFiles.AwaitDisk(1);  // raises what the disk has told
    QCOMPARE(Fired(), 1);
}

void FailingCallsTest::fileStaysAsItIsWhereNoRecordingBegins_data() {
    QTest::addColumn<int>("call");
    QTest::newRow("what it is cannot be asked") << static_cast<int>(Call::Status);
    QTest::newRow("no descriptor for the disk's thread") << static_cast<int>(Call::Control);
    QTest::newRow("no thread") << static_cast<int>(Call::Thread);
    QTest::newRow("it cannot be emptied") << static_cast<int>(Call::Truncate);
}

void FailingCallsTest::fileStaysAsItIsWhereNoRecordingBegins() {
    QFETCH(int, call);
    const support::World tWorld;
    const QString sFile = tWorld.Path(QStringLiteral("record.txt"));
    tWorld.WriteFile(sFile, "former");
    runtime::TextFiles tFiles;
    {
        const Failing tFailing(tWorld.Folder(), static_cast<Call>(call), Mode::Once);
        QVERIFY_EXCEPTION_THROWN(tFiles.OpenForOutput(1, toolkit::ToPath(sFile)), runtime::FileError);
        QCOMPARE(Fired(), 1);
    }
    QVERIFY(!tFiles.IsOpen(1));
    QCOMPARE(Bytes(tWorld.ReadFile(sFile)), QByteArray("former"));
}

void FailingCallsTest::endOfAFileIsReadInPieces() {
    const support::World tWorld;
    const QString sFile = tWorld.Path(QStringLiteral("record.txt"));
    tWorld.WriteFile(sFile, "0123456789");
    for (const Mode e : {Mode::Short, Mode::Interrupted}) {
        runtime::TextFiles tFiles;
        const Failing tFailing(tWorld.Folder(), Call::Read, e);
        tFiles.OpenForInput(1, toolkit::ToPath(sFile));
        QCOMPARE(tFiles.End(1, 4), std::string("6789"));
        QCOMPARE(Fired(), 1);
    }
}

QTEST_MAIN(FailingCallsTest)
#include "FailingCallsTest.moc"
