// The timing planner on its tab: the pixels of its bars, bands and ticks, its captions, and inputs that it refuses.
// What should be seen is worked out here from the rates.
#include <QImage>
#include <QTest>
#include <cmath>
#include <set>

#include "tests/support/PrintString.h"
#include "tests/window/Bench.h"

using support::AnyReport;
using support::ShownWindow;
using support::TestWindow;
using support::World;

namespace {

constexpr QRgb Green = qRgb(128, 255, 128);
constexpr QRgb Red = qRgb(255, 128, 128);
constexpr QRgb Black = qRgb(0, 0, 0);

struct Planner : ShownWindow {
    Planner() : ShownWindow(ui::TabTiming) {
        resize(1000, 640);
        QCoreApplication::processEvents();
    }
    void Apply(const char* sTx, const char* sRc, const char* sSpan) {
        txtTimingRateTx.SetText(sTx);
        txtTimingRateRc.SetText(sRc);
        txtTimingTimeSpan.SetText(sSpan);
        QTest::mouseClick(&cmdTimingApply, Qt::LeftButton);
    }
    QImage Picture() { return pctTiming.grab().toImage().convertToFormat(QImage::Format_RGB32); }
    QStringList Percentages() const {
        return {lblTimingChA.Percentage.text(), lblTimingChB.Percentage.text(), lblTimingChAlternate.Percentage.text()};
    }
};

// A row's bar as its labels give it.
struct Bar {
    explicit Bar(const ui::TimingLabels& t)
        : iLeft(t.Name.x() + t.Name.width()),
          iRight(t.Percentage.x()),
          iTop(t.Name.y()),
          iBottom(t.Name.y() + t.Name.height()) {}
    // Half to even, which is how the processor rounds by itself.
    int X(double dTime, double dSpan) const {
        return static_cast<int>(std::nearbyint((iRight - iLeft) * (dTime / dSpan) + iLeft));
    }
    QRgb Pixel(const QImage& tImage, int iX) const { return tImage.pixel(iX, (iTop + iBottom) / 2); }

    int iLeft, iRight, iTop, iBottom;
};

// The columns of a bar that are black all the way down.
std::set<int> Ticks(const QImage& tImage, const Bar& tBar) {
    std::set<int> iTicks;
    for (int iX = tBar.iLeft; iX <= tBar.iRight; ++iX) {
        bool bBlack = true;
        for (int iY = tBar.iTop; iY < tBar.iBottom; ++iY) bBlack = bBlack && tImage.pixel(iX, iY) == Black;
        if (bBlack) iTicks.insert(iX);
    }
    return iTicks;
}

std::set<int> Columns(const Bar& tBar, const std::vector<double>& dTimes, double dSpan) {
    std::set<int> iColumns;
    for (const double d : dTimes) iColumns.insert(tBar.X(d, dSpan));
    return iColumns;
}

}  // namespace

class TimingWindowTest : public QObject {
    Q_OBJECT

private slots:
    void captionsStandBeforeTheFirstPlan();
    void planShowsPercentagesAndSummary_data();
    void planShowsPercentagesAndSummary();
    void fixedRowsAreBarsWithTicks();
    void barsEndWhereTheirLabelsBegin();
    void bandsChangeColourWithTheReceiver();
    void ticksOfTheAlternatingRowAreWhatIsHeard();
    void partialLastBandIsNotDrawn();
    void ratesMayHaveFractions();
    void onlyApplyComputes();
    void returnInAFieldApplies();
    void planFollowsTheWidthOfTheTab();
    void refusedInputsLeaveThePlan_data();
    void refusedInputsLeaveThePlan();
    void refusalGoesWithTheNextGoodPlan();
    void ticksStayBlackInADarkPalette();
    void rowNamesNeverChange();
    void receptionIsNotTouched();
};

