// Where the keyboard focus stands when its holder goes out of sight or is disabled: never on a toolbar button, where
// the next Space would end the run and its recording.
#include <QApplication>
#include <QTest>
#include <QWheelEvent>

#include "tests/support/PrintString.h"
#include "tests/support/TestWindow.h"

using support::TestWindow;
using support::World;

namespace {

constexpr const char* Report = "!AIVDM,1,1,,A,15M67F@uQqG?w<hK?Mu8iFv00000,0*7B";

// The real window, shown and active, so that keys go where the user's would.
struct Desk {
    Desk() : t(tWorld) {
        t.LoadAndShow();
        t.activateWindow();
        if (!QTest::qWaitForWindowActive(&t)) qFatal("the window does not become the active one");
        QObject::connect(qApp, &QApplication::focusChanged, &tListener, [this](QWidget*, const QWidget* pNow) {
            if (t.Toolbar.isAncestorOf(pNow)) ++iOnButtons;
        });
    }

    void StartRecording() {
        t.StartBoth();
        tWorld.tFileAnswers = {sRecord};
        t.Press("Record");
    }

    void Key(Qt::Key eKey, Qt::KeyboardModifiers eModifiers = Qt::NoModifier) {
        QTest::keyClick(t.windowHandle(), eKey, eModifiers);
    }

