// The window's contents follow its size: the places of all views on all tabs, worked out here from what the window
// measures, in device-independent pixels (15 twips each).
#include <QTest>

#include "tests/support/PrintString.h"
#include "tests/window/Bench.h"

using support::ShownWindow;
using support::TestWindow;

namespace {

constexpr int TabGap = 90 / 15;
constexpr int ListGap = 60 / 15;
constexpr int GridGap = 90 / 15;
constexpr int LegendGap = 15 / 15;
constexpr int FrameGap = 60 / 15;

QRect In(const QWidget& tOuter, const QWidget& tInner) { return {tInner.mapTo(&tOuter, QPoint(0, 0)), tInner.size()}; }

// The body of a tab: keeps left and top, equal margins, ends iGap above the tab control's bottom.
QRect Filling(const TestWindow& t, const QWidget& tBody, int iGap) {
    const QPoint tAt = tBody.mapTo(&t.SSTab, QPoint(0, 0));
    return {tAt.x(), tAt.y(), t.SSTab.width() - 2 * tAt.x(), t.SSTab.height() - tAt.y() - iGap};
}

void Resize(TestWindow& t, const QSize& tSize) {
    t.resize(tSize);
    QCoreApplication::processEvents();
}

void AddSizes() {
    QTest::addColumn<QSize>("size");
    QTest::newRow("smallest") << QSize(1, 1);  // the window's least size
    QTest::newRow("small") << QSize(641, 481);
    QTest::newRow("usual") << QSize(980, 640);
    QTest::newRow("odd") << QSize(1111, 777);
    QTest::newRow("4K") << QSize(3840, 2160);
}

}  // namespace

class LayoutWindowTest : public QObject {
    Q_OBJECT

private slots:
    void tabControlFillsTheWindow_data();
    void tabControlFillsTheWindow();
    void listsAndGridsFillTheirTabs_data();
    void listsAndGridsFillTheirTabs();
    void bodyKeepsItsPlaceWhateverTheSize();
    void onePortsListTakesTheWholeTab_data();
    void onePortsListTakesTheWholeTab();
    void twoListsShareTheTab_data();
    void twoListsShareTheTab();
    void noPortShowsNoList();
    void uncheckingAndCheckingABoxStacksAnew();
    void receiverFramesStandAtTheRight_data();
    void receiverFramesStandAtTheRight();
    void fieldsOfARowStandInLine();
    void whatHasAPlaceHasOneByDesign();
    void onlyTheShowingTabIsLaidOut();
    void choosingATabLaysItOut();
    void minimisedWindowKeepsItsLayout();
    void restoredWindowIsLaidOut();
    void aboutStaysWhereItIs();
    void diagramKeepsItsSize();
    void timingPictureFollowsTheWidth();
};

void LayoutWindowTest::tabControlFillsTheWindow_data() { AddSizes(); }

void LayoutWindowTest::tabControlFillsTheWindow() {
    QFETCH(QSize, size);
    ShownWindow t;
    Resize(t, size);
    QCOMPARE(t.size(), size.expandedTo(t.minimumSize()));
    const QRect tTabs = In(t, t.SSTab);
    const int iStatusTop = In(t, t.StatusBar).top();
    QCOMPARE(tTabs.height(), iStatusTop - tTabs.top() - TabGap);
    QCOMPARE(tTabs.width(), t.width() - 2 * tTabs.left());
    QVERIFY(tTabs.left() > 0);
    QVERIFY(tTabs.top() >= In(t, t.Toolbar).bottom());
}

void LayoutWindowTest::listsAndGridsFillTheirTabs_data() { AddSizes(); }

void LayoutWindowTest::listsAndGridsFillTheirTabs() {
    QFETCH(QSize, size);
    ShownWindow t;
    Resize(t, size);
    struct Body {
        int iTab;
        QWidget& tBody;
        int iGap;
    };
    for (const Body& tBody :
         {Body{ui::TabAis, t.lstAisData, ListGap}, Body{ui::TabGps, t.lstGpsData, ListGap},
          Body{ui::TabOutput, t.lstOutputData, ListGap}, Body{ui::TabTargets, t.grdTargetData, GridGap},
          Body{ui::TabMessages, t.grdMessageData, GridGap}, Body{ui::TabSpec, t.grdSpecData, GridGap}}) {
        t.SSTab.SetTab(tBody.iTab);
        QVERIFY(tBody.tBody.isVisible());
        QCOMPARE(In(t.SSTab, tBody.tBody), Filling(t, tBody.tBody, tBody.iGap));
    }
}