void TimingWindowTest::captionsStandBeforeTheFirstPlan() {
    World tWorld;
    const TestWindow t(tWorld);
    for (const ui::TimingLabels& tRow : {t.lblTimingChA, t.lblTimingChB, t.lblTimingChAlternate}) {
        QCOMPARE(tRow.Percentage.text(), QStringLiteral("100%"));
    }
    QCOMPARE(t.lblTimingSummary.text(), QStringLiteral("Time Between Messages, Min 30 Sec, Max 210 Sec"));
}

void TimingWindowTest::planShowsPercentagesAndSummary_data() {
    QTest::addColumn<QByteArray>("tx");
    QTest::addColumn<QByteArray>("rc");
    QTest::addColumn<QByteArray>("span");
    QTest::addColumn<QString>("percentages");
    QTest::addColumn<QString>("gaps");
    QTest::newRow("30 36 360") << QByteArray("30") << QByteArray("36") << QByteArray("360")
                               << QStringLiteral("50% 50% 50%") << QStringLiteral("Min 30 sec, Max 210 sec");
    QTest::newRow("30 30 360") << QByteArray("30") << QByteArray("30") << QByteArray("360")
                               << QStringLiteral("50% 50% 100%") << QStringLiteral("Min 30 sec, Max 30 sec");
    QTest::newRow("30 60 360") << QByteArray("30") << QByteArray("60") << QByteArray("360")
                               << QStringLiteral("50% 50% 50%") << QStringLiteral("Min 30 sec, Max 90 sec");
    // Messages at 0 and 100: only the first is heard, the receiver being on A all the time.
    QTest::newRow("nothing after 0") << QByteArray("100") << QByteArray("500") << QByteArray("200")
                                     << QStringLiteral("50% 50% 50%") << QStringLiteral("Min 200 sec, Max 0 sec");
    // 25 / 10 is 2.5, to even: 2 messages count; ticks at 0, 20 and at 10.
    QTest::newRow("half to even") << QByteArray("10") << QByteArray("10") << QByteArray("25")
                                  << QStringLiteral("100% 50% 150%") << QStringLiteral("Min 10 sec, Max 10 sec");
    // The receiver is always on the other channel but for the first of 12 messages: 8.33 %.
    QTest::newRow("two digits") << QByteArray("30") << QByteArray("32") << QByteArray("360")
                                << QStringLiteral("50% 50% 08%") << QStringLiteral("Min 360 sec, Max 0 sec");
}

void TimingWindowTest::planShowsPercentagesAndSummary() {
    QFETCH(QByteArray, tx);
    QFETCH(QByteArray, rc);
    QFETCH(QByteArray, span);
    QFETCH(QString, percentages);
    QFETCH(QString, gaps);
    Planner t;
    t.Apply(tx.constData(), rc.constData(), span.constData());
    QCOMPARE(t.Percentages().join(QLatin1Char(' ')), percentages);
    const QStringList sLines = t.lblTimingSummary.text().split(QLatin1Char('\r'));
    QCOMPARE(sLines.size(), 3);
    QCOMPARE(sLines[0], QStringLiteral("Dual Channel, Time Between Messages %1 sec").arg(tx.toInt()));
    QCOMPARE(sLines[1], QStringLiteral("Single Ch Fixed, Time Between Messages %1 sec").arg(2 * tx.toInt()));
    QCOMPARE(sLines[2], QStringLiteral("Single Ch Alterating, Time Between Messages, ") + gaps);
    QVERIFY(!t.lblTimingSummary.text().contains(QLatin1Char('\n')));
    QCOMPARE(t.lblTimingMessage.text(), QString());
}

