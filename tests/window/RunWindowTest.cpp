// Starting and stopping: which ports are opened, what a failure leaves behind, and what toolbar, panels and fields show
// in each state.
#include <QAction>
#include <QTest>
#include <QToolButton>

#include "tests/support/PrintString.h"
#include "tests/support/PtyPort.h"
#include "tests/window/Bench.h"
#include "tests/window/Buttons.h"

using support::AnyReport;
using support::Buttons;
using support::ShownWindow;
using support::Stopped;
using support::TestWindow;
using support::World;

namespace {

constexpr const char* Running = "Start! Stop+ Record+ Playback Playback Burst";

// The controls that are locked while ports are open.
std::vector<QWidget*> Settings(TestWindow& t) {
    return {&t.chkCommEnabled(0),  &t.chkCommEnabled(1), &t.txtCommPort(0), &t.txtCommPort(1),    &t.txtCommSettings(0),
            &t.txtCommSettings(1), &t.chkOutputEnabled,  &t.txtOutputPort,  &t.txtOutputSettings, &t.chkOutputRMC};
}

}  // namespace

class RunWindowTest : public QObject {
    Q_OBJECT

private slots:
    void startOpensTheEnabledPortsOnly_data();
    void startOpensTheEnabledPortsOnly();
    void portsOpenWithTheirTexts();
    void portsOpenInTheirOrder();
    void startEmptiesTheDisplays();
    void openedPortForgetsItsUnfinishedLine();
    void portThatIsNotOpenedKeepsItsState();
    void startRunsWithNoPortEnabled();
    void inputFailureIsReported();
    void outputFailureIsReported();
    void secondPortsFailureClosesTheFirst();
    void failureTextStaysUntilTheNextStart();
    void portFieldThatNamesNothingFails_data();
    void portFieldThatNamesNothingFails();
    void badSettingsFail_data();
    void badSettingsFail();
    void portInUseFails();
    void stopClosesEverything();
    void stopWhileStoppedIsHarmless();
    void buttonsFollowTheState();
    void clickShowsWhatTheProgramSetsNotWhatTheMouseDid();
    void settingsAreLockedWhileRunning();
    void viewControlsStayUsableWhileRunning();
    void startAndStopPutThePlainNameBack();
    void everyButtonReachesItsOperation();
    void enableBoxLaysOutOnlyForTheUser();
    void buttonValueIsOneOrZero();
};

void RunWindowTest::startOpensTheEnabledPortsOnly_data() {
    QTest::addColumn<bool>("first");
    QTest::addColumn<bool>("second");
    QTest::addColumn<bool>("output");
    for (int i = 0; i < 8; ++i) {
        QTest::addRow("%d%d%d", i & 1, i >> 1 & 1, i >> 2 & 1) << ((i & 1) != 0) << ((i & 2) != 0) << ((i & 4) != 0);
    }
}

void RunWindowTest::startOpensTheEnabledPortsOnly() {
    QFETCH(bool, first);
    QFETCH(bool, second);
    QFETCH(bool, output);
    ShownWindow t;
    t.chkCommEnabled(0).setChecked(first);
    t.chkCommEnabled(1).setChecked(second);
    t.chkOutputEnabled.setChecked(output);
    t.txtOutputPort.SetText("9");
    t.Press("Start");
    QCOMPARE(t.MSComm(0).PortOpen(), first);
    QCOMPARE(t.MSComm(1).PortOpen(), second);
    QCOMPARE(t.MSCommOutput.PortOpen(), output);
    QCOMPARE(t.Panel(1), std::string("Running"));
    QCOMPARE(t.Panel(2), std::string());
    QVERIFY(t.tmrComm.isActive());
}

void RunWindowTest::portsOpenWithTheirTexts() {
    ShownWindow t;
    t.chkCommEnabled(1).setChecked(true);
    t.chkOutputEnabled.setChecked(true);
    t.txtCommPort(0).SetText(" 3 ");
    t.txtCommPort(1).SetText("4");
    t.txtCommSettings(1).SetText("19200,e,7,2");
    t.txtOutputPort.SetText("5");
    t.txtOutputSettings.SetText("4800,o,8,1");
    t.Press("Start");
    QCOMPARE(t.MSComm(0).CommPort(), 3);
    QCOMPARE(t.MSComm(1).CommPort(), 4);
    QCOMPARE(t.MSCommOutput.CommPort(), 5);
    QCOMPARE(t.MSComm(0).Settings(), std::string("38400,n,8,1"));
    const runtime::SerialSettings& tSecond = t.Device(t.MSComm(1))->Settings();
    QCOMPARE(tSecond.lBaud, 19200);
    QCOMPARE(tSecond.cParity, 'e');
    QCOMPARE(tSecond.iDataBits, 7);
    QCOMPARE(tSecond.eStopBits, runtime::StopBits::Two);
    QCOMPARE(t.Device(t.MSCommOutput)->Settings().lBaud, 4800);
    QCOMPARE(t.Device(t.MSCommOutput)->Settings().cParity, 'o');
}

