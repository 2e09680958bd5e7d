// The window on screens of all sizes: what it takes of them, what it keeps for the profile, and its least size.
#include <QApplication>
#include <QScrollBar>
#include <QTest>

#include "tests/support/Bytes.h"
#include "tests/support/PrintString.h"
#include "tests/window/Bench.h"

using support::ShownWindow;
using support::TestWindow;
using support::World;

namespace {

// Netbook; 1366x768 at 125 %; 1280x800 at 150 %.
const std::vector<std::pair<const char*, QSize>> SmallScreens = {
    {"1024x600", QSize(1024, 600)}, {"1366x768 at 125 %", QSize(1092, 614)}, {"1280x800 at 150 %", QSize(853, 533)}};

void AddSmallScreens() {
    QTest::addColumn<QSize>("screen");
    for (const auto& [sName, tSize] : SmallScreens) QTest::newRow(sName) << tSize;
}

std::string WindowData(int iLeft, int iTop, int iWidth, int iHeight) {
    return "[Window Data]\r\nTop=" + std::to_string(iTop * 15) + "\r\nLeft=" + std::to_string(iLeft * 15) +
           "\r\nHeight=" + std::to_string(iHeight * 15) + "\r\nWidth=" + std::to_string(iWidth * 15) + "\r\n";
}

QByteArray SavedWindowData(const World& tWorld) {
    const std::string sText = tWorld.ReadFile(tWorld.ProfileFile());
    const std::size_t lAt = sText.find("[Window Data]");
    if (lAt == std::string::npos) return {};
    const std::size_t lNext = sText.find("\r\n[", lAt);
    return support::Bytes(sText.substr(lAt, lNext == std::string::npos ? lNext : lNext + 2 - lAt));
}

// Everything of a widget can be seen: nothing cuts it off.
bool WhollySeen(const QWidget& t) { return t.visibleRegion().boundingRect() == t.rect(); }

}  // namespace

class ScreenWindowTest : public QObject {
    Q_OBJECT

private slots:
    void firstWindowFitsItsScreen_data();
    void firstWindowFitsItsScreen();
    void firstWindowHasItsDesignedSizeWhereThereIsRoom();
    void restoredWindowFitsItsScreen_data();
    void restoredWindowFitsItsScreen();
    void restoredWindowThatFitsStaysWhereItWas();
    void unreachableTitleComesOntoAScreen_data();
    void unreachableTitleComesOntoAScreen();
    void boundedPlaceIsNotSaved();
    void sizeThatTheUserGivesIsSaved();
    void placeThatTheUserGivesIsSaved();
    void leastSizeNeverPassesTheScreen();
    void diagramIsScrolledOnlyWhereItMust();
    void diagramIsScrolledByKeys();
};

void ScreenWindowTest::firstWindowFitsItsScreen_data() { AddSmallScreens(); }

void ScreenWindowTest::firstWindowFitsItsScreen() {
    QFETCH(QSize, screen);
    World tWorld;
    tWorld.tScreens = {QRect(QPoint(0, 0), screen)};
    TestWindow t(tWorld);
    t.LoadAndShow();
    // With a title bar of 37 pixels and a border of one its status bar is still on the screen.
    QVERIFY2(t.height() + 38 <= screen.height(), qPrintable(QString::number(t.height())));
    QVERIFY(t.width() + 2 <= screen.width());
    QVERIFY(WhollySeen(t.StatusBar));
    QVERIFY(t.height() > screen.height() - 60);  // and no more is given away
}

void ScreenWindowTest::firstWindowHasItsDesignedSizeWhereThereIsRoom() {
    World tWorld;
    tWorld.tScreens = {QRect(0, 0, 1920, 1200)};
    TestWindow t(tWorld);
    t.LoadAndShow();
    QCOMPARE(t.size(), QSize(980, 640));
}

void ScreenWindowTest::restoredWindowFitsItsScreen_data() { AddSmallScreens(); }

void ScreenWindowTest::restoredWindowFitsItsScreen() {
    QFETCH(QSize, screen);
    World tWorld;
    tWorld.tScreens = {QRect(QPoint(0, 0), screen)};
    tWorld.WriteFile(tWorld.ProfileFile(), WindowData(200, 150, 1800, 1000));
    TestWindow t(tWorld);
    t.LoadAndShow();
    QVERIFY(QRect(QPoint(0, 0), screen).contains(QRect(t.pos(), t.size() + QSize(2, 38))));
}

void ScreenWindowTest::restoredWindowThatFitsStaysWhereItWas() {
    World tWorld;
    tWorld.tScreens = {QRect(0, 0, 1920, 1200)};
    tWorld.WriteFile(tWorld.ProfileFile(), WindowData(1500, 900, 800, 500));  // partly out of the screen
    TestWindow t(tWorld);
    t.LoadAndShow();
    QCOMPARE(t.pos(), QPoint(1500, 900));
    QCOMPARE(t.size(), QSize(800, 500));
}

void ScreenWindowTest::unreachableTitleComesOntoAScreen_data() {
    QTest::addColumn<QPoint>("place");
    QTest::newRow("above") << QPoint(300, -200);
    QTest::newRow("below") << QPoint(300, 1300);
    QTest::newRow("left") << QPoint(-900, 100);
    QTest::newRow("right") << QPoint(2000, 100);
}

