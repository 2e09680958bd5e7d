// The receiver board: its signal sentence in the logs and in the table, and the two commands sent to it.
#include <QTest>

#include "tests/window/Bench.h"
#include "tests/window/Shown.h"

using namespace support;

namespace {

std::string Report(std::uint32_t lMmsi, char cChannel = 'A') { return AisSentence(AisOther(11, lMmsi), cChannel); }

struct Receiver : Listening {
    QStringList RxLog() { return support::Log(*this, lstRxData); }
    QStringList AisLog() { return support::Log(*this, lstAisData); }
    QByteArray Sent(app::PortIndex i = 0) { return Bytes(Device(MSComm(i))->Written()); }
    void ClickOn(QWidget& tButton) {
        SSTab.SetTab(ui::TabReceiver);
        QTest::mouseClick(&tButton, Qt::LeftButton);
    }
};

}  // namespace

class ReceiverWindowTest : public QObject {
    Q_OBJECT
private slots:
    void badFieldIsNamed_data();
    void badFieldIsNamed();
    void levelsBehindAMessageAreTiedToIt();
    void levelsBehindOtherLinesStandAlone();
    void levelsShowRawOrInDbm_data();
    void levelsShowRawOrInDbm();
    void powerBoxActsOnTheNextSentence();
    void levelsReachTheNewestRowHoweverSorted_data();
    void levelsReachTheNewestRowHoweverSorted();
    void levelsReachTheRowAfterPruning();
    void levelsAfterAClearTouchNothing();
    void levelsOfOnePortReachTheNewestMessageOfAny();
    void secondSentenceInARowStandsAlone();
    void receiverLogKeeps101Lines();
    void channelCommandIsSent_data();
    void channelCommandIsSent();
    void intervalCommandIsSent_data();
    void intervalCommandIsSent();
    void badIntervalSendsNothing_data();
    void badIntervalSendsNothing();
    void closedPortSendsNothing();
    void commandsGoToInputOneOnly();
    void everyCharacterIsFollowedByAPause();
    void pauseEndsAlsoAcrossMidnight();
    void inputIsTakenWhileSending();
    void secondPressDoesNotMixTwoCommands();
    void commandThatThePortTakesNoMoreSaysSo();
    void stopEndsTheSending();
    void closingTheWindowEndsTheSending();
    void frameShowsCalibrationAndTips();
    void firstTextsAreTheDefaults();
};

void ReceiverWindowTest::badFieldIsNamed_data() {
    QTest::addColumn<QByteArray>("sSentence");
    QTest::addColumn<QByteArray>("sField");
    QTest::newRow("signal empty") << QByteArray("$PNMLS,,19,3*1") << QByteArray("Signal");
    QTest::newRow("signal missing") << QByteArray("$PNMLS") << QByteArray("Signal");
    QTest::newRow("signal without comma") << QByteArray("$PNMLS,29") << QByteArray("Signal");
    QTest::newRow("threshold empty") << QByteArray("$PNMLS,29,,3*1") << QByteArray("Threshold");
    QTest::newRow("threshold missing") << QByteArray("$PNMLS,29,") << QByteArray("Threshold");
    QTest::newRow("threshold without comma") << QByteArray("$PNMLS,29,19") << QByteArray("Threshold");
    QTest::newRow("interval empty") << QByteArray("$PNMLS,29,19,*1") << QByteArray("Interval");
    QTest::newRow("interval without star") << QByteArray("$PNMLS,29,19,3") << QByteArray("Interval");
    QTest::newRow("interval missing") << QByteArray("$PNMLS,29,19,") << QByteArray("Interval");
    QTest::newRow("star before the interval") << QByteArray("$PNMLS,2*,19,3") << QByteArray("Interval");
}

void ReceiverWindowTest::badFieldIsNamed() {
    QFETCH(QByteArray, sSentence);
    QFETCH(QByteArray, sField);
    Receiver t;
    t.FeedLine(0, Report(1));
    t.FeedLine(0, View(sSentence));
    QCOMPARE(t.RxLog(), Texts({("Error - " + sField + ", " + sSentence).toStdString()}));
    QCOMPARE(t.AisLog().size(), 1);
    for (const int iCol : {3, 4, 5}) QCOMPARE(Cell(t, 1, iCol), QByteArray());
}