void RunWindowTest::portsOpenInTheirOrder() {
    // All three fail; the one that is reported was tried first.
    World tWorld;
    tWorld.sBadPorts = {{1, "first"}, {2, "second"}, {3, "third"}};
    TestWindow t(tWorld);
    t.LoadAndShow();
    t.chkOutputEnabled.setChecked(true);
    t.txtOutputPort.SetText("3");
    t.StartBoth();
    QCOMPARE(t.Panel(2), std::string("Input Comm - first"));
    tWorld.sBadPorts.erase(1);
    t.Press("Start");
    QCOMPARE(t.Panel(2), std::string("Input Comm - second"));
    tWorld.sBadPorts.erase(2);
    t.Press("Start");
    QCOMPARE(t.Panel(2), std::string("Output Comm - third"));
    tWorld.sBadPorts.erase(3);
    t.Press("Start");
    QCOMPARE(t.Panel(1), std::string("Running"));
}

void RunWindowTest::startEmptiesTheDisplays() {
    ShownWindow t;
    t.StartBoth();
    t.FeedLine(0, AnyReport);
    t.FeedLine(0, "$PNMLS,29,19,3*50");
    t.FeedLine(1, "$GPGLL,4916.45,N,12311.12,W,225444,A");
    t.Press("Stop");
    QCOMPARE(t.grdTargetData.Cells.Rows(), 2);
    t.Press("Start");
    QVERIFY(t.Lines(t.lstCommData(0)).empty());
    QVERIFY(t.Lines(t.lstCommData(1)).empty());
    QVERIFY(t.Lines(t.lstRxData).empty());
    QVERIFY(!t.Lines(t.lstAisData).empty());
    QVERIFY(!t.Lines(t.lstGpsData).empty());
    QCOMPARE(t.grdTargetData.Cells.Rows(), 1);
    QCOMPARE(t.cmbTargetTarget.Items.Count(), 0);
    QCOMPARE(t.Cell(t.grdMessageData, 34, 1), std::string("0"));
    QCOMPARE(t.Panel(2), std::string());
}

void RunWindowTest::openedPortForgetsItsUnfinishedLine() {
    ShownWindow t;
    t.StartBoth();
    t.FeedLine(0, AnyReport);
    t.Feed(0, "$GPGSV,left over");
    t.Press("Stop");
    t.Press("Start");
    QVERIFY(!t.m_bCommLastVdm(0));
    QVERIFY(!t.m_bCommReceived(0));
    QCOMPARE(t.m_lCommSeconds(0), 0);
    t.FeedLine(0, "$GPZDA,1");
    QCOMPARE(t.LastLine(t.lstCommData(0)), std::string("$GPZDA,1"));
    // The signal sentence is not tied to the message of the run before.
    t.Press("Stop");
    t.Press("Start");
    t.FeedLine(0, "$PNMLS,29,19,3*50");
    QCOMPARE(t.LastLine(t.lstRxData), std::string("Time=12:00:00, Sig=29, Thr=19, Int=3"));
}

void RunWindowTest::portThatIsNotOpenedKeepsItsState() {
    ShownWindow t;
    t.StartBoth();
    t.FeedLine(1, AnyReport);
    t.Feed(1, "$GPGSV");
    t.Advance(3);
    t.FeedLine(1, "");  // ends the line
    t.Feed(1, "rest");
    t.m_bCommLastVdm(1) = true;
    t.Press("Stop");
    t.chkCommEnabled(1).setChecked(false);
    t.Press("Start");
    QVERIFY(t.m_bCommLastVdm(1));
    QVERIFY(t.m_bCommReceived(1));
    QCOMPARE(std::string(t.m_sCommBuffer(1)), std::string("rest"));
    QCOMPARE(t.m_lCommSeconds(1), 0);
}

void RunWindowTest::startRunsWithNoPortEnabled() {
    ShownWindow t;
    t.chkCommEnabled(0).setChecked(false);
    t.Press("Start");
    QCOMPARE(t.Panel(1), std::string("Running"));
    QCOMPARE(Buttons(t), std::string(Running));
    t.Advance(90);
    QCOMPARE(t.Panel(3), std::string());
    QCOMPARE(t.Panel(4), std::string());
    QCOMPARE(t.Panel(5), std::string("12:01:30"));
}