void ScreenWindowTest::unreachableTitleComesOntoAScreen() {
    QFETCH(QPoint, place);
    World tWorld;
    const QRect tScreen(0, 0, 1920, 1200);
    tWorld.tScreens = {tScreen};
    tWorld.WriteFile(tWorld.ProfileFile(), WindowData(place.x(), place.y(), 800, 500));
    TestWindow t(tWorld);
    t.LoadAndShow();
    QVERIFY(tScreen.contains(QRect(t.pos(), t.size())));
    QCOMPARE(t.size(), QSize(800, 500));
}

void ScreenWindowTest::boundedPlaceIsNotSaved() {
    const std::string sWished = WindowData(1700, 100, 1600, 1000);
    World tWorld;
    tWorld.tScreens = {QRect(0, 0, 1024, 600)};
    tWorld.WriteFile(tWorld.ProfileFile(), sWished);
    TestWindow t(tWorld);
    t.LoadAndShow();
    QVERIFY(t.width() < 1024);
    t.close();
    QCOMPARE(SavedWindowData(tWorld), support::Bytes(sWished));
    // On the large screen again it is as it was.
    tWorld.tScreens = {QRect(0, 0, 3840, 2160)};
    TestWindow tAgain(tWorld);
    tAgain.LoadAndShow();
    QCOMPARE(tAgain.pos(), QPoint(1700, 100));
    QCOMPARE(tAgain.size(), QSize(1600, 1000));
}

void ScreenWindowTest::sizeThatTheUserGivesIsSaved() {
    World tWorld;
    tWorld.tScreens = {QRect(0, 0, 1024, 600)};
    tWorld.WriteFile(tWorld.ProfileFile(), WindowData(1700, 100, 1600, 1000));
    TestWindow t(tWorld);
    t.LoadAndShow();
    t.resize(900, 500);
    t.close();
    QCOMPARE(SavedWindowData(tWorld), support::Bytes(WindowData(1700, 100, 900, 500)));
}

void ScreenWindowTest::placeThatTheUserGivesIsSaved() {
    World tWorld;
    tWorld.tScreens = {QRect(0, 0, 1024, 600)};
    tWorld.WriteFile(tWorld.ProfileFile(), WindowData(1700, 100, 1600, 1000));
    TestWindow t(tWorld);
    t.LoadAndShow();
    t.move(40, 30);
    t.close();
    QCOMPARE(SavedWindowData(tWorld), support::Bytes(WindowData(40, 30, 1600, 1000)));
}

void ScreenWindowTest::leastSizeNeverPassesTheScreen() {
    const QFont tUsual = QApplication::font();
    QFont tFont = tUsual;
    tFont.setPointSizeF(28);
    QApplication::setFont(tFont);
    World tWorld;
    tWorld.tScreens = {QRect(0, 0, 853, 533)};
    TestWindow t(tWorld);
    t.LoadAndShow();
    QVERIFY(t.height() + 38 <= 533);
    QVERIFY(t.width() + 2 <= 853);
    QApplication::setFont(tUsual);
}

void ScreenWindowTest::diagramIsScrolledOnlyWhereItMust() {
    ShownWindow t;
    t.SSTab.SetTab(ui::TabDiagram);
    t.resize(1300, 700);
    QCoreApplication::processEvents();
    QVERIFY(WhollySeen(t.pctDiagram));
    QVERIFY(!t.scrDiagram.horizontalScrollBar()->isVisible());
    QVERIFY(!t.scrDiagram.verticalScrollBar()->isVisible());
    QCOMPARE(t.scrDiagram.focusPolicy(), Qt::NoFocus);

    t.resize(700, 700);
    QCoreApplication::processEvents();
    QVERIFY(!WhollySeen(t.pctDiagram));
    QScrollBar& tBar = *t.scrDiagram.horizontalScrollBar();
    QVERIFY(tBar.isVisible());
    QVERIFY(WhollySeen(tBar));
    tBar.setValue(tBar.maximum());
    const QLabel* pLast = nullptr;
    for (const QLabel* p : t.pctDiagram.findChildren<QLabel*>()) {
        if (p->text() == QStringLiteral("AIS Targets")) pLast = p;
    }
    QVERIFY(pLast != nullptr);
    QVERIFY(WhollySeen(*pLast));
}

void ScreenWindowTest::diagramIsScrolledByKeys() {
    ShownWindow t;
    t.SSTab.SetTab(ui::TabDiagram);
    t.resize(700, 500);
    QCoreApplication::processEvents();
    t.SSTab.Bar().setFocus();
    QTest::keyClick(&t.SSTab.Bar(), Qt::Key_Tab);
    QCOMPARE(t.focusWidget(), &t.scrDiagram);
    QTest::keyClick(&t.scrDiagram, Qt::Key_Right);
    QVERIFY(t.scrDiagram.horizontalScrollBar()->value() > 0);
}

QTEST_MAIN(ScreenWindowTest)
#include "ScreenWindowTest.moc"