void ReceiverWindowTest::levelsBehindAMessageAreTiedToIt() {
    Receiver t;
    t.FeedLine(0, Report(1, 'B'));
    t.Advance(2);
    t.FeedLine(0, WithChecksum("$PNMLS,29,19,3"));
    QCOMPARE(t.RxLog(), Texts({"Time=12:00:00, Ch= B, Sig=29, Thr=19, Int=3"}));
    QCOMPARE(t.AisLog(), Texts({"Time=12:00:00, Ch=B, Id=11, MMSI=1", "   Sig=29, Thr=19, Int=3"}));
    QCOMPARE(Cell(t, 1, targets::ColSignal), QByteArray("29"));
    QCOMPARE(Cell(t, 1, targets::ColThreshold), QByteArray("19"));
    QCOMPARE(Cell(t, 1, targets::ColSnr), QByteArray("10"));
    QVERIFY(!t.Marks(t.lstRxData).at(0));
}

void ReceiverWindowTest::levelsBehindOtherLinesStandAlone() {
    Receiver t;
    t.FeedLine(0, Report(1, 'B'));
    t.FeedLine(0, "$GPZDA,1");
    t.Advance(2);
    t.FeedLine(0, WithChecksum("$PNMLS,29,19,3"));
    QCOMPARE(t.RxLog(), Texts({"Time=12:00:02, Sig=29, Thr=19, Int=3"}));
    QCOMPARE(t.AisLog().last(), QStringLiteral("   Sig=29, Thr=19, Int=3"));
    for (const int iCol : {3, 4, 5}) QCOMPARE(Cell(t, 1, iCol), QByteArray());
}

void ReceiverWindowTest::levelsShowRawOrInDbm_data() {
    QTest::addColumn<QByteArray>("sFields");
    QTest::addColumn<bool>("bPower");
    QTest::addColumn<QByteArray>("sLine");
    QTest::addColumn<QByteArray>("sSnr");
    QTest::newRow("raw") << QByteArray("29,19,3") << false << QByteArray("Sig=29, Thr=19, Int=3") << QByteArray("10");
    QTest::newRow("calibration points 29 and 19")
        << QByteArray("29,19,3") << true << QByteArray("Sig=-87, Thr=-107, Int=3") << QByteArray("20");
    QTest::newRow("calibration point 40")
        << QByteArray("40,29,7") << true << QByteArray("Sig=-67, Thr=-87, Int=7") << QByteArray("20");
    // 0 on the curve: -0.008658 * 361 - 2.08658 * 19 - 107 = -149.77
    QTest::newRow("no number in dBm") << QByteArray("high,x,3") << true << QByteArray("Sig=-150, Thr=-150, Int=3")
                                      << QByteArray("0");
    QTest::newRow("no number raw") << QByteArray("high,19,3") << false << QByteArray("Sig=high, Thr=19, Int=3")
                                   << QByteArray("-19");
    QTest::newRow("leading number") << QByteArray("29dB,19.4,3") << false << QByteArray("Sig=29dB, Thr=19.4, Int=3")
                                    << QByteArray("10");
    QTest::newRow("any interval") << QByteArray("29,19,every 3, or so") << false
                                  << QByteArray("Sig=29, Thr=19, Int=every 3, or so") << QByteArray("10");
}

void ReceiverWindowTest::levelsShowRawOrInDbm() {
    QFETCH(QByteArray, sFields);
    QFETCH(bool, bPower);
    QFETCH(QByteArray, sLine);
    QFETCH(QByteArray, sSnr);
    Receiver t;
    t.chkRxNasaPower.setChecked(bPower);
    t.FeedLine(0, Report(1));
    t.FeedLine(0, WithChecksum("$PNMLS," + sFields.toStdString()));
    QCOMPARE(t.RxLog().last().toLatin1(), "Time=12:00:00, Ch= A, " + sLine);
    QCOMPARE(t.AisLog().last().toLatin1(), "   " + sLine);
    QCOMPARE(Cell(t, 1, targets::ColSnr), sSnr);
    QCOMPARE("Sig=" + Cell(t, 1, 3) + ", Thr=" + Cell(t, 1, 4) + ", ", sLine.left(sLine.indexOf("Int=")));
}

