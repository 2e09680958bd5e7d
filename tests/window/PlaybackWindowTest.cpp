// Real-time playback: the dialog, what the window shows meanwhile, when each line is released, and how it ends, be the
// file good or bad.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QElapsedTimer>
#include <QFile>
#include <QTest>
#include <random>

#include "tests/support/Bytes.h"
#include "tests/support/PrintString.h"
#include "tests/window/Bench.h"
#include "tests/window/Buttons.h"

using support::AnyReport;
using support::Buttons;
using support::Bytes;
using support::Player;
using support::ShownWindow;
using support::Stopped;
using support::TestWindow;
using support::World;

namespace {

constexpr int Patience = 20000;  // milliseconds that no damaged file may take

// The world's clock stands at 2011-05-15; recordings are of another day.
std::string Line(const char* sTime, std::string_view sSentence) {
    return std::string("03/07/2005 ") + sTime + " " + std::string(sSentence) + "\r\n";
}

// "hh:00:ss"
std::string Clock(int iHour, int iSecond) {
    const auto tTwo = [](int i) { return std::string(i < 10 ? "0" : "") + std::to_string(i); };
    return tTwo(iHour) + ":00:" + tTwo(iSecond);
}

constexpr const char* Playing = "Start Stop+ Record Playback! Playback Burst";

using Log = std::vector<std::string>;

}  // namespace

class PlaybackWindowTest : public QObject {
    Q_OBJECT

private slots:
    void dialogAsksForAnExistingFileBesideTheProgram();
    void nextDialogCarriesTheFilesName();
    void cancelledDialogChangesNothing();
    void fileThatCannotBeOpenedSaysWhy_data();
    void fileThatCannotBeOpenedSaysWhy();
    void captionAndButtonsShowThePlayback();
    void settingsStayUsable();
    void displaysAreCleared();
    void decodeLogsAndSecondPanelOfSilenceStay();
    void firstPortIsResetAndTheSecondIsNot();
    void nothingIsReleasedBeforeTheFirstTick();
    void linesKeepTheirRecordedSpacing();
    void sameSecondIsReleasedInOneTick();
    void tenMinuteGapIsWaitedFor();
    void stampsThatGoBackAreDueAtOnce();
    void pendingLineWaitsBetweenTicks();
    void clockThatJumpsReleasesAllThatIsDue();
    void playedLinesKeepTheirStamps();
    void releasedLineCountsAsTraffic();
    void everyLineEndServes_data();
    void everyLineEndServes();
    void shortLineIsASizeError_data();
    void shortLineIsASizeError();
    void failedChecksumIsReportedAsLive();
    void bytesZeroAndTwentySixAreOrdinary();
    void endOfFileStopsWithDone();
    void emptyFileIsDoneAtTheFirstTick();
    void stopEndsThePlayback();
    void lineWithoutAStampEndsThePlayback_data();
    void lineWithoutAStampEndsThePlayback();
    void badLineIsTold_data();
    void badLineIsTold();
    void damagedFileNeitherHangsNorCrashes_data();
    void damagedFileNeitherHangsNorCrashes();
    void unreadableFileIsSilent();
    void shrinkingFileEndsThePlayback();
    void playedLinesAreForwarded();
    void madeRmcCarriesTodaysDate();
    void playbackGoesOnWhenTheOutputCannotBeOpened();
    void startAfterAPlaybackTakesThePortsAgain();
    void inputPortsStayClosed();
    void closingTheWindowEndsThePlayback();
};

void PlaybackWindowTest::dialogAsksForAnExistingFileBesideTheProgram() {
    ShownWindow t;
    t.tWorld.tFileAnswers = {std::nullopt};
    t.Press("Playback");
    QCOMPARE(t.tWorld.tDialogs.size(), std::size_t{1});
    const toolkit::FileRequest& tRequest = t.tWorld.tDialogs.front();
    QVERIFY(!tRequest.bSave);
    QCOMPARE(tRequest.sTitle, QStringLiteral("Tidewatch - Open"));
    QCOMPARE(tRequest.sFolder, t.tWorld.Folder());
    QCOMPARE(tRequest.sFileName, QStringLiteral("Tidewatch.Txt"));
    QCOMPARE(tRequest.sFilter, QStringLiteral("Text (*.txt)"));
    QCOMPARE(tRequest.sExtension, QStringLiteral("txt"));
}

void PlaybackWindowTest::nextDialogCarriesTheFilesName() {
    Player t("");
    t.Play();
    t.Advance(1);
    t.tWorld.tFileAnswers = {std::nullopt};
    t.Press("Playback");
    QCOMPARE(t.tWorld.tDialogs.back().sTitle, QStringLiteral("Tidewatch - played.txt - Open"));
}