void LayoutWindowTest::bodyKeepsItsPlaceWhateverTheSize() {
    ShownWindow t;
    for (int iTab = 0; iTab < t.SSTab.Count(); ++iTab) {
        t.SSTab.SetTab(iTab);
        std::vector<QPoint> tPlaces;
        for (const QSize tSize : {QSize(1, 1), QSize(1600, 1200)}) {
            Resize(t, tSize);
            for (QWidget* p : {static_cast<QWidget*>(&t.lstAisData), static_cast<QWidget*>(&t.grdTargetData),
                               static_cast<QWidget*>(&t.lstCommData(0)), static_cast<QWidget*>(&t.lstRxData)}) {
                tPlaces.push_back(In(t.SSTab, *p).topLeft());
            }
        }
        for (std::size_t i = 0; i < 4; ++i) QCOMPARE(tPlaces[i], tPlaces[i + 4]);
    }
}

void LayoutWindowTest::onePortsListTakesTheWholeTab_data() {
    QTest::addColumn<int>("port");
    QTest::newRow("#1") << 0;
    QTest::newRow("#2") << 1;
}

void LayoutWindowTest::onePortsListTakesTheWholeTab() {
    QFETCH(int, port);
    ShownWindow t;
    const QPoint tFirstPlace = In(t.SSTab, t.lstCommData(0)).topLeft();
    t.chkCommEnabled(0).setChecked(port == 0);
    t.chkCommEnabled(1).setChecked(port == 1);
    for (const QSize tSize : {QSize(700, 500), QSize(1200, 901)}) {
        Resize(t, tSize);
        const auto i = static_cast<app::PortIndex>(port);
        QVERIFY(t.lstCommData(i).isVisible());
        QVERIFY(!t.lstCommData(static_cast<app::PortIndex>(1 - port)).isVisible());
        QCOMPARE(In(t.SSTab, t.lstCommData(i)).topLeft(), tFirstPlace);
        QCOMPARE(In(t.SSTab, t.lstCommData(i)), Filling(t, t.lstCommData(i), ListGap));
    }
}

void LayoutWindowTest::twoListsShareTheTab_data() { AddSizes(); }

void LayoutWindowTest::twoListsShareTheTab() {
    QFETCH(QSize, size);
    ShownWindow t;
    t.chkCommEnabled(1).setChecked(true);
    Resize(t, size);
    t.FormLayout();
    const QRect tFirst = In(t.SSTab, t.lstCommData(0));
    const QRect tSecond = In(t.SSTab, t.lstCommData(1));
    const QRect tWhole = Filling(t, t.lstCommData(0), ListGap);
    QVERIFY(t.lstCommData(0).isVisible() && t.lstCommData(1).isVisible());
    QCOMPARE(tFirst.topLeft(), tWhole.topLeft());
    QCOMPARE(tFirst.width(), tWhole.width());
    QCOMPARE(tSecond.width(), tWhole.width());
    QCOMPARE(tSecond.left(), tFirst.left());
    QCOMPARE(tSecond.top(), tFirst.top() + tFirst.height());  // begins where the first ends
    QCOMPARE(tFirst.height() + tSecond.height(), tWhole.height());
    QVERIFY(std::abs(tFirst.height() - tSecond.height()) <= 1);  // an odd pixel
    // In twips the halves are exact.
    QCOMPARE(t.Rects().at("lstCommData(0)").dHeight, tWhole.height() * 15 / 2.0);
    QCOMPARE(t.Rects().at("lstCommData(1)").dHeight, tWhole.height() * 15 / 2.0);
}