void ReceiverWindowTest::powerBoxActsOnTheNextSentence() {
    Receiver t;
    QVERIFY(t.chkRxNasaPower.isEnabled());
    t.FeedLine(0, Report(1));
    t.FeedLine(0, WithChecksum("$PNMLS,40,19,3"));
    t.SSTab.SetTab(ui::TabReceiver);
    QTest::keyClick(&t.chkRxNasaPower, Qt::Key_Space);
    QCOMPARE(Cell(t, 1, targets::ColSignal), QByteArray("40"));
    t.FeedLine(0, Report(2));
    t.FeedLine(0, WithChecksum("$PNMLS,40,19,3"));
    QCOMPARE(Column(t, targets::ColSignal), Texts({"40", "-67"}));
}

void ReceiverWindowTest::levelsReachTheNewestRowHoweverSorted_data() {
    QTest::addColumn<int>("iSort");
    QTest::addColumn<QStringList>("sOrder");  // MMSIs from the top, all levels in
    QTest::newRow("MMSI") << 0 << Texts({"100", "200", "300", "400"});
    QTest::newRow("Range, none has one") << 1 << Texts({"300", "100", "400", "200"});
    QTest::newRow("Signal") << 2 << Texts({"400", "100", "300", "200"});
}

void ReceiverWindowTest::levelsReachTheNewestRowHoweverSorted() {
    QFETCH(int, iSort);
    QFETCH(QStringList, sOrder);
    Receiver t;
    t.cmbTargetSort.SetListIndex(iSort);
    const std::vector<std::pair<std::uint32_t, int>> tHeard = {{300, 41}, {100, 38}, {400, 25}, {200, 47}};
    for (const auto& [lMmsi, iLevel] : tHeard) {
        t.FeedLine(0, Report(lMmsi));
        t.FeedLine(0, WithChecksum("$PNMLS," + std::to_string(iLevel) + ",19,3"));
        t.Advance(1);
    }
    QCOMPARE(Column(t, targets::ColMmsi), sOrder);
    for (int iRow = 1; iRow <= 4; ++iRow) {
        const auto lMmsi = Cell(t, iRow, targets::ColMmsi).toUInt();
        const auto it = std::ranges::find(tHeard, lMmsi, &std::pair<std::uint32_t, int>::first);
        QCOMPARE(Cell(t, iRow, targets::ColSignal), QByteArray::number(it->second));
    }
}

void ReceiverWindowTest::levelsReachTheRowAfterPruning() {
    Receiver t;
    for (std::uint32_t i = 0; i < 300; ++i) t.FeedLine(0, Report(1000 - i));
    t.FeedLine(0, WithChecksum("$PNMLS,33,19,3"));
    // The newest has the smallest MMSI: it stands on top.
    QCOMPARE(Cell(t, 1, targets::ColNumber), QByteArray("300"));
    QCOMPARE(Cell(t, 1, targets::ColSignal), QByteArray("33"));
    QCOMPARE(Column(t, targets::ColSignal).count(QString()), 255);
}

void ReceiverWindowTest::levelsAfterAClearTouchNothing() {
    Receiver t;
    for (std::uint32_t i = 0; i < 5; ++i) t.FeedLine(0, Report(i));
    t.Press(ui::KeyStop);
    // A burst keeps the port's flag: its first line belongs to the message before the clear.
    const QString sFile = t.tWorld.Path(QStringLiteral("played.txt"));
    t.tWorld.WriteFile(sFile, "05/15/2011 12:00:00 " + WithChecksum("$PNMLS,29,19,3") + "\r\n");
    t.tWorld.tFileAnswers.push_back(sFile);
    t.Press(ui::KeyPlaybackBurst);
    QCOMPARE(t.grdTargetData.Cells.Rows(), 1);
    QCOMPARE(Bytes(t.Cell(t.grdTargetData, 0, targets::ColSignal)), QByteArray("Signal"));
    QCOMPARE(t.RxLog().size(), 1);
    QVERIFY(t.RxLog().at(0).contains(QLatin1String("Ch= A")));
}

