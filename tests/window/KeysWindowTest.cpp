// The keyboard and the wheel on the whole window: the order of the Tab key, turning tabs, ending, the manual, and that
// no two letters say the same.
#include <QAction>
#include <QLabel>
#include <QTest>
#include <QToolButton>
#include <QWheelEvent>
#include <algorithm>

#include "tests/support/Bytes.h"
#include "tests/support/PrintString.h"
#include "tests/support/TestWindow.h"
#include "tests/window/SaysTable.h"

using support::TestWindow;
using support::World;

namespace {

// A window that has the keyboard.
struct Keyboard {
    World tWorld;
    TestWindow t{tWorld};

    Keyboard() {
        t.LoadAndShow();
        t.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&t));
    }
    void Press(Qt::Key eKey, Qt::KeyboardModifiers eModifiers = Qt::NoModifier) const {
        QTest::keyClick(t.windowHandle(), eKey, eModifiers);
        QCoreApplication::processEvents();
    }
};

// Where the Tab key stops between the tab bar and the tab bar; with Shift the other way round.
QString Stops(const Keyboard& k, bool bBackwards) {
    QStringList sStops;
    k.t.SSTab.Bar().setFocus();
    for (int i = 0; i < 100; ++i) {
        k.Press(bBackwards ? Qt::Key_Backtab : Qt::Key_Tab, bBackwards ? Qt::ShiftModifier : Qt::NoModifier);
        const QWidget* pFocus = k.t.focusWidget();
        if (pFocus == &k.t.SSTab.Bar()) {
            if (bBackwards) std::reverse(sStops.begin(), sStops.end());
            return sStops.join(QLatin1Char(' '));
        }
        const auto* pButton = qobject_cast<const QToolButton*>(pFocus);
        sStops << (pButton != nullptr ? pButton->text() : pFocus->objectName());
    }
    return QStringLiteral("never back at the tab bar");
}

// The table's ways, tab by tab.
void AddStops() {
    QTest::addColumn<int>("tab");
    QTest::addColumn<QString>("stops");
    int iTab = 0;
    for (const QString& sLine : QString::fromUtf8(support::TabKeyTable).split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
        QTest::newRow(qPrintable(sLine.section(QLatin1Char(':'), 0, 0)))
            << iTab++ << sLine.section(QLatin1Char(':'), 1).trimmed();
    }
}

// With the toolbar's buttons, which come before the tab bar.
QString WholeWay(const QString& sStops) {
    return (sStops + QLatin1Char(' ') + QLatin1String(support::ToolbarStops)).trimmed();
}

// The letters that Alt brings into play while a tab shows, in the order in which they are found.
QString Mnemonics(TestWindow& t, int iTab) {
    QStringList sCaptions;
    for (const QAction* p : t.Toolbar.actions()) sCaptions << p->text();
    for (int i = 0; i < t.SSTab.Count(); ++i) sCaptions << t.SSTab.Bar().tabText(i);
    for (const QLabel* p : t.Page(iTab).findChildren<QLabel*>()) {
        if (p->buddy() != nullptr) sCaptions << p->text();
    }
    for (const QAbstractButton* p : t.Page(iTab).findChildren<QAbstractButton*>()) sCaptions << p->text();
    QString sLetters;
    for (const QString& sCaption : sCaptions) {
        const QKeySequence tKeys = QKeySequence::mnemonic(sCaption);
        if (!tKeys.isEmpty()) sLetters += tKeys.toString().section(QLatin1Char('+'), -1);
    }
    return sLetters;
}

void Wheel(QWidget& t, int iNotches) {
    const QPointF tAt = t.rect().center();
    QWheelEvent tEvent(tAt, t.mapToGlobal(tAt), {}, QPoint(0, -120 * iNotches), Qt::NoButton, Qt::NoModifier,
                       Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&t, &tEvent);
}

}  // namespace

class KeysWindowTest : public QObject {
    Q_OBJECT

private slots:
    void tabKeyGoesThroughATabInOrder_data();
    void tabKeyGoesThroughATabInOrder();
    void shiftTabGoesBack_data();
    void shiftTabGoesBack();
    void controlTabTurnsTheTabs();
    void controlShiftTabTurnsThemBack_data();
    void controlShiftTabTurnsThemBack();
    void controlQEndsTheProgram();
    void controlQEndsARecordingInOrder();
    void f1OpensTheManual();
    void f1SaysWhyThereIsNone();
    void keysWorkFromEveryControl_data();
    void keysWorkFromEveryControl();
    void noTwoCaptionsShareALetter();
    void lettersLeadToTheirControls();
    void wheelChangesNoChoiceWithoutTheFocus();
    void wheelTurnsAChoiceWithTheFocus();
};

void KeysWindowTest::tabKeyGoesThroughATabInOrder_data() { AddStops(); }

void KeysWindowTest::tabKeyGoesThroughATabInOrder() {
    QFETCH(int, tab);
    QFETCH(QString, stops);
    Keyboard k;
    k.t.chkCommEnabled(1).setChecked(true);
    k.t.SSTab.SetTab(tab);
    QCOMPARE(Stops(k, false), WholeWay(stops));
}

