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
#include "tests/window/Bench.h"
#include "tests/window/SaysTable.h"

using support::ActiveWindow;
using support::AnyReport;
using support::ShownWindow;
using support::TestWindow;

namespace {

// Where the Tab key stops between the tab bar and the tab bar; with Shift the other way round.
QString Stops(const ActiveWindow& k, bool bBackwards) {
    QStringList sStops;
    k.SSTab.Bar().setFocus();
    for (int i = 0; i < 100; ++i) {
        k.Key(bBackwards ? Qt::Key_Backtab : Qt::Key_Tab, bBackwards ? Qt::ShiftModifier : Qt::NoModifier);
        const QWidget* pFocus = k.focusWidget();
        if (pFocus == &k.SSTab.Bar()) {
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
    ActiveWindow t;
    t.chkCommEnabled(1).setChecked(true);
    t.SSTab.SetTab(tab);
    QCOMPARE(Stops(t, false), WholeWay(stops));
}

void KeysWindowTest::shiftTabGoesBack_data() { AddStops(); }

void KeysWindowTest::shiftTabGoesBack() {
    QFETCH(int, tab);
    QFETCH(QString, stops);
    ActiveWindow t;
    t.chkCommEnabled(1).setChecked(true);
    t.SSTab.SetTab(tab);
    QCOMPARE(Stops(t, true), WholeWay(stops));
}

void KeysWindowTest::controlTabTurnsTheTabs() {
    ActiveWindow t;
    for (int i = 1; i <= t.SSTab.Count(); ++i) {
        t.Key(Qt::Key_Tab, Qt::ControlModifier);
        QCOMPARE(t.SSTab.Tab(), i % t.SSTab.Count());
        QVERIFY(t.Page(t.SSTab.Tab()).isVisible());
    }
}

void KeysWindowTest::controlShiftTabTurnsThemBack_data() {
    QTest::addColumn<int>("key");
    QTest::newRow("as the X server says it") << int{Qt::Key_Backtab};
    QTest::newRow("as others do") << int{Qt::Key_Tab};
}

void KeysWindowTest::controlShiftTabTurnsThemBack() {
    QFETCH(int, key);
    ActiveWindow t;
    for (int i = t.SSTab.Count() - 1; i >= 0; --i) {
        t.Key(static_cast<Qt::Key>(key), Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(t.SSTab.Tab(), i);
        QVERIFY(t.Page(i).isVisible());
    }
}

void KeysWindowTest::controlQEndsTheProgram() {
    ActiveWindow t;
    t.txtCommPort(0).SetText("17");
    t.Key(Qt::Key_Q, Qt::ControlModifier);
    QVERIFY(!t.isVisible());
    // As closing the window does: the settings are saved.
    QVERIFY(t.tWorld.ReadFile(t.tWorld.ProfileFile()).find("Comm Port #0=17\r\n") != std::string::npos);
}

void KeysWindowTest::controlQEndsARecordingInOrder() {
    ActiveWindow t;
    const QString sFile = t.tWorld.Path(QStringLiteral("recorded.txt"));
    t.StartBoth();
    t.PressWithFile("Record", sFile);
    t.FeedLine(0, AnyReport);
    t.Key(Qt::Key_Q, Qt::ControlModifier);
    QVERIFY(!t.isVisible());
    QVERIFY(t.tWorld.ReadFile(sFile).ends_with("15M67F@uQqG?w<hK?Mu8iFv00000,0*7B\r\n"));
    QVERIFY(!t.MSComm(0).PortOpen());
}

void KeysWindowTest::f1OpensTheManual() {
    ActiveWindow t;
    // The program's folder of this world, as if it had been installed there.
    const QDir tFolder(t.tWorld.Folder());
    const QString sProgram = tFolder.filePath(QStringLiteral("bin/tidewatch"));
    const QString sManual = tFolder.filePath(QStringLiteral("share/doc/tidewatch/manual.html"));
    QVERIFY(tFolder.mkpath(QStringLiteral("bin")) && tFolder.mkpath(QStringLiteral("share/doc/tidewatch")));
    t.tWorld.WriteFile(sProgram, "");
    t.tWorld.WriteFile(sManual, "# Tidewatch");
    t.m_tPlatform.sProgramFile = sProgram;
    t.Key(Qt::Key_F1);
    QCOMPARE(t.tWorld.sDocuments, QStringList{QFileInfo(sManual).canonicalFilePath()});
    QCOMPARE(support::Bytes(t.Panel(2)), QByteArray());
}

void KeysWindowTest::f1SaysWhyThereIsNone() {
    ActiveWindow t;
    t.Key(Qt::Key_F1);
    QVERIFY(t.tWorld.sDocuments.isEmpty());
    QVERIFY2(t.Panel(2).starts_with("Manual - "), t.Panel(2).c_str());

    const QDir tFolder(t.tWorld.Folder());
    QVERIFY(tFolder.mkpath(QStringLiteral("bin")) && tFolder.mkpath(QStringLiteral("share/doc/tidewatch")));
    t.m_tPlatform.sProgramFile = tFolder.filePath(QStringLiteral("bin/tidewatch"));
    t.tWorld.WriteFile(t.m_tPlatform.sProgramFile, "");
    t.tWorld.WriteFile(tFolder.filePath(QStringLiteral("share/doc/tidewatch/manual.html")), "# Tidewatch");
    t.tWorld.bOpensDocuments = false;
    t.Key(Qt::Key_F1);
    QCOMPARE(t.tWorld.sDocuments.size(), 1);
    QVERIFY2(t.Panel(2).ends_with("share/doc/tidewatch/manual.html"), t.Panel(2).c_str());
    QVERIFY(t.tWorld.sMessages.isEmpty());
}

void KeysWindowTest::keysWorkFromEveryControl_data() { AddStops(); }

void KeysWindowTest::keysWorkFromEveryControl() {
    QFETCH(int, tab);
    QFETCH(QString, stops);
    for (const QString& sStop : stops.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        ActiveWindow t;
        t.chkCommEnabled(1).setChecked(true);
        t.SSTab.SetTab(tab);
        auto* pControl = t.findChild<QWidget*>(sStop);
        QVERIFY2(pControl != nullptr, qPrintable(sStop));
        pControl->setFocus();
        t.Key(Qt::Key_F1);
        QVERIFY2(t.Panel(2).starts_with("Manual - "), qPrintable(sStop));
        t.Key(Qt::Key_Tab, Qt::ControlModifier);
        QVERIFY2(t.SSTab.Tab() == (tab + 1) % t.SSTab.Count(), qPrintable(sStop));
        t.SSTab.SetTab(tab);
        pControl->setFocus();
        t.Key(Qt::Key_Q, Qt::ControlModifier);
        QVERIFY2(!t.isVisible(), qPrintable(sStop));
    }
}

void KeysWindowTest::noTwoCaptionsShareALetter() {
    ShownWindow t;
    for (int iTab = 0; iTab < t.SSTab.Count(); ++iTab) {
        QString sLetters = Mnemonics(t, iTab);
        QVERIFY(sLetters.size() >= 5);  // those of the toolbar
        std::sort(sLetters.begin(), sLetters.end());
        QVERIFY2(std::adjacent_find(sLetters.begin(), sLetters.end()) == sLetters.end(), qPrintable(sLetters));
    }
}

void KeysWindowTest::lettersLeadToTheirControls() {
    ActiveWindow t;
    t.Key(Qt::Key_2, Qt::AltModifier);
    QTRY_VERIFY(t.chkCommEnabled(1).isChecked());  // shown pressed for a moment first
    t.SSTab.SetTab(ui::TabTargets);
    t.Key(Qt::Key_G, Qt::AltModifier);
    QCOMPARE(t.focusWidget(), &t.cmbTargetTarget);
    t.Key(Qt::Key_Y, Qt::AltModifier);
    QCOMPARE(t.focusWidget(), &t.cmbTargetSort);
    t.SSTab.SetTab(ui::TabGps);
    t.Key(Qt::Key_O, Qt::AltModifier);
    QCOMPARE(t.focusWidget(), &t.txtGpsLon);
    t.Key(Qt::Key_S, Qt::AltModifier);  // Start, on whatever tab
    QTRY_COMPARE(support::Bytes(t.Panel(1)), QByteArray("Running"));
}

void KeysWindowTest::wheelChangesNoChoiceWithoutTheFocus() {
    ActiveWindow t;
    t.StartBoth();
    t.FeedLine(0, AnyReport);
    t.FeedLine(0, "!AIVDM,1,1,,B,16:=?;0P00`SstvFnFbeGH6L088h,0");
    t.SSTab.SetTab(ui::TabTargets);
    t.Synchronize();
    t.grdTargetData.setFocus();
    const std::string sDetail = t.cmbTargetDetail.Text();
    const std::string sSort = t.cmbTargetSort.Text();
    const std::string sTarget = t.cmbTargetTarget.Text();
    QVERIFY(t.cmbTargetTarget.count() == 2);
    for (QWidget* p :
         {static_cast<QWidget*>(&t.cmbTargetDetail), static_cast<QWidget*>(&t.cmbTargetSort),
          static_cast<QWidget*>(&t.cmbTargetTarget), static_cast<QWidget*>(t.cmbTargetTarget.lineEdit())}) {
        for (const int iNotches : {1, 1, -1, 2}) Wheel(*p, iNotches);
        QCOMPARE(t.focusWidget(), &t.grdTargetData);  // nor does it take the focus
    }
    QCOMPARE(t.cmbTargetDetail.Text(), sDetail);
    QCOMPARE(t.cmbTargetSort.Text(), sSort);
    QCOMPARE(t.cmbTargetTarget.Text(), sTarget);
    QCOMPARE(t.cmbTargetTarget.currentText().toStdString(), sTarget);
}

void KeysWindowTest::wheelTurnsAChoiceWithTheFocus() {
    ActiveWindow t;
    t.SSTab.SetTab(ui::TabTargets);
    t.cmbTargetSort.setFocus();
    const int iBefore = t.cmbTargetSort.ListIndex();
    Wheel(t.cmbTargetSort, 1);
    QCOMPARE(t.cmbTargetSort.ListIndex(), iBefore + 1);
}

QTEST_MAIN(KeysWindowTest)
#include "KeysWindowTest.moc"
