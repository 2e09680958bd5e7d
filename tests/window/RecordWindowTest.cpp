// Recording: the dialog, the lines, and when they reach the disk.
#include <QCoreApplication>
#include <QFileInfo>
#include <QProcess>
#include <QTest>

#include "tests/support/Bytes.h"
#include "tests/support/PrintString.h"
#include "tests/window/Bench.h"
#include "tests/window/RecordingChild.h"

using support::AnyReport;
using support::Bytes;
using support::Recording;
using support::ShownWindow;
using support::TestWindow;
using support::World;

namespace {

constexpr int Patience = 60000;  // milliseconds until a wait is given up

}  // namespace

class RecordWindowTest : public QObject {
    Q_OBJECT

private slots:
    void dialogAsksForAFileToSave();
    void dialogTitleCarriesThePresentCaption();
    void cancelledDialogChangesNothing();
    void recordingShowsInButtonAndPanel();
    void earlierContentIsReplaced();
    void fileThatCannotBeCreatedSaysWhy_data();
    void fileThatCannotBeCreatedSaysWhy();
    void linesAreWrittenByteForByte();
    void stampIsTheArrivalAtTheCarriageReturn();
    void onlyDecodedLinesAreWritten_data();
    void onlyDecodedLinesAreWritten();
    void failedChecksumIsNotRecorded();
    void bothPortsGoToTheFileInTheirOrder();
    void nothingIsWrittenBeforeAndAfterTheLines();
    void recordingBeginsAndEndsWithTheButtons();
    void wallClockBringsLinesToTheDisk();
    void stopBringsLinesToTheDisk();
    void killedProgramLosesTheLastSecondAtMost();
    void fileOfAFinishedBurstCanBeRecordedOver();
};

void RecordWindowTest::dialogAsksForAFileToSave() {
    ShownWindow t;
    t.StartBoth();
    t.tWorld.tFileAnswers = {std::nullopt};
    t.Press("Record");
    QCOMPARE(t.tWorld.tDialogs.size(), std::size_t{1});
    const toolkit::FileRequest& tRequest = t.tWorld.tDialogs.front();
    QVERIFY(tRequest.bSave);  // asks before an existing file is replaced
    QCOMPARE(tRequest.sTitle, QStringLiteral("Tidewatch - Save As"));
    QCOMPARE(tRequest.sFileName, QStringLiteral("Tidewatch.Txt"));
    QCOMPARE(tRequest.sFilter, QStringLiteral("Text (*.txt)"));
    QCOMPARE(tRequest.sExtension, QStringLiteral("txt"));
}

void RecordWindowTest::dialogTitleCarriesThePresentCaption() {
    ShownWindow t;
    t.StartBoth();
    t.setWindowTitle(QStringLiteral("Tidewatch - night.txt"));
    t.tWorld.tFileAnswers = {std::nullopt};
    t.Press("Record");
    QCOMPARE(t.tWorld.tDialogs.front().sTitle, QStringLiteral("Tidewatch - night.txt - Save As"));
}

void RecordWindowTest::cancelledDialogChangesNothing() {
    ShownWindow t;
    t.StartBoth();
    t.tWorld.tFileAnswers = {std::nullopt};
    t.Press("Record");
    QCOMPARE(t.Panel(1), std::string("Running"));
    QVERIFY(t.Toolbar.Action(QStringLiteral("Record")).isEnabled());
    QVERIFY(!t.Toolbar.Action(QStringLiteral("Record")).isChecked());
    QVERIFY(!t.m_bRecording);
    QVERIFY(t.tWorld.sMessages.isEmpty());
}

void RecordWindowTest::recordingShowsInButtonAndPanel() {
    Recording r;
    QCOMPARE(r.t.Panel(1), std::string("Record"));
    QVERIFY(!r.t.Toolbar.Action(QStringLiteral("Record")).isEnabled());
    QVERIFY(r.t.Toolbar.Action(QStringLiteral("Record")).isChecked());
    QVERIFY(r.t.Toolbar.Action(QStringLiteral("Stop")).isEnabled());
    QVERIFY(r.t.m_bRecording);
    QCOMPARE(r.t.windowTitle(), QStringLiteral("Tidewatch"));
    r.t.Press("Stop");
    QCOMPARE(r.t.Panel(1), std::string("Stopped"));
    QVERIFY(!r.t.Toolbar.Action(QStringLiteral("Record")).isChecked());
    QVERIFY(!r.t.m_bRecording);
}