void PlaybackWindowTest::cancelledDialogChangesNothing() {
    ShownWindow t;
    t.StartBoth();
    t.FeedLine(0, AnyReport);
    t.Press("Stop");
    t.tWorld.tFileAnswers = {std::nullopt};
    t.Press("Playback");
    QCOMPARE(t.windowTitle(), QStringLiteral("Tidewatch"));
    QCOMPARE(Buttons(t), std::string(Stopped));
    QCOMPARE(t.Panel(1), std::string("Stopped"));
    QCOMPARE(t.grdTargetData.Cells.Rows(), 2);
    QVERIFY(t.tWorld.sMessages.isEmpty());
}

void PlaybackWindowTest::fileThatCannotBeOpenedSaysWhy_data() {
    QTest::addColumn<QString>("kind");
    QTest::addColumn<std::string>("reason");
    QTest::newRow("missing") << "missing" << std::string("Playback - No such file or directory");
    QTest::newRow("folder") << "folder" << std::string("Playback - Is a directory");
    QTest::newRow("fifo") << "fifo" << std::string("Playback - Not a regular file");
    QTest::newRow("device") << "device" << std::string("Playback - Not a regular file");
}

// Nothing else changes.
void PlaybackWindowTest::fileThatCannotBeOpenedSaysWhy() {
    QFETCH(QString, kind);
    QFETCH(std::string, reason);
    World tWorld;
    QString sFile = tWorld.Path(kind);
    if (kind == QLatin1String("folder")) sFile = tWorld.Folder();
    if (kind == QLatin1String("fifo")) QCOMPARE(::mkfifo(sFile.toLocal8Bit().constData(), 0600), 0);
    if (kind == QLatin1String("device")) sFile = QStringLiteral("/dev/zero");
    TestWindow t(tWorld);
    t.LoadAndShow();
    t.StartBoth();
    t.FeedLine(0, AnyReport);
    t.Press("Stop");
    for (const char* sKey : {"Playback", "Playback Burst"}) {
        tWorld.tFileAnswers = {sFile};
        t.Press(sKey);
        QCOMPARE(t.windowTitle(), QStringLiteral("Tidewatch"));
        QCOMPARE(Buttons(t), std::string(Stopped));
        QCOMPARE(t.Panel(1), std::string("Stopped"));
        QCOMPARE(t.Panel(2), reason);
        QVERIFY(!t.m_bPlayback);
        t.Advance(2);
        QCOMPARE(t.grdTargetData.Cells.Rows(), 2);
    }
    QVERIFY(tWorld.sMessages.isEmpty());
}

void PlaybackWindowTest::captionAndButtonsShowThePlayback() {
    Player t(Line("10:00:00", AnyReport) + Line("10:05:00", AnyReport), QStringLiteral("a night at sea.txt"));
    t.Play();
    QCOMPARE(t.windowTitle(), QStringLiteral("Tidewatch - a night at sea.txt"));
    QCOMPARE(Buttons(t), std::string(Playing));
    QCOMPARE(t.Panel(1), std::string("Playback"));
    QVERIFY(t.tmrComm.isActive());
    QVERIFY(t.m_bPlayback);
    t.Advance(5);
    QCOMPARE(Buttons(t), std::string(Playing));
    QCOMPARE(t.Panel(1), std::string("Playback"));
}

void PlaybackWindowTest::settingsStayUsable() {
    Player t(Line("10:00:00", AnyReport) + Line("10:05:00", AnyReport));
    t.Play();
    t.Advance(1);
    QVERIFY(t.chkCommEnabled(0).isEnabled());
    QVERIFY(t.txtCommPort(0).isEnabled());
    QVERIFY(t.txtCommSettings(1).isEnabled());
    QVERIFY(t.chkOutputEnabled.isEnabled());
    QVERIFY(t.txtOutputPort.isEnabled());
    QVERIFY(t.chkOutputRMC.isEnabled());
}

