// The flow diagram: its boxes, and the arrow heads as they are drawn.
#include <QImage>
#include <QTest>
#include <algorithm>
#include <set>

#include "tests/support/PrintString.h"
#include "tests/window/Bench.h"

using support::ShownWindow;

namespace {

using Strokes = std::vector<runtime::Stroke>;

bool Inked(const QImage& tImage, int iX, int iY, QRgb tGround) {
    return tImage.valid(iX, iY) && tImage.pixel(iX, iY) != tGround;
}

// A box with its line.
bool At(const QLabel& tBox, const QPoint& t) { return tBox.geometry().adjusted(-1, -1, 1, 1).contains(t); }

// The boxes that one connection of drawn lines joins, as it is followed from pixel to pixel outside of all boxes; the
// pixels that are followed lose their ink.
QStringList Joined(QImage& tImage, QPoint tFrom, QRgb tGround, const QList<QLabel*>& pBoxes) {
    std::set<const QLabel*> pJoined;
    std::vector<QPoint> tOpen = {tFrom};
    while (!tOpen.empty()) {
        const QPoint t = tOpen.back();
        tOpen.pop_back();
        const auto itBox = std::find_if(pBoxes.begin(), pBoxes.end(), [&t](const QLabel* p) { return At(*p, t); });
        if (itBox != pBoxes.end()) {
            pJoined.insert(*itBox);
        } else if (Inked(tImage, t.x(), t.y(), tGround)) {
            tImage.setPixel(t, tGround);
            for (const QPoint& tStep : {QPoint(1, 0), QPoint(-1, 0), QPoint(0, 1), QPoint(0, -1)}) {
                tOpen.push_back(t + tStep);
            }
        }
    }
    QStringList sJoined;
    for (const QLabel* p : pJoined) sJoined << p->text();
    sJoined.sort();
    return sJoined;
}

}  // namespace

class DiagramWindowTest : public QObject {
    Q_OBJECT

private slots:
    void everyArrowEndsAtABox();
    void nothingCrossesACaption();
    void headFollowsTheTag_data();
    void headFollowsTheTag();
    void headsAreDrawnInTheOrderOfTheLines();
    void headsAreDrawnAnewWithEachLayout();
    void headsCanBeSeen();
    void linesJoinWhatBelongsTogether();
    void linesAreStraightAndBoxesFilled();
    void picturesDrawInTheTextColour();
};

void DiagramWindowTest::everyArrowEndsAtABox() {
    ShownWindow t;
    QVERIFY(t.LnArrow.size() >= 8);
    const auto pBoxes = t.pctDiagram.findChildren<QLabel*>();
    for (const ui::DiagramLine& tLine : t.LnArrow) {
        const bool bRight = tLine.sTag.find("Right") != std::string::npos;
        const bool bDown = tLine.sTag.find("Bottom") != std::string::npos;
        QVERIFY(bRight || bDown);
        const bool bEnds = std::any_of(pBoxes.begin(), pBoxes.end(), [&](const QLabel* pBox) {
            const QRect tBox(pBox->geometry().topLeft() * 15, pBox->geometry().size() * 15);
            const auto& l = tLine.tLine;
            if (bRight) return l.lX2 == tBox.x() && l.lY2 > tBox.y() && l.lY2 < tBox.y() + tBox.height();
            return l.lY2 == tBox.y() && l.lX2 > tBox.x() && l.lX2 < tBox.x() + tBox.width();
        });
        QVERIFY(bEnds);
    }
}

void DiagramWindowTest::nothingCrossesACaption() {
    ShownWindow t;
    for (const runtime::Stroke& l : t.pctDiagram.Lines()) {
        const QRect tLine = QRect(QPoint(std::min(l.lX1, l.lX2), std::min(l.lY1, l.lY2)) / 15,
                                  QPoint(std::max(l.lX1, l.lX2), std::max(l.lY1, l.lY2)) / 15);
        for (const QLabel* pBox : t.pctDiagram.findChildren<QLabel*>()) {
            QVERIFY2(!pBox->geometry().adjusted(2, 2, -2, -2).intersects(tLine), qPrintable(pBox->text()));
        }
    }
}