void TimingWindowTest::fixedRowsAreBarsWithTicks() {
    Planner t;
    const QImage tImage = t.Picture();
    const Bar tA(t.lblTimingChA);
    const Bar tB(t.lblTimingChB);
    QVERIFY(tA.iRight - tA.iLeft > 500);
    QCOMPARE(Ticks(tImage, tA), Columns(tA, {0, 60, 120, 180, 240, 300}, 360));
    QCOMPARE(Ticks(tImage, tB), Columns(tB, {30, 90, 150, 210, 270, 330}, 360));
    // Between the ticks the row's colour, from top to bottom and from end to end.
    for (const auto& [tBar, tColour] : {std::pair(tA, Green), std::pair(tB, Red)}) {
        const std::set<int> iTicks = Ticks(tImage, tBar);
        for (int iX = tBar.iLeft; iX < tBar.iRight; ++iX) {
            const bool bTick = iTicks.contains(iX);
            for (const int iY : {tBar.iTop, (tBar.iTop + tBar.iBottom) / 2, tBar.iBottom - 1}) {
                QCOMPARE(tImage.pixel(iX, iY), bTick ? Black : tColour);
            }
        }
    }
}

void TimingWindowTest::barsEndWhereTheirLabelsBegin() {
    Planner t;
    const QImage tImage = t.Picture();
    const Bar tA(t.lblTimingChA);
    QVERIFY(tA.Pixel(tImage, tA.iLeft - 1) != Green && tA.Pixel(tImage, tA.iLeft - 1) != Black);
    QCOMPARE(tA.Pixel(tImage, tA.iRight - 1), Green);
    QVERIFY(tImage.pixel(tA.iLeft + 5, tA.iTop - 1) != Green);
    QVERIFY(tImage.pixel(tA.iLeft + 5, tA.iBottom + 1) != Green);
}

void TimingWindowTest::bandsChangeColourWithTheReceiver() {
    Planner t;
    const QImage tImage = t.Picture();
    const Bar tBar(t.lblTimingChAlternate);
    for (int i = 0; i < 10; ++i) {
        const int iFrom = tBar.X(36 * i, 360);
        const int iTo = tBar.X(36 * (i + 1), 360);
        for (int iX = iFrom; iX < iTo; ++iX) {
            const QRgb tPixel = tBar.Pixel(tImage, iX);
            if (tPixel != Black) QCOMPARE(tPixel, i % 2 == 0 ? Green : Red);
        }
    }
}

void TimingWindowTest::ticksOfTheAlternatingRowAreWhatIsHeard() {
    Planner t;
    const Bar tBar(t.lblTimingChAlternate);
    QCOMPARE(Ticks(t.Picture(), tBar), Columns(tBar, {0, 210, 240, 270, 300, 330}, 360));
    t.Apply("30", "60", "360");
    QCOMPARE(Ticks(t.Picture(), tBar), Columns(tBar, {0, 90, 120, 210, 240, 330}, 360));
    t.Apply("30", "30", "360");
    QCOMPARE(Ticks(t.Picture(), tBar), Columns(tBar, {0, 30, 60, 90, 120, 150, 180, 210, 240, 270, 300, 330}, 360));
}

void TimingWindowTest::partialLastBandIsNotDrawn() {
    Planner t;
    const Bar tBar(t.lblTimingChAlternate);
    const QImage tBefore = t.Picture();
    t.Apply("30", "36", "350");
    const QImage tAfter = t.Picture();
    const int iEnd = tBar.X(324, 350);
    // 324 seconds in, the ninth band ends: it is channel A's. What lies behind keeps what was drawn there before, but
    // for the one message that is heard at 330.
    const std::set<int> iTicks = Columns(tBar, {0, 210, 240, 270, 300, 330}, 350);
    for (int iX = iEnd; iX < tBar.iRight; ++iX) {
        QCOMPARE(tBar.Pixel(tAfter, iX), iTicks.contains(iX) ? Black : tBar.Pixel(tBefore, iX));
    }
    for (int iX = tBar.X(288, 350); iX < iEnd; ++iX)
        QCOMPARE(tBar.Pixel(tAfter, iX), iTicks.contains(iX) ? Black : Green);
}

