// The output port: its log, the RMC sentence made from GLL, its events and what happens when nobody reads.
#include <QTest>

#include "tests/window/Bench.h"
#include "tests/window/Shown.h"

using namespace support;

namespace {

const std::string Gll = "$GPGLL,4916.45,N,12311.12,W,225444,A*31";

struct Making : ShownWindow {
    explicit Making(bool bRmc, bool bOutput = true) {
        if (bOutput) EnableOutput();
        chkOutputRMC.setChecked(bRmc);
        StartBoth();
    }
    QStringList Log() { return support::Log(*this, lstOutputData); }
    // The made sentences, without checksum and its star.
    QStringList Made() {
        QStringList sMade;
        for (const QString& sLine : Log()) {
            if (sLine.startsWith(QLatin1String("$ECRMC"))) sMade << sLine.section(QLatin1Char('*'), 0, 0);
        }
        return sMade;
    }
};

}  // namespace

class OutputWindowTest : public QObject {
    Q_OBJECT
private slots:
    void rmcOfTheFifteenthOfMay();
    void rmcNeedsBothBoxes_data();
    void rmcNeedsBothBoxes();
    void rmcHasElevenFields();
    void rmcDateIsTheComputersDay_data();
    void rmcDateIsTheComputersDay();
    void rmcTakesTheGllPieces_data();
    void rmcTakesTheGllPieces();
    void failedGllMakesNoRmc_data();
    void failedGllMakesNoRmc();
    void rmcOnInputMakesNone();
    void logKeepsTheNewest101Lines();
    void markIsAsTold();
    void newestLineIsCurrent();
    void portEventsAreUnmarkedNotices_data();
    void portEventsAreUnmarkedNotices();
    void charactersFromThatSideAreThrownAway();
    void unopenedPortIsLoggedUnmarked();
    void peerThatDoesNotReadIsToldOncePerJam();
    void startEmptiesTheLog();
    void boxSaysWhatItDoes();
};

void OutputWindowTest::rmcOfTheFifteenthOfMay() {
    Making t(true);
    t.FeedLine(0, Gll);
    const std::string sRmc = WithChecksum("$ECRMC,225444,A,4916.45,N,12311.12,W,0.0,000.0,150511,0.0,E");
    QCOMPARE(Bytes(t.Output().Written()), Bytes(sRmc + "\r\n" + Gll + "\r\n"));
    QCOMPARE(t.Log(), Texts({sRmc, Gll}));
    QCOMPARE(Marks(t, t.lstOutputData), QByteArray("++"));
}

void OutputWindowTest::rmcNeedsBothBoxes_data() {
    QTest::addColumn<bool>("bOutput");
    QTest::addColumn<bool>("bRmc");
    QTest::newRow("neither") << false << false;
    QTest::newRow("output only") << true << false;
    QTest::newRow("RMC only") << false << true;
    QTest::newRow("both") << true << true;
}

void OutputWindowTest::rmcNeedsBothBoxes() {
    QFETCH(bool, bOutput);
    QFETCH(bool, bRmc);
    Making t(bRmc, bOutput);
    t.FeedLine(0, Gll);
    QCOMPARE(t.Made().size(), bOutput && bRmc ? 1 : 0);
    QCOMPARE(t.Log().size(), (bOutput ? 1 : 0) + (bOutput && bRmc ? 1 : 0));
}

void OutputWindowTest::rmcHasElevenFields() {
    Making t(true);
    t.FeedLine(1, Gll);
    const QStringList sFields = t.Made().value(0).split(QLatin1Char(','));
    QCOMPARE(sFields,
             Texts({"$ECRMC", "225444", "A", "4916.45", "N", "12311.12", "W", "0.0", "000.0", "150511", "0.0", "E"}));
}

void OutputWindowTest::rmcDateIsTheComputersDay_data() {
    QTest::addColumn<QByteArray>("sClock");
    QTest::addColumn<QByteArray>("sDate");
    QTest::newRow("one-digit day and month") << QByteArray("2024-02-09T00:00:00") << QByteArray("090224");
    QTest::newRow("last second of a year") << QByteArray("1999-12-31T23:59:59") << QByteArray("311299");
    QTest::newRow("leap day") << QByteArray("2000-02-29T12:00:00") << QByteArray("290200");
}