void LayoutWindowTest::noPortShowsNoList() {
    ShownWindow t;
    t.chkCommEnabled(0).setFocus();
    QTest::keyClick(&t.chkCommEnabled(0), Qt::Key_Space);
    QVERIFY(!t.lstCommData(0).isVisible());
    QVERIFY(!t.lstCommData(1).isVisible());
}

void LayoutWindowTest::uncheckingAndCheckingABoxStacksAnew() {
    ShownWindow t;
    t.chkCommEnabled(1).setFocus();
    QTest::keyClick(&t.chkCommEnabled(1), Qt::Key_Space);
    const QRect tHalf0 = t.lstCommData(0).geometry();
    const QRect tHalf1 = t.lstCommData(1).geometry();
    QCOMPARE(tHalf1.top(), tHalf0.bottom() + 1);
    t.chkCommEnabled(0).setFocus();
    QTest::keyClick(&t.chkCommEnabled(0), Qt::Key_Space);
    QVERIFY(!t.lstCommData(0).isVisible());
    QCOMPARE(t.lstCommData(1).geometry(), QRect(tHalf0.topLeft(), tHalf1.bottomRight()));
    QTest::keyClick(&t.chkCommEnabled(0), Qt::Key_Space);
    QCOMPARE(t.lstCommData(0).geometry(), tHalf0);
    QCOMPARE(t.lstCommData(1).geometry(), tHalf1);
}

void LayoutWindowTest::receiverFramesStandAtTheRight_data() { AddSizes(); }

void LayoutWindowTest::receiverFramesStandAtTheRight() {
    QFETCH(QSize, size);
    ShownWindow t;
    const QSize tFrameSize = t.frmRxNasa.size();
    t.SSTab.SetTab(ui::TabReceiver);
    Resize(t, size);
    const QRect tList = In(t.SSTab, t.lstRxData);
    const QRect tFrame = In(t.SSTab, t.frmRxNasa);
    const QRect tLegend = In(t.SSTab, t.frmRxLabel);
    QCOMPARE(tFrame.size(), tFrameSize);
    QCOMPARE(t.SSTab.width() - (tFrame.left() + tFrame.width()), tList.left());
    QCOMPARE(tLegend.left(), tFrame.left());
    QVERIFY(tLegend.top() > tFrame.bottom());
    QCOMPARE(tLegend.top() + tLegend.height(), t.SSTab.height() - LegendGap);
    QCOMPARE(tList.left() + tList.width(), tFrame.left() - FrameGap);
    QCOMPARE(tList.height(), t.SSTab.height() - tList.top() - ListGap);
}

void LayoutWindowTest::fieldsOfARowStandInLine() {
    ShownWindow t;
    const std::vector<std::vector<const QWidget*>> pRows = {
        {&t.chkCommEnabled(0), &t.txtCommPort(0), &t.txtCommSettings(0)},
        {&t.cmbTargetDetail, &t.cmbTargetSort, &t.cmbTargetTarget, &t.chkTargetTrack},
        {&t.chkOutputEnabled, &t.txtOutputPort, &t.txtOutputSettings, &t.chkOutputRMC},
    };
    for (const auto& pRow : pRows) {
        for (const QWidget* p : pRow) {
            QCOMPARE(p->y(), pRow.front()->y());
            QCOMPARE(p->height(), pRow.front()->height());
        }
    }
}

void LayoutWindowTest::whatHasAPlaceHasOneByDesign() {
    ShownWindow t;
    for (const auto& [sName, tRect] : t.Rects()) QVERIFY2(t.DesignRects().contains(sName), sName.c_str());
    QVERIFY(t.Rects().contains("pctDiagram"));
}

void LayoutWindowTest::onlyTheShowingTabIsLaidOut() {
    ShownWindow t;
    t.SSTab.SetTab(ui::TabAis);
    t.SSTab.SetTab(ui::TabInput);
    const QRect tAis = t.lstAisData.geometry();
    const QRect tInput = t.lstCommData(0).geometry();
    Resize(t, QSize(1300, 900));
    QCOMPARE(t.lstAisData.geometry(), tAis);
    QVERIFY(t.lstCommData(0).geometry() != tInput);
}