void RunWindowTest::inputFailureIsReported() {
    World tWorld;
    tWorld.sBadPorts[6] = "No such file or directory";
    TestWindow t(tWorld);
    t.LoadAndShow();
    t.Press("Start");
    QCOMPARE(t.Panel(2), std::string("Input Comm - No such file or directory"));
    QCOMPARE(t.Panel(1), std::string("Stopped"));
    QCOMPARE(Buttons(t), std::string(Stopped));
    QVERIFY(!t.tmrComm.isActive());
    QVERIFY(tWorld.sMessages.isEmpty());
}

void RunWindowTest::outputFailureIsReported() {
    World tWorld;
    tWorld.sBadPorts[3] = "Permission denied";
    TestWindow t(tWorld);
    t.LoadAndShow();
    t.chkOutputEnabled.setChecked(true);
    t.txtOutputPort.SetText("3");
    t.StartBoth();
    QCOMPARE(t.Panel(2), std::string("Output Comm - Permission denied"));
    QCOMPARE(t.Panel(1), std::string("Stopped"));
    QVERIFY(!t.MSComm(0).PortOpen());
    QVERIFY(!t.MSComm(1).PortOpen());
    QCOMPARE(Buttons(t), std::string(Stopped));
    QVERIFY(tWorld.sMessages.isEmpty());
}

void RunWindowTest::secondPortsFailureClosesTheFirst() {
    World tWorld;
    tWorld.sBadPorts[2] = "No such device";
    TestWindow t(tWorld);
    t.LoadAndShow();
    t.StartBoth();
    QVERIFY(!t.MSComm(0).PortOpen());
    QCOMPARE(t.Panel(2), std::string("Input Comm - No such device"));
    QCOMPARE(t.Panel(1), std::string("Stopped"));
    QVERIFY(t.txtCommPort(0).isEnabled());
}

void RunWindowTest::failureTextStaysUntilTheNextStart() {
    World tWorld;
    tWorld.sBadPorts[6] = "gone";
    TestWindow t(tWorld);
    t.LoadAndShow();
    t.Press("Start");
    t.Advance(120);
    t.Press("Stop");
    QCOMPARE(t.Panel(2), std::string("Input Comm - gone"));
    tWorld.sBadPorts.clear();
    t.Press("Start");
    QCOMPARE(t.Panel(2), std::string());
}

void RunWindowTest::portFieldThatNamesNothingFails_data() {
    QTest::addColumn<QString>("port");
    QTest::newRow("word") << QStringLiteral("no-such-port");
    QTest::newRow("empty") << QString();
    QTest::newRow("blank") << QStringLiteral("   ");
    QTest::newRow("zero") << QStringLiteral("0");
    QTest::newRow("negative") << QStringLiteral("-1");
    QTest::newRow("too large") << QStringLiteral("256");
    QTest::newRow("path to nothing") << QStringLiteral("/dev/no-such-port");
    QTest::newRow("no serial port") << QStringLiteral("/dev/null");
}

void RunWindowTest::portFieldThatNamesNothingFails() {
    QFETCH(QString, port);
    World tWorld;
    tWorld.bNativeDevices = true;
    TestWindow t(tWorld);
    t.LoadAndShow();
    t.txtCommPort(0).setText(port);
    t.Press("Start");
    const std::string sText = t.Panel(2);
    QVERIFY2(sText.starts_with("Input Comm - ") && sText.size() > 15, sText.c_str());
    QCOMPARE(Buttons(t), std::string(Stopped));
    QVERIFY(tWorld.sMessages.isEmpty());
}

void RunWindowTest::badSettingsFail_data() {
    QTest::addColumn<QString>("settings");
    QTest::addColumn<QByteArray>("named");
    QTest::newRow("baud") << QStringLiteral("fast,n,8,1") << QByteArray("fast");
    QTest::newRow("parity") << QStringLiteral("38400,x,8,1") << QByteArray("x");
    QTest::newRow("data bits") << QStringLiteral("38400,n,9,1") << QByteArray("9");
    QTest::newRow("stop bits") << QStringLiteral("38400,n,8,7") << QByteArray("7");
    QTest::newRow("too few") << QStringLiteral("38400,n,8") << QByteArray("38400,n,8");
    QTest::newRow("empty") << QString() << QByteArray("Settings");
}