void PlaybackWindowTest::displaysAreCleared() {
    Player t(Line("10:00:00", AnyReport));
    t.chkOutputEnabled.setChecked(true);
    t.txtOutputPort.SetText("3");
    t.StartBoth();
    t.FeedLine(0, AnyReport);
    t.FeedLine(0, "$PNMLS,29,19,3*50");
    t.FeedLine(1, "$X");
    t.Advance(3);
    t.Press("Stop");
    t.Play();
    QVERIFY(t.Log().empty());
    QVERIFY(t.Lines(t.lstCommData(1)).empty());
    QVERIFY(t.Lines(t.lstRxData).empty());
    QVERIFY(t.Lines(t.lstOutputData).empty());
    QCOMPARE(t.grdTargetData.Cells.Rows(), 1);
    QCOMPARE(t.cmbTargetTarget.Items.Count(), 0);
    QCOMPARE(t.Cell(t.grdMessageData, 34, 1), std::string("0"));
    QCOMPARE(t.Cell(t.grdMessageData, 1, 1), std::string("0"));
    QCOMPARE(t.Panel(2), std::string());
    QCOMPARE(t.Panel(3), std::string());
}

void PlaybackWindowTest::decodeLogsAndSecondPanelOfSilenceStay() {
    Player t("");
    t.StartBoth();
    t.FeedLine(0, AnyReport);
    t.FeedLine(1, "$GPGLL,4916.45,N,12311.12,W,225444,A");
    t.Advance(3);
    t.Press("Stop");
    const Log sAis = t.Lines(t.lstAisData);
    const Log sGps = t.Lines(t.lstGpsData);
    const std::string sPanel = t.Panel(4);
    t.ClearDisplays();
    QCOMPARE(t.Panel(4), sPanel);
    QVERIFY(!sPanel.empty());
    QCOMPARE(t.Panel(3), std::string());
    QVERIFY(!sAis.empty() && !sGps.empty());
    QVERIFY(t.Lines(t.lstAisData) == sAis);
    QVERIFY(t.Lines(t.lstGpsData) == sGps);
    QVERIFY(!t.tmrComm.isActive());
}

void PlaybackWindowTest::firstPortIsResetAndTheSecondIsNot() {
    Player t(Line("10:00:00", "$PNMLS,29,19,3*50") + Line("11:00:00", AnyReport));
    t.StartBoth();
    t.Advance(4);
    for (app::PortIndex i = 0; i < runtime::PortCount; ++i) {
        t.FeedLine(i, AnyReport);
        t.Feed(i, "unfinished");
    }
    t.Press("Stop");
    t.Play();
    QVERIFY(!t.m_bCommLastVdm(0));
    QVERIFY(!t.m_bCommReceived(0));
    QVERIFY(t.m_sCommBuffer(0).empty());
    QCOMPARE(t.m_lCommSeconds(0), 0);
    QVERIFY(t.m_bCommLastVdm(1));
    QVERIFY(t.m_bCommReceived(1));
    QCOMPARE(std::string(t.m_sCommBuffer(1)), std::string("unfinished"));
    QCOMPARE(t.m_lCommSeconds(1), 4);
    // So the signal sentence at the file's begin belongs to no message.
    t.Advance(1);
    QCOMPARE(t.LastLine(t.lstRxData), std::string("Time=10:00:00, Sig=29, Thr=19, Int=3"));
}

void PlaybackWindowTest::nothingIsReleasedBeforeTheFirstTick() {
    Player t(Line("10:00:00", AnyReport) + Line("11:00:00", AnyReport));
    t.Play();
    QVERIFY(t.Log().empty());
    t.tWorld.dtNow.lSeconds += 3600;  // however long that takes
    t.tmrTime_Timer();
    QCOMPARE(t.Log().size(), std::size_t{1});
}

void PlaybackWindowTest::linesKeepTheirRecordedSpacing() {
    // Sentence n was recorded n(n+1)/2 seconds after the first.
    std::string sFile;
    std::vector<int> iDue;
    for (int i = 0; i <= 10; ++i) {
        const int iSecond = i * (i + 1) / 2;
        iDue.push_back(iSecond);
        sFile += Line(Clock(10, iSecond).c_str(), "$GPZDA," + std::to_string(i));
    }
    sFile += Line("23:00:00", "$GPZDA,end");
    Player t(sFile);
    t.Play();
    for (int iTick = 1; iTick <= 60; ++iTick) {
        t.Advance(1);
        const auto iExpected = std::count_if(iDue.begin(), iDue.end(), [iTick](int i) { return i <= iTick - 1; });
        QCOMPARE(static_cast<int>(t.Log().size()), static_cast<int>(iExpected));
    }
}

void PlaybackWindowTest::sameSecondIsReleasedInOneTick() {
    std::string sFile;
    for (int i = 0; i < 500; ++i) sFile += Line("10:00:00", AnyReport);
    Player t(sFile);
    t.Play();
    t.Advance(1);
    QCOMPARE(t.Cell(t.grdMessageData, 34, 1), std::string("500"));
    QCOMPARE(t.Panel(1), std::string("Done"));
}

