// Where the keyboard focus stands when its holder goes out of sight or is disabled: never on a toolbar button, where
// the next Space would end the run and its recording.
#include <QApplication>
#include <QTest>
#include <QWheelEvent>

#include "tests/support/PrintString.h"
#include "tests/window/Bench.h"

using support::ActiveWindow;
using support::AnyReport;
using support::TestWindow;

namespace {

// The real window, shown and active, so that keys go where the user's would.
struct Desk : ActiveWindow {
    Desk() {
        QObject::connect(qApp, &QApplication::focusChanged, &tListener, [this](QWidget*, const QWidget* pNow) {
            if (Toolbar.isAncestorOf(pNow)) ++iOnButtons;
        });
    }

    void StartRecording() {
        StartBoth();
        PressWithFile("Record", sRecord);
    }

    // Turned by a mouse click on the tab, by the wheel over the bar, by the keys; the tab that shows then.
    void Turn(const QByteArray& sWay) {
        QTabBar& tBar = SSTab.Bar();
        if (sWay == "mouse") {
            QTest::mouseClick(&tBar, Qt::LeftButton, {}, tBar.tabRect((SSTab.Tab() + 1) % SSTab.Count()).center());
        } else if (sWay == "wheel") {
            const int iStep = SSTab.Tab() == SSTab.Count() - 1 ? 120 : -120;
            QWheelEvent tWheel(QPointF(5, 5), tBar.mapToGlobal(QPointF(5, 5)), {}, QPoint(0, iStep), Qt::NoButton,
                               Qt::NoModifier, Qt::NoScrollPhase, false);
            QApplication::sendEvent(&tBar, &tWheel);
        } else if (sWay == "Ctrl+Tab") {
            Key(Qt::Key_Tab, Qt::ControlModifier);
        } else {
            Key(Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
        }
    }

    bool OnButton() const { return Toolbar.isAncestorOf(focusWidget()); }

    // As the Tab key would.
    void FocusButton(const char* sKey) {
        Toolbar.widgetForAction(&Toolbar.Action(QLatin1String(sKey)))->setFocus();
        iOnButtons = 0;
    }

    QString sRecord = tWorld.Path(QStringLiteral("record.txt"));
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
        Desk t;
        t.SSTab.SetTab(iTab);
        t.StartRecording();
        QWidget* pControl = Control(t, iTab);
        if (pControl == nullptr) continue;
        pControl->setFocus();
        QCOMPARE(QApplication::focusWidget(), pControl);
        t.Turn(way);
        QVERIFY(t.SSTab.Tab() != iTab);
        QVERIFY2(t.iOnButtons == 0, qPrintable(QString::number(iTab)));
        t.Key(Qt::Key_Space);
        QCOMPARE(t.Panel(1), std::string("Record"));
        t.FeedLine(0, AnyReport);
        t.Advance(1);
        QCOMPARE(t.tWorld.ReadFile(t.sRecord), std::string("05/15/2011 12:00:00 ") + AnyReport + "\r\n");
    }
}

void FocusWindowTest::focusReturnsToWhatHadItOnTheTab() {
    QFETCH(QByteArray, way);
    const int iStep = way == "Ctrl+Shift+Tab" ? 1 : -1;  // from the neighbour the turn leads to Receiver
    Desk t;
    t.SSTab.SetTab(ui::TabReceiver);
    t.txtRxNasaInterval.setFocus();
    t.SSTab.SetTab(ui::TabReceiver + iStep);
    QWidget* pControl = Control(t, t.SSTab.Tab());
    pControl->setFocus();
    t.Turn(way);
    QCOMPARE(t.SSTab.Tab(), int{ui::TabReceiver});
    QCOMPARE(QApplication::focusWidget(), &t.txtRxNasaInterval);
    t.Key(Qt::Key_7);
    QCOMPARE(t.txtRxNasaInterval.Text().back(), '7');
}

void FocusWindowTest::focusGoesToTheBarWhereNothingHadIt() {
    Desk t;
    t.txtCommPort(0).setFocus();
    t.Turn("Ctrl+Tab");
    QCOMPARE(QApplication::focusWidget(), &t.SSTab.Bar());
}

void FocusWindowTest::focusGoesToTheBarWhereItsLastHolderIsDisabled() {
    Desk t;
    t.txtCommPort(0).setFocus();
    t.Turn("Ctrl+Tab");
    t.txtRxNasaChannel.setFocus();
    t.StartBoth();
    t.Turn("Ctrl+Shift+Tab");
    QCOMPARE(QApplication::focusWidget(), &t.SSTab.Bar());
}

void FocusWindowTest::focusElsewhereStaysWhereItIs() {
    Desk t;
    t.txtCommPort(0).setFocus();
    t.SSTab.Bar().setFocus();
    t.Key(Qt::Key_Right);
    t.Key(Qt::Key_Left);
    QCOMPARE(t.SSTab.Tab(), 0);
    QCOMPARE(QApplication::focusWidget(), &t.SSTab.Bar());
}

void FocusWindowTest::tabTurnedBehindAnotherWindowIsNoDifference() {
    Desk t;
    t.StartRecording();
    t.lstCommData(0).setFocus();
    QWidget tOther;
    tOther.show();
    tOther.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&tOther));
    t.Turn("wheel");
    tOther.close();
    t.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&t));
    QCOMPARE(QApplication::focusWidget(), &t.SSTab.Bar());
    t.Key(Qt::Key_Space);
    QCOMPARE(t.Panel(1), std::string("Record"));
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
    Desk t;
    t.SSTab.SetTab(tab);
    t.chkCommEnabled(0).setChecked(false);
    t.FormLayout();
    t.findChild<QWidget*>(control)->setFocus();
    t.Key(Qt::Key_S, Qt::AltModifier);
    QTRY_COMPARE(t.Panel(1), std::string("Running"));  // a mnemonic shows its button down for a moment first
    QCOMPARE(QApplication::focusWidget(), &t.SSTab.Bar());
    QCOMPARE(t.iOnButtons, 0);
    t.Key(Qt::Key_Space);
    QCOMPARE(t.Panel(1), std::string("Running"));
}

