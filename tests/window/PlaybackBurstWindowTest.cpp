// Burst playback: a whole file within the click, and what the window shows of it afterwards.
#include <QTest>
#include <QTimer>

#include "tests/support/Bytes.h"
#include "tests/support/PrintString.h"
#include "tests/support/TestWindow.h"
#include "tests/window/Buttons.h"

using support::Buttons;
using support::Bytes;
using support::Stopped;
using support::TestWindow;
using support::World;

namespace {

constexpr const char* Report = "!AIVDM,1,1,,A,15M67F@uQqG?w<hK?Mu8iFv00000,0*7B";

std::string Line(const char* sTime, std::string_view sSentence) {
    return std::string("03/07/2005 ") + sTime + " " + std::string(sSentence) + "\r\n";
}

struct Burst {
    explicit Burst(std::string_view sContent) : sFile(tWorld.Path(QStringLiteral("played.txt"))), t(tWorld) {
        tWorld.WriteFile(sFile, sContent);
        t.LoadAndShow();
    }
    void Press() {
        tWorld.tFileAnswers = {sFile};
        t.Press("Playback Burst");
    }

    World tWorld;
    QString sFile;
    TestWindow t;
};

using Log = std::vector<std::string>;

}  // namespace

class PlaybackBurstWindowTest : public QObject {
    Q_OBJECT

private slots:
    void outputForbidsABurst();
    void wholeFileIsPlayedWithinTheClick();
    void panelReadsPlaybackThoughItIsStopped();
    void buttonIsPressedWhileItRuns();
    void busyPointerShowsWhileItRuns();
    void nothingElseHappensMeanwhile();
    void emptyFileLeavesPlaybackInThePanel();
    void badLineEndsTheBurst();
    void lastMessageFlagIsNotReset();
    void displaysAreCleared();
    void fileStaysOpenAndTheNextRunTakesAnother();
    void messageClockDoesNotStart();
    void stampsReachLogsAndTable();
    void viewsShowTheEndOfTheFile();
    void cancelledDialogChangesNothing();
};

void PlaybackBurstWindowTest::outputForbidsABurst() {
    Burst b(Line("10:00:00", Report));
    b.t.StartBoth();
    b.t.FeedLine(0, Report);
    b.t.Press("Stop");
    b.t.chkOutputEnabled.setChecked(true);
    b.Press();
    QCOMPARE(b.tWorld.sMessages, QStringList{QStringLiteral("Comm Output is not available with Burst Playback")});
    QVERIFY(b.tWorld.eMessageIcons == std::vector{toolkit::MessageIcon::Plain});
    QVERIFY(b.tWorld.tDialogs.empty());
    QCOMPARE(b.t.windowTitle(), QStringLiteral("Tidewatch"));
    QCOMPARE(Buttons(b.t), std::string(Stopped));
    QCOMPARE(b.t.Panel(1), std::string("Stopped"));
    QCOMPARE(b.t.Panel(2), std::string("1 Targets, 1 Messages"));
    QCOMPARE(b.t.grdTargetData.Cells.Rows(), 2);
}

void PlaybackBurstWindowTest::wholeFileIsPlayedWithinTheClick() {
    std::string sFile;
    for (int i = 0; i < 24; ++i) {
        const std::string sTime = std::string(i < 10 ? "0" : "") + std::to_string(i) + ":00:00";  // hours apart
        sFile += Line(sTime.c_str(), Report);
        sFile += Line(sTime.c_str(), "$PNMLS,29,19,3*50");
    }
    Burst b(sFile);
    b.Press();
    QCOMPARE(b.t.Cell(b.t.grdMessageData, 34, 1), std::string("24"));
    QCOMPARE(b.t.Panel(2), std::string("1 Targets, 24 Messages"));
    QCOMPARE(b.t.Lines(b.t.lstCommData(0)).size(), std::size_t{48});
    QVERIFY(b.t.m_bCommReceived(0));
}

