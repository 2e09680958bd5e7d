// The window at every scale, size and font: all controls stand inside their page and apart, and thin lines keep all
// their sides where a device-independent pixel is no whole number of pixels. Run once for each scale (QT_SCALE_FACTOR).
#include <QApplication>
#include <QStyleOptionGroupBox>
#include <QTest>
#include <algorithm>

#include "tests/support/PrintString.h"
#include "tests/window/Bench.h"

using support::ShownWindow;
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

// Another font for as long as this lives.
class FontOf {
public:
    explicit FontOf(double dPoints) {
        QFont tFont = m_tUsual;
        tFont.setPointSizeF(dPoints);
        QApplication::setFont(tFont);
    }
    ~FontOf() { QApplication::setFont(m_tUsual); }
    FontOf(const FontOf&) = delete;
    FontOf& operator=(const FontOf&) = delete;

private:
    QFont m_tUsual = QApplication::font();
};

// What stands beside one another in a page, a frame or a picture.
std::vector<QWidget*> Shown(const QWidget& tParent) {
    std::vector<QWidget*> pShown;
    for (QObject* pChild : tParent.children()) {
        auto* p = qobject_cast<QWidget*>(pChild);
        if (p != nullptr && p->isVisible()) pShown.push_back(p);
    }
    return pShown;
}

// Where controls may stand: below a frame's title and within its line.
QRect RoomIn(const QWidget& t) {
    const auto* pFrame = qobject_cast<const QGroupBox*>(&t);
    if (pFrame == nullptr) return t.rect();
    QStyleOptionGroupBox tOption;
    tOption.initFrom(pFrame);
    tOption.text = pFrame->title();
    tOption.subControls = QStyle::SC_GroupBoxFrame | QStyle::SC_GroupBoxLabel;
    const auto Place = [&](QStyle::SubControl e) {
        return pFrame->style()->subControlRect(QStyle::CC_GroupBox, &tOption, e, pFrame);
    };
    QRect tRoom = Place(QStyle::SC_GroupBoxContents);
    tRoom.setTop(std::max(tRoom.top(), Place(QStyle::SC_GroupBoxLabel).bottom() + 1));
    return tRoom;
}

// What stands wrong among the controls of a page, a frame or a picture; empty when nothing does.
QString Misplaced(const QWidget& tParent) {
    QString sWrong;
    const auto Name = [](const QWidget& t) {
        const auto* pLabel = qobject_cast<const QLabel*>(&t);
        return t.objectName().isEmpty() && pLabel != nullptr ? pLabel->text() : t.objectName();
    };
    for (const QWidget* p : Shown(tParent)) {
        if (!RoomIn(tParent).contains(p->geometry())) sWrong += Name(*p) + QLatin1String(" is not inside; ");
        if (p->size().isEmpty()) sWrong += Name(*p) + QLatin1String(" has no size; ");
        for (const QWidget* pOther : Shown(tParent)) {
            if (p < pOther && p->geometry().intersects(pOther->geometry())) {
                sWrong += Name(*p) + QLatin1String(" lies on ") + Name(*pOther) + QLatin1String("; ");
            }
        }
    }
    return sWrong;
}

// Nothing cuts it off, and nothing lies over it.
bool WhollySeen(const QWidget& t) { return t.visibleRegion().boundingRect() == t.rect(); }

}  // namespace

class ScaledWindowTest : public QObject {
    Q_OBJECT

private slots:
    void scaleIsTheOneAskedFor();
    void controlsStandInsideAndApart_data();
    void controlsStandInsideAndApart();
    void diagramBoxesKeepTheirSides();
    void framesOfTheReceiverKeepTheirSides();
};

void ScaledWindowTest::scaleIsTheOneAskedFor() {
    World tWorld;
    TestWindow t(tWorld);
    const QByteArray sScale = qEnvironmentVariable("QT_SCALE_FACTOR", QStringLiteral("1")).toLatin1();
    QCOMPARE(t.devicePixelRatioF(), sScale.toDouble());
}

void ScaledWindowTest::controlsStandInsideAndApart_data() {
    QTest::addColumn<QSize>("size");
    QTest::addColumn<double>("points");
    for (const double dPoints : {9.0, 12.5, 20.0}) {
        QTest::addRow("least size, %g pt", dPoints) << QSize(1, 1) << dPoints;
        QTest::addRow("first size, %g pt", dPoints) << QSize() << dPoints;
        QTest::addRow("large, %g pt", dPoints) << QSize(2600, 1500) << dPoints;
    }
}

void ScaledWindowTest::controlsStandInsideAndApart() {
    QFETCH(QSize, size);
    QFETCH(double, points);
    const FontOf tFont(points);
    World tWorld;
    TestWindow t(tWorld);
    t.LoadAndShow();
    t.chkCommEnabled(1).setChecked(true);
    if (size.isValid()) t.resize(size);
    QCoreApplication::processEvents();
    if (size == QSize(1, 1)) QCOMPARE(t.size(), t.minimumSize());
    QVERIFY(WhollySeen(t.Toolbar) && WhollySeen(t.SSTab.Bar()));
    QVERIFY(WhollySeen(t.StatusBar));
    QVERIFY2(Misplaced(t.StatusBar).isEmpty(), qPrintable(Misplaced(t.StatusBar)));
    for (int iTab = 0; iTab < t.SSTab.Count(); ++iTab) {
        t.SSTab.SetTab(iTab);
        QCoreApplication::processEvents();
        QWidget& tPage = t.Page(iTab);
        QVERIFY(tPage.y() >= t.SSTab.Bar().geometry().bottom());
        for (const QWidget* p :
             std::initializer_list<QWidget*>{&tPage, &t.frmRxNasa, &t.frmRxLabel, &t.pctTiming, &t.pctDiagram}) {
            if (p->isVisible()) QVERIFY2(Misplaced(*p).isEmpty(), qPrintable(Misplaced(*p)));
        }
        for (const QWidget* p : Shown(tPage)) QVERIFY2(WhollySeen(*p), qPrintable(p->objectName()));
    }
}

void ScaledWindowTest::diagramBoxesKeepTheirSides() {
    ShownWindow t;
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
    ShownWindow t;
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
