// The window at scales where a device-independent pixel is no whole number of pixels: thin lines keep all their sides.
// Run once for each scale (QT_SCALE_FACTOR).
#include <QApplication>
#include <QTest>

#include "tests/support/PrintString.h"
#include "tests/support/TestWindow.h"

using support::TestWindow;
using support::World;

namespace {

constexpr int Reach = 3;   // pixels around an edge in which its line may lie
constexpr int Beside = 4;  // from an edge to where the grounds are looked at

bool Differ(QRgb t1, QRgb t2) {
    return std::abs(qRed(t1) - qRed(t2)) + std::abs(qGreen(t1) - qGreen(t2)) + std::abs(qBlue(t1) - qBlue(t2)) > 6;
}

// Looks for a line along an edge from tFrom on in direction tAlong: in one of the pixel rows around it, over a
// stretch before its middle, where a connection may end, no pixel is of the colour on either side.
bool Lined(const QImage& tImage, const QPoint& tFrom, const QPoint& tAlong, int iLength, const QPoint& tOutward) {
    for (int iOut = -Reach; iOut <= Reach; ++iOut) {
        bool bWhole = true;
        for (int i = iLength / 8; i < iLength * 3 / 8 && bWhole; ++i) {
            const QPoint tEdge = tFrom + i * tAlong;
            const QRgb tInk = tImage.pixel(tEdge + iOut * tOutward);
            bWhole = Differ(tInk, tImage.pixel(tEdge - (Beside + Reach) * tOutward)) &&
                     Differ(tInk, tImage.pixel(tEdge + (Beside + Reach) * tOutward));
        }
        if (bWhole) return true;
    }
    return false;
}

// The sides of a place in the window that have no line, as letters: "LTRB" when all are missing.
QString MissingSides(const QImage& tImage, const QRect& tPlace, double dScale) {
    const auto tPixel = [dScale](double d) { return static_cast<int>(std::lround(d * dScale)); };
    const int iLeft = tPixel(tPlace.left());
    const int iTop = tPixel(tPlace.top());
    const int iRight = tPixel(tPlace.left() + tPlace.width()) - 1;
    const int iBottom = tPixel(tPlace.top() + tPlace.height()) - 1;
    const QPoint tAcross(1, 0);
    const QPoint tDown(0, 1);
    QString sMissing;
    if (!Lined(tImage, {iLeft, iTop}, tDown, iBottom - iTop, -tAcross)) sMissing += QLatin1Char('L');
    if (!Lined(tImage, {iLeft, iTop}, tAcross, iRight - iLeft, -tDown)) sMissing += QLatin1Char('T');
    if (!Lined(tImage, {iRight, iTop}, tDown, iBottom - iTop, tAcross)) sMissing += QLatin1Char('R');
    if (!Lined(tImage, {iLeft, iBottom}, tAcross, iRight - iLeft, tDown)) sMissing += QLatin1Char('B');
    return sMissing;
}

// Sizes of every remainder by four.
const std::vector<QSize> Sizes = {QSize(960, 640), QSize(961, 643), QSize(962, 641), QSize(963, 642)};

}  // namespace

class ScaledWindowTest : public QObject {
    Q_OBJECT

private slots:
    void scaleIsTheOneAskedFor();
    void diagramBoxesKeepTheirSides();
    void framesOfTheReceiverKeepTheirSides();
};

void ScaledWindowTest::scaleIsTheOneAskedFor() {
    World tWorld;
    TestWindow t(tWorld);
    const QByteArray sScale = qEnvironmentVariable("QT_SCALE_FACTOR", QStringLiteral("1")).toLatin1();
    QCOMPARE(t.devicePixelRatioF(), sScale.toDouble());
}

void ScaledWindowTest::diagramBoxesKeepTheirSides() {
    World tWorld;
    TestWindow t(tWorld);
    t.LoadAndShow();
    t.SSTab.SetTab(ui::TabDiagram);
    t.resize(1100, 640);
    QCoreApplication::processEvents();
    const QImage tImage = t.grab().toImage();
    for (const QLabel* p : t.pctDiagram.findChildren<QLabel*>()) {
        const QRect tBox(p->mapTo(&t, QPoint(0, 0)), p->size());
        QVERIFY2(MissingSides(tImage, tBox, t.devicePixelRatioF()).isEmpty(), qPrintable(p->text()));
    }
}

void ScaledWindowTest::framesOfTheReceiverKeepTheirSides() {
    World tWorld;
    TestWindow t(tWorld);
    t.LoadAndShow();
    t.SSTab.SetTab(ui::TabReceiver);
    for (const QSize& tSize : Sizes) {
        t.resize(tSize);
        QCoreApplication::processEvents();
        const QImage tImage = t.grab().toImage();
        for (const QGroupBox* p : {&t.frmRxNasa, &t.frmRxLabel}) {
            const QRect tPlace(p->mapTo(&t, QPoint(0, 0)), p->size());
            // At the top it is the title that stands at the edge.
            const QString sMissing = MissingSides(tImage, tPlace, t.devicePixelRatioF()).remove(QLatin1Char('T'));
            QVERIFY2(sMissing.isEmpty(), qPrintable(p->objectName() + QLatin1Char(' ') + sMissing));
        }
    }
}

QTEST_MAIN(ScaledWindowTest)
#include "ScaledWindowTest.moc"