void PlaybackBurstWindowTest::panelReadsPlaybackThoughItIsStopped() {
    Burst b(Line("10:00:00", Report));
    b.Press();
    QCOMPARE(b.t.Panel(1), std::string("Playback"));
    QCOMPARE(Buttons(b.t), std::string(Stopped));
    QCOMPARE(b.t.windowTitle(), QStringLiteral("Tidewatch - played.txt"));
    QVERIFY(!b.t.m_bPlayback);
    QVERIFY(!b.t.m_bPlaybackBurst);
    b.t.Advance(3);
    QCOMPARE(b.t.Panel(1), std::string("Playback"));
    b.t.Press("Stop");  // enabled neither before nor after: the state is the stopped one
    QCOMPARE(b.t.Panel(1), std::string("Playback"));
}

void PlaybackBurstWindowTest::buttonIsPressedWhileItRuns() {
    World tWorld;
    const QString sFile = tWorld.Path(QStringLiteral("played.txt"));
    tWorld.WriteFile(sFile, Line("10:00:00", Report));
    TestWindow t(tWorld);
    t.LoadAndShow();
    std::string sMeanwhile;
    bool bFlag = false;
    t.m_tPlatform.ShowBusyPointer = [&](bool bBusy) {
        if (!bBusy) return;
        sMeanwhile = Buttons(t);
        bFlag = t.m_bPlaybackBurst;
    };
    tWorld.tFileAnswers = {sFile};
    t.Press("Playback Burst");
    QCOMPARE(sMeanwhile, std::string("Start Stop+ Record Playback Playback Burst!"));
    QVERIFY(bFlag);
}

void PlaybackBurstWindowTest::busyPointerShowsWhileItRuns() {
    Burst b(Line("10:00:00", Report));
    b.Press();
    QCOMPARE(b.tWorld.bBusyPointer, (std::vector<bool>{true, false}));
}

void PlaybackBurstWindowTest::nothingElseHappensMeanwhile() {
    std::string sFile;
    for (int i = 0; i < 2000; ++i) sFile += Line("10:00:00", Report);
    Burst b(sFile);
    int iYields = 0;
    b.tWorld.tYield = [&iYields] { ++iYields; };
    bool bTimer = false;
    QTimer tTimer;  // due at once, if it were let
    connect(&tTimer, &QTimer::timeout, this, [&bTimer] { bTimer = true; });
    tTimer.start(0);
    b.Press();
    QVERIFY(!bTimer);
    tTimer.stop();
    QCOMPARE(iYields, 0);
    QCOMPARE(b.t.Cell(b.t.grdMessageData, 34, 1), std::string("2000"));
}

void PlaybackBurstWindowTest::emptyFileLeavesPlaybackInThePanel() {
    Burst b("");
    b.Press();
    QCOMPARE(b.t.Panel(1), std::string("Playback"));
    QCOMPARE(b.t.Panel(2), std::string());
    QCOMPARE(Buttons(b.t), std::string(Stopped));
    QVERIFY(b.t.Lines(b.t.lstCommData(0)).empty());
}

void PlaybackBurstWindowTest::badLineEndsTheBurst() {
    Burst b(Line("10:00:00", "$GPZDA,1") + "02/30/2005 10:00:00 $GPZDA,2\r\n" + Line("10:00:00", "$GPZDA,3"));
    b.Press();
    QCOMPARE(b.t.Lines(b.t.lstCommData(0)), Log{"$GPZDA,1"});
    QVERIFY(b.t.Panel(2).size() > 5);
    QCOMPARE(b.t.Panel(1), std::string("Playback"));
    QCOMPARE(Buttons(b.t), std::string(Stopped));
    QCOMPARE(b.tWorld.bBusyPointer, (std::vector<bool>{true, false}));
}

void PlaybackBurstWindowTest::lastMessageFlagIsNotReset() {
    Burst b(Line("10:00:00", "$PNMLS,29,19,3*50"));
    b.t.StartBoth();
    b.t.FeedLine(0, Report);
    b.t.Press("Stop");
    b.Press();
    // Told with channel and time of the last message of the run before.
    QCOMPARE(b.t.LastLine(b.t.lstRxData), std::string("Time=12:00:00, Ch= A, Sig=29, Thr=19, Int=3"));
    QCOMPARE(b.t.grdTargetData.Cells.Rows(), 1);
}

