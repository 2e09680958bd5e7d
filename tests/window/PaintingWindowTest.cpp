// What the whole window paints: nothing while nothing changes, a panel for a second of the clocks, and during traffic
// what a painting of everything would show.
#include <QBackingStore>
#include <QPaintEvent>
#include <QScrollBar>
#include <QTest>
#include <QTimer>
#include <random>

#include "platform/toolkit/RepaintBeat.h"
#include "tests/window/Bench.h"
#include "tools/Traffic.h"

using support::ShownWindow;

namespace {

constexpr int Rows = 256;  // of a full target table

void Settle() {
    for (int i = 0; i < 10; ++i) QCoreApplication::processEvents();
}

// On the Targets tab with all columns, both ports open, the table full.
struct Watching : ShownWindow {
    simulator::Traffic tTraffic{{.iTargets = 300, .dtStart = runtime::MakeDateTime({2011, 5, 15}, 12, 0, 0)}};

    Watching() : ShownWindow(ui::TabTargets) {
        resize(1200, 800);
        cmbTargetDetail.SetText("All");
        TargetGridSetup(false);
        StartBoth();
        tmrComm.stop();  // the clocks tick when the test says so
        tmrTime.stop();
        while (grdTargetData.Cells.Rows() < Rows) HearLines(1);
        grdTargetData.setFocus();
        Show();
    }
    void HearLines(int iLines) {
        for (int i = 0; i < iLines; ++i) FeedLine(static_cast<app::PortIndex>(i % 2), tTraffic.Next().sText);
    }
    void Show() {
        Synchronize();
        Settle();
    }
    QImage Screen() {
        const auto* pPicture = dynamic_cast<const QImage*>(backingStore()->paintDevice());
        return pPicture ? pPicture->convertToFormat(QImage::Format_RGB32) : QImage();
    }
    QImage Whole() { return grab().toImage().convertToFormat(QImage::Format_RGB32); }
};

// Notes what is painted and laid out from now on, in the window's coordinates.
class Watch : public QObject {
public:
    explicit Watch(const QWidget& t) : m_tWindow(t) { QCoreApplication::instance()->installEventFilter(this); }
    bool eventFilter(QObject* pObject, QEvent* pEvent) override {
        if (const auto* p = qobject_cast<const QTimer*>(pObject); p && pEvent->type() == QEvent::Timer) pTimer = p;
        const auto* pWidget = qobject_cast<const QWidget*>(pObject);
        if (!pWidget || pWidget->window() != &m_tWindow) return false;
        const QEvent::Type eType = pEvent->type();
        if (eType == QEvent::LayoutRequest || eType == QEvent::Resize) ++iLayouts;
        if (eType != QEvent::Paint) return false;
        ++iPaintings;
        const QRegion tRegion = static_cast<const QPaintEvent*>(pEvent)->region();
        tPainted += tRegion.translated(pWidget->mapTo(&m_tWindow, QPoint(0, 0)));
        return false;
    }
    const QTimer* pTimer = nullptr;  // the latest that has run down
    int iPaintings = 0;
    int iLayouts = 0;
    QRegion tPainted;

private:
    const QWidget& m_tWindow;
};

}  // namespace

class PaintingWindowTest : public QObject {
    Q_OBJECT
private slots:
    void idleWindowPaintsNothing();
    void sameTextsPaintNothing();
    void aSecondPaintsItsPanels();
    void trafficShowsAsAWholePaintingWould();
};

void PaintingWindowTest::idleWindowPaintsNothing() {
    Watching t;
    QWidget tOther;
    tOther.setAttribute(Qt::WA_DontShowOnScreen);
    int iBeats = 0;
    const QTimer* pShared = nullptr;  // what beats for all views
    const Watch tTimers(t);
    toolkit::RepaintBeat tBeat(tOther, [&] {
        ++iBeats;
        pShared = tTimers.pTimer;
    });
    tOther.show();
    for (const bool bRunning : {true, false}) {
        if (!bRunning) t.Press("Stop");
        for (int iTab = 0; iTab < t.SSTab.Count(); ++iTab) {
            t.SSTab.SetTab(iTab);
            t.SSTab.Bar().setFocus();  // no cursor blinks
            t.Show();
            const Watch tWatch(t);
            const int iBefore = iBeats;
            tBeat.Mark();
            QTRY_COMPARE(iBeats, iBefore + 1);
            Settle();
            QVERIFY2(tWatch.iPaintings == 0 && tWatch.iLayouts == 0, qPrintable(t.SSTab.Bar().tabText(iTab)));
            QVERIFY(pShared != nullptr && !pShared->isActive());  // no view asks for another beat
        }
    }
}

void PaintingWindowTest::sameTextsPaintNothing() {
    Watching t;
    const Watch tWatch(t);
    t.Press("Start");
    for (int i = 1; i <= 5; ++i) t.StatusBar.SetPanelText(i, t.StatusBar.PanelText(i));
    t.txtGpsLat.SetText(t.txtGpsLat.Text());
    t.cmbTargetTarget.SetText(t.cmbTargetTarget.Text());
    t.Show();
    QCOMPARE(tWatch.iPaintings, 0);
    QCOMPARE(tWatch.iLayouts, 0);
}

void PaintingWindowTest::aSecondPaintsItsPanels() {
    Watching t;
    QRegion tPanels;
    for (const int iPanel : {3, 4, 5}) {
        const QLabel& tPanel = t.StatusBar.Panel(iPanel);
        tPanels += QRect(tPanel.mapTo(&t, QPoint(0, 0)), tPanel.size());
    }
    const auto Second = [&t] {
        ++t.tWorld.dtNow.lSeconds;
        t.tmrTime_Timer();
        t.tmrComm_Timer();
        t.Show();
    };
    for (int iTab = 0; iTab < t.SSTab.Count(); ++iTab) {
        t.SSTab.SetTab(iTab);
        t.SSTab.Bar().setFocus();
        Second();
        const std::string sBefore = t.Panel(5);
        const Watch tWatch(t);
        Second();
        QVERIFY(t.Panel(5) != sBefore);
        QVERIFY(!tWatch.tPainted.isEmpty());
        QCOMPARE(tWatch.tPainted - tPanels, QRegion());
        QCOMPARE(tWatch.iPaintings, 5);  // three panels, the bar and the window below them, each once
    }
}

void PaintingWindowTest::trafficShowsAsAWholePaintingWould() {
    Watching t;
    std::mt19937 tRandom(7);
    const auto Any = [&tRandom](int iFrom, int iTo) {
        return iFrom + static_cast<int>(tRandom() % static_cast<unsigned>(iTo - iFrom + 1));
    };
    for (int i = 0; i < 60; ++i) {
        t.HearLines(Any(0, 30));
        if (Any(0, 4) == 0) t.Advance(1);
        if (Any(0, 9) == 0) t.cmbTargetSort.SetListIndex(Any(0, 2));
        if (Any(0, 9) == 0) t.grdTargetData.selectRow(Any(0, 30));
        if (Any(0, 9) == 0) t.grdTargetData.verticalScrollBar()->setValue(Any(0, 300));
        if (Any(0, 14) == 0) t.chkTargetTrack.toggle();
        if (Any(0, 14) == 0) t.resize(Any(700, 1300), Any(500, 900));
        t.Show();
        QCOMPARE(t.Screen(), t.Whole());
    }
}

QTEST_MAIN(PaintingWindowTest)
#include "PaintingWindowTest.moc"