void RecordWindowTest::earlierContentIsReplaced() {
    World tWorld;
    const QString sFile = tWorld.Path(QStringLiteral("old.txt"));
    tWorld.WriteFile(sFile, std::string(5000, 'x'));
    TestWindow t(tWorld);
    t.LoadAndShow();
    t.StartBoth();
    tWorld.tFileAnswers = {sFile};
    t.Press("Record");
    QCOMPARE(QFileInfo(sFile).size(), qint64{0});
    t.Press("Stop");
    QCOMPARE(Bytes(tWorld.ReadFile(sFile)), QByteArray());
}

void RecordWindowTest::fileThatCannotBeCreatedSaysWhy_data() {
    QTest::addColumn<QString>("file");
    QTest::addColumn<std::string>("reason");
    QTest::newRow("no folder") << "none/record.txt" << std::string("Record - No such file or directory");
    QTest::newRow("a folder") << "." << std::string("Record - Is a directory");
    QTest::newRow("no name") << QString() << std::string("Record - No such file or directory");
}

// Nothing else changes.
void RecordWindowTest::fileThatCannotBeCreatedSaysWhy() {
    QFETCH(QString, file);
    QFETCH(std::string, reason);
    ShownWindow t;
    t.StartBoth();
    t.FeedLine(0, AnyReport);
    t.PressWithFile("Record", file.isEmpty() ? file : t.tWorld.Path(file));
    QVERIFY(!t.m_bRecording);
    QCOMPARE(t.Panel(1), std::string("Running"));
    QCOMPARE(t.Panel(2), reason);
    QVERIFY(t.Toolbar.Action(QStringLiteral("Record")).isEnabled());
    QVERIFY(!t.Toolbar.Action(QStringLiteral("Record")).isChecked());
    t.FeedLine(0, AnyReport);
    t.Advance(1);
    QCOMPARE(t.grdTargetData.Cells.Rows(), 3);
    QVERIFY(t.tWorld.sMessages.isEmpty());
}

void RecordWindowTest::linesAreWrittenByteForByte() {
    Recording r;
    r.tWorld.SetClock("2011-03-07T04:05:06");
    r.t.FeedLine(0, AnyReport);
    r.t.FeedLine(0, "$PNMLS,29,19,3*50");
    r.tWorld.SetClock("2011-12-31T23:59:59");
    r.t.FeedLine(0, "$GPGLL,4916.45,N,12311.12,W,225444,A");  // none of its own: none in the file
    r.t.FeedLine(0, "$GPRMC,1,A \xB0\t\x01\xFF ");            // as received, whatever it is
    r.t.Press("Stop");
    QCOMPARE(r.Content(), QByteArray("03/07/2011 04:05:06 !AIVDM,1,1,,A,15M67F@uQqG?w<hK?Mu8iFv00000,0*7B\r\n"
                                     "03/07/2011 04:05:06 $PNMLS,29,19,3*50\r\n"
                                     "12/31/2011 23:59:59 $GPGLL,4916.45,N,12311.12,W,225444,A\r\n"
                                     "12/31/2011 23:59:59 $GPRMC,1,A \xB0\t\x01\xFF \r\n"));
}

void RecordWindowTest::stampIsTheArrivalAtTheCarriageReturn() {
    Recording r;
    r.t.Feed(0, "$GPGLL,begun");
    r.t.Advance(10);
    r.t.Feed(0, ",ended");
    r.t.Advance(5);
    r.t.Feed(0, "\r");
    r.t.Advance(5);
    r.t.Feed(0, "\n");
    r.t.Press("Stop");
    QCOMPARE(r.Content(), QByteArray("05/15/2011 12:00:15 $GPGLL,begun,ended\r\n"));
}