void ReceiverWindowTest::levelsOfOnePortReachTheNewestMessageOfAny() {
    Receiver t;
    t.FeedLine(0, Report(100, 'A'));
    t.Advance(3);
    t.FeedLine(1, Report(200, 'B'));
    t.FeedLine(0, WithChecksum("$PNMLS,29,19,3"));
    QCOMPARE(t.RxLog(), Texts({"Time=12:00:03, Ch= B, Sig=29, Thr=19, Int=3"}));
    QCOMPARE(Column(t, targets::ColSignal), Texts({"", "29"}));
}

void ReceiverWindowTest::secondSentenceInARowStandsAlone() {
    Receiver t;
    t.FeedLine(0, Report(100));
    t.FeedLine(0, WithChecksum("$PNMLS,29,19,3"));
    t.FeedLine(0, WithChecksum("$PNMLS,45,19,3"));
    QCOMPARE(t.RxLog().last(), QStringLiteral("Time=12:00:00, Sig=45, Thr=19, Int=3"));
    QCOMPARE(Cell(t, 1, targets::ColSignal), QByteArray("29"));
}

void ReceiverWindowTest::receiverLogKeeps101Lines() {
    Receiver t;
    QStringList sExpected;
    for (int i = 0; i < 140; ++i) {
        t.FeedLine(0, WithChecksum("$PNMLS," + std::to_string(i) + ",19,3"));
        sExpected << QStringLiteral("Time=12:00:00, Sig=%1, Thr=19, Int=3").arg(i);
    }
    QCOMPARE(t.RxLog(), sExpected.mid(39));
    QCOMPARE(t.lstRxData.currentIndex().row(), 100);
    QCOMPARE(t.AisLog().size(), 101);
}

void ReceiverWindowTest::channelCommandIsSent_data() {
    QTest::addColumn<QByteArray>("sChannel");
    for (const char* sChannel : {"A", "B", "S", "s", "Z", "", "AB", " x ", "\xb0"}) {
        QTest::addRow("\"%s\"", sChannel) << QByteArray(sChannel);
    }
}

void ReceiverWindowTest::channelCommandIsSent() {
    QFETCH(QByteArray, sChannel);
    Receiver t;
    t.txtRxNasaChannel.SetText(View(sChannel));
    t.ClickOn(t.cmdRxNasaChannel);
    QCOMPARE(t.Sent(), Bytes(WithChecksum("$PNMLC," + sChannel.toStdString()) + "\r\n"));
}

void ReceiverWindowTest::intervalCommandIsSent_data() {
    QTest::addColumn<QByteArray>("sInterval");
    QTest::addColumn<int>("iCode");
    QTest::newRow("3") << QByteArray("3") << 3;
    QTest::newRow("1") << QByteArray("1") << 1;
    QTest::newRow("7") << QByteArray("7") << 7;
    QTest::newRow("beyond what the tip says") << QByteArray("65") << 65;
    QTest::newRow("0") << QByteArray("0") << 0;
    QTest::newRow("13, a carriage return") << QByteArray("13") << 13;
    QTest::newRow("255") << QByteArray("255") << 255;
}

void ReceiverWindowTest::intervalCommandIsSent() {
    QFETCH(QByteArray, sInterval);
    QFETCH(int, iCode);
    Receiver t;
    t.txtRxNasaInterval.SetText(View(sInterval));
    t.ClickOn(t.cmdRxNasaInterval);
    const std::string sBody = "$PNMLT," + std::string(1, static_cast<char>(iCode));
    QCOMPARE(t.Sent(), Bytes(WithChecksum(sBody) + "\r\n"));
    QCOMPARE(Panel(t, ui::PanelSummary), QByteArray());
}

