// Sizes and places of a window on screens of all kinds.
#include "ui/ScreenFit.h"

#include <QTest>

using ui::Rect;

namespace {

using Areas = std::vector<Rect>;

const Rect Small{0, 0, 1024, 600};
const Rect Large{0, 0, 1920, 1200};
const Rect LargeAtTheRight{1024, 0, 1920, 1200};
const Rect AboveIt{0, -1080, 1920, 1080};
const Rect WithPanels{64, 32, 1000, 700};  // a dock at the left, a bar at the top

void AddFits() {
    QTest::addColumn<Rect>("wished");
    QTest::addColumn<Areas>("areas");
    QTest::addColumn<Rect>("fitted");
}

bool WhollyOn(const Rect& t, const Rect& tArea) {
    return t.dLeft >= tArea.dLeft && t.dTop >= tArea.dTop &&
           t.dLeft + t.dWidth + ui::FrameAcross <= tArea.dLeft + tArea.dWidth &&
           t.dTop + t.dHeight + ui::FrameDown <= tArea.dTop + tArea.dHeight;
}

}  // namespace

class ScreenFitTest : public QObject {
    Q_OBJECT
private slots:
    void whatCanBeReachedStays_data();
    void whatCanBeReachedStays();
    void whatCannotComesWhollyOntoAScreen_data();
    void whatCannotComesWhollyOntoAScreen();
    void sizeIsBoundedByItsOwnScreen_data();
    void sizeIsBoundedByItsOwnScreen();
    void largestInsideLeavesRoomForTheFrame();
};

void ScreenFitTest::whatCanBeReachedStays_data() {
    QTest::addColumn<Rect>("wished");
    QTest::addColumn<Areas>("areas");
    QTest::newRow("in the middle") << Rect{300, 200, 980, 640} << Areas{Large};
    QTest::newRow("half out at the right") << Rect{1500, 200, 980, 640} << Areas{Large};
    QTest::newRow("half out at the left") << Rect{-500, 200, 980, 640} << Areas{Large};
    QTest::newRow("only its title at the bottom") << Rect{300, 1170, 980, 640} << Areas{Large};
    QTest::newRow("across two screens") << Rect{700, 20, 980, 500} << Areas{Small, LargeAtTheRight};
    QTest::newRow("on the second screen") << Rect{1400, 700, 980, 400} << Areas{Small, LargeAtTheRight};
    QTest::newRow("on a screen above") << Rect{100, -900, 980, 640} << Areas{Large, AboveIt};
    QTest::newRow("no screen is known") << Rect{-9000, -9000, 98000, 64000} << Areas{};
}

void ScreenFitTest::whatCanBeReachedStays() {
    QFETCH(Rect, wished);
    QFETCH(Areas, areas);
    QVERIFY(ui::FitToScreens(wished, areas) == wished);
}

void ScreenFitTest::whatCannotComesWhollyOntoAScreen_data() {
    AddFits();
    const double dRight = 1920 - 980 - ui::FrameAcross;
    const double dBottom = 1200 - 640 - ui::FrameDown;
    QTest::newRow("title above the screen") << Rect{300, -30, 980, 640} << Areas{Large} << Rect{300, 0, 980, 640};
    QTest::newRow("below") << Rect{300, 1195, 980, 640} << Areas{Large} << Rect{300, dBottom, 980, 640};
    QTest::newRow("at the right") << Rect{1900, 100, 980, 640} << Areas{Large} << Rect{dRight, 100, 980, 640};
    QTest::newRow("at the left") << Rect{-970, 100, 980, 640} << Areas{Large} << Rect{0, 100, 980, 640};
    QTest::newRow("screen gone, far right") << Rect{2500, 300, 980, 640} << Areas{Large} << Rect{dRight, 300, 980, 640};
    QTest::newRow("screen gone, above") << Rect{200, -900, 980, 640} << Areas{Large} << Rect{200, 0, 980, 640};
    QTest::newRow("nearest of two") << Rect{3500, 300, 900, 400} << Areas{Small, LargeAtTheRight}
                                    << Rect{1024 + 1920 - 900 - ui::FrameAcross, 300, 900, 400};
    QTest::newRow("below a panel") << Rect{100, 0, 500, 400} << Areas{WithPanels} << Rect{100, 32, 500, 400};
}

void ScreenFitTest::whatCannotComesWhollyOntoAScreen() {
    QFETCH(Rect, wished);
    QFETCH(Areas, areas);
    QFETCH(Rect, fitted);
    const Rect t = ui::FitToScreens(wished, areas);
    QCOMPARE(t.dLeft, fitted.dLeft);
    QCOMPARE(t.dTop, fitted.dTop);
    QCOMPARE(t.dWidth, fitted.dWidth);
    QCOMPARE(t.dHeight, fitted.dHeight);
}

void ScreenFitTest::sizeIsBoundedByItsOwnScreen_data() {
    QTest::addColumn<Rect>("wished");
    QTest::addColumn<Areas>("areas");
    QTest::addColumn<int>("screen");
    QTest::newRow("too high") << Rect{10, 10, 980, 640} << Areas{Small} << 0;
    QTest::newRow("too wide") << Rect{10, 10, 1200, 400} << Areas{Small} << 0;
    QTest::newRow("both, and its title far away") << Rect{5000, 5000, 4000, 3000} << Areas{Small} << 0;
    QTest::newRow("too high for the small one only") << Rect{10, 10, 900, 800} << Areas{Small, LargeAtTheRight} << 0;
    QTest::newRow("with panels") << Rect{0, 0, 3000, 3000} << Areas{WithPanels} << 0;
    QTest::newRow("on the second") << Rect{1100, 40, 4000, 3000} << Areas{Small, LargeAtTheRight} << 1;
}

void ScreenFitTest::sizeIsBoundedByItsOwnScreen() {
    QFETCH(Rect, wished);
    QFETCH(Areas, areas);
    QFETCH(int, screen);
    const Rect& tArea = areas[static_cast<std::size_t>(screen)];
    const Rect t = ui::FitToScreens(wished, areas);
    QVERIFY(WhollyOn(t, tArea));
    QCOMPARE(t.dWidth, std::min(wished.dWidth, tArea.dWidth - ui::FrameAcross));
    QCOMPARE(t.dHeight, std::min(wished.dHeight, tArea.dHeight - ui::FrameDown));
}

void ScreenFitTest::largestInsideLeavesRoomForTheFrame() {
    const ui::Size t = ui::LargestInside(WithPanels);
    QCOMPARE(t.dWidth, 1000 - ui::FrameAcross);
    QCOMPARE(t.dHeight, 700 - ui::FrameDown);
    QVERIFY(ui::FrameAcross >= 2 && ui::FrameDown >= 37);  // the usual title bars
}

QTEST_APPLESS_MAIN(ScreenFitTest)
#include "ScreenFitTest.moc"