void TimingWindowTest::ratesMayHaveFractions() {
    Planner t;
    t.Apply("2.5", "2.5", "10");
    const Bar tA(t.lblTimingChA);
    QCOMPARE(Ticks(t.Picture(), tA), Columns(tA, {0, 5}, 10));
    QCOMPARE(t.Percentages().join(QLatin1Char(' ')), QStringLiteral("50% 50% 100%"));
    // Half away from zero: 2.5 prints as 3.
    QVERIFY(t.lblTimingSummary.text().startsWith(QStringLiteral("Dual Channel, Time Between Messages 3 sec\r")));
    // Ten times 0.1 does not make 1: the sum stays below it, so an eleventh message fits. 11 of 10: A 6, B 5.
    t.Apply("0.1", "0.1", "1");
    QCOMPARE(t.lblTimingChAlternate.Percentage.text(), QStringLiteral("110%"));
}

void TimingWindowTest::onlyApplyComputes() {
    Planner t;
    const QImage tBefore = t.Picture();
    t.txtTimingRateTx.setFocus();
    t.txtTimingRateTx.selectAll();
    QTest::keyClicks(&t.txtTimingRateTx, QStringLiteral("10"));
    QTest::keyClick(&t.txtTimingRateTx, Qt::Key_Tab);
    t.Advance(3);
    QCOMPARE(t.TimingRuns(), 1);
    QVERIFY(t.Picture().copy(t.lblTimingChA.Name.geometry()) == tBefore.copy(t.lblTimingChA.Name.geometry()));
    QCOMPARE(t.Percentages().join(QLatin1Char(' ')), QStringLiteral("50% 50% 50%"));
    t.cmdTimingApply.setFocus();
    QTest::keyClick(&t.cmdTimingApply, Qt::Key_Space);
    QCOMPARE(t.TimingRuns(), 2);
    QVERIFY(t.lblTimingSummary.text().startsWith(QStringLiteral("Dual Channel, Time Between Messages 10 sec")));
}

void TimingWindowTest::returnInAFieldApplies() {
    Planner t;
    t.txtTimingRateRc.SetText("60");
    QTest::keyClick(&t.txtTimingRateRc, Qt::Key_Return);
    QCOMPARE(t.TimingRuns(), 2);
}

void TimingWindowTest::planFollowsTheWidthOfTheTab() {
    Planner t;
    for (const int iWidth : {700, 1300, 900}) {
        t.resize(iWidth, 640);
        QCoreApplication::processEvents();
        const Bar tA(t.lblTimingChA);
        const Bar tAlternate(t.lblTimingChAlternate);
        const QImage tImage = t.Picture();
        QCOMPARE(Ticks(tImage, tA), Columns(tA, {0, 60, 120, 180, 240, 300}, 360));
        QCOMPARE(Ticks(tImage, tAlternate), Columns(tAlternate, {0, 210, 240, 270, 300, 330}, 360));
    }
    QCOMPARE(t.TimingRuns(), 1);  // drawn again, not computed from the fields again
}