void PlaybackWindowTest::tenMinuteGapIsWaitedFor() {
    Player t(Line("10:00:00", "$GPZDA,1") + Line("10:10:00", "$GPZDA,2"));
    t.Play();
    t.Advance(1);
    QCOMPARE(t.Log(), Log{"$GPZDA,1"});
    t.Advance(599);
    QCOMPARE(t.Log(), Log{"$GPZDA,1"});
    QCOMPARE(t.Panel(1), std::string("Playback"));
    t.Advance(1);
    QCOMPARE(t.Log(), (Log{"$GPZDA,1", "$GPZDA,2"}));
    QCOMPARE(t.Panel(1), std::string("Done"));
}

void PlaybackWindowTest::stampsThatGoBackAreDueAtOnce() {
    Player t(Line("10:00:00", "$GPZDA,1") + Line("10:00:02", "$GPZDA,2") + Line("09:00:00", "$GPZDA,3") +
             Line("10:00:01", "$GPZDA,4") + Line("10:00:05", "$GPZDA,5"));
    t.Play();
    t.Advance(2);
    QCOMPARE(t.Log(), Log{"$GPZDA,1"});
    t.Advance(1);
    QCOMPARE(t.Log(), (Log{"$GPZDA,1", "$GPZDA,2", "$GPZDA,3", "$GPZDA,4"}));
    t.Advance(3);
    QCOMPARE(t.Log().size(), std::size_t{5});
}

void PlaybackWindowTest::pendingLineWaitsBetweenTicks() {
    Player t(Line("10:00:00", "$GPZDA,1") + Line("10:00:09", "$GPZDA,2"));
    t.Play();
    for (int i = 0; i < 9; ++i) {
        t.Advance(1);
        QCOMPARE(std::string(t.m_sCommBuffer(0)), std::string("$GPZDA,2"));
        QCOMPARE(t.Log(), Log{"$GPZDA,1"});
    }
    t.Advance(1);
    QCOMPARE(t.Log(), (Log{"$GPZDA,1", "$GPZDA,2"}));
}

void PlaybackWindowTest::clockThatJumpsReleasesAllThatIsDue() {
    Player t(Line("10:00:00", "$GPZDA,1") + Line("10:00:05", "$GPZDA,2") + Line("10:00:09", "$GPZDA,3") +
             Line("12:00:00", "$GPZDA,4"));
    t.Play();
    t.Advance(1);
    t.tWorld.dtNow.lSeconds -= 3600;  // set back: nothing is due for an hour
    t.Advance(20);
    QCOMPARE(t.Log(), Log{"$GPZDA,1"});
    t.tWorld.dtNow.lSeconds += 3600;
    t.Advance(1);
    QCOMPARE(t.Log(), (Log{"$GPZDA,1", "$GPZDA,2", "$GPZDA,3"}));
}

void PlaybackWindowTest::playedLinesKeepTheirStamps() {
    Player t(Line("23:58:07", AnyReport) + Line("23:58:07", "$PNMLS,29,19,3*50") +
             Line("23:58:08", "$GPGLL,4916.45,N,12311.12,W,225444,A") + Line("23:59:59", "$GPZDA,1"));
    t.Play();
    t.Advance(2);
    QCOMPARE(t.Lines(t.lstAisData).front(),
             std::string("Time=23:58:07, Ch=A, Id=1, MMSI=366053209, Position Scheduled"));
    QCOMPARE(t.Cell(t.grdTargetData, 1, 6), std::string("23:58:07"));
    QCOMPARE(t.Cell(t.grdTargetData, 1, 5), std::string("10"));
    QVERIFY(t.LastLine(t.lstRxData).starts_with("Time=23:58:07, Ch= A"));
    QVERIFY(t.LastLine(t.lstGpsData).starts_with("Time=23:58:08, Utc=22:54:44"));
    QCOMPARE(t.Panel(5), std::string("12:00:02"));
}

void PlaybackWindowTest::releasedLineCountsAsTraffic() {
    Player t(Line("10:00:00", "$GPZDA,1") + Line("10:00:00", "$X") + Line("11:00:00", "$GPZDA,2"));
    t.Play();
    t.Advance(1);
    QVERIFY(t.m_bCommReceived(0));
    QVERIFY(!t.m_bCommReceived(1));
    t.Advance(1);
    QCOMPARE(t.Panel(3), std::string("00:00"));
    QCOMPARE(t.Panel(4), std::string("00:02"));
}

