// What tables and logs are drawn in: the active colours while their window is active, wherever the keyboard is; and
// headers that no style makes bold.
#include "platform/toolkit/ViewColours.h"

#include <QApplication>
#include <QHeaderView>
#include <QLineEdit>
#include <QPainter>
#include <QProxyStyle>
#include <QTest>
#include <QVBoxLayout>
#include <algorithm>

#include "platform/toolkit/Grid.h"
#include "platform/toolkit/LogList.h"

using toolkit::Grid;
using toolkit::LogList;

namespace {

// Texts are red, selections green; blue in both where they count as inactive.
QPalette TellingPalette() {
    QPalette t(Qt::white);
    for (const auto eRole : {QPalette::Text, QPalette::ButtonText, QPalette::WindowText}) {
        t.setColor(QPalette::Active, eRole, Qt::red);
        t.setColor(QPalette::Inactive, eRole, Qt::blue);
    }
    for (const auto eRole : {QPalette::Base, QPalette::AlternateBase, QPalette::Window, QPalette::Button}) {
        t.setColor(eRole, Qt::white);
    }
    t.setColor(QPalette::Active, QPalette::Highlight, Qt::green);
    t.setColor(QPalette::Inactive, QPalette::Highlight, Qt::blue);
    t.setColor(QPalette::HighlightedText, Qt::black);
    return t;
}

// Draws header labels bold, as some desktops' styles do.
class BoldHeaders : public QProxyStyle {
public:
    using QProxyStyle::QProxyStyle;
    void drawControl(ControlElement eElement, const QStyleOption* pOption, QPainter* pPainter,
                     const QWidget* pWidget) const override {
        if (eElement == CE_HeaderLabel) {
            QFont tFont = pPainter->font();
            tFont.setBold(true);
            pPainter->setFont(tFont);
        }
        QProxyStyle::drawControl(eElement, pOption, pPainter, pWidget);
    }
};

struct Views {
    QWidget tWindow;
    QLineEdit& txt = *new QLineEdit(&tWindow);
    Grid& grd = *new Grid(&tWindow);
    LogList& lst = *new LogList(&tWindow);

    Views() {
        auto* pLayout = new QVBoxLayout(&tWindow);
        for (QWidget* p : {static_cast<QWidget*>(&txt), static_cast<QWidget*>(&grd), static_cast<QWidget*>(&lst)}) {
            pLayout->addWidget(p);
        }
        tWindow.setPalette(TellingPalette());
        grd.Cells.SetCols(1);
        grd.Cells.SetRows(4);
        grd.Cells.SetText(0, 0, "MMMM", runtime::AlignCentre);
        grd.SetColumn(0, "MMMM", true, 200);
        for (int i = 1; i < 4; ++i) grd.Cells.SetText(i, 0, "MMMM");
        for (int i = 0; i < 4; ++i) lst.Lines.Add("MMMM", false);
        tWindow.resize(400, 400);
        tWindow.show();
        tWindow.activateWindow();
        txt.setFocus();
        QVERIFY(QTest::qWaitForWindowActive(&tWindow));
        Synchronize();
    }
    void Synchronize() const {
        grd.Synchronize();
        lst.Synchronize();
        QCoreApplication::processEvents();
    }
};

// Which of the telling colours a picture holds: "R", "G", "B".
QString Colours(QWidget& t) {
    const QImage tImage = t.grab().toImage();
    bool bRed = false;
    bool bGreen = false;
    bool bBlue = false;
    for (int iY = 0; iY < tImage.height(); ++iY) {
        for (int iX = 0; iX < tImage.width(); ++iX) {
            const QColor tColour = tImage.pixelColor(iX, iY);
            constexpr int Clearly = 150;
            bRed = bRed || tColour.red() - std::max(tColour.green(), tColour.blue()) > Clearly;
            bGreen = bGreen || tColour.green() - std::max(tColour.red(), tColour.blue()) > Clearly;
            bBlue = bBlue || tColour.blue() - std::max(tColour.red(), tColour.green()) > Clearly;
        }
    }
    return QLatin1String(bRed ? "R" : "") + QLatin1String(bGreen ? "G" : "") + QLatin1String(bBlue ? "B" : "");
}

// How wide the red of a picture is, in pixels.
int RedWidth(QWidget& t) {
    const QImage tImage = t.grab().toImage();
    int iFirst = tImage.width();
    int iLast = -1;
    for (int iY = 0; iY < tImage.height(); ++iY) {
        for (int iX = 0; iX < tImage.width(); ++iX) {
            if (tImage.pixelColor(iX, iY).red() - tImage.pixelColor(iX, iY).blue() < 100) continue;
            iFirst = std::min(iFirst, iX);
            iLast = std::max(iLast, iX);
        }
    }
    return iLast - iFirst + 1;
}

}  // namespace