void KeysWindowTest::shiftTabGoesBack_data() { AddStops(); }

void KeysWindowTest::shiftTabGoesBack() {
    QFETCH(int, tab);
    QFETCH(QString, stops);
    Keyboard k;
    k.t.chkCommEnabled(1).setChecked(true);
    k.t.SSTab.SetTab(tab);
    QCOMPARE(Stops(k, true), WholeWay(stops));
}

void KeysWindowTest::controlTabTurnsTheTabs() {
    Keyboard k;
    for (int i = 1; i <= k.t.SSTab.Count(); ++i) {
        k.Press(Qt::Key_Tab, Qt::ControlModifier);
        QCOMPARE(k.t.SSTab.Tab(), i % k.t.SSTab.Count());
        QVERIFY(k.t.Page(k.t.SSTab.Tab()).isVisible());
    }
}

void KeysWindowTest::controlShiftTabTurnsThemBack_data() {
    QTest::addColumn<int>("key");
    QTest::newRow("as the X server says it") << int{Qt::Key_Backtab};
    QTest::newRow("as others do") << int{Qt::Key_Tab};
}

void KeysWindowTest::controlShiftTabTurnsThemBack() {
    QFETCH(int, key);
    Keyboard k;
    for (int i = k.t.SSTab.Count() - 1; i >= 0; --i) {
        k.Press(static_cast<Qt::Key>(key), Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(k.t.SSTab.Tab(), i);
        QVERIFY(k.t.Page(i).isVisible());
    }
}

void KeysWindowTest::controlQEndsTheProgram() {
    Keyboard k;
    k.t.txtCommPort(0).SetText("17");
    k.Press(Qt::Key_Q, Qt::ControlModifier);
    QVERIFY(!k.t.isVisible());
    // As closing the window does: the settings are saved.
    QVERIFY(k.tWorld.ReadFile(k.tWorld.ProfileFile()).find("Comm Port #0=17\r\n") != std::string::npos);
}

void KeysWindowTest::controlQEndsARecordingInOrder() {
    Keyboard k;
    const QString sFile = k.tWorld.Path(QStringLiteral("recorded.txt"));
    k.t.StartBoth();
    k.tWorld.tFileAnswers = {sFile};
    k.t.Press("Record");
    k.t.FeedLine(0, "!AIVDM,1,1,,A,15M67F@uQqG?w<hK?Mu8iFv00000,0*7B");
    k.Press(Qt::Key_Q, Qt::ControlModifier);
    QVERIFY(!k.t.isVisible());
    QVERIFY(k.tWorld.ReadFile(sFile).ends_with("15M67F@uQqG?w<hK?Mu8iFv00000,0*7B\r\n"));
    QVERIFY(!k.t.MSComm(0).PortOpen());
}

void KeysWindowTest::f1OpensTheManual() {
    Keyboard k;
    // The program's folder of this world, as if it had been installed there.
    const QDir tFolder(k.tWorld.Folder());
    const QString sProgram = tFolder.filePath(QStringLiteral("bin/tidewatch"));
    const QString sManual = tFolder.filePath(QStringLiteral("share/doc/tidewatch/manual.md"));
    QVERIFY(tFolder.mkpath(QStringLiteral("bin")) && tFolder.mkpath(QStringLiteral("share/doc/tidewatch")));
    k.tWorld.WriteFile(sProgram, "");
    k.tWorld.WriteFile(sManual, "# Tidewatch");
    k.t.m_tPlatform.sProgramFile = sProgram;
    k.Press(Qt::Key_F1);
    QCOMPARE(k.tWorld.sDocuments, QStringList{QFileInfo(sManual).canonicalFilePath()});
    QCOMPARE(support::Bytes(k.t.Panel(2)), QByteArray());
}

void KeysWindowTest::f1SaysWhyThereIsNone() {
    Keyboard k;
    k.Press(Qt::Key_F1);
    QVERIFY(k.tWorld.sDocuments.isEmpty());
    QVERIFY2(k.t.Panel(2).starts_with("Manual - "), k.t.Panel(2).c_str());

    const QDir tFolder(k.tWorld.Folder());
    QVERIFY(tFolder.mkpath(QStringLiteral("bin")) && tFolder.mkpath(QStringLiteral("share/doc/tidewatch")));
    k.t.m_tPlatform.sProgramFile = tFolder.filePath(QStringLiteral("bin/tidewatch"));
    k.tWorld.WriteFile(k.t.m_tPlatform.sProgramFile, "");
    k.tWorld.WriteFile(tFolder.filePath(QStringLiteral("share/doc/tidewatch/manual.md")), "# Tidewatch");
    k.tWorld.bOpensDocuments = false;
    k.Press(Qt::Key_F1);
    QCOMPARE(k.tWorld.sDocuments.size(), 1);
    QVERIFY2(k.t.Panel(2).ends_with("share/doc/tidewatch/manual.md"), k.t.Panel(2).c_str());
    QVERIFY(k.tWorld.sMessages.isEmpty());
}

void KeysWindowTest::keysWorkFromEveryControl_data() { AddStops(); }

void KeysWindowTest::keysWorkFromEveryControl() {
    QFETCH(int, tab);
    QFETCH(QString, stops);
    for (const QString& sStop : stops.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        Keyboard k;
        k.t.chkCommEnabled(1).setChecked(true);
        k.t.SSTab.SetTab(tab);
        auto* pControl = k.t.findChild<QWidget*>(sStop);
        QVERIFY2(pControl != nullptr, qPrintable(sStop));
        pControl->setFocus();
        k.Press(Qt::Key_F1);
        QVERIFY2(k.t.Panel(2).starts_with("Manual - "), qPrintable(sStop));
        k.Press(Qt::Key_Tab, Qt::ControlModifier);
        QVERIFY2(k.t.SSTab.Tab() == (tab + 1) % k.t.SSTab.Count(), qPrintable(sStop));
        k.t.SSTab.SetTab(tab);
        pControl->setFocus();
        k.Press(Qt::Key_Q, Qt::ControlModifier);
        QVERIFY2(!k.t.isVisible(), qPrintable(sStop));
    }
}

void KeysWindowTest::noTwoCaptionsShareALetter() {
    World tWorld;
    TestWindow t(tWorld);
    t.LoadAndShow();
    for (int iTab = 0; iTab < t.SSTab.Count(); ++iTab) {
        QString sLetters = Mnemonics(t, iTab);
        QVERIFY(sLetters.size() >= 5);  // those of the toolbar
        std::sort(sLetters.begin(), sLetters.end());
        QVERIFY2(std::adjacent_find(sLetters.begin(), sLetters.end()) == sLetters.end(), qPrintable(sLetters));
    }
}

void KeysWindowTest::lettersLeadToTheirControls() {
    Keyboard k;
    k.Press(Qt::Key_2, Qt::AltModifier);
    QTRY_VERIFY(k.t.chkCommEnabled(1).isChecked());  // shown pressed for a moment first
    k.t.SSTab.SetTab(ui::TabTargets);
    k.Press(Qt::Key_G, Qt::AltModifier);
    QCOMPARE(k.t.focusWidget(), &k.t.cmbTargetTarget);
    k.Press(Qt::Key_Y, Qt::AltModifier);
    QCOMPARE(k.t.focusWidget(), &k.t.cmbTargetSort);
    k.t.SSTab.SetTab(ui::TabGps);
    k.Press(Qt::Key_O, Qt::AltModifier);
    QCOMPARE(k.t.focusWidget(), &k.t.txtGpsLon);
    k.Press(Qt::Key_S, Qt::AltModifier);  // Start, on whatever tab
    QTRY_COMPARE(support::Bytes(k.t.Panel(1)), QByteArray("Running"));
}

void KeysWindowTest::wheelChangesNoChoiceWithoutTheFocus() {
    Keyboard k;
    k.t.StartBoth();
    k.t.FeedLine(0, "!AIVDM,1,1,,A,15M67F@uQqG?w<hK?Mu8iFv00000,0*7B");
    k.t.FeedLine(0, "!AIVDM,1,1,,B,16:=?;0P00`SstvFnFbeGH6L088h,0");
    k.t.SSTab.SetTab(ui::TabTargets);
    k.t.Synchronize();
    k.t.grdTargetData.setFocus();
    const std::string sDetail = k.t.cmbTargetDetail.Text();
    const std::string sSort = k.t.cmbTargetSort.Text();
    const std::string sTarget = k.t.cmbTargetTarget.Text();
    QVERIFY(k.t.cmbTargetTarget.count() == 2);
    for (QWidget* p :
         {static_cast<QWidget*>(&k.t.cmbTargetDetail), static_cast<QWidget*>(&k.t.cmbTargetSort),
          static_cast<QWidget*>(&k.t.cmbTargetTarget), static_cast<QWidget*>(k.t.cmbTargetTarget.lineEdit())}) {
        for (const int iNotches : {1, 1, -1, 2}) Wheel(*p, iNotches);
        QCOMPARE(k.t.focusWidget(), &k.t.grdTargetData);  // nor does it take the focus
    }
    QCOMPARE(k.t.cmbTargetDetail.Text(), sDetail);
    QCOMPARE(k.t.cmbTargetSort.Text(), sSort);
    QCOMPARE(k.t.cmbTargetTarget.Text(), sTarget);
    QCOMPARE(k.t.cmbTargetTarget.currentText().toStdString(), sTarget);
}

void KeysWindowTest::wheelTurnsAChoiceWithTheFocus() {
    Keyboard k;
    k.t.SSTab.SetTab(ui::TabTargets);
    k.t.cmbTargetSort.setFocus();
    const int iBefore = k.t.cmbTargetSort.ListIndex();
    Wheel(k.t.cmbTargetSort, 1);
    QCOMPARE(k.t.cmbTargetSort.ListIndex(), iBefore + 1);
}

QTEST_MAIN(KeysWindowTest)
#include "KeysWindowTest.moc"
