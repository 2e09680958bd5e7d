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
#include "tests/support/TestWindow.h"
#include "tests/window/Buttons.h"

using support::Buttons;
using support::Bytes;
using support::Stopped;
using support::TestWindow;
using support::World;

namespace {

constexpr const char* Report = "!AIVDM,1,1,,A,15M67F@uQqG?w<hK?Mu8iFv00000,0*7B";
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

// A window, and a file that it is told to play.
struct Playback {
    explicit Playback(std::string_view sContent, const QString& sName = QStringLiteral("played.txt"))
        : sFile(tWorld.Path(sName)), t(tWorld) {
        tWorld.WriteFile(sFile, sContent);
        t.LoadAndShow();
    }
    void Press() {
        tWorld.tFileAnswers = {sFile};
        t.Press("Playback");
    }
    std::vector<std::string> Log() { return t.Lines(t.lstCommData(0)); }

    World tWorld;
    QString sFile;
    TestWindow t;
};

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
    World tWorld;
    TestWindow t(tWorld);
    t.LoadAndShow();
    tWorld.tFileAnswers = {std::nullopt};
    t.Press("Playback");
    QCOMPARE(tWorld.tDialogs.size(), std::size_t{1});
    const toolkit::FileRequest& tRequest = tWorld.tDialogs.front();
    QVERIFY(!tRequest.bSave);
    QCOMPARE(tRequest.sTitle, QStringLiteral("Tidewatch - Open"));
    QCOMPARE(tRequest.sFolder, tWorld.Folder());
    QCOMPARE(tRequest.sFileName, QStringLiteral("Tidewatch.Txt"));
    QCOMPARE(tRequest.sFilter, QStringLiteral("Text (*.txt)"));
    QCOMPARE(tRequest.sExtension, QStringLiteral("txt"));
}

void PlaybackWindowTest::nextDialogCarriesTheFilesName() {
    Playback p("");
    p.Press();
    p.t.Advance(1);
    p.tWorld.tFileAnswers = {std::nullopt};
    p.t.Press("Playback");
    QCOMPARE(p.tWorld.tDialogs.back().sTitle, QStringLiteral("Tidewatch - played.txt - Open"));
}

void PlaybackWindowTest::cancelledDialogChangesNothing() {
    World tWorld;
    TestWindow t(tWorld);
    t.LoadAndShow();
    t.StartBoth();
    t.FeedLine(0, Report);
    t.Press("Stop");
    tWorld.tFileAnswers = {std::nullopt};
    t.Press("Playback");
    QCOMPARE(t.windowTitle(), QStringLiteral("Tidewatch"));
    QCOMPARE(Buttons(t), std::string(Stopped));
    QCOMPARE(t.Panel(1), std::string("Stopped"));
    QCOMPARE(t.grdTargetData.Cells.Rows(), 2);
    QVERIFY(tWorld.sMessages.isEmpty());
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
    t.FeedLine(0, Report);
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
    Playback p(Line("10:00:00", Report) + Line("10:05:00", Report), QStringLiteral("a night at sea.txt"));
    p.Press();
    QCOMPARE(p.t.windowTitle(), QStringLiteral("Tidewatch - a night at sea.txt"));
    QCOMPARE(Buttons(p.t), std::string(Playing));
    QCOMPARE(p.t.Panel(1), std::string("Playback"));
    QVERIFY(p.t.tmrComm.isActive());
    QVERIFY(p.t.m_bPlayback);
    p.t.Advance(5);
    QCOMPARE(Buttons(p.t), std::string(Playing));
    QCOMPARE(p.t.Panel(1), std::string("Playback"));
}