void DiagramWindowTest::headFollowsTheTag_data() {
    QTest::addColumn<QByteArray>("tag");
    QTest::addColumn<bool>("right");
    QTest::addColumn<bool>("bottom");
    QTest::newRow("right") << QByteArray("Right") << true << false;
    QTest::newRow("bottom") << QByteArray("Bottom") << false << true;
    QTest::newRow("both words") << QByteArray("Bottom Right") << true << true;
    QTest::newRow("both in one") << QByteArray("xRightBottomx") << true << true;
    QTest::newRow("lower case") << QByteArray("right bottom") << false << false;
    QTest::newRow("upper case") << QByteArray("RIGHT") << false << false;
    QTest::newRow("part of a word") << QByteArray("Righ Botto") << false << false;
    QTest::newRow("empty") << QByteArray() << false << false;
}

void DiagramWindowTest::headFollowsTheTag() {
    QFETCH(QByteArray, tag);
    QFETCH(bool, right);
    QFETCH(bool, bottom);
    ShownWindow t;
    t.pctDiagram.ClearDrawing();
    t.DiagramArrowHead(t.pctDiagram, {{10, 20, 1000, 2000}, tag.toStdString()});
    Strokes tExpected;
    if (right) tExpected.insert(tExpected.end(), {{940, 2030, 1000, 2000}, {940, 1970, 1000, 2000}});
    if (bottom) tExpected.insert(tExpected.end(), {{970, 1940, 1000, 2000}, {1030, 1940, 1000, 2000}});
    QVERIFY(t.pctDiagram.Drawn() == tExpected);
}

void DiagramWindowTest::headsAreDrawnInTheOrderOfTheLines() {
    ShownWindow t;
    QVERIFY(t.pctDiagram.Drawn().empty());  // not before the tab is shown
    t.SSTab.SetTab(ui::TabDiagram);
    const Strokes& tDrawn = t.pctDiagram.Drawn();
    QCOMPARE(tDrawn.size(), t.LnArrow.size() * 2);
    for (std::size_t i = 0; i < t.LnArrow.size(); ++i) {
        for (const std::size_t j : {2 * i, 2 * i + 1}) {
            QCOMPARE(tDrawn[j].lX2, t.LnArrow[i].tLine.lX2);
            QCOMPARE(tDrawn[j].lY2, t.LnArrow[i].tLine.lY2);
        }
    }
}

void DiagramWindowTest::headsAreDrawnAnewWithEachLayout() {
    ShownWindow t;
    t.SSTab.SetTab(ui::TabDiagram);
    const Strokes tFirst = t.pctDiagram.Drawn();
    t.pctDiagram.ClearDrawing();
    t.resize(1000, 700);
    QCoreApplication::processEvents();
    QVERIFY(t.pctDiagram.Drawn() == tFirst);  // drawn again, and none twice
    t.FormLayout();
    QVERIFY(t.pctDiagram.Drawn() == tFirst);
}

void DiagramWindowTest::headsCanBeSeen() {
    ShownWindow t;
    t.resize(1200, 700);
    t.SSTab.SetTab(ui::TabDiagram);
    const QImage tWith = t.pctDiagram.grab().toImage();
    t.pctDiagram.ClearDrawing();
    const QImage tWithout = t.pctDiagram.grab().toImage();
    const QRgb tGround = tWith.pixel(1, 1);
    for (const ui::DiagramLine& tLine : t.LnArrow) {
        const int iX = tLine.tLine.lX2 / 15;
        const int iY = tLine.tLine.lY2 / 15;
        // The tails of the two strokes, beside the line itself: 4 pixels back, 2 to either side.
        const bool bRight = tLine.sTag == "Right";
        for (const int iSide : {-2, 2}) {
            const int iTailX = bRight ? iX - 4 : iX + iSide;
            const int iTailY = bRight ? iY + iSide : iY - 4;
            QVERIFY(Inked(tWith, iTailX, iTailY, tGround));
            QVERIFY(!Inked(tWithout, iTailX, iTailY, tGround));
        }
        // The line that the head ends.
        QVERIFY(Inked(tWithout, bRight ? iX - 4 : iX, bRight ? iY : iY - 4, tGround));
    }
}