void PlaybackBurstWindowTest::displaysAreCleared() {
    Burst b("");
    b.t.StartBoth();
    b.t.FeedLine(0, Report);
    b.t.FeedLine(0, "$PNMLS,29,19,3*50");
    b.t.FeedLine(1, "$X");
    b.t.Advance(2);
    b.t.Press("Stop");
    const Log sAis = b.t.Lines(b.t.lstAisData);
    b.Press();
    QVERIFY(b.t.Lines(b.t.lstCommData(0)).empty());
    QVERIFY(b.t.Lines(b.t.lstCommData(1)).empty());
    QVERIFY(b.t.Lines(b.t.lstRxData).empty());
    QVERIFY(b.t.Lines(b.t.lstAisData) == sAis);
    QCOMPARE(b.t.grdTargetData.Cells.Rows(), 1);
    QCOMPARE(b.t.Panel(2), std::string());
    QCOMPARE(b.t.Panel(3), std::string());
    QCOMPARE(b.t.Panel(4), std::string("00:01"));
}

void PlaybackBurstWindowTest::fileStaysOpenAndTheNextRunTakesAnother() {
    Burst b(Line("10:00:00", Report));
    b.Press();
    const std::int16_t iFirst = b.t.m_iRecordFile;
    QVERIFY(b.t.m_tFiles.IsOpen(iFirst));
    b.Press();
    const std::int16_t iSecond = b.t.m_iRecordFile;
    QVERIFY(iSecond != iFirst);
    QVERIFY(b.t.m_tFiles.IsOpen(iFirst));
    QVERIFY(b.t.m_tFiles.IsOpen(iSecond));
    QCOMPARE(b.t.Panel(2), std::string("1 Targets, 1 Messages"));
    b.tWorld.tFileAnswers = {b.sFile};
    b.t.Press("Playback");
    QVERIFY(b.t.m_iRecordFile != iFirst && b.t.m_iRecordFile != iSecond);
}

void PlaybackBurstWindowTest::messageClockDoesNotStart() {
    Burst b(Line("10:00:00", Report));
    b.Press();
    QVERIFY(!b.t.tmrComm.isActive());
    b.t.Advance(5);
    QCOMPARE(b.t.Panel(3), std::string());
}

void PlaybackBurstWindowTest::stampsReachLogsAndTable() {
    Burst b(Line("23:58:07", Report) + Line("23:58:08", "$PNMLS,29,19,3*50"));
    b.Press();
    QCOMPARE(b.t.Lines(b.t.lstAisData).front(),
             std::string("Time=23:58:07, Ch=A, Id=1, MMSI=366053209, Position Scheduled"));
    QCOMPARE(b.t.Cell(b.t.grdTargetData, 1, 6), std::string("23:58:07"));
    QCOMPARE(b.t.Cell(b.t.grdTargetData, 1, 3), std::string("29"));
}

void PlaybackBurstWindowTest::viewsShowTheEndOfTheFile() {
    std::string sFile;
    for (int i = 0; i < 300; ++i) sFile += Line("10:00:00", "$PNMLS," + std::to_string(i) + ",1,3*");
    Burst b(sFile);
    b.Press();
    // Without any help: the views take it over by themselves soon after.
    QTRY_COMPARE_WITH_TIMEOUT(b.t.lstCommData(0).model()->rowCount(), 101, 5000);
    const QModelIndex tLast = b.t.lstCommData(0).model()->index(100, 0);
    QCOMPARE(tLast.data().toString(), QStringLiteral("$PNMLS,299,1,3*"));
}

void PlaybackBurstWindowTest::cancelledDialogChangesNothing() {
    Burst b("");
    b.tWorld.tFileAnswers = {std::nullopt};
    b.t.Press("Playback Burst");
    QCOMPARE(b.tWorld.tDialogs.front().sTitle, QStringLiteral("Tidewatch - Open"));
    QCOMPARE(b.t.windowTitle(), QStringLiteral("Tidewatch"));
    QCOMPARE(b.t.Panel(1), std::string("Stopped"));
    QCOMPARE(Buttons(b.t), std::string(Stopped));
    QVERIFY(b.tWorld.bBusyPointer.empty());
}

QTEST_MAIN(PlaybackBurstWindowTest)
#include "PlaybackBurstWindowTest.moc"