void PlaybackWindowTest::everyLineEndServes_data() {
    QTest::addColumn<QByteArray>("end");
    QTest::newRow("CR LF") << QByteArray("\r\n");
    QTest::newRow("LF") << QByteArray("\n");
    QTest::newRow("CR") << QByteArray("\r");
}

void PlaybackWindowTest::everyLineEndServes() {
    QFETCH(QByteArray, end);
    QByteArray sFile;
    for (int i = 0; i < 3; ++i) sFile += "03/07/2005 10:00:00 $GPZDA," + QByteArray::number(i) + end;
    sFile += "03/07/2005 10:00:00 $GPZDA,last";  // without an end
    Player t(support::View(sFile));
    t.Play();
    t.Advance(1);
    QCOMPARE(t.Log(), (Log{"$GPZDA,0", "$GPZDA,1", "$GPZDA,2", "$GPZDA,last"}));
    QCOMPARE(t.Panel(1), std::string("Done"));
}

void PlaybackWindowTest::shortLineIsASizeError_data() {
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("19 characters") << QByteArray("03/07/2005 10:00:00");
    QTest::newRow("20 characters") << QByteArray("03/07/2005 10:00:00 ");
    QTest::newRow("20, no blank") << QByteArray("03/07/2005 10:00:00X");
    QTest::newRow("25 characters") << QByteArray("03/07/2005 10:00:00 $GPZD");
}

void PlaybackWindowTest::shortLineIsASizeError() {
    QFETCH(QByteArray, line);
    Player t(Line("10:00:00", "$GPZDA,1") + line.toStdString() + "\r\n" + Line("11:00:00", "$GPZDA,2"));
    t.Play();
    t.Advance(1);
    QCOMPARE(t.Log(), (Log{"$GPZDA,1", "<<Size Error>>"}));
    QCOMPARE(t.Panel(2), std::string("Size Error"));
    QCOMPARE(t.Panel(1), std::string("Playback"));
}

void PlaybackWindowTest::failedChecksumIsReportedAsLive() {
    Player t(Line("10:00:00", "$PNMLS,29,19,3*51") + Line("11:00:00", "$GPZDA,2"));
    t.Play();
    t.Advance(1);
    QCOMPARE(t.Log(), (Log{"$PNMLS,29,19,3*51", "<<Checksum Error>>"}));
    QCOMPARE(t.Panel(2), std::string("Checksum Error"));
    QCOMPARE(t.Marks(t.lstCommData(0)), (std::vector<bool>{false, false}));
}

void PlaybackWindowTest::bytesZeroAndTwentySixAreOrdinary() {
    const std::string sOdd("$GPZDA,\0\x1A,1", 11);
    Player t(Line("10:00:00", sOdd) + Line("10:00:00", "$GPZDA,2"));
    t.Play();
    t.Advance(1);
    QCOMPARE(t.lstCommData(0).Lines.Count(), 2);
    QCOMPARE(t.lstCommData(0).Lines.Line(0), sOdd);
    QCOMPARE(t.Panel(1), std::string("Done"));
}

void PlaybackWindowTest::endOfFileStopsWithDone() {
    Player t(Line("10:00:00", AnyReport));
    t.Play();
    const std::int16_t iFile = t.m_iRecordFile;
    t.Advance(1);
    QCOMPARE(t.Panel(1), std::string("Done"));
    QCOMPARE(Buttons(t), std::string(Stopped));
    QCOMPARE(t.windowTitle(), QStringLiteral("Tidewatch - played.txt"));
    QCOMPARE(t.Panel(2), std::string("1 Targets, 1 Messages"));
    QVERIFY(!t.tmrComm.isActive());
    QVERIFY(!t.m_bPlayback);
    QVERIFY(!t.m_tFiles.IsOpen(iFile));
    t.Advance(3);
    QCOMPARE(t.Panel(1), std::string("Done"));
}

void PlaybackWindowTest::emptyFileIsDoneAtTheFirstTick() {
    Player t("");
    t.Play();
    QCOMPARE(t.Panel(1), std::string("Playback"));
    t.Advance(1);
    QCOMPARE(t.Panel(1), std::string("Done"));
    QCOMPARE(Buttons(t), std::string(Stopped));
    QVERIFY(t.Log().empty());
}