void RunWindowTest::badSettingsFail() {
    QFETCH(QString, settings);
    QFETCH(QByteArray, named);
    ShownWindow t;
    t.txtCommSettings(1).setText(settings);
    t.StartBoth();
    QVERIFY2(t.Panel(2).starts_with("Input Comm - "), t.Panel(2).c_str());
    QVERIFY2(t.Panel(2).find(named.toStdString()) != std::string::npos, t.Panel(2).c_str());
    QVERIFY(!t.MSComm(0).PortOpen());
    t.txtCommSettings(1).setText(QStringLiteral("4800,n,8,1"));
    t.chkOutputEnabled.setChecked(true);
    t.txtOutputPort.SetText("3");
    t.txtOutputSettings.setText(settings);
    t.Press("Start");
    QVERIFY2(t.Panel(2).starts_with("Output Comm - "), t.Panel(2).c_str());
    QVERIFY(!t.MSComm(1).PortOpen());
}

void RunWindowTest::portInUseFails() {
    ShownWindow t;
    t.StartBoth();
    t.Press("Stop");
    t.txtCommPort(1).SetText("1");
    t.Press("Start");
    QCOMPARE(t.Panel(2), std::string("Input Comm - already open as input #1"));
    QVERIFY(!t.MSComm(0).PortOpen());
}

void RunWindowTest::stopClosesEverything() {
    ShownWindow t;
    t.chkOutputEnabled.setChecked(true);
    t.txtOutputPort.SetText("3");
    t.StartBoth();
    t.PressWithFile("Record", t.tWorld.Path(QStringLiteral("record.txt")));
    QVERIFY(t.m_tFiles.IsOpen(t.m_iRecordFile));
    t.Press("Stop");
    QVERIFY(!t.MSComm(0).PortOpen());
    QVERIFY(!t.MSComm(1).PortOpen());
    QVERIFY(!t.MSCommOutput.PortOpen());
    QVERIFY(!t.m_tFiles.IsOpen(t.m_iRecordFile));
    QVERIFY(!t.m_bRecording);
    QCOMPARE(t.Panel(1), std::string("Stopped"));
    QVERIFY(!t.tmrComm.isActive());
    t.FeedLine(0, AnyReport);  // nothing comes in any more
    QVERIFY(t.Lines(t.lstCommData(0)).empty());
}

void RunWindowTest::stopWhileStoppedIsHarmless() {
    ShownWindow t;
    t.Toolbar_ButtonClick(QStringLiteral("Stop"));
    t.CommStop();
    QCOMPARE(t.Panel(1), std::string("Stopped"));
    QCOMPARE(Buttons(t), std::string(Stopped));
    QVERIFY(t.tWorld.sMessages.isEmpty());
}

void RunWindowTest::buttonsFollowTheState() {
    ShownWindow t;
    QCOMPARE(Buttons(t), std::string(Stopped));
    t.StartBoth();
    QCOMPARE(Buttons(t), std::string(Running));
    t.PressWithFile("Record", t.tWorld.Path(QStringLiteral("record.txt")));
    QCOMPARE(Buttons(t), std::string("Start! Stop+ Record! Playback Playback Burst"));
    t.Press("Stop");
    QCOMPARE(Buttons(t), std::string(Stopped));
    t.Press("Start");
    QCOMPARE(Buttons(t), std::string(Running));
    QVERIFY(!t.m_bRecording);
    QVERIFY(!t.m_bPlayback);
    QVERIFY(!t.m_bPlaybackBurst);
}

void RunWindowTest::clickShowsWhatTheProgramSetsNotWhatTheMouseDid() {
    ShownWindow t;
    const auto tButton = [&t](const char* sKey) {
        return t.Toolbar.widgetForAction(&t.Toolbar.Action(QLatin1String(sKey)));
    };
    QTest::mouseClick(tButton("Start"), Qt::LeftButton);
    QCOMPARE(Buttons(t), std::string(Running));
    QTest::mouseClick(tButton("Start"), Qt::LeftButton);  // disabled by now
    QCOMPARE(Buttons(t), std::string(Running));
    t.tWorld.tFileAnswers = {std::nullopt};
    QTest::mouseClick(tButton("Record"), Qt::LeftButton);  // cancelled
    QCOMPARE(Buttons(t), std::string(Running));
    QTest::mouseClick(tButton("Stop"), Qt::LeftButton);
    QCOMPARE(Buttons(t), std::string(Stopped));
    t.tWorld.tFileAnswers = {std::nullopt};
    QTest::mouseClick(tButton("Playback"), Qt::LeftButton);
    QCOMPARE(Buttons(t), std::string(Stopped));
    QVERIFY(qobject_cast<QToolButton*>(tButton("Stop"))->isChecked());
}

