// Burst playback: a whole file within the click, and what the window shows of it afterwards.
#include <QTest>
#include <QTimer>

#include "tests/support/Bytes.h"
#include "tests/support/PrintString.h"
#include "tests/window/Bench.h"
#include "tests/window/Buttons.h"

using support::AnyReport;
using support::Buttons;
using support::Bytes;
using support::Player;
using support::Stopped;
using support::TestWindow;
using support::World;

namespace {

std::string Line(const char* sTime, std::string_view sSentence) {
    return std::string("03/07/2005 ") + sTime + " " + std::string(sSentence) + "\r\n";
}

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
    Player t(Line("10:00:00", AnyReport));
    t.StartBoth();
    t.FeedLine(0, AnyReport);
    t.Press("Stop");
    t.chkOutputEnabled.setChecked(true);
    t.Burst();
    QCOMPARE(t.tWorld.sMessages, QStringList{QStringLiteral("Comm Output is not available with Burst Playback")});
    QVERIFY(t.tWorld.eMessageIcons == std::vector{toolkit::MessageIcon::Plain});
    QVERIFY(t.tWorld.tDialogs.empty());
    QCOMPARE(t.windowTitle(), QStringLiteral("Tidewatch"));
    QCOMPARE(Buttons(t), std::string(Stopped));
    QCOMPARE(t.Panel(1), std::string("Stopped"));
    QCOMPARE(t.Panel(2), std::string("1 Targets, 1 Messages"));
    QCOMPARE(t.grdTargetData.Cells.Rows(), 2);
}

void PlaybackBurstWindowTest::wholeFileIsPlayedWithinTheClick() {
    std::string sFile;
    for (int i = 0; i < 24; ++i) {
        const std::string sTime = std::string(i < 10 ? "0" : "") + std::to_string(i) + ":00:00";  // hours apart
        sFile += Line(sTime.c_str(), AnyReport);
        sFile += Line(sTime.c_str(), "$PNMLS,29,19,3*50");
    }
    Player t(sFile);
    t.Burst();
    QCOMPARE(t.Cell(t.grdMessageData, 34, 1), std::string("24"));
    QCOMPARE(t.Panel(2), std::string("1 Targets, 24 Messages"));
    QCOMPARE(t.Lines(t.lstCommData(0)).size(), std::size_t{48});
    QVERIFY(t.m_bCommReceived(0));
}

void PlaybackBurstWindowTest::panelReadsPlaybackThoughItIsStopped() {
    Player t(Line("10:00:00", AnyReport));
    t.Burst();
    QCOMPARE(t.Panel(1), std::string("Playback"));
    QCOMPARE(Buttons(t), std::string(Stopped));
    QCOMPARE(t.windowTitle(), QStringLiteral("Tidewatch - played.txt"));
    QVERIFY(!t.m_bPlayback);
    QVERIFY(!t.m_bPlaybackBurst);
    t.Advance(3);
    QCOMPARE(t.Panel(1), std::string("Playback"));
    t.Press("Stop");  // enabled neither before nor after: the state is the stopped one
    QCOMPARE(t.Panel(1), std::string("Playback"));
}

void PlaybackBurstWindowTest::buttonIsPressedWhileItRuns() {
    World tWorld;
    const QString sFile = tWorld.Path(QStringLiteral("played.txt"));
    tWorld.WriteFile(sFile, Line("10:00:00", AnyReport));
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
    Player t(Line("10:00:00", AnyReport));
    t.Burst();
    QCOMPARE(t.tWorld.bBusyPointer, (std::vector<bool>{true, false}));
}

void PlaybackBurstWindowTest::nothingElseHappensMeanwhile() {
    std::string sFile;
    for (int i = 0; i < 2000; ++i) sFile += Line("10:00:00", AnyReport);
    Player t(sFile);
    int iYields = 0;
    t.tWorld.tYield = [&iYields] { ++iYields; };
    bool bTimer = false;
    QTimer tTimer;  // due at once, if it were let
    connect(&tTimer, &QTimer::timeout, this, [&bTimer] { bTimer = true; });
    tTimer.start(0);
    t.Burst();
    QVERIFY(!bTimer);
    tTimer.stop();
    QCOMPARE(iYields, 0);
    QCOMPARE(t.Cell(t.grdMessageData, 34, 1), std::string("2000"));
}

void PlaybackBurstWindowTest::emptyFileLeavesPlaybackInThePanel() {
    Player t("");
    t.Burst();
    QCOMPARE(t.Panel(1), std::string("Playback"));
    QCOMPARE(t.Panel(2), std::string());
    QCOMPARE(Buttons(t), std::string(Stopped));
    QVERIFY(t.Lines(t.lstCommData(0)).empty());
}