void OutputWindowTest::rmcDateIsTheComputersDay() {
    QFETCH(QByteArray, sClock);
    QFETCH(QByteArray, sDate);
    Making t(true);
    t.tWorld.SetClock(View(sClock));
    t.FeedLine(0, Gll);
    QCOMPARE(t.Made().value(0).section(QLatin1Char(','), 9, 9).toLatin1(), sDate);
}

void OutputWindowTest::rmcTakesTheGllPieces_data() {
    QTest::addColumn<QByteArray>("sGll");
    QTest::addColumn<QByteArray>("sStart");
    QTest::newRow("fractions of seconds stay behind")
        << QByteArray("$GPGLL,4916.45,N,12311.12,W,225444.87,A") << QByteArray("$ECRMC,225444,A,4916.45,N,12311.12,W,");
    QTest::newRow("coordinates as received") << QByteArray("$INGLL,0000.001234,S,00000.9,E,000000,A,D")
                                             << QByteArray("$ECRMC,000000,A,0000.001234,S,00000.9,E,");
    QTest::newRow("no point in the minutes")
        << QByteArray("$GPGLL,4916,S,12311,E,235959,A") << QByteArray("$ECRMC,235959,A,4916,S,12311,E,");
}

void OutputWindowTest::rmcTakesTheGllPieces() {
    QFETCH(QByteArray, sGll);
    QFETCH(QByteArray, sStart);
    Making t(true);
    t.FeedLine(0, View(sGll));
    const QByteArray sMade = t.Made().value(0).toLatin1();
    QCOMPARE(sMade.left(sStart.size()), sStart);
    QCOMPARE(t.Log().value(0).toLatin1(), Bytes(WithChecksum(View(sMade))));
}

void OutputWindowTest::failedGllMakesNoRmc_data() {
    QTest::addColumn<QByteArray>("sGll");
    QTest::newRow("latitude") << QByteArray("$GPGLL,,N,12311.12,W,225444,A");
    QTest::newRow("latitude sign") << QByteArray("$GPGLL,4916.45,X,12311.12,W,225444,A");
    QTest::newRow("longitude") << QByteArray("$GPGLL,4916.45,N,,W,225444,A");
    QTest::newRow("longitude sign") << QByteArray("$GPGLL,4916.45,N,12311.12,X,225444,A");
    QTest::newRow("time") << QByteArray("$GPGLL,4916.45,N,12311.12,W,22544,A");
    QTest::newRow("not valid") << QByteArray("$GPGLL,4916.45,N,12311.12,W,225444,V");
}

void OutputWindowTest::failedGllMakesNoRmc() {
    QFETCH(QByteArray, sGll);
    Making t(true);
    t.FeedLine(0, View(sGll));
    QCOMPARE(t.Made().size(), 0);
    t.FeedLine(0, Gll);
    t.FeedLine(0, View(sGll));
    QCOMPARE(t.Made().size(), 1);
    QCOMPARE(t.Log().size(), 4);
}

void OutputWindowTest::rmcOnInputMakesNone() {
    Making t(true);
    t.FeedLine(0, Gll);
    t.FeedLine(0, "$GPRMC,225446,A,4916.45,N,12311.12,W,000.5,054.7,191194,020.3,E");
    QCOMPARE(t.Made().size(), 1);
    QCOMPARE(t.Log().size(), 3);
}

void OutputWindowTest::logKeepsTheNewest101Lines() {
    Making t(false);
    QStringList sExpected;
    for (int i = 1; i <= 101; ++i) {
        t.FeedLine(0, "$GPZDA," + std::to_string(i));
        sExpected << QStringLiteral("$GPZDA,%1").arg(i);
    }
    QCOMPARE(t.Log(), sExpected);
    t.FeedLine(0, "$GPZDA,102");
    sExpected.removeFirst();
    sExpected << QStringLiteral("$GPZDA,102");
    QCOMPARE(t.Log(), sExpected);
}

void OutputWindowTest::markIsAsTold() {
    Making t(false);
    t.OutputData("plain", false);
    t.OutputData("marked", true);
    t.OutputData("plain", false);
    QCOMPARE(Marks(t, t.lstOutputData), QByteArray("-+-"));
}

void OutputWindowTest::newestLineIsCurrent() {
    Making t(false);
    for (int i = 1; i <= 120; ++i) t.OutputData("line", false);
    t.Synchronize();
    QCOMPARE(t.lstOutputData.currentIndex().row(), 100);
}

