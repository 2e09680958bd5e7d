// What a screen reader finds in the window, and that its press does what a click does.
#include <QAccessible>
#include <QLineEdit>
#include <QTest>
#include <QToolButton>

#include "tests/support/Bytes.h"
#include "tests/support/PrintString.h"
#include "tests/window/Bench.h"

using support::ShownWindow;
using support::TestWindow;

namespace {

QAccessibleInterface& Access(QWidget& t) { return *QAccessible::queryAccessibleInterface(&t); }

QString NameOf(QWidget& t) { return Access(t).text(QAccessible::Name); }

QWidget& Button(TestWindow& t, const char* sKey) {
    return *t.Toolbar.widgetForAction(&t.Toolbar.Action(QLatin1String(sKey)));
}

// The only action that a control offers, done.
void Act(QWidget& t) {
    QAccessibleActionInterface* pActions = Access(t).actionInterface();
    QVERIFY(pActions != nullptr);
    QCOMPARE(pActions->actionNames().size(), 1);
    pActions->doAction(pActions->actionNames().front());
}

}  // namespace

class AccessWindowTest : public QObject {
    Q_OBJECT

private slots:
    void pagesAreNamedPanes();
    void editOfTheTargetBoxHasItsName();
    void toolbarButtonsAreNamedButtons();
    void pressingAButtonRunsIt();
    void disabledButtonOffersNothing();
    void tickingAnInputLaysTheLogsOut_data();
    void tickingAnInputLaysTheLogsOut();
};

void AccessWindowTest::pagesAreNamedPanes() {
    ShownWindow t;
    for (int i = 0; i < t.SSTab.Count(); ++i) {
        QCOMPARE(NameOf(t.Page(i)), t.SSTab.Bar().tabText(i));
        QCOMPARE(Access(t.Page(i)).role(), QAccessible::Pane);
    }
}

void AccessWindowTest::editOfTheTargetBoxHasItsName() {
    ShownWindow t;
    QCOMPARE(NameOf(*t.cmbTargetTarget.lineEdit()), QStringLiteral("Selected target"));
    QCOMPARE(Access(*t.cmbTargetTarget.lineEdit()).role(), QAccessible::EditableText);
    QCOMPARE(Access(t.cmbTargetTarget).role(), QAccessible::ComboBox);
}

void AccessWindowTest::toolbarButtonsAreNamedButtons() {
    ShownWindow t;
    t.StartBoth();
    for (const char* sKey : {"Start", "Stop", "Record", "Playback", "Playback Burst"}) {
        QCOMPARE(NameOf(Button(t, sKey)), QLatin1String(sKey));
        QCOMPARE(Access(Button(t, sKey)).role(), QAccessible::PushButton);
        QCOMPARE(Access(Button(t, sKey)).state().checked != 0, t.Toolbar.Action(QLatin1String(sKey)).isChecked());
    }
    QCOMPARE(Access(Button(t, "Stop")).text(QAccessible::Accelerator), QStringLiteral("Alt+T"));
}

void AccessWindowTest::pressingAButtonRunsIt() {
    ShownWindow t;
    t.txtCommPort(0).SetText("1");
    QWidget* pFocus = t.focusWidget();
    Act(Button(t, "Start"));
    QCOMPARE(support::Bytes(t.Panel(1)), QByteArray("Running"));
    Act(Button(t, "Stop"));
    QCOMPARE(support::Bytes(t.Panel(1)), QByteArray("Stopped"));
    QCOMPARE(t.focusWidget(), pFocus);  // no button keeps the keyboard, where a Space would end the run
}

void AccessWindowTest::disabledButtonOffersNothing() {
    ShownWindow t;
    t.StartBoth();
    QVERIFY(!Button(t, "Start").isEnabled());
    QVERIFY(Access(Button(t, "Start")).actionInterface()->actionNames().isEmpty());
    QVERIFY(Access(t.chkCommEnabled(0)).actionInterface()->actionNames().isEmpty());
}

void AccessWindowTest::tickingAnInputLaysTheLogsOut_data() {
    QTest::addColumn<bool>("press");
    QTest::newRow("press") << true;
    QTest::newRow("toggle") << false;
}

void AccessWindowTest::tickingAnInputLaysTheLogsOut() {
    QFETCH(bool, press);
    ShownWindow t;
    const QRect tWhole = t.lstCommData(0).geometry();
    QVERIFY(!t.lstCommData(1).isVisible());
    QAccessibleInterface& tBox = Access(t.chkCommEnabled(1));
    QCOMPARE(tBox.role(), QAccessible::CheckBox);
    QCOMPARE(tBox.text(QAccessible::Name), QStringLiteral("Input #2"));
    QVERIFY(!tBox.state().checked);
    tBox.actionInterface()->doAction(press ? QAccessibleActionInterface::pressAction()
                                           : QAccessibleActionInterface::toggleAction());
    QVERIFY(tBox.state().checked);
    QVERIFY(t.lstCommData(1).isVisible());
    QCOMPARE(t.lstCommData(0).geometry().height(), tWhole.height() / 2);
    QCOMPARE(t.lstCommData(1).geometry().width(), tWhole.width());
    Act(t.chkCommEnabled(1));
    QVERIFY(!t.lstCommData(1).isVisible());
    QCOMPARE(t.lstCommData(0).geometry(), tWhole);
}

QTEST_MAIN(AccessWindowTest)
#include "AccessWindowTest.moc"