void RunWindowTest::settingsAreLockedWhileRunning() {
    ShownWindow t;
    for (const QWidget* p : Settings(t)) QVERIFY2(p->isEnabled(), qPrintable(p->objectName()));
    t.StartBoth();
    for (const QWidget* p : Settings(t)) QVERIFY2(!p->isEnabled(), qPrintable(p->objectName()));
    t.Press("Stop");
    for (const QWidget* p : Settings(t)) QVERIFY2(p->isEnabled(), qPrintable(p->objectName()));
}

void RunWindowTest::viewControlsStayUsableWhileRunning() {
    ShownWindow t;
    t.StartBoth();
    const std::vector<QWidget*> pViews = {&t.chkRxNasaPower,    &t.cmbTargetDetail,  &t.cmbTargetSort,
                                          &t.chkTargetTrack,    &t.cmbTargetTarget,  &t.txtGpsLat,
                                          &t.txtGpsLon,         &t.txtRxNasaChannel, &t.cmdRxNasaChannel,
                                          &t.cmdRxNasaInterval, &t.cmdTimingApply,   &t.txtTimingRateTx};
    for (const QWidget* p : pViews) QVERIFY2(p->isEnabled(), qPrintable(p->objectName()));
}

void RunWindowTest::startAndStopPutThePlainNameBack() {
    World tWorld;
    const QString sFile = tWorld.Path(QStringLiteral("played.txt"));
    tWorld.WriteFile(sFile, "05/15/2011 12:00:00 $GPZDA,1\r\n05/15/2011 13:00:00 $GPZDA,2\r\n");
    TestWindow t(tWorld);
    t.LoadAndShow();
    tWorld.tFileAnswers = {sFile, sFile};
    t.Press("Playback");
    t.Advance(1);
    QCOMPARE(t.windowTitle(), QStringLiteral("Tidewatch - played.txt"));
    t.Press("Stop");
    QCOMPARE(t.windowTitle(), QStringLiteral("Tidewatch"));
    t.Press("Playback Burst");
    QCOMPARE(t.windowTitle(), QStringLiteral("Tidewatch - played.txt"));
    t.Press("Start");
    QCOMPARE(t.windowTitle(), QStringLiteral("Tidewatch"));
}

void RunWindowTest::everyButtonReachesItsOperation() {
    ShownWindow t;
    t.Press("Playback");
    t.Press("Playback Burst");
    QCOMPARE(t.tWorld.tDialogs.size(), std::size_t{2});
    QVERIFY(!t.tWorld.tDialogs[0].bSave);
    QVERIFY(!t.tWorld.tDialogs[1].bSave);
    t.Press("Record");  // disabled
    QCOMPARE(t.tWorld.tDialogs.size(), std::size_t{2});
    t.Press("Start");
    QVERIFY(t.MSComm(0).PortOpen());
    t.Press("Record");
    QCOMPARE(t.tWorld.tDialogs.size(), std::size_t{3});
    QVERIFY(t.tWorld.tDialogs[2].bSave);
    t.Press("Stop");
    QVERIFY(!t.MSComm(0).PortOpen());
    t.Toolbar_ButtonClick(QStringLiteral("start"));  // keys are compared to the letter
    QVERIFY(!t.MSComm(0).PortOpen());
}

void RunWindowTest::enableBoxLaysOutOnlyForTheUser() {
    ShownWindow t;
    const QRect tWhole = t.lstCommData(0).geometry();
    t.SSTab.setFocus();
    t.chkCommEnabled(1).setChecked(true);
    QCOMPARE(t.lstCommData(0).geometry(), tWhole);
    QVERIFY(!t.lstCommData(1).isVisible());
    t.chkCommEnabled(1).setChecked(false);

    t.chkCommEnabled(1).setFocus();
    QTest::keyClick(&t.chkCommEnabled(1), Qt::Key_Space);
    QVERIFY(t.chkCommEnabled(1).isChecked());
    QVERIFY(t.lstCommData(1).isVisible());
    QVERIFY(t.lstCommData(0).height() < tWhole.height());
    QTest::mouseClick(&t.chkCommEnabled(0), Qt::LeftButton, {}, QPoint(8, t.chkCommEnabled(0).height() / 2));
    QVERIFY(!t.chkCommEnabled(0).isChecked());
    QVERIFY(!t.lstCommData(0).isVisible());
    QCOMPARE(t.lstCommData(1).geometry(), tWhole);
}

void RunWindowTest::buttonValueIsOneOrZero() {
    QCOMPARE(int{TestWindow::ButtonValue(true)}, 1);
    QCOMPARE(int{TestWindow::ButtonValue(false)}, 0);
}

QTEST_MAIN(RunWindowTest)
#include "RunWindowTest.moc"