void PlaybackWindowTest::settingsStayUsable() {
    Playback p(Line("10:00:00", Report) + Line("10:05:00", Report));
    p.Press();
    p.t.Advance(1);
    QVERIFY(p.t.chkCommEnabled(0).isEnabled());
    QVERIFY(p.t.txtCommPort(0).isEnabled());
    QVERIFY(p.t.txtCommSettings(1).isEnabled());
    QVERIFY(p.t.chkOutputEnabled.isEnabled());
    QVERIFY(p.t.txtOutputPort.isEnabled());
    QVERIFY(p.t.chkOutputRMC.isEnabled());
}

void PlaybackWindowTest::displaysAreCleared() {
    Playback p(Line("10:00:00", Report));
    p.t.chkOutputEnabled.setChecked(true);
    p.t.txtOutputPort.SetText("3");
    p.t.StartBoth();
    p.t.FeedLine(0, Report);
    p.t.FeedLine(0, "$PNMLS,29,19,3*50");
    p.t.FeedLine(1, "$X");
    p.t.Advance(3);
    p.t.Press("Stop");
    p.Press();
    QVERIFY(p.Log().empty());
    QVERIFY(p.t.Lines(p.t.lstCommData(1)).empty());
    QVERIFY(p.t.Lines(p.t.lstRxData).empty());
    QVERIFY(p.t.Lines(p.t.lstOutputData).empty());
    QCOMPARE(p.t.grdTargetData.Cells.Rows(), 1);
    QCOMPARE(p.t.cmbTargetTarget.Items.Count(), 0);
    QCOMPARE(p.t.Cell(p.t.grdMessageData, 34, 1), std::string("0"));
    QCOMPARE(p.t.Cell(p.t.grdMessageData, 1, 1), std::string("0"));
    QCOMPARE(p.t.Panel(2), std::string());
    QCOMPARE(p.t.Panel(3), std::string());
}

void PlaybackWindowTest::decodeLogsAndSecondPanelOfSilenceStay() {
    Playback p("");
    p.t.StartBoth();
    p.t.FeedLine(0, Report);
    p.t.FeedLine(1, "$GPGLL,4916.45,N,12311.12,W,225444,A");
    p.t.Advance(3);
    p.t.Press("Stop");
    const Log sAis = p.t.Lines(p.t.lstAisData);
    const Log sGps = p.t.Lines(p.t.lstGpsData);
    const std::string sPanel = p.t.Panel(4);
    p.t.ClearDisplays();
    QCOMPARE(p.t.Panel(4), sPanel);
    QVERIFY(!sPanel.empty());
    QCOMPARE(p.t.Panel(3), std::string());
    QVERIFY(!sAis.empty() && !sGps.empty());
    QVERIFY(p.t.Lines(p.t.lstAisData) == sAis);
    QVERIFY(p.t.Lines(p.t.lstGpsData) == sGps);
    QVERIFY(!p.t.tmrComm.isActive());
}

void PlaybackWindowTest::firstPortIsResetAndTheSecondIsNot() {
    Playback p(Line("10:00:00", "$PNMLS,29,19,3*50") + Line("11:00:00", Report));
    p.t.StartBoth();
    p.t.Advance(4);
    for (app::PortIndex i = 0; i < runtime::PortCount; ++i) {
        p.t.FeedLine(i, Report);
        p.t.Feed(i, "unfinished");
    }
    p.t.Press("Stop");
    p.Press();
    QVERIFY(!p.t.m_bCommLastVdm(0));
    QVERIFY(!p.t.m_bCommReceived(0));
    QVERIFY(p.t.m_sCommBuffer(0).empty());
    QCOMPARE(p.t.m_lCommSeconds(0), 0);
    QVERIFY(p.t.m_bCommLastVdm(1));
    QVERIFY(p.t.m_bCommReceived(1));
    QCOMPARE(std::string(p.t.m_sCommBuffer(1)), std::string("unfinished"));
    QCOMPARE(p.t.m_lCommSeconds(1), 4);
    // So the signal sentence at the file's begin belongs to no message.
    p.t.Advance(1);
    QCOMPARE(p.t.LastLine(p.t.lstRxData), std::string("Time=10:00:00, Sig=29, Thr=19, Int=3"));
}