void OutputWindowTest::portEventsAreUnmarkedNotices_data() {
    QTest::addColumn<int>("iEvent");
    QTest::addColumn<QByteArray>("sNotice");
    QTest::newRow("break") << 1001 << QByteArray("<<Break Signal Received>>");
    QTest::newRow("framing") << 1004 << QByteArray("<<Framing Error>>");
    QTest::newRow("overrun") << 1006 << QByteArray("<<Port Overrun>>");
    QTest::newRow("overflow") << 1008 << QByteArray("<<Rx Overflow>>");
    QTest::newRow("parity") << 1009 << QByteArray("<<Parity Error>>");
    QTest::newRow("1010") << 1010 << QByteArray("<<Event 1010>>");
    QTest::newRow("0") << 0 << QByteArray("<<Event 0>>");
}

void OutputWindowTest::portEventsAreUnmarkedNotices() {
    QFETCH(int, iEvent);
    QFETCH(QByteArray, sNotice);
    Making t(false);
    t.FeedLine(0, "$GP");
    t.MSCommOutput.RaiseEvent(iEvent);
    QCOMPARE(t.Log(), Texts({sNotice.toStdString()}));
    QCOMPARE(Marks(t, t.lstOutputData), QByteArray("-"));
    QVERIFY(t.MSCommOutput.PortOpen());
    QCOMPARE(Panel(t, ui::PanelSummary), QByteArray("Size Error"));
    QCOMPARE(Log(t, t.lstCommData(0)), Texts({"<<Size Error>>"}));
    QCOMPARE(Bytes(t.Output().Written()), QByteArray());
}

void OutputWindowTest::charactersFromThatSideAreThrownAway() {
    Making t(false);
    t.Output().Feed("$GPZDA,1\r\n");
    QCOMPARE(t.Log(), QStringList());
    QVERIFY(t.MSCommOutput.Input().empty());
    QVERIFY(t.Lines(t.lstCommData(0)).empty());
}

void OutputWindowTest::unopenedPortIsLoggedUnmarked() {
    ShownWindow t;
    const QString sFile = t.tWorld.Path(QStringLiteral("played.txt"));
    t.tWorld.WriteFile(sFile, "05/15/2011 12:00:00 $GPZDA,1\r\n05/15/2011 12:00:09 $GPZDA,2\r\n");
    t.tWorld.tFileAnswers.push_back(sFile);
    t.Press(ui::KeyPlayback);
    t.chkOutputEnabled.setChecked(true);
    t.Advance(1);
    QVERIFY(!t.MSCommOutput.PortOpen());
    QCOMPARE(Log(t, t.lstOutputData), Texts({"$GPZDA,1"}));
    QCOMPARE(Marks(t, t.lstOutputData), QByteArray("-"));
}

void OutputWindowTest::peerThatDoesNotReadIsToldOncePerJam() {
    Making t(false);
    t.FeedLine(0, "$GPZDA,1");
    t.Output().Stick(38400);  // ten seconds of 3840 characters a second
    t.FeedLine(0, "$GPZDA,2");
    t.FeedLine(0, "$GPZDA,3");
    QCOMPARE(Bytes(t.Output().Written()), QByteArray("$GPZDA,1\r\n"));
    QCOMPARE(t.Log().count(QStringLiteral("<<Event 1010>>")), 1);
    QCOMPARE(t.Log().size(), 4);
    QCOMPARE(Marks(t, t.lstOutputData), QByteArray("+---"));
    t.Output().Stick(0);
    t.FeedLine(0, "$GPZDA,4");
    QCOMPARE(Bytes(t.Output().Written()), QByteArray("$GPZDA,1\r\n$GPZDA,4\r\n"));
    t.Output().Stick(38400);
    t.FeedLine(0, "$GPZDA,5");
    QCOMPARE(t.Log().count(QStringLiteral("<<Event 1010>>")), 2);
}

void OutputWindowTest::startEmptiesTheLog() {
    Making t(false);
    t.FeedLine(0, Gll);
    t.Press(ui::KeyStop);
    QCOMPARE(t.Log().size(), 1);
    t.Press(ui::KeyStart);
    QCOMPARE(t.Log().size(), 0);
}

void OutputWindowTest::boxSaysWhatItDoes() {
    Making t(false);
    const QString sCaption = t.chkOutputRMC.text().remove(QLatin1Char('&'));
    QCOMPARE(sCaption, QStringLiteral("RMC from GLL"));
    QCOMPARE(t.chkOutputRMC.toolTip(), QStringLiteral("Create RMC Data from GLL Data"));
}

QTEST_MAIN(OutputWindowTest)
#include "OutputWindowTest.moc"