    // Turned by a mouse click on the tab, by the wheel over the bar, by the keys; the tab that shows then.
    void Turn(const QByteArray& sWay) {
        QTabBar& tBar = t.SSTab.Bar();
        if (sWay == "mouse") {
            QTest::mouseClick(&tBar, Qt::LeftButton, {}, tBar.tabRect((t.SSTab.Tab() + 1) % t.SSTab.Count()).center());
        } else if (sWay == "wheel") {
            const int iStep = t.SSTab.Tab() == t.SSTab.Count() - 1 ? 120 : -120;
            QWheelEvent tWheel(QPointF(5, 5), tBar.mapToGlobal(QPointF(5, 5)), {}, QPoint(0, iStep), Qt::NoButton,
                               Qt::NoModifier, Qt::NoScrollPhase, false);
            QApplication::sendEvent(&tBar, &tWheel);
        } else if (sWay == "Ctrl+Tab") {
            Key(Qt::Key_Tab, Qt::ControlModifier);
        } else {
            Key(Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
        }
    }

    bool OnButton() const { return t.Toolbar.isAncestorOf(t.focusWidget()); }

    // As the Tab key would.
    void FocusButton(const char* sKey) {
        t.Toolbar.widgetForAction(&t.Toolbar.Action(QLatin1String(sKey)))->setFocus();
        iOnButtons = 0;
    }

    World tWorld;
    QString sRecord = tWorld.Path(QStringLiteral("record.txt"));
    TestWindow t;
    int iOnButtons = 0;  // how often the focus has come to a button, if only in passing
    QObject tListener;   // gone before the window is
};

// A control of each tab that can hold the focus while the ports are open; nothing on the tabs that have none.
QWidget* Control(TestWindow& t, int iTab) {
    const std::map<int, QWidget*> pControls = {
        {ui::TabInput, &t.lstCommData(0)}, {ui::TabReceiver, &t.txtRxNasaChannel}, {ui::TabAis, &t.lstAisData},
        {ui::TabGps, &t.txtGpsLat},        {ui::TabTargets, &t.cmbTargetTarget},   {ui::TabMessages, &t.grdMessageData},
        {ui::TabSpec, &t.grdSpecData},     {ui::TabTiming, &t.txtTimingRateTx},    {ui::TabOutput, &t.lstOutputData},
    };
    const auto it = pControls.find(iTab);
    return it == pControls.end() ? nullptr : it->second;
}

void AddWays() {
    QTest::addColumn<QByteArray>("way");
    for (const char* sWay : {"mouse", "wheel", "Ctrl+Tab", "Ctrl+Shift+Tab"}) QTest::newRow(sWay) << QByteArray(sWay);
}

}  // namespace

class FocusWindowTest : public QObject {
    Q_OBJECT

private slots:
    void spaceAfterTurningATabLeavesTheRecordingAlone_data() { AddWays(); }
    void spaceAfterTurningATabLeavesTheRecordingAlone();
    void focusReturnsToWhatHadItOnTheTab_data() { AddWays(); }
    void focusReturnsToWhatHadItOnTheTab();
    void focusGoesToTheBarWhereNothingHadIt();
    void focusGoesToTheBarWhereItsLastHolderIsDisabled();
    void focusElsewhereStaysWhereItIs();
    void tabTurnedBehindAnotherWindowIsNoDifference();
    void startLeavesAFieldForTheBar_data();
    void startLeavesAFieldForTheBar();
    void buttonThatHasStartedDoesNotHandTheFocusToAnother();
    void endOfAPlaybackDoesNotHandTheFocusToAButton();
    void windowOpensWithTheFocusOnTheBar();
    void tabKeyStillReachesTheButtons();
    void clickOnAButtonLeavesTheFocusAlone();
};

void FocusWindowTest::spaceAfterTurningATabLeavesTheRecordingAlone() {
    QFETCH(QByteArray, way);
    for (int iTab = 0; iTab < 11; ++iTab) {
        Desk d;
        d.t.SSTab.SetTab(iTab);
        d.StartRecording();
        QWidget* pControl = Control(d.t, iTab);
        if (pControl == nullptr) continue;
        pControl->setFocus();
        QCOMPARE(QApplication::focusWidget(), pControl);
        d.Turn(way);
        QVERIFY(d.t.SSTab.Tab() != iTab);
        QVERIFY2(d.iOnButtons == 0, qPrintable(QString::number(iTab)));
        d.Key(Qt::Key_Space);
        QCOMPARE(d.t.Panel(1), std::string("Record"));
        d.t.FeedLine(0, Report);
        d.t.Advance(1);
        QCOMPARE(d.tWorld.ReadFile(d.sRecord), std::string("05/15/2011 12:00:00 ") + Report + "\r\n");
    }
}

void FocusWindowTest::focusReturnsToWhatHadItOnTheTab() {
    QFETCH(QByteArray, way);
    const int iStep = way == "Ctrl+Shift+Tab" ? 1 : -1;  // from the neighbour the turn leads to Receiver
    Desk d;
    d.t.SSTab.SetTab(ui::TabReceiver);
    d.t.txtRxNasaInterval.setFocus();
    d.t.SSTab.SetTab(ui::TabReceiver + iStep);
    QWidget* pControl = Control(d.t, d.t.SSTab.Tab());
    pControl->setFocus();
    d.Turn(way);
    QCOMPARE(d.t.SSTab.Tab(), int{ui::TabReceiver});
    QCOMPARE(QApplication::focusWidget(), &d.t.txtRxNasaInterval);
    d.Key(Qt::Key_7);
    QCOMPARE(d.t.txtRxNasaInterval.Text().back(), '7');
}

void FocusWindowTest::focusGoesToTheBarWhereNothingHadIt() {
    Desk d;
    d.t.txtCommPort(0).setFocus();
    d.Turn("Ctrl+Tab");
    QCOMPARE(QApplication::focusWidget(), &d.t.SSTab.Bar());
}

void FocusWindowTest::focusGoesToTheBarWhereItsLastHolderIsDisabled() {
    Desk d;
    d.t.txtCommPort(0).setFocus();
    d.Turn("Ctrl+Tab");
    d.t.txtRxNasaChannel.setFocus();
    d.t.StartBoth();
    d.Turn("Ctrl+Shift+Tab");
    QCOMPARE(QApplication::focusWidget(), &d.t.SSTab.Bar());
}

void FocusWindowTest::focusElsewhereStaysWhereItIs() {
    Desk d;
    d.t.txtCommPort(0).setFocus();
    d.t.SSTab.Bar().setFocus();
    d.Key(Qt::Key_Right);
    d.Key(Qt::Key_Left);
    QCOMPARE(d.t.SSTab.Tab(), 0);
    QCOMPARE(QApplication::focusWidget(), &d.t.SSTab.Bar());
}

void FocusWindowTest::tabTurnedBehindAnotherWindowIsNoDifference() {
    Desk d;
    d.StartRecording();
    d.t.lstCommData(0).setFocus();
    QWidget tOther;
    tOther.show();
    tOther.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&tOther));
    d.Turn("wheel");
    tOther.close();
    d.t.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&d.t));
    QCOMPARE(QApplication::focusWidget(), &d.t.SSTab.Bar());
    d.Key(Qt::Key_Space);
    QCOMPARE(d.t.Panel(1), std::string("Record"));
}

