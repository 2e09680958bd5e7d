// The window's layout rules, in twips.
#include "ui/Layout.h"

#include <QTest>

using ui::Rect;
using ui::Size;

class LayoutTest : public QObject {
    Q_OBJECT
private slots:
    void TabControlFillsTheWindow_data();
    void TabControlFillsTheWindow();
    void OneListFillsItsTab_data();
    void OneListFillsItsTab();
    void OneGridFillsItsTab_data();
    void OneGridFillsItsTab();
    void OneEnabledPortHasTheWholePlace_data();
    void OneEnabledPortHasTheWholePlace();
    void TwoEnabledPortsShareTheHeight_data();
    void TwoEnabledPortsShareTheHeight();
    void NoEnabledPortShowsNoList();
    void ReceiverFramesKeepToTheRight();
    void ReceiverInASmallWindowHasNoNegativeSize();
};

namespace {
const Rect ListDesign{120, 480, 4000, 3000};  // design size is of no consequence

void AddSizes() {
    QTest::addColumn<double>("dWidth");
    QTest::addColumn<double>("dHeight");
    QTest::addColumn<Rect>("tExpected");
}
}  // namespace

void LayoutTest::TabControlFillsTheWindow_data() {
    QTest::addColumn<double>("dInnerWidth");
    QTest::addColumn<double>("dStatusBarTop");
    QTest::addColumn<Rect>("tExpected");

    QTest::newRow("usual") << 12000.0 << 9000.0 << Rect{60, 600, 11880, 8310};
    QTest::newRow("4K screen") << 57600.0 << 32000.0 << Rect{60, 600, 57480, 31310};
    QTest::newRow("just nothing left") << 120.0 << 690.0 << Rect{60, 600, 0, 0};
    QTest::newRow("too small") << 100.0 << 300.0 << Rect{60, 600, 0, 0};
}

void LayoutTest::TabControlFillsTheWindow() {
    QFETCH(double, dInnerWidth);
    QFETCH(double, dStatusBarTop);
    QFETCH(Rect, tExpected);
    QVERIFY(ui::TabControlRect(60, 600, dInnerWidth, dStatusBarTop) == tExpected);
}

void LayoutTest::OneListFillsItsTab_data() {
    AddSizes();
    QTest::newRow("usual") << 10000.0 << 8000.0 << Rect{120, 480, 9760, 7460};
    QTest::newRow("odd sizes stay exact") << 10001.0 << 8001.0 << Rect{120, 480, 9761, 7461};
    QTest::newRow("just nothing left") << 240.0 << 540.0 << Rect{120, 480, 0, 0};
    QTest::newRow("too small") << 0.0 << 0.0 << Rect{120, 480, 0, 0};
}

void LayoutTest::OneListFillsItsTab() {
    QFETCH(double, dWidth);
    QFETCH(double, dHeight);
    QFETCH(Rect, tExpected);
    QVERIFY(ui::ListRect(ListDesign, {dWidth, dHeight}) == tExpected);
}

void LayoutTest::OneGridFillsItsTab_data() {
    AddSizes();
    QTest::newRow("usual") << 10000.0 << 8000.0 << Rect{120, 480, 9760, 7430};
    QTest::newRow("just nothing left") << 240.0 << 570.0 << Rect{120, 480, 0, 0};
    QTest::newRow("too small") << 100.0 << 560.0 << Rect{120, 480, 0, 0};
}

void LayoutTest::OneGridFillsItsTab() {
    QFETCH(double, dWidth);
    QFETCH(double, dHeight);
    QFETCH(Rect, tExpected);
    QVERIFY(ui::GridRect(ListDesign, {dWidth, dHeight}) == tExpected);
}

void LayoutTest::OneEnabledPortHasTheWholePlace_data() {
    QTest::addColumn<int>("iPort");
    QTest::newRow("port 0") << 0;
    QTest::newRow("port 1, at the first list's place") << 1;
}

void LayoutTest::OneEnabledPortHasTheWholePlace() {
    QFETCH(int, iPort);
    const auto i = static_cast<std::size_t>(iPort);
    const ui::InputListsLayout tLayout = ui::InputLists(ListDesign, {10000, 8000}, {iPort == 0, iPort == 1});
    QVERIFY(tLayout.bVisible[i]);
    QVERIFY(!tLayout.bVisible[1 - i]);
    QVERIFY((tLayout.tRects[i] == Rect{120, 480, 9760, 7460}));
}

void LayoutTest::TwoEnabledPortsShareTheHeight_data() {
    QTest::addColumn<double>("dHeight");
    QTest::addColumn<Rect>("tFirst");
    QTest::addColumn<Rect>("tSecond");
    QTest::newRow("even") << 8000.0 << Rect{120, 480, 9760, 3730} << Rect{120, 4210, 9760, 3730};
    QTest::newRow("the half of an odd height is kept exact")
        << 8001.0 << Rect{120, 480, 9760, 3730.5} << Rect{120, 4210.5, 9760, 3730.5};
    QTest::newRow("too small") << 500.0 << Rect{120, 480, 9760, 0} << Rect{120, 480, 9760, 0};
}

void LayoutTest::TwoEnabledPortsShareTheHeight() {
    QFETCH(double, dHeight);
    QFETCH(Rect, tFirst);
    QFETCH(Rect, tSecond);
    const ui::InputListsLayout tLayout = ui::InputLists(ListDesign, {10000, dHeight}, {true, true});
    QVERIFY(tLayout.bVisible[0] && tLayout.bVisible[1]);
    QVERIFY(tLayout.tRects[0] == tFirst);
    QVERIFY(tLayout.tRects[1] == tSecond);
}

void LayoutTest::NoEnabledPortShowsNoList() {
    const ui::InputListsLayout tLayout = ui::InputLists(ListDesign, {10000, 8000}, {false, false});
    QVERIFY(!tLayout.bVisible[0] && !tLayout.bVisible[1]);
}

void LayoutTest::ReceiverFramesKeepToTheRight() {
    const Rect tFrame{5000, 420, 2400, 3100}, tLegend{5000, 3600, 2400, 700};
    const ui::ReceiverLayout tLayout = ui::ReceiverTab(ListDesign, tFrame, tLegend, {10000, 8000});
    // Right edge at 10000 - 120.
    QVERIFY((tLayout.tFrame == Rect{7480, 420, 2400, 3100}));
    // Bottom at 8000 - 15.
    QVERIFY((tLayout.tLegend == Rect{7480, 3600, 2400, 4385}));
    // Right edge at 7480 - 60, bottom at 8000 - 60.
    QVERIFY((tLayout.tList == Rect{120, 480, 7300, 7460}));
}

void LayoutTest::ReceiverInASmallWindowHasNoNegativeSize() {
    const Rect tFrame{5000, 420, 2400, 3100}, tLegend{5000, 3600, 2400, 700};
    const ui::ReceiverLayout tLayout = ui::ReceiverTab(ListDesign, tFrame, tLegend, {2000, 400});
    QCOMPARE(tLayout.tFrame.dWidth, 2400.0);
    QCOMPARE(tLayout.tLegend.dHeight, 0.0);
    QCOMPARE(tLayout.tList.dWidth, 0.0);
    QCOMPARE(tLayout.tList.dHeight, 0.0);
}

QTEST_GUILESS_MAIN(LayoutTest)
#include "LayoutTest.moc"