void DiagramWindowTest::linesJoinWhatBelongsTogether() {
    ShownWindow t;
    t.resize(1200, 700);
    t.SSTab.SetTab(ui::TabDiagram);
    QImage tImage = t.pctDiagram.grab().toImage().convertToFormat(QImage::Format_RGB32);
    const QRgb tGround = tImage.pixel(1, 1);
    const auto pBoxes = t.pctDiagram.findChildren<QLabel*>();
    QStringList sAll;
    for (int iY = 0; iY < tImage.height(); ++iY) {
        for (int iX = 0; iX < tImage.width(); ++iX) {
            const QPoint tAt(iX, iY);
            const bool bBox = std::any_of(pBoxes.begin(), pBoxes.end(), [&](const QLabel* p) { return At(*p, tAt); });
            if (bBox || !Inked(tImage, iX, iY, tGround)) continue;
            sAll << Joined(tImage, tAt, tGround, pBoxes).join(QLatin1String(", "));
        }
    }
    sAll.sort();
    QCOMPARE(sAll.join(QLatin1String("; ")),
             QStringLiteral("AIS Targets, Targets; Comm, Comm, Input; Comm, Comm, Receiver; Comm, Output; "
                            "Decoders, Messages, Targets; Decoders, Mode; Mode, Output; Mode, Playback, Real Time; "
                            "Real Time, Receiver, Record"));
}

// Along and across, each line to the middle of a box's side, as dark as the text.
void DiagramWindowTest::linesAreStraightAndBoxesFilled() {
    ShownWindow t;
    t.resize(1200, 700);
    t.SSTab.SetTab(ui::TabDiagram);
    t.pctDiagram.ClearDrawing();
    const QImage tImage = t.pctDiagram.grab().toImage().convertToFormat(QImage::Format_RGB32);
    const QRgb tGround = tImage.pixel(1, 1);
    const int iText = t.palette().color(QPalette::WindowText).lightness();
    const int iGround = QColor::fromRgb(tGround).lightness();
    for (const runtime::Stroke& l : t.pctDiagram.Lines()) {
        QVERIFY(l.lX1 == l.lX2 || l.lY1 == l.lY2);
        const int iSteps = (std::abs(l.lX2 - l.lX1) + std::abs(l.lY2 - l.lY1)) / 15;
        QVERIFY(iSteps > 3);
        for (int i = 1; i < iSteps; ++i) {
            const int iX = (l.lX1 + (l.lX2 - l.lX1) * i / iSteps) / 15;
            const int iY = (l.lY1 + (l.lY2 - l.lY1) * i / iSteps) / 15;
            // A line of 1.4 pixels on the border of two: each has most of the ink.
            const int iInk = std::min(tImage.pixelColor(iX, iY).lightness(),
                                      tImage.pixelColor(iX - (l.lX1 == l.lX2), iY - (l.lY1 == l.lY2)).lightness());
            QVERIFY2(std::abs(iInk - iText) < std::abs(iGround - iText) / 2, qPrintable(QString::number(iInk)));
        }
    }
    // The boxes are filled like the other places where texts stand.
    for (const QLabel* p : t.pctDiagram.findChildren<QLabel*>()) {
        QCOMPARE(tImage.pixelColor(p->geometry().topLeft() + QPoint(4, 4)), t.palette().color(QPalette::Base));
    }
}

void DiagramWindowTest::picturesDrawInTheTextColour() {
    ShownWindow t;
    t.SSTab.SetTab(ui::TabDiagram);
    t.setPalette(QPalette(QColor(50, 50, 50), QColor(30, 30, 30)));  // a dark one, made of its two grounds
    t.resize(1200, 700);
    const QImage tImage = t.grab(QRect(t.pctDiagram.mapTo(&t, QPoint(0, 0)), t.pctDiagram.size())).toImage();
    const runtime::Stroke& l = t.LnArrow.front().tLine;
    const QColor tInk = tImage.pixelColor((l.lX1 + l.lX2) / 30, l.lY1 / 15);
    QVERIFY2(tInk.lightness() > 128, qPrintable(tInk.name()));
    QVERIFY(tImage.pixelColor(1, 1).lightness() < 64);
}

QTEST_MAIN(DiagramWindowTest)
#include "DiagramWindowTest.moc"