void FocusWindowTest::buttonThatHasStartedDoesNotHandTheFocusToAnother() {
    Desk t;
    t.FocusButton(ui::KeyStart);
    t.Key(Qt::Key_Space);
    QCOMPARE(t.Panel(1), std::string("Running"));
    t.Key(Qt::Key_Space);
    QCOMPARE(t.Panel(1), std::string("Running"));
    QCOMPARE(QApplication::focusWidget(), &t.SSTab.Bar());
    QCOMPARE(t.iOnButtons, 0);
}

void FocusWindowTest::endOfAPlaybackDoesNotHandTheFocusToAButton() {
    Desk t;
    const QString sFile = t.tWorld.Path(QStringLiteral("short.txt"));
    t.tWorld.WriteFile(sFile, std::string("05/15/2011 12:00:00 ") + AnyReport + "\r\n");
    t.PressWithFile("Playback", sFile);
    t.FocusButton(ui::KeyStop);
    t.Advance(1);
    QCOMPARE(t.Panel(1), std::string("Done"));
    QCOMPARE(QApplication::focusWidget(), &t.SSTab.Bar());
    QCOMPARE(t.iOnButtons, 0);
}

void FocusWindowTest::windowOpensWithTheFocusOnTheBar() {
    Desk t;
    QCOMPARE(QApplication::focusWidget(), &t.SSTab.Bar());
    t.Key(Qt::Key_Space);
    QCOMPARE(t.Panel(1), std::string("Stopped"));
    QVERIFY(t.tWorld.tDialogs.empty());
}

void FocusWindowTest::tabKeyStillReachesTheButtons() {
    Desk t;
    for (int i = 0; i < 20 && !t.OnButton(); ++i) t.Key(Qt::Key_Tab);
    QVERIFY(t.OnButton());
    t.Key(Qt::Key_Space);
    QCOMPARE(t.Panel(1), std::string("Running"));
}

void FocusWindowTest::clickOnAButtonLeavesTheFocusAlone() {
    Desk t;
    t.SSTab.SetTab(ui::TabAis);
    t.lstAisData.setFocus();
    QWidget* pStart = t.Toolbar.widgetForAction(&t.Toolbar.Action(QLatin1String(ui::KeyStart)));
    QTest::mouseClick(pStart, Qt::LeftButton);
    QCOMPARE(t.Panel(1), std::string("Running"));
    QCOMPARE(QApplication::focusWidget(), &t.lstAisData);
}

QTEST_MAIN(FocusWindowTest)
#include "FocusWindowTest.moc"