void RecordWindowTest::onlyDecodedLinesAreWritten_data() {
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<bool>("recorded");
    QTest::newRow("PNMLS") << QByteArray("$PNMLS,29,19,3*50") << true;
    QTest::newRow("AIVDM") << QByteArray(AnyReport) << true;
    QTest::newRow("GLL") << QByteArray("$GPGLL,4916.45,N,12311.12,W,225444,A") << true;
    QTest::newRow("RMC") << QByteArray("$IIRMC,225446,A,4916.45,N,12311.12,W,0,0,150511,0,E") << true;
    QTest::newRow("PNMLS that fails") << QByteArray("$PNMLS,,19,3") << true;
    QTest::newRow("AIVDM that fails") << QByteArray("!AIVDM,1,1") << true;
    QTest::newRow("GLL that fails") << QByteArray("$GPGLL,,") << true;
    QTest::newRow("RMC that fails") << QByteArray("$GPRMC,,V") << true;
    QTest::newRow("first of two") << QByteArray("!AIVDM,2,1,3,A,53P=BS,0") << true;
    QTest::newRow("another sentence") << QByteArray("$GPGSV,1,1,00") << false;
    QTest::newRow("own ship") << QByteArray("!AIVDO,1,1,,A,15M67F@uQqG?w<hK?Mu8iFv00000,0") << false;
    QTest::newRow("no sentence") << QByteArray("hello world") << false;
    QTest::newRow("small letters") << QByteArray("$gpgll,4916.45,N") << false;
    QTest::newRow("size error") << QByteArray("$GLL") << false;
    QTest::newRow("empty") << QByteArray() << false;
    QTest::newRow("checksum error") << QByteArray("$PNMLS,29,19,3*51") << false;
}

void RecordWindowTest::onlyDecodedLinesAreWritten() {
    QFETCH(QByteArray, line);
    QFETCH(bool, recorded);
    Recording r;
    r.t.FeedLine(0, line.toStdString());
    r.t.MSComm(0).RaiseEvent(1004);
    r.t.Press("Stop");
    QCOMPARE(r.Content(), recorded ? "05/15/2011 12:00:00 " + line + "\r\n" : QByteArray());
}

void RecordWindowTest::failedChecksumIsNotRecorded() {
    Recording r;
    r.t.FeedLine(0, AnyReport);
    r.t.FeedLine(0, "!AIVDM,1,1,,A,15M67F@uQqG?w<hK?Mu8iFv00000,0*7C");
    r.t.FeedLine(0, "$PNMLS,29,19,3*50");
    r.t.Press("Stop");
    QCOMPARE(r.Content(),
             QByteArray("05/15/2011 12:00:00 ") + AnyReport + "\r\n05/15/2011 12:00:00 $PNMLS,29,19,3*50\r\n");
}

void RecordWindowTest::bothPortsGoToTheFileInTheirOrder() {
    Recording r;
    QByteArray sExpected;
    for (int i = 0; i < 10; ++i) {
        const std::string sLine = "$PNMLS," + std::to_string(i) + ",1,3*";
        r.t.FeedLine(static_cast<app::PortIndex>(i % 3 == 0), sLine);
        sExpected += Bytes("05/15/2011 12:00:00 " + sLine + "\r\n");
    }
    r.t.Press("Stop");
    QCOMPARE(r.Content(), sExpected);
}

void RecordWindowTest::nothingIsWrittenBeforeAndAfterTheLines() {
    Recording r;
    r.t.Advance(3);
    r.t.Press("Stop");
    QCOMPARE(r.Content(), QByteArray());
}