void PlaybackWindowTest::stopEndsThePlayback() {
    Player t(Line("10:00:00", "$GPZDA,1") + Line("10:00:05", "$GPZDA,2"));
    t.Play();
    const std::int16_t iFile = t.m_iRecordFile;
    t.Advance(2);
    t.Press("Stop");
    QCOMPARE(t.Panel(1), std::string("Stopped"));
    QCOMPARE(Buttons(t), std::string(Stopped));
    QCOMPARE(t.windowTitle(), QStringLiteral("Tidewatch"));
    QVERIFY(!t.m_tFiles.IsOpen(iFile));
    t.Advance(20);
    QCOMPARE(t.Log(), Log{"$GPZDA,1"});
}

void PlaybackWindowTest::lineWithoutAStampEndsThePlayback_data() {
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("sentence alone") << QByteArray("$GPZDA,1,2,3,4,5,6,7,8");
    QTest::newRow("empty line") << QByteArray("");
    QTest::newRow("18 characters") << QByteArray("03/07/2005 10:00:0");
    QTest::newRow("February 30") << QByteArray("02/30/2005 10:00:00 $GPZDA,1");
    QTest::newRow("no leap year") << QByteArray("02/29/2005 10:00:00 $GPZDA,1");
    QTest::newRow("month 13") << QByteArray("13/07/2005 10:00:00 $GPZDA,1");
    QTest::newRow("month 0") << QByteArray("00/07/2005 10:00:00 $GPZDA,1");
    QTest::newRow("hour 24") << QByteArray("03/07/2005 24:00:00 $GPZDA,1");
    QTest::newRow("second 60") << QByteArray("03/07/2005 10:00:60 $GPZDA,1");
    QTest::newRow("year first") << QByteArray("2005/03/07 10:00:00 $GPZDA,1");
    QTest::newRow("points") << QByteArray("07.03.2005 10:00:00 $GPZDA,1");
    QTest::newRow("not filled up") << QByteArray("3/7/2005 10:00:00 $GPZDA,1");
    QTest::newRow("twelve hours") << QByteArray("03/07/2005 10:00 PM $GPZDA,1");
    QTest::newRow("blank in front") << QByteArray(" 03/07/2005 10:00:00 $GPZDA,1");
    QTest::newRow("tab for the blank") << QByteArray("03/07/2005\t10:00:00 $GPZDA,1");
    QTest::newRow("sign") << QByteArray("03/07/2005 +1:00:00 $GPZDA,1");
}

void PlaybackWindowTest::lineWithoutAStampEndsThePlayback() {
    QFETCH(QByteArray, line);
    Player t(Line("10:00:00", "$GPZDA,good") + line.toStdString() + "\r\n" + Line("10:00:00", "$GPZDA,after"));
    t.Play();
    const std::int16_t iFile = t.m_iRecordFile;
    t.Advance(1);
    QCOMPARE(t.Log(), Log{"$GPZDA,good"});
    QCOMPARE(t.Panel(1), std::string("Stopped"));
    QCOMPARE(t.Panel(2), std::string("line 2: does not begin with a date and time"));
    QCOMPARE(Buttons(t), std::string(Stopped));
    QVERIFY(!t.m_tFiles.IsOpen(iFile));
    QVERIFY(t.tWorld.sMessages.isEmpty());
    // The first line already.
    t.tWorld.WriteFile(t.sFile, line.toStdString() + "\r\n" + Line("10:00:00", "$GPZDA,after"));
    t.Play();
    t.Advance(1);
    QVERIFY(t.Log().empty());
    QCOMPARE(t.Panel(1), std::string("Stopped"));
    QCOMPARE(t.Panel(2), std::string("line 1: does not begin with a date and time"));
}

void PlaybackWindowTest::badLineIsTold_data() {
    QTest::addColumn<QByteArray>("end");
    QTest::addColumn<QString>("key");
    for (const char* sKey : {"Playback", "Playback Burst"}) {
        for (const auto& [sName, sEnd] : {std::pair("CR LF", "\r\n"), std::pair("LF", "\n"), std::pair("CR", "\r")}) {
            QTest::addRow("%s, %s", sKey, sName) << QByteArray(sEnd) << QString::fromLatin1(sKey);
        }
    }
}

// Lines count as an editor counts them, empty sentences and lines without a stamp included.
void PlaybackWindowTest::badLineIsTold() {
    QFETCH(QByteArray, end);
    QFETCH(QString, key);
    const QByteArray sGood = "03/07/2005 10:00:00 " + QByteArray(AnyReport) + end;
    const QByteArray sShort = "03/07/2005 10:00:00" + end;
    for (const auto& [sBad, sReason] : {std::pair(QByteArray(), "does not begin with a date and time"),
                                        std::pair(QByteArray((1 << 20) + 1, 'x'), "too long")}) {
        Player t((sGood.repeated(1202) + sShort + sBad + end + sGood).toStdString());
        t.tWorld.tFileAnswers = {t.sFile};
        t.Toolbar.Action(key).trigger();
        t.Advance(1);
        QCOMPARE(t.Panel(2), std::string("line 1204: ") + sReason);
        QCOMPARE(t.Cell(t.grdMessageData, 34, 1), std::string("1202"));
    }
}