void PlaybackWindowTest::nothingIsReleasedBeforeTheFirstTick() {
    Playback p(Line("10:00:00", Report) + Line("11:00:00", Report));
    p.Press();
    QVERIFY(p.Log().empty());
    p.tWorld.dtNow.lSeconds += 3600;  // however long that takes
    p.t.tmrTime_Timer();
    QCOMPARE(p.Log().size(), std::size_t{1});
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
    Playback p(sFile);
    p.Press();
    for (int iTick = 1; iTick <= 60; ++iTick) {
        p.t.Advance(1);
        const auto iExpected = std::count_if(iDue.begin(), iDue.end(), [iTick](int i) { return i <= iTick - 1; });
        QCOMPARE(static_cast<int>(p.Log().size()), static_cast<int>(iExpected));
    }
}

void PlaybackWindowTest::sameSecondIsReleasedInOneTick() {
    std::string sFile;
    for (int i = 0; i < 500; ++i) sFile += Line("10:00:00", Report);
    Playback p(sFile);
    p.Press();
    p.t.Advance(1);
    QCOMPARE(p.t.Cell(p.t.grdMessageData, 34, 1), std::string("500"));
    QCOMPARE(p.t.Panel(1), std::string("Done"));
}

void PlaybackWindowTest::tenMinuteGapIsWaitedFor() {
    Playback p(Line("10:00:00", "$GPZDA,1") + Line("10:10:00", "$GPZDA,2"));
    p.Press();
    p.t.Advance(1);
    QCOMPARE(p.Log(), Log{"$GPZDA,1"});
    p.t.Advance(599);
    QCOMPARE(p.Log(), Log{"$GPZDA,1"});
    QCOMPARE(p.t.Panel(1), std::string("Playback"));
    p.t.Advance(1);
    QCOMPARE(p.Log(), (Log{"$GPZDA,1", "$GPZDA,2"}));
    QCOMPARE(p.t.Panel(1), std::string("Done"));
}

void PlaybackWindowTest::stampsThatGoBackAreDueAtOnce() {
    Playback p(Line("10:00:00", "$GPZDA,1") + Line("10:00:02", "$GPZDA,2") + Line("09:00:00", "$GPZDA,3") +
               Line("10:00:01", "$GPZDA,4") + Line("10:00:05", "$GPZDA,5"));
    p.Press();
    p.t.Advance(2);
    QCOMPARE(p.Log(), Log{"$GPZDA,1"});
    p.t.Advance(1);
    QCOMPARE(p.Log(), (Log{"$GPZDA,1", "$GPZDA,2", "$GPZDA,3", "$GPZDA,4"}));
    p.t.Advance(3);
    QCOMPARE(p.Log().size(), std::size_t{5});
}

void PlaybackWindowTest::pendingLineWaitsBetweenTicks() {
    Playback p(Line("10:00:00", "$GPZDA,1") + Line("10:00:09", "$GPZDA,2"));
    p.Press();
    for (int i = 0; i < 9; ++i) {
        p.t.Advance(1);
        QCOMPARE(std::string(p.t.m_sCommBuffer(0)), std::string("$GPZDA,2"));
        QCOMPARE(p.Log(), Log{"$GPZDA,1"});
    }
    p.t.Advance(1);
    QCOMPARE(p.Log(), (Log{"$GPZDA,1", "$GPZDA,2"}));
}

void PlaybackWindowTest::clockThatJumpsReleasesAllThatIsDue() {
    Playback p(Line("10:00:00", "$GPZDA,1") + Line("10:00:05", "$GPZDA,2") + Line("10:00:09", "$GPZDA,3") +
               Line("12:00:00", "$GPZDA,4"));
    p.Press();
    p.t.Advance(1);
    p.tWorld.dtNow.lSeconds -= 3600;  // set back: nothing is due for an hour
    p.t.Advance(20);
    QCOMPARE(p.Log(), Log{"$GPZDA,1"});
    p.tWorld.dtNow.lSeconds += 3600;
    p.t.Advance(1);
    QCOMPARE(p.Log(), (Log{"$GPZDA,1", "$GPZDA,2", "$GPZDA,3"}));
}