void RecordWindowTest::recordingBeginsAndEndsWithTheButtons() {
    ShownWindow t;
    t.StartBoth();
    t.FeedLine(0, "$PNMLS,1,1,1*");
    const QString sFirst = t.tWorld.Path(QStringLiteral("first.txt"));
    const QString sSecond = t.tWorld.Path(QStringLiteral("second.txt"));
    t.tWorld.tFileAnswers = {sFirst, sSecond};
    t.Press("Record");
    t.FeedLine(0, "$PNMLS,2,2,2*");
    t.Press("Stop");
    t.Press("Start");
    t.FeedLine(0, "$PNMLS,3,3,3*");
    t.Press("Record");
    t.FeedLine(0, "$PNMLS,4,4,4*");
    t.Press("Stop");
    QCOMPARE(Bytes(t.tWorld.ReadFile(sFirst)), QByteArray("05/15/2011 12:00:00 $PNMLS,2,2,2*\r\n"));
    QCOMPARE(Bytes(t.tWorld.ReadFile(sSecond)), QByteArray("05/15/2011 12:00:00 $PNMLS,4,4,4*\r\n"));
}

void RecordWindowTest::wallClockBringsLinesToTheDisk() {
    Recording r;
    QByteArray sExpected;
    for (int i = 0; i < 5; ++i) {
        r.t.FeedLine(0, "$PNMLS," + std::to_string(i) + ",1,3*");
        sExpected += "05/15/2011 12:00:0" + QByteArray::number(i) + " $PNMLS," + QByteArray::number(i) + ",1,3*\r\n";
        r.t.Advance(1);
        QCOMPARE(r.Content(), sExpected);
    }
}

void RecordWindowTest::stopBringsLinesToTheDisk() {
    Recording r;
    r.t.FeedLine(0, "$PNMLS,1,1,1*");
    r.t.Press("Stop");
    QCOMPARE(r.Content(), QByteArray("05/15/2011 12:00:00 $PNMLS,1,1,1*\r\n"));
}

void RecordWindowTest::killedProgramLosesTheLastSecondAtMost() {
    const World tWorld;
    const QString sFile = tWorld.Path(QStringLiteral("killed.txt"));
    QProcess tChild;
    tChild.start(QCoreApplication::applicationDirPath() + QStringLiteral("/RecordingChild"), {sFile});
    QVERIFY(tChild.waitForStarted(Patience));
    while (!tChild.canReadLine())
        QVERIFY2(tChild.waitForReadyRead(Patience), tChild.readAllStandardError().constData());
    QCOMPARE(tChild.readLine(), QByteArray("ready\n"));
    tChild.kill();  // SIGKILL
    QVERIFY(tChild.waitForFinished(Patience));
    QCOMPARE(tChild.exitStatus(), QProcess::CrashExit);

    QByteArray sTicked;
    QByteArray sAll;
    for (int iSecond = 0; iSecond <= support::SecondsTicked; ++iSecond) {
        if (iSecond == support::SecondsTicked) sTicked = sAll;
        for (int i = 0; i < support::LinesPerSecond; ++i) {
            sAll += "05/15/2011 12:00:0" + QByteArray::number(iSecond) + ' ' +
                    Bytes(support::RecordedSentence(iSecond, i)) + "\r\n";
        }
    }
    const QByteArray sContent = Bytes(tWorld.ReadFile(sFile));
    QVERIFY(sContent.startsWith(sTicked));
    QVERIFY(sAll.startsWith(sContent));
}

void RecordWindowTest::fileOfAFinishedBurstCanBeRecordedOver() {
    World tWorld;
    const QString sFile = tWorld.Path(QStringLiteral("burst.txt"));
    tWorld.WriteFile(sFile, "05/15/2011 12:00:00 $PNMLS,9,9,9*\r\n");
    TestWindow t(tWorld);
    t.LoadAndShow();
    tWorld.tFileAnswers = {sFile, sFile};
    t.Press("Playback Burst");
    const std::int16_t iBurstFile = t.m_iRecordFile;
    QVERIFY(t.m_tFiles.IsOpen(iBurstFile));
    t.StartBoth();
    t.Press("Record");
    QVERIFY(t.m_iRecordFile != iBurstFile);
    t.FeedLine(0, "$PNMLS,1,1,1*");
    t.Press("Stop");
    QCOMPARE(Bytes(tWorld.ReadFile(sFile)), QByteArray("05/15/2011 12:00:00 $PNMLS,1,1,1*\r\n"));
}

QTEST_MAIN(RecordWindowTest)
#include "RecordWindowTest.moc"