void PlaybackWindowTest::damagedFileNeitherHangsNorCrashes_data() {
    QTest::addColumn<QString>("kind");
    for (const char* sKind : {"binary", "binary sentences", "zeros", "line of 100 MB", "100 MB behind a stamp"}) {
        QTest::newRow(sKind) << QString::fromLatin1(sKind);
    }
}

void PlaybackWindowTest::damagedFileNeitherHangsNorCrashes() {
    QFETCH(QString, kind);
    std::mt19937 tRandom(4711);
    std::string sContent;
    if (kind == QLatin1String("binary")) {
        for (int i = 0; i < 300000; ++i) sContent += static_cast<char>(tRandom());
    } else if (kind == QLatin1String("binary sentences")) {
        for (int i = 0; i < 2000; ++i) {
            std::string sNoise = i % 2 == 0 ? "!AIVDM,1,1,,A," : "$GPGLL,";
            for (auto j = tRandom() % 200; j > 0; --j) sNoise += static_cast<char>(14 + tRandom() % 242);
            sContent += Line("10:00:00", sNoise);
        }
        sContent += "no stamp\r\n";
    } else if (kind == QLatin1String("100 MB behind a stamp")) {
        sContent = Line("10:00:00", "$GPZDA,1") + "03/07/2005 10:00:00 $GPZDA,";
    }
    Player t(sContent);
    if (kind.contains(QLatin1String("100 MB"))) QVERIFY(QFile::resize(t.sFile, 100000000));
    if (kind == QLatin1String("zeros")) QVERIFY(QFile::resize(t.sFile, 500000));
    QElapsedTimer tElapsed;
    tElapsed.start();
    t.Play();
    t.Advance(2);
    QVERIFY(tElapsed.elapsed() < Patience);
    QCOMPARE(t.Panel(1), std::string("Stopped"));
    QVERIFY2(t.Panel(2).size() > 5, t.Panel(2).c_str());
    QCOMPARE(Buttons(t), std::string(Stopped));
    QVERIFY(t.tWorld.sMessages.isEmpty());

    t.PressWithFile("Playback Burst", t.sFile);
    QVERIFY(t.Panel(2).size() > 5);
    QCOMPARE(Buttons(t), std::string(Stopped));
    QCOMPARE(t.tWorld.bBusyPointer, (std::vector<bool>{true, false}));
}

void PlaybackWindowTest::unreadableFileIsSilent() {
    Player t(Line("10:00:00", AnyReport));
    QVERIFY(QFile::setPermissions(t.sFile, {}));
    QVERIFY(QFile::setPermissions(t.tWorld.Folder(), QFile::Permissions(0x7775)));
    // The system's administrator may read everything: become somebody else for a moment.
    const uid_t iUser = ::geteuid();
    if (iUser == 0) QCOMPARE(::seteuid(65534), 0);
    t.Play();
    const bool bBack = ::seteuid(iUser) == 0;
    QVERIFY(bBack);
    QCOMPARE(t.windowTitle(), QStringLiteral("Tidewatch"));
    QCOMPARE(Buttons(t), std::string(Stopped));
    QCOMPARE(t.Panel(1), std::string("Stopped"));
    QVERIFY(!t.m_bPlayback);
    QVERIFY(t.tWorld.sMessages.isEmpty());
}

void PlaybackWindowTest::shrinkingFileEndsThePlayback() {
    // Longer than what is read at once: 20,000 lines of some 65 characters over 20 seconds.
    std::string sFile;
    for (int i = 0; i < 20000; ++i) {
        sFile += Line(Clock(10, i / 1000).c_str(), AnyReport);
    }
    Player t(sFile);
    t.Play();
    t.Advance(1);
    QCOMPARE(t.Panel(1), std::string("Playback"));
    QVERIFY(QFile::resize(t.sFile, 100));
    for (int i = 0; i < 30 && t.m_bPlayback; ++i) t.Advance(1);
    QVERIFY(!t.m_bPlayback);
    QCOMPARE(Buttons(t), std::string(Stopped));
    const int iMessages = std::stoi(t.Cell(t.grdMessageData, 34, 1));
    QVERIFY(iMessages >= 1000 && iMessages < 20000);
    // At a line's end it is the end; within a line what is left may be no stamp.
    QVERIFY(t.Panel(1) == "Done" || (t.Panel(1) == "Stopped" && t.Panel(2).size() > 5));
}