void FocusWindowTest::startLeavesAFieldForTheBar_data() {
    QTest::addColumn<int>("tab");
    QTest::addColumn<QString>("control");
    for (const char* sControl : {"chkCommEnabled(0)", "txtCommPort(0)", "txtCommSettings(0)", "chkCommEnabled(1)",
                                 "txtCommPort(1)", "txtCommSettings(1)"}) {
        QTest::newRow(sControl) << int{ui::TabInput} << QString::fromLatin1(sControl);
    }
    for (const char* sControl : {"chkOutputEnabled", "txtOutputPort", "txtOutputSettings", "chkOutputRMC"}) {
        QTest::newRow(sControl) << int{ui::TabOutput} << QString::fromLatin1(sControl);
    }
}

// With both inputs disabled not even a log is left on Input that could take it.
void FocusWindowTest::startLeavesAFieldForTheBar() {
    QFETCH(int, tab);
    QFETCH(QString, control);
    Desk d;
    d.t.SSTab.SetTab(tab);
    d.t.chkCommEnabled(0).setChecked(false);
    d.t.FormLayout();
    d.t.findChild<QWidget*>(control)->setFocus();
    d.Key(Qt::Key_S, Qt::AltModifier);
    QTRY_COMPARE(d.t.Panel(1), std::string("Running"));  // a mnemonic shows its button down for a moment first
    QCOMPARE(QApplication::focusWidget(), &d.t.SSTab.Bar());
    QCOMPARE(d.iOnButtons, 0);
    d.Key(Qt::Key_Space);
    QCOMPARE(d.t.Panel(1), std::string("Running"));
}

void FocusWindowTest::buttonThatHasStartedDoesNotHandTheFocusToAnother() {
    Desk d;
    d.FocusButton(ui::KeyStart);
    d.Key(Qt::Key_Space);
    QCOMPARE(d.t.Panel(1), std::string("Running"));
    d.Key(Qt::Key_Space);
    QCOMPARE(d.t.Panel(1), std::string("Running"));
    QCOMPARE(QApplication::focusWidget(), &d.t.SSTab.Bar());
    QCOMPARE(d.iOnButtons, 0);
}

void FocusWindowTest::endOfAPlaybackDoesNotHandTheFocusToAButton() {
    Desk d;
    const QString sFile = d.tWorld.Path(QStringLiteral("short.txt"));
    d.tWorld.WriteFile(sFile, std::string("05/15/2011 12:00:00 ") + Report + "\r\n");
    d.tWorld.tFileAnswers = {sFile};
    d.t.Press("Playback");
    d.FocusButton(ui::KeyStop);
    d.t.Advance(1);
    QCOMPARE(d.t.Panel(1), std::string("Done"));
    QCOMPARE(QApplication::focusWidget(), &d.t.SSTab.Bar());
    QCOMPARE(d.iOnButtons, 0);
}

void FocusWindowTest::windowOpensWithTheFocusOnTheBar() {
    Desk d;
    QCOMPARE(QApplication::focusWidget(), &d.t.SSTab.Bar());
    d.Key(Qt::Key_Space);
    QCOMPARE(d.t.Panel(1), std::string("Stopped"));
    QVERIFY(d.tWorld.tDialogs.empty());
}

void FocusWindowTest::tabKeyStillReachesTheButtons() {
    Desk d;
    for (int i = 0; i < 20 && !d.OnButton(); ++i) d.Key(Qt::Key_Tab);
    QVERIFY(d.OnButton());
    d.Key(Qt::Key_Space);
    QCOMPARE(d.t.Panel(1), std::string("Running"));
}

void FocusWindowTest::clickOnAButtonLeavesTheFocusAlone() {
    Desk d;
    d.t.SSTab.SetTab(ui::TabAis);
    d.t.lstAisData.setFocus();
    QWidget* pStart = d.t.Toolbar.widgetForAction(&d.t.Toolbar.Action(QLatin1String(ui::KeyStart)));
    QTest::mouseClick(pStart, Qt::LeftButton);
    QCOMPARE(d.t.Panel(1), std::string("Running"));
    QCOMPARE(QApplication::focusWidget(), &d.t.lstAisData);
}

QTEST_MAIN(FocusWindowTest)
#include "FocusWindowTest.moc"