void LayoutWindowTest::choosingATabLaysItOut() {
    ShownWindow t;
    t.SSTab.SetTab(ui::TabAis);
    t.SSTab.SetTab(ui::TabInput);
    Resize(t, QSize(1300, 900));
    const QRect tTab = t.SSTab.Bar().tabRect(ui::TabAis);
    QTest::mouseClick(&t.SSTab.Bar(), Qt::LeftButton, {}, tTab.center());
    QCOMPARE(t.SSTab.Tab(), int{ui::TabAis});
    QCOMPARE(In(t.SSTab, t.lstAisData), Filling(t, t.lstAisData, ListGap));
    QVERIFY(t.lstAisData.width() > 1200);
}

void LayoutWindowTest::minimisedWindowKeepsItsLayout() {
    ShownWindow t;
    const QRect tTabs = t.SSTab.geometry();
    const QRect tList = t.lstCommData(0).geometry();
    t.setWindowState(Qt::WindowMinimized);
    QCoreApplication::processEvents();
    QVERIFY(t.isMinimized());
    t.Client.resize(50, 20);  // as some window managers size an icon
    t.FormLayout();
    QCOMPARE(t.SSTab.geometry(), tTabs);
    QCOMPARE(t.lstCommData(0).geometry(), tList);
}

void LayoutWindowTest::restoredWindowIsLaidOut() {
    ShownWindow t;
    t.setWindowState(Qt::WindowMinimized);
    QCoreApplication::processEvents();
    t.chkCommEnabled(1).setChecked(true);
    t.setWindowState(Qt::WindowNoState);
    QCoreApplication::processEvents();
    QVERIFY(t.lstCommData(1).isVisible());
    QCOMPARE(In(t.SSTab, t.lstCommData(1)).top(), In(t.SSTab, t.lstCommData(0)).bottom() + 1);
}

void LayoutWindowTest::aboutStaysWhereItIs() {
    ShownWindow t;
    t.SSTab.SetTab(ui::TabAbout);
    const std::vector<QWidget*> pParts = {&t.picAboutIcon, &t.lblAboutTitle, &t.lblAboutDescription,
                                          &t.lblAboutDisclaimer};
    std::vector<QRect> tBefore;
    for (const QWidget* p : pParts) tBefore.push_back(In(t.SSTab, *p));
    Resize(t, QSize(1500, 1000));
    Resize(t, QSize(600, 400));
    for (std::size_t i = 0; i < pParts.size(); ++i) QCOMPARE(In(t.SSTab, *pParts[i]), tBefore[i]);
}

void LayoutWindowTest::diagramKeepsItsSize() {
    ShownWindow t;
    t.SSTab.SetTab(ui::TabDiagram);
    const QRect tBefore = In(t.SSTab, t.pctDiagram);
    Resize(t, QSize(1500, 1000));
    Resize(t, QSize(600, 400));
    QCOMPARE(In(t.SSTab, t.pctDiagram), tBefore);
}

void LayoutWindowTest::timingPictureFollowsTheWidth() {
    ShownWindow t;
    t.SSTab.SetTab(ui::TabTiming);
    int iBar = 0;
    for (const QSize tSize : {QSize(700, 500), QSize(1000, 640), QSize(1400, 640)}) {
        Resize(t, tSize);
        const QRect tPicture = In(t.SSTab, t.pctTiming);
        QCOMPARE(tPicture.width(), t.SSTab.width() - 2 * tPicture.left());
        for (const ui::TimingLabels& tRow : {t.lblTimingChA, t.lblTimingChB, t.lblTimingChAlternate}) {
            QVERIFY(tRow.Percentage.geometry().right() < t.pctTiming.width());
            QCOMPARE(tRow.Name.y(), tRow.Percentage.y());
        }
        const int iWidth = t.lblTimingChA.Percentage.x() - t.lblTimingChA.Name.geometry().right();
        QVERIFY(iWidth > iBar);
        iBar = iWidth;
    }
}

QTEST_MAIN(LayoutWindowTest)
#include "LayoutWindowTest.moc"