void ReceiverWindowTest::badIntervalSendsNothing_data() {
    QTest::addColumn<QByteArray>("sInterval");
    for (const char* sInterval : {"", "three", "256", "-1", "99999999999", "3x"}) {
        QTest::addRow("\"%s\"", sInterval) << QByteArray(sInterval);
    }
}

void ReceiverWindowTest::badIntervalSendsNothing() {
    QFETCH(QByteArray, sInterval);
    Receiver t;
    t.txtRxNasaInterval.SetText(View(sInterval));
    t.ClickOn(t.cmdRxNasaInterval);
    QCOMPARE(t.Sent(), QByteArray());
    QVERIFY(Panel(t, ui::PanelSummary).contains("Interval"));
}

void ReceiverWindowTest::closedPortSendsNothing() {
    ShownWindow t;
    t.cmdRxNasaChannel.click();
    QVERIFY(!Panel(t, ui::PanelSummary).isEmpty());
    // Running, but without the receiver's port.
    t.StartBoth();
    t.Press(ui::KeyStop);
    t.chkCommEnabled(0).setChecked(false);
    t.Press(ui::KeyStart);
    QCOMPARE(Panel(t, ui::PanelSummary), QByteArray());
    t.cmdRxNasaInterval.click();
    QVERIFY(!Panel(t, ui::PanelSummary).isEmpty());
    QCOMPARE(Bytes(t.Device(t.MSComm(1))->Written()), QByteArray());
}

void ReceiverWindowTest::commandsGoToInputOneOnly() {
    ShownWindow t;
    t.chkOutputEnabled.setChecked(true);
    t.txtOutputPort.SetText("3");
    t.StartBoth();
    t.cmdRxNasaChannel.click();
    t.cmdRxNasaInterval.click();
    QCOMPARE(Bytes(t.Device(t.MSComm(0))->Written()),
             Bytes(WithChecksum("$PNMLC,S") + "\r\n" + WithChecksum("$PNMLT,\x03") + "\r\n"));
    QCOMPARE(Bytes(t.Device(t.MSComm(1))->Written()), QByteArray());
    QCOMPARE(Bytes(t.Device(t.MSCommOutput)->Written()), QByteArray());
    QVERIFY(t.Lines(t.lstOutputData).empty());
}

void ReceiverWindowTest::everyCharacterIsFollowedByAPause() {
    Receiver t;
    std::vector<double> dWhen;  // the clock as each character was seen first
    t.tWorld.tYield = [&] {
        const auto lSent = static_cast<std::size_t>(t.Sent().size());
        while (dWhen.size() < lSent) dWhen.push_back(t.tWorld.dTimer);
    };
    t.cmdRxNasaChannel.click();
    const QByteArray sSent = t.Sent();
    QCOMPARE(dWhen.size(), static_cast<std::size_t>(sSent.size()));
    dWhen.push_back(t.tWorld.dTimer);  // the last one waits as well
    for (std::size_t i = 1; i < dWhen.size(); ++i) QVERIFY(dWhen[i] - dWhen[i - 1] > 0.0099);
}

void ReceiverWindowTest::pauseEndsAlsoAcrossMidnight() {
    Receiver t;
    int iYields = 0;
    t.tWorld.tYield = [&] { ++iYields; };
    t.tWorld.dTimer = 86399.95;
    t.cmdRxNasaChannel.click();
    QCOMPARE(t.Sent(), Bytes(WithChecksum("$PNMLC,S") + "\r\n"));
    QVERIFY(t.tWorld.dTimer < 1);
    QVERIFY(iYields < 100);
}

void ReceiverWindowTest::inputIsTakenWhileSending() {
    Receiver t;
    bool bFed = false;
    t.tWorld.tYield = [&] {
        if (!std::exchange(bFed, true)) t.FeedLine(0, Report(1));
    };
    t.cmdRxNasaChannel.click();
    QCOMPARE(t.AisLog().size(), 1);
    QCOMPARE(t.Sent(), Bytes(WithChecksum("$PNMLC,S") + "\r\n"));
}