void TimingWindowTest::refusedInputsLeaveThePlan_data() {
    QTest::addColumn<QByteArray>("tx");
    QTest::addColumn<QByteArray>("rc");
    QTest::addColumn<QByteArray>("span");
    QTest::addColumn<QString>("named");
    const QString sTx = QStringLiteral("Tx Rate");
    const QString sRc = QStringLiteral("Rc Alternating Rate");
    const QString sSpan = QStringLiteral("Time Span");
    QTest::newRow("no number") << QByteArray("ten") << QByteArray("36") << QByteArray("360") << sTx;
    QTest::newRow("empty") << QByteArray("30") << QByteArray() << QByteArray("360") << sRc;
    QTest::newRow("zero Tx") << QByteArray("0") << QByteArray("36") << QByteArray("360") << sTx;
    QTest::newRow("zero Rc") << QByteArray("30") << QByteArray("0") << QByteArray("360") << sRc;
    QTest::newRow("zero span") << QByteArray("30") << QByteArray("36") << QByteArray("0") << sSpan;
    QTest::newRow("negative") << QByteArray("-30") << QByteArray("36") << QByteArray("360") << sTx;
    QTest::newRow("infinite") << QByteArray("30") << QByteArray("36") << QByteArray("1e400") << sSpan;
    QTest::newRow("inf") << QByteArray("30") << QByteArray("36") << QByteArray("inf") << sSpan;
    QTest::newRow("nan") << QByteArray("30") << QByteArray("nan") << QByteArray("360") << sRc;
    QTest::newRow("too many messages") << QByteArray("0.00001") << QByteArray("36") << QByteArray("360") << sTx;
    QTest::newRow("too many bands") << QByteArray("30") << QByteArray("1e-9") << QByteArray("360") << sRc;
    QTest::newRow("span too short") << QByteArray("30") << QByteArray("36") << QByteArray("15") << sSpan;
}

void TimingWindowTest::refusedInputsLeaveThePlan() {
    QFETCH(QByteArray, tx);
    QFETCH(QByteArray, rc);
    QFETCH(QByteArray, span);
    QFETCH(QString, named);
    Planner t;
    const QImage tBefore = t.Picture();
    const QString sSummary = t.lblTimingSummary.text();
    t.Apply(tx.constData(), rc.constData(), span.constData());
    QVERIFY2(t.lblTimingMessage.text().startsWith(named), qPrintable(t.lblTimingMessage.text()));
    QVERIFY(t.lblTimingMessage.isVisible());
    QVERIFY(t.Picture() == tBefore);
    QCOMPARE(t.lblTimingSummary.text(), sSummary);
    QCOMPARE(t.Percentages().join(QLatin1Char(' ')), QStringLiteral("50% 50% 50%"));
    QVERIFY(t.tWorld.sMessages.isEmpty());
}

void TimingWindowTest::refusalGoesWithTheNextGoodPlan() {
    Planner t;
    t.Apply("x", "36", "360");
    QVERIFY(!t.lblTimingMessage.text().isEmpty());
    t.Apply("30", "30", "360");
    QVERIFY(t.lblTimingMessage.text().isEmpty());
    QCOMPARE(t.lblTimingChAlternate.Percentage.text(), QStringLiteral("100%"));
}

void TimingWindowTest::ticksStayBlackInADarkPalette() {
    Planner t;
    QPalette tDark;
    tDark.setColor(QPalette::Window, Qt::black);
    tDark.setColor(QPalette::WindowText, Qt::white);
    t.setPalette(tDark);
    const Bar tA(t.lblTimingChA);
    QCOMPARE(tA.Pixel(t.Picture(), tA.X(60, 360)), Black);
    QCOMPARE(tA.Pixel(t.Picture(), tA.X(30, 360)), Green);
}

void TimingWindowTest::rowNamesNeverChange() {
    Planner t;
    for (int i = 0; i < 2; ++i) {
        QCOMPARE(t.lblTimingChA.Name.text(), QStringLiteral("Ch A"));
        QCOMPARE(t.lblTimingChB.Name.text(), QStringLiteral("Ch B"));
        QCOMPARE(t.lblTimingChAlternate.Name.text(), QStringLiteral("Ch Alternating"));
        t.Apply("7", "11", "100");
    }
}

void TimingWindowTest::receptionIsNotTouched() {
    Planner t;
    t.StartBoth();
    t.FeedLine(0, AnyReport);
    t.Apply("7", "11", "100");
    QCOMPARE(t.Panel(1), std::string("Running"));
    QCOMPARE(t.Panel(2), std::string("1 Targets, 1 Messages"));
    QCOMPARE(t.grdTargetData.Cells.Rows(), 2);
}

QTEST_MAIN(TimingWindowTest)
#include "TimingWindowTest.moc"