class ViewColoursTest : public QObject {
    Q_OBJECT
private slots:
    void textIsActiveWhereverTheKeyboardIs();
    void selectionIsActiveWhereverTheKeyboardIs();
    void anotherActiveWindowMakesThemInactive();
    void disabledViewsAreDrawnDisabled();
    void headersArePlain();
    void noStyleMakesHeadersBold();
};

void ViewColoursTest::textIsActiveWhereverTheKeyboardIs() {
    const Views t;
    for (QWidget* pFocus :
         {static_cast<QWidget*>(&t.txt), static_cast<QWidget*>(&t.grd), static_cast<QWidget*>(&t.lst)}) {
        pFocus->setFocus();
        QCOMPARE(Colours(*t.grd.viewport()), QStringLiteral("R"));
        QCOMPARE(Colours(*t.grd.horizontalHeader()->viewport()), QStringLiteral("R"));
        QCOMPARE(Colours(*t.lst.viewport()), QStringLiteral("R"));
    }
}

void ViewColoursTest::selectionIsActiveWhereverTheKeyboardIs() {
    const Views t;
    t.grd.selectAll();
    t.lst.selectAll();
    QCOMPARE(Colours(*t.grd.viewport()), QStringLiteral("G"));
    QCOMPARE(Colours(*t.lst.viewport()), QStringLiteral("G"));
}

void ViewColoursTest::anotherActiveWindowMakesThemInactive() {
    const Views t;
    QWidget tOther;
    tOther.show();
    tOther.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&tOther));
    QCOMPARE(Colours(*t.grd.viewport()), QStringLiteral("B"));
    QCOMPARE(Colours(*t.grd.horizontalHeader()->viewport()), QStringLiteral("B"));
    QCOMPARE(Colours(*t.lst.viewport()), QStringLiteral("B"));
}

void ViewColoursTest::disabledViewsAreDrawnDisabled() {
    Views t;
    QPalette tPalette = t.tWindow.palette();
    tPalette.setColor(QPalette::Disabled, QPalette::Text, Qt::green);
    t.tWindow.setPalette(tPalette);
    t.grd.setEnabled(false);
    t.lst.setEnabled(false);
    QCOMPARE(Colours(*t.grd.viewport()), QStringLiteral("G"));
    QCOMPARE(Colours(*t.lst.viewport()), QStringLiteral("G"));
}

void ViewColoursTest::headersArePlain() {
    const Views t;
    QFont tFont = t.grd.font();
    const int iPlain = QFontMetrics(tFont).tightBoundingRect(QStringLiteral("MMMM")).width();
    tFont.setBold(true);
    const int iBold = QFontMetrics(tFont).tightBoundingRect(QStringLiteral("MMMM")).width();
    QVERIFY(iBold > iPlain + 3);
    QVERIFY(qAbs(RedWidth(*t.grd.horizontalHeader()->viewport()) - iPlain) <= 2);
}

void ViewColoursTest::noStyleMakesHeadersBold() {
    const QString sUsual = QApplication::style()->name();
    const auto tHeader = [](QTableView& grd) { return grd.horizontalHeader()->grab().toImage(); };
    QImage tPlain;
    {
        const Views t;
        tPlain = tHeader(t.grd);
    }
    QApplication::setStyle(new BoldHeaders(sUsual));
    {
        const Views t;
        QVERIFY(tHeader(t.grd) == tPlain);
        QVERIFY(!t.grd.horizontalHeader()->font().bold());
        // A header as it comes would be bold by now.
        t.grd.setHorizontalHeader(new QHeaderView(Qt::Horizontal, &t.grd));
        t.Synchronize();
        QVERIFY(tHeader(t.grd) != tPlain);
    }
    QApplication::setStyle(sUsual);
}

QTEST_MAIN(ViewColoursTest)
#include "ViewColoursTest.moc"