void ReceiverWindowTest::secondPressDoesNotMixTwoCommands() {
    Receiver t;
    int iYields = 0;
    t.tWorld.tYield = [&] {
        if (++iYields == 5) t.cmdRxNasaInterval.click();
        if (iYields == 9) t.cmdRxNasaChannel.click();
    };
    t.cmdRxNasaChannel.click();
    QVERIFY(iYields > 9);
    QCOMPARE(t.Sent(), Bytes(WithChecksum("$PNMLC,S") + "\r\n"));
    QVERIFY(!Panel(t, ui::PanelSummary).isEmpty());
    // And afterwards the button works again.
    t.tWorld.tYield = [] {};
    const QByteArray sBefore = t.Sent();
    t.cmdRxNasaInterval.click();
    QCOMPARE(t.Sent(), sBefore + Bytes(WithChecksum("$PNMLT,\x03") + "\r\n"));
}

void ReceiverWindowTest::commandThatThePortTakesNoMoreSaysSo() {
    Receiver t;
    t.tWorld.tYield = [&] {
        if (t.Sent().size() == 5) t.Device(t.MSComm(0))->Stick(1000000);
    };
    t.cmdRxNasaChannel.click();
    QCOMPARE(t.Sent(), QByteArray("$PNML"));
    QCOMPARE(Panel(t, ui::PanelSummary), QByteArray("Receiver - The command was cut off, input #1 takes no more"));
}

void ReceiverWindowTest::stopEndsTheSending() {
    Receiver t;
    int iYields = 0;
    t.tWorld.tYield = [&] {
        if (++iYields == 5) t.Press(ui::KeyStop);
    };
    t.cmdRxNasaChannel.click();
    QCOMPARE(Panel(t, ui::PanelState), QByteArray("Stopped"));
    const QByteArray sPart = t.Sent();
    QVERIFY(!sPart.isEmpty() && sPart.size() < 5);
    t.Press(ui::KeyStart);
    t.cmdRxNasaChannel.click();
    QVERIFY(t.Sent().endsWith(Bytes(WithChecksum("$PNMLC,S") + "\r\n")));
}

void ReceiverWindowTest::closingTheWindowEndsTheSending() {
    Receiver t;
    int iYields = 0;
    t.tWorld.tYield = [&] {
        if (++iYields == 5) t.close();
    };
    t.cmdRxNasaChannel.click();
    QVERIFY(!t.isVisible());
    QVERIFY(!t.MSComm(0).PortOpen());
    QVERIFY(t.Sent().size() < 5);
}

void ReceiverWindowTest::frameShowsCalibrationAndTips() {
    Receiver t;
    QStringList sLabels;
    for (const QLabel* p : t.frmRxNasa.findChildren<QLabel*>()) sLabels << p->text();
    for (const char* sLabel : {"19=1uV=-107dBm", "29=10 uV=-87dBm", "40=100uV=-67dBm"}) {
        QCOMPARE(sLabels.count(QLatin1String(sLabel)), 1);
    }
    const QString sChannel = QStringLiteral("A = Ch 1, B = Ch 2, S = Alternate (default)");
    const QString sInterval = QStringLiteral("Threshold Setting  Interval (Sec), 1-7, 3=Default");
    QCOMPARE(t.txtRxNasaChannel.toolTip(), sChannel);
    QCOMPARE(t.cmdRxNasaChannel.toolTip(), sChannel);
    QCOMPARE(t.txtRxNasaInterval.toolTip(), sInterval);
    QCOMPARE(t.cmdRxNasaInterval.toolTip(), sInterval);
}

void ReceiverWindowTest::firstTextsAreTheDefaults() {
    Receiver t;
    QCOMPARE(t.txtRxNasaChannel.text(), QStringLiteral("S"));
    QCOMPARE(t.txtRxNasaInterval.text(), QStringLiteral("3"));
    QVERIFY(!t.chkRxNasaPower.isChecked());
}

QTEST_MAIN(ReceiverWindowTest)
#include "ReceiverWindowTest.moc"