void PlaybackWindowTest::playedLinesKeepTheirStamps() {
    Playback p(Line("23:58:07", Report) + Line("23:58:07", "$PNMLS,29,19,3*50") +
               Line("23:58:08", "$GPGLL,4916.45,N,12311.12,W,225444,A") + Line("23:59:59", "$GPZDA,1"));
    p.Press();
    p.t.Advance(2);
    QCOMPARE(p.t.Lines(p.t.lstAisData).front(),
             std::string("Time=23:58:07, Ch=A, Id=1, MMSI=366053209, Position Scheduled"));
    QCOMPARE(p.t.Cell(p.t.grdTargetData, 1, 6), std::string("23:58:07"));
    QCOMPARE(p.t.Cell(p.t.grdTargetData, 1, 5), std::string("10"));
    QVERIFY(p.t.LastLine(p.t.lstRxData).starts_with("Time=23:58:07, Ch= A"));
    QVERIFY(p.t.LastLine(p.t.lstGpsData).starts_with("Time=23:58:08, Utc=22:54:44"));
    QCOMPARE(p.t.Panel(5), std::string("12:00:02"));
}

void PlaybackWindowTest::releasedLineCountsAsTraffic() {
    Playback p(Line("10:00:00", "$GPZDA,1") + Line("10:00:00", "$X") + Line("11:00:00", "$GPZDA,2"));
    p.Press();
    p.t.Advance(1);
    QVERIFY(p.t.m_bCommReceived(0));
    QVERIFY(!p.t.m_bCommReceived(1));
    p.t.Advance(1);
    QCOMPARE(p.t.Panel(3), std::string("00:00"));
    QCOMPARE(p.t.Panel(4), std::string("00:02"));
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
    Playback p(support::View(sFile));
    p.Press();
    p.t.Advance(1);
    QCOMPARE(p.Log(), (Log{"$GPZDA,0", "$GPZDA,1", "$GPZDA,2", "$GPZDA,last"}));
    QCOMPARE(p.t.Panel(1), std::string("Done"));
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
    Playback p(Line("10:00:00", "$GPZDA,1") + line.toStdString() + "\r\n" + Line("11:00:00", "$GPZDA,2"));
    p.Press();
    p.t.Advance(1);
    QCOMPARE(p.Log(), (Log{"$GPZDA,1", "<<Size Error>>"}));
    QCOMPARE(p.t.Panel(2), std::string("Size Error"));
    QCOMPARE(p.t.Panel(1), std::string("Playback"));
}

void PlaybackWindowTest::failedChecksumIsReportedAsLive() {
    Playback p(Line("10:00:00", "$PNMLS,29,19,3*51") + Line("11:00:00", "$GPZDA,2"));
    p.Press();
    p.t.Advance(1);
    QCOMPARE(p.Log(), (Log{"$PNMLS,29,19,3*51", "<<Checksum Error>>"}));
    QCOMPARE(p.t.Panel(2), std::string("Checksum Error"));
    QCOMPARE(p.t.Marks(p.t.lstCommData(0)), (std::vector<bool>{false, false}));
}

void PlaybackWindowTest::bytesZeroAndTwentySixAreOrdinary() {
    const std::string sOdd("$GPZDA,\0\x1A,1", 11);
    Playback p(Line("10:00:00", sOdd) + Line("10:00:00", "$GPZDA,2"));
    p.Press();
    p.t.Advance(1);
    QCOMPARE(p.t.lstCommData(0).Lines.Count(), 2);
    QCOMPARE(p.t.lstCommData(0).Lines.Line(0), sOdd);
    QCOMPARE(p.t.Panel(1), std::string("Done"));
}