void PlaybackWindowTest::playedLinesAreForwarded() {
    Player t(Line("10:00:00", AnyReport) + Line("10:00:00", "$GPZDA,1") + Line("10:00:00", "$PNMLS,29,19,3*51") +
             Line("11:00:00", AnyReport));
    t.chkOutputEnabled.setChecked(true);
    t.txtOutputPort.SetText("3");
    t.txtOutputSettings.SetText("19200,e,7,1");
    t.Play();
    QVERIFY(t.MSCommOutput.PortOpen());
    QCOMPARE(t.Device(t.MSCommOutput)->Settings().lBaud, 19200);
    QCOMPARE(t.Panel(1), std::string("Playback"));
    t.Advance(1);
    QCOMPARE(t.Device(t.MSCommOutput)->Written(), std::string(AnyReport) + "\r\n$GPZDA,1\r\n");
    QCOMPARE(t.Lines(t.lstOutputData), (Log{AnyReport, "$GPZDA,1"}));
    t.Press("Stop");
    QVERIFY(!t.MSCommOutput.PortOpen());
}

void PlaybackWindowTest::madeRmcCarriesTodaysDate() {
    Player t(Line("10:00:00", "$GPGLL,4916.45,N,12311.12,W,225444,A") + Line("11:00:00", AnyReport));
    t.chkOutputEnabled.setChecked(true);
    t.chkOutputRMC.setChecked(true);
    t.txtOutputPort.SetText("3");
    t.Play();
    t.Advance(1);
    const Log sOutput = t.Lines(t.lstOutputData);
    QCOMPARE(sOutput.size(), std::size_t{2});
    // The recording is of 7 March 2005, the clock says 15 May 2011.
    QVERIFY2(sOutput[0].starts_with("$ECRMC,225444,A,4916.45,N,12311.12,W,0.0,000.0,150511,0.0,E*"),
             sOutput[0].c_str());
}

void PlaybackWindowTest::playbackGoesOnWhenTheOutputCannotBeOpened() {
    Player t(Line("10:00:00", AnyReport) + Line("11:00:00", AnyReport));
    t.tWorld.sBadPorts[3] = "gone";
    t.chkOutputEnabled.setChecked(true);
    t.txtOutputPort.SetText("3");
    t.Play();
    QCOMPARE(t.Panel(1), std::string("Stopped"));  // not written
    QCOMPARE(t.Panel(2), std::string());
    QVERIFY(!t.MSCommOutput.PortOpen());
    QCOMPARE(Buttons(t), std::string(Playing));
    t.Advance(1);
    QCOMPARE(t.Log(), Log{AnyReport});
    QCOMPARE(t.Lines(t.lstOutputData), Log{AnyReport});
    QVERIFY(t.tWorld.sMessages.isEmpty());
}

void PlaybackWindowTest::startAfterAPlaybackTakesThePortsAgain() {
    Player t(Line("10:00:00", AnyReport));
    t.Play();
    t.Advance(1);
    t.StartBoth();
    QCOMPARE(t.Panel(1), std::string("Running"));
    QCOMPARE(t.windowTitle(), QStringLiteral("Tidewatch"));
    QVERIFY(t.Log().empty());
    t.FeedLine(0, "$GPZDA,live");
    QCOMPARE(t.Log(), Log{"$GPZDA,live"});
}

void PlaybackWindowTest::inputPortsStayClosed() {
    Player t(Line("10:00:00", AnyReport) + Line("11:00:00", AnyReport));
    t.chkCommEnabled(1).setChecked(true);
    t.Play();
    t.Advance(2);
    QVERIFY(!t.MSComm(0).PortOpen());
    QVERIFY(!t.MSComm(1).PortOpen());
}

void PlaybackWindowTest::closingTheWindowEndsThePlayback() {
    Player t(Line("10:00:00", AnyReport) + Line("11:00:00", AnyReport));
    t.Play();
    t.Advance(1);
    const std::int16_t iFile = t.m_iRecordFile;
    t.close();
    QVERIFY(!t.m_bPlayback);
    QVERIFY(!t.m_tFiles.IsOpen(iFile));
    QVERIFY(QFile::exists(t.tWorld.ProfileFile()));
}

QTEST_MAIN(PlaybackWindowTest)
#include "PlaybackWindowTest.moc"