void PlaybackBurstWindowTest::badLineEndsTheBurst() {
    Player t(Line("10:00:00", "$GPZDA,1") + "02/30/2005 10:00:00 $GPZDA,2\r\n" + Line("10:00:00", "$GPZDA,3"));
    t.Burst();
    QCOMPARE(t.Lines(t.lstCommData(0)), Log{"$GPZDA,1"});
    QVERIFY(t.Panel(2).size() > 5);
    QCOMPARE(t.Panel(1), std::string("Playback"));
    QCOMPARE(Buttons(t), std::string(Stopped));
    QCOMPARE(t.tWorld.bBusyPointer, (std::vector<bool>{true, false}));
}

void PlaybackBurstWindowTest::lastMessageFlagIsNotReset() {
    Player t(Line("10:00:00", "$PNMLS,29,19,3*50"));
    t.StartBoth();
    t.FeedLine(0, AnyReport);
    t.Press("Stop");
    t.Burst();
    // Told with channel and time of the last message of the run before.
    QCOMPARE(t.LastLine(t.lstRxData), std::string("Time=12:00:00, Ch= A, Sig=29, Thr=19, Int=3"));
    QCOMPARE(t.grdTargetData.Cells.Rows(), 1);
}

void PlaybackBurstWindowTest::displaysAreCleared() {
    Player t("");
    t.StartBoth();
    t.FeedLine(0, AnyReport);
    t.FeedLine(0, "$PNMLS,29,19,3*50");
    t.FeedLine(1, "$X");
    t.Advance(2);
    t.Press("Stop");
    const Log sAis = t.Lines(t.lstAisData);
    t.Burst();
    QVERIFY(t.Lines(t.lstCommData(0)).empty());
    QVERIFY(t.Lines(t.lstCommData(1)).empty());
    QVERIFY(t.Lines(t.lstRxData).empty());
    QVERIFY(t.Lines(t.lstAisData) == sAis);
    QCOMPARE(t.grdTargetData.Cells.Rows(), 1);
    QCOMPARE(t.Panel(2), std::string());
    QCOMPARE(t.Panel(3), std::string());
    QCOMPARE(t.Panel(4), std::string("00:01"));
}

void PlaybackBurstWindowTest::fileStaysOpenAndTheNextRunTakesAnother() {
    Player t(Line("10:00:00", AnyReport));
    t.Burst();
    const std::int16_t iFirst = t.m_iRecordFile;
    QVERIFY(t.m_tFiles.IsOpen(iFirst));
    t.Burst();
    const std::int16_t iSecond = t.m_iRecordFile;
    QVERIFY(iSecond != iFirst);
    QVERIFY(t.m_tFiles.IsOpen(iFirst));
    QVERIFY(t.m_tFiles.IsOpen(iSecond));
    QCOMPARE(t.Panel(2), std::string("1 Targets, 1 Messages"));
    t.PressWithFile("Playback", t.sFile);
    QVERIFY(t.m_iRecordFile != iFirst && t.m_iRecordFile != iSecond);
}

void PlaybackBurstWindowTest::messageClockDoesNotStart() {
    Player t(Line("10:00:00", AnyReport));
    t.Burst();
    QVERIFY(!t.tmrComm.isActive());
    t.Advance(5);
    QCOMPARE(t.Panel(3), std::string());
}

void PlaybackBurstWindowTest::stampsReachLogsAndTable() {
    Player t(Line("23:58:07", AnyReport) + Line("23:58:08", "$PNMLS,29,19,3*50"));
    t.Burst();
    QCOMPARE(t.Lines(t.lstAisData).front(),
             std::string("Time=23:58:07, Ch=A, Id=1, MMSI=366053209, Position Scheduled"));
    QCOMPARE(t.Cell(t.grdTargetData, 1, 6), std::string("23:58:07"));
    QCOMPARE(t.Cell(t.grdTargetData, 1, 3), std::string("29"));
}

void PlaybackBurstWindowTest::viewsShowTheEndOfTheFile() {
    std::string sFile;
    for (int i = 0; i < 300; ++i) sFile += Line("10:00:00", "$PNMLS," + std::to_string(i) + ",1,3*");
    Player t(sFile);
    t.Burst();
    // Without any help: the views take it over by themselves soon after.
    QTRY_COMPARE_WITH_TIMEOUT(t.lstCommData(0).model()->rowCount(), 101, 5000);
    const QModelIndex tLast = t.lstCommData(0).model()->index(100, 0);
    QCOMPARE(tLast.data().toString(), QStringLiteral("$PNMLS,299,1,3*"));
}

void PlaybackBurstWindowTest::cancelledDialogChangesNothing() {
    Player t("");
    t.tWorld.tFileAnswers = {std::nullopt};
    t.Press("Playback Burst");
    QCOMPARE(t.tWorld.tDialogs.front().sTitle, QStringLiteral("Tidewatch - Open"));
    QCOMPARE(t.windowTitle(), QStringLiteral("Tidewatch"));
    QCOMPARE(t.Panel(1), std::string("Stopped"));
    QCOMPARE(Buttons(t), std::string(Stopped));
    QVERIFY(t.tWorld.bBusyPointer.empty());
}

QTEST_MAIN(PlaybackBurstWindowTest)
#include "PlaybackBurstWindowTest.moc"