void PlaybackWindowTest::endOfFileStopsWithDone() {
    Playback p(Line("10:00:00", Report));
    p.Press();
    const std::int16_t iFile = p.t.m_iRecordFile;
    p.t.Advance(1);
    QCOMPARE(p.t.Panel(1), std::string("Done"));
    QCOMPARE(Buttons(p.t), std::string(Stopped));
    QCOMPARE(p.t.windowTitle(), QStringLiteral("Tidewatch - played.txt"));
    QCOMPARE(p.t.Panel(2), std::string("1 Targets, 1 Messages"));
    QVERIFY(!p.t.tmrComm.isActive());
    QVERIFY(!p.t.m_bPlayback);
    QVERIFY(!p.t.m_tFiles.IsOpen(iFile));
    p.t.Advance(3);
    QCOMPARE(p.t.Panel(1), std::string("Done"));
}

void PlaybackWindowTest::emptyFileIsDoneAtTheFirstTick() {
    Playback p("");
    p.Press();
    QCOMPARE(p.t.Panel(1), std::string("Playback"));
    p.t.Advance(1);
    QCOMPARE(p.t.Panel(1), std::string("Done"));
    QCOMPARE(Buttons(p.t), std::string(Stopped));
    QVERIFY(p.Log().empty());
}

void PlaybackWindowTest::stopEndsThePlayback() {
    Playback p(Line("10:00:00", "$GPZDA,1") + Line("10:00:05", "$GPZDA,2"));
    p.Press();
    const std::int16_t iFile = p.t.m_iRecordFile;
    p.t.Advance(2);
    p.t.Press("Stop");
    QCOMPARE(p.t.Panel(1), std::string("Stopped"));
    QCOMPARE(Buttons(p.t), std::string(Stopped));
    QCOMPARE(p.t.windowTitle(), QStringLiteral("Tidewatch"));
    QVERIFY(!p.t.m_tFiles.IsOpen(iFile));
    p.t.Advance(20);
    QCOMPARE(p.Log(), Log{"$GPZDA,1"});
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
    Playback p(Line("10:00:00", "$GPZDA,good") + line.toStdString() + "\r\n" + Line("10:00:00", "$GPZDA,after"));
    p.Press();
    const std::int16_t iFile = p.t.m_iRecordFile;
    p.t.Advance(1);
    QCOMPARE(p.Log(), Log{"$GPZDA,good"});
    QCOMPARE(p.t.Panel(1), std::string("Stopped"));
    QCOMPARE(p.t.Panel(2), std::string("line 2: does not begin with a date and time"));
    QCOMPARE(Buttons(p.t), std::string(Stopped));
    QVERIFY(!p.t.m_tFiles.IsOpen(iFile));
    QVERIFY(p.tWorld.sMessages.isEmpty());
    // The first line already.
    p.tWorld.WriteFile(p.sFile, line.toStdString() + "\r\n" + Line("10:00:00", "$GPZDA,after"));
    p.Press();
    p.t.Advance(1);
    QVERIFY(p.Log().empty());
    QCOMPARE(p.t.Panel(1), std::string("Stopped"));
    QCOMPARE(p.t.Panel(2), std::string("line 1: does not begin with a date and time"));
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
    const QByteArray sGood = "03/07/2005 10:00:00 " + QByteArray(Report) + end;
    const QByteArray sShort = "03/07/2005 10:00:00" + end;
    for (const auto& [sBad, sReason] : {std::pair(QByteArray(), "does not begin with a date and time"),
                                        std::pair(QByteArray((1 << 20) + 1, 'x'), "too long")}) {
        Playback p((sGood.repeated(1202) + sShort + sBad + end + sGood).toStdString());
        p.tWorld.tFileAnswers = {p.sFile};
        p.t.Toolbar.Action(key).trigger();
        p.t.Advance(1);
        QCOMPARE(p.t.Panel(2), std::string("line 1204: ") + sReason);
        QCOMPARE(p.t.Cell(p.t.grdMessageData, 34, 1), std::string("1202"));
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
    Playback p(sContent);
    if (kind.contains(QLatin1String("100 MB"))) QVERIFY(QFile::resize(p.sFile, 100000000));
    if (kind == QLatin1String("zeros")) QVERIFY(QFile::resize(p.sFile, 500000));
    QElapsedTimer tElapsed;
    tElapsed.start();
    p.Press();
    p.t.Advance(2);
    QVERIFY(tElapsed.elapsed() < Patience);
    QCOMPARE(p.t.Panel(1), std::string("Stopped"));
    QVERIFY2(p.t.Panel(2).size() > 5, p.t.Panel(2).c_str());
    QCOMPARE(Buttons(p.t), std::string(Stopped));
    QVERIFY(p.tWorld.sMessages.isEmpty());

    p.tWorld.tFileAnswers = {p.sFile};
    p.t.Press("Playback Burst");
    QVERIFY(p.t.Panel(2).size() > 5);
    QCOMPARE(Buttons(p.t), std::string(Stopped));
    QCOMPARE(p.tWorld.bBusyPointer, (std::vector<bool>{true, false}));
}

void PlaybackWindowTest::unreadableFileIsSilent() {
    Playback p(Line("10:00:00", Report));
    QVERIFY(QFile::setPermissions(p.sFile, {}));
    QVERIFY(QFile::setPermissions(p.tWorld.Folder(), QFile::Permissions(0x7775)));
    // The system's administrator may read everything: become somebody else for a moment.
    const uid_t iUser = ::geteuid();
    if (iUser == 0) QCOMPARE(::seteuid(65534), 0);
    p.Press();
    const bool bBack = ::seteuid(iUser) == 0;
    QVERIFY(bBack);
    QCOMPARE(p.t.windowTitle(), QStringLiteral("Tidewatch"));
    QCOMPARE(Buttons(p.t), std::string(Stopped));
    QCOMPARE(p.t.Panel(1), std::string("Stopped"));
    QVERIFY(!p.t.m_bPlayback);
    QVERIFY(p.tWorld.sMessages.isEmpty());
}

void PlaybackWindowTest::shrinkingFileEndsThePlayback() {
    // Longer than what is read at once: 20,000 lines of some 65 characters over 20 seconds.
    std::string sFile;
    for (int i = 0; i < 20000; ++i) {
        sFile += Line(Clock(10, i / 1000).c_str(), Report);
    }
    Playback p(sFile);
    p.Press();
    p.t.Advance(1);
    QCOMPARE(p.t.Panel(1), std::string("Playback"));
    QVERIFY(QFile::resize(p.sFile, 100));
    for (int i = 0; i < 30 && p.t.m_bPlayback; ++i) p.t.Advance(1);
    QVERIFY(!p.t.m_bPlayback);
    QCOMPARE(Buttons(p.t), std::string(Stopped));
    const int iMessages = std::stoi(p.t.Cell(p.t.grdMessageData, 34, 1));
    QVERIFY(iMessages >= 1000 && iMessages < 20000);
    // At a line's end it is the end; within a line what is left may be no stamp.
    QVERIFY(p.t.Panel(1) == "Done" || (p.t.Panel(1) == "Stopped" && p.t.Panel(2).size() > 5));
}

void PlaybackWindowTest::playedLinesAreForwarded() {
    Playback p(Line("10:00:00", Report) + Line("10:00:00", "$GPZDA,1") + Line("10:00:00", "$PNMLS,29,19,3*51") +
               Line("11:00:00", Report));
    p.t.chkOutputEnabled.setChecked(true);
    p.t.txtOutputPort.SetText("3");
    p.t.txtOutputSettings.SetText("19200,e,7,1");
    p.Press();
    QVERIFY(p.t.MSCommOutput.PortOpen());
    QCOMPARE(p.t.Device(p.t.MSCommOutput)->Settings().lBaud, 19200);
    QCOMPARE(p.t.Panel(1), std::string("Playback"));
    p.t.Advance(1);
    QCOMPARE(p.t.Device(p.t.MSCommOutput)->Written(), std::string(Report) + "\r\n$GPZDA,1\r\n");
    QCOMPARE(p.t.Lines(p.t.lstOutputData), (Log{Report, "$GPZDA,1"}));
    p.t.Press("Stop");
    QVERIFY(!p.t.MSCommOutput.PortOpen());
}

void PlaybackWindowTest::madeRmcCarriesTodaysDate() {
    Playback p(Line("10:00:00", "$GPGLL,4916.45,N,12311.12,W,225444,A") + Line("11:00:00", Report));
    p.t.chkOutputEnabled.setChecked(true);
    p.t.chkOutputRMC.setChecked(true);
    p.t.txtOutputPort.SetText("3");
    p.Press();
    p.t.Advance(1);
    const Log sOutput = p.t.Lines(p.t.lstOutputData);
    QCOMPARE(sOutput.size(), std::size_t{2});
    // The recording is of 7 March 2005, the clock says 15 May 2011.
    QVERIFY2(sOutput[0].starts_with("$ECRMC,225444,A,4916.45,N,12311.12,W,0.0,000.0,150511,0.0,E*"),
             sOutput[0].c_str());
}

void PlaybackWindowTest::playbackGoesOnWhenTheOutputCannotBeOpened() {
    Playback p(Line("10:00:00", Report) + Line("11:00:00", Report));
    p.tWorld.sBadPorts[3] = "gone";
    p.t.chkOutputEnabled.setChecked(true);
    p.t.txtOutputPort.SetText("3");
    p.Press();
    QCOMPARE(p.t.Panel(1), std::string("Stopped"));  // not written
    QCOMPARE(p.t.Panel(2), std::string());
    QVERIFY(!p.t.MSCommOutput.PortOpen());
    QCOMPARE(Buttons(p.t), std::string(Playing));
    p.t.Advance(1);
    QCOMPARE(p.Log(), Log{Report});
    QCOMPARE(p.t.Lines(p.t.lstOutputData), Log{Report});
    QVERIFY(p.tWorld.sMessages.isEmpty());
}

void PlaybackWindowTest::startAfterAPlaybackTakesThePortsAgain() {
    Playback p(Line("10:00:00", Report));
    p.Press();
    p.t.Advance(1);
    p.t.StartBoth();
    QCOMPARE(p.t.Panel(1), std::string("Running"));
    QCOMPARE(p.t.windowTitle(), QStringLiteral("Tidewatch"));
    QVERIFY(p.Log().empty());
    p.t.FeedLine(0, "$GPZDA,live");
    QCOMPARE(p.Log(), Log{"$GPZDA,live"});
}

void PlaybackWindowTest::inputPortsStayClosed() {
    Playback p(Line("10:00:00", Report) + Line("11:00:00", Report));
    p.t.chkCommEnabled(1).setChecked(true);
    p.Press();
    p.t.Advance(2);
    QVERIFY(!p.t.MSComm(0).PortOpen());
    QVERIFY(!p.t.MSComm(1).PortOpen());
}

void PlaybackWindowTest::closingTheWindowEndsThePlayback() {
    Playback p(Line("10:00:00", Report) + Line("11:00:00", Report));
    p.Press();
    p.t.Advance(1);
    const std::int16_t iFile = p.t.m_iRecordFile;
    p.t.close();
    QVERIFY(!p.t.m_bPlayback);
    QVERIFY(!p.t.m_tFiles.IsOpen(iFile));
    QVERIFY(QFile::exists(p.tWorld.ProfileFile()));
}

QTEST_MAIN(PlaybackWindowTest)
#include "PlaybackWindowTest.moc"
