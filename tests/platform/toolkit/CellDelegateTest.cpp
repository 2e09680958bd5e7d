// The texts in a grid's cells, by their pixels: whole where they fit, with an ellipsis where they are cut, and never
// like a shorter text.
#include "platform/toolkit/CellDelegate.h"

#include <QFontMetricsF>
#include <QHeaderView>
#include <QPainter>
#include <QTest>

#include "platform/toolkit/Grid.h"

using toolkit::Grid;

namespace {

const QChar Ellipsis(0x2026);
const QString Dots(2, QChar(0xb7));

// A grid of one cell in a column of that width.
struct OneCell {
    Grid grd;
    OneCell(const char* sText, runtime::Alignment eAlignment, int iWidth) {
        grd.resize(400, 100);
        grd.Cells.SetCols(1);
        grd.Cells.SetRows(2);
        grd.Cells.SetText(1, 0, sText, eAlignment);
        grd.SetColumn(0, "0", true, iWidth);
        grd.show();
        grd.Synchronize();
    }
    // What lies left of the column's grid line.
    QImage Picture() {
        const QRect tCell = grd.visualRect(grd.model()->index(0, 0));
        return grd.viewport()->grab(tCell).toImage().convertToFormat(QImage::Format_RGB32);
    }
    int WidthOf(const QString& sText) const {
        return static_cast<int>(std::ceil(QFontMetricsF(grd.font()).horizontalAdvance(sText)));
    }
};

// The smallest rectangle with all that is drawn.
QRect InkRect(const QImage& t) {
    const QRgb lGround = QGuiApplication::palette().color(QPalette::Base).rgb();
    QRect tInk;
    for (int y = 0; y < t.height(); ++y) {
        for (int x = 0; x < t.width(); ++x) {
            if (t.pixel(x, y) != lGround) tInk |= QRect(x, y, 1, 1);
        }
    }
    return tInk;
}
QImage Ink(const QImage& t) { return t.copy(InkRect(t)); }

// A text as it looks, drawn without the grid.
QImage Ink(const QString& sText) {
    QImage t(400, 40, QImage::Format_RGB32);
    t.fill(QGuiApplication::palette().color(QPalette::Base));
    QPainter tPainter(&t);
    tPainter.setFont(QGuiApplication::font());
    tPainter.setPen(QGuiApplication::palette().color(QPalette::Text));
    tPainter.drawText(QPointF(10, 25), sText);
    tPainter.end();
    return Ink(t);
}

}  // namespace

class CellDelegateTest : public QObject {
    Q_OBJECT
private slots:
    void textThatFitsIsWhole_data();
    void textThatFitsIsWhole();
    void paddingGivesWayFirst_data();
    void paddingGivesWayFirst();
    void cutTextHasAnEllipsis_data();
    void cutTextHasAnEllipsis();
    void noWidthShowsAnotherValue_data();
    void noWidthShowsAnotherValue();
    void oneDigitFitsTheColumnOfOneDigit();
    void columnOfOneDigitShowsNoPartOfANumber_data();
    void columnOfOneDigitShowsNoPartOfANumber();
    void narrowColumnShowsNoDecimalPoint();
    void namesOfColumnsAreCutAlike();
    void widerColumnShowsTheWholeTextAgain();
    void otherFontIsLaidOutAnew();
    void manyTextsAndWidthsAreForgotten();
    void textsThatAreNotDrawnAreForgotten();
};

void CellDelegateTest::textThatFitsIsWhole_data() {
    QTest::addColumn<int>("iAlignment");
    QTest::addColumn<double>("dPlace");  // of the free room that lies left of the text, and the padding in pixels
    QTest::addColumn<int>("iPadding");
    QTest::newRow("left") << 1 << 0.0 << 2;
    QTest::newRow("none") << 0 << 0.0 << 2;
    QTest::newRow("centre") << 4 << 0.5 << 0;
    QTest::newRow("right") << 7 << 1.0 << -2;
}

void CellDelegateTest::textThatFitsIsWhole() {
    QFETCH(int, iAlignment);
    QFETCH(double, dPlace);
    QFETCH(int, iPadding);
    OneCell tCell("4442.6", static_cast<runtime::Alignment>(iAlignment), 200);
    const QImage tPicture = tCell.Picture();
    QCOMPARE(Ink(tPicture), Ink(QStringLiteral("4442.6")));
    const double dText = QFontMetricsF(tCell.grd.font()).horizontalAdvance(QStringLiteral("4442.6"));
    const double dLeft = dPlace * (tPicture.width() - dText) + iPadding;
    QVERIFY(qAbs(InkRect(tPicture).left() - dLeft) <= 2);  // a letter has some free edge of its own
}

void CellDelegateTest::paddingGivesWayFirst_data() {
    QTest::addColumn<int>("iAlignment");
    for (const int i : {0, 1, 4, 7}) QTest::addRow("%d", i) << i;
}

void CellDelegateTest::paddingGivesWayFirst() {
    QFETCH(int, iAlignment);
    const QString sText = QStringLiteral("R>720");
    const int iText = OneCell("", runtime::AlignNone, 50).WidthOf(sText);
    for (int iWidth = iText; iWidth < iText + 8; ++iWidth) {
        OneCell tCell("R>720", static_cast<runtime::Alignment>(iAlignment), iWidth);
        QCOMPARE(Ink(tCell.Picture()), Ink(sText));
    }
}

void CellDelegateTest::cutTextHasAnEllipsis_data() {
    QTest::addColumn<QByteArray>("sText");
    QTest::addColumn<int>("iAlignment");
    QTest::newRow("range") << QByteArray("R>720") << 7;
    QTest::newRow("miss") << QByteArray("27160") << 7;
    QTest::newRow("last") << QByteArray("12345") << 0;
    QTest::newRow("id") << QByteArray("11=UTC/Date Response") << 1;
    QTest::newRow("rates") << QByteArray("1,2,3,4,5,11,21") << 4;
}

// The longest piece that fits beside the ellipsis, which stands where the text is cut.
void CellDelegateTest::cutTextHasAnEllipsis() {
    QFETCH(QByteArray, sText);
    QFETCH(int, iAlignment);
    const QString sWhole = QString::fromLatin1(sText);
    const bool bAtLeft = iAlignment == 7;
    OneCell tCell(sText.constData(), static_cast<runtime::Alignment>(iAlignment), 50);
    const int iNarrowest = tCell.WidthOf(QString(Ellipsis)) + 1;
    for (int iWidth = iNarrowest; iWidth < tCell.WidthOf(sWhole); ++iWidth) {
        QString sExpected;
        for (int i = static_cast<int>(sWhole.size()) - 1; i >= 0; --i) {
            sExpected = bAtLeft ? Ellipsis + sWhole.right(i) : sWhole.left(i) + Ellipsis;
            if (tCell.WidthOf(sExpected) <= iWidth - 1) break;  // a pixel is the grid line's
        }
        tCell.grd.SetColumn(0, "0", true, iWidth);
        tCell.grd.Synchronize();
        QCOMPARE(Ink(tCell.Picture()), Ink(sExpected));
    }
}

void CellDelegateTest::noWidthShowsAnotherValue_data() { cutTextHasAnEllipsis_data(); }

void CellDelegateTest::noWidthShowsAnotherValue() {
    QFETCH(QByteArray, sText);
    QFETCH(int, iAlignment);
    const QString sWhole = QString::fromLatin1(sText);
    std::vector<std::pair<QString, QImage>> tParts;
    for (int iFrom = 0; iFrom < sWhole.size(); ++iFrom) {
        for (int iLength = 1; iFrom + iLength <= sWhole.size(); ++iLength) {
            const QString sPart = sWhole.mid(iFrom, iLength);
            if (sPart == sWhole || sPart == QLatin1String(".") || sPart == QLatin1String(",")) continue;
            tParts.emplace_back(sPart, Ink(sPart));
        }
    }
    OneCell tCell(sText.constData(), static_cast<runtime::Alignment>(iAlignment), 50);
    for (int iWidth = 1; iWidth <= tCell.WidthOf(sWhole) + 10; ++iWidth) {
        tCell.grd.SetColumn(0, "0", true, iWidth);
        tCell.grd.Synchronize();
        const QImage tShown = Ink(tCell.Picture());
        for (const auto& [sPart, tInk] : tParts) {
            QVERIFY2(tShown != tInk, qPrintable(QStringLiteral("%1 in %2 pixels").arg(sPart).arg(iWidth)));
        }
    }
}

void CellDelegateTest::oneDigitFitsTheColumnOfOneDigit() {
    OneCell tCell("7", runtime::AlignLeft, 50);
    tCell.grd.SetColumn(0, "0", true, tCell.grd.TextWidth("0"));
    tCell.grd.Synchronize();
    QCOMPARE(Ink(tCell.Picture()), Ink(QStringLiteral("7")));
}

void CellDelegateTest::columnOfOneDigitShowsNoPartOfANumber_data() {
    QTest::addColumn<QByteArray>("sText");
    for (const char* s : {"11=UTC/Date Response", "15=Interrogation", "1=Position Scheduled", "27"}) {
        QTest::newRow(s) << QByteArray(s);
    }
}

// Not even an ellipsis has room there: two raised dots have.
void CellDelegateTest::columnOfOneDigitShowsNoPartOfANumber() {
    QFETCH(QByteArray, sText);
    OneCell tCell(sText.constData(), runtime::AlignLeft, 50);
    const int iDigit = tCell.grd.TextWidth("0");
    QVERIFY(tCell.WidthOf(QString(Ellipsis)) > iDigit);
    QVERIFY(tCell.WidthOf(Dots) <= iDigit);
    tCell.grd.SetColumn(0, "0", true, iDigit);
    tCell.grd.Synchronize();
    QCOMPARE(Ink(tCell.Picture()), Ink(Dots));
}

// "." before a number in the next column would make another one of it.
void CellDelegateTest::narrowColumnShowsNoDecimalPoint() {
    OneCell tPoint(".", runtime::AlignLeft, 30);
    OneCell tCell("12345", runtime::AlignLeft, 30);
    for (int iWidth = 2; iWidth < tCell.WidthOf(QString(Ellipsis)); ++iWidth) {
        tCell.grd.SetColumn(0, "0", true, iWidth);
        tCell.grd.Synchronize();
        const QRect tInk = InkRect(tCell.Picture());
        QVERIFY(tInk.isEmpty() || tInk.bottom() < InkRect(tPoint.Picture()).top());
    }
}

void CellDelegateTest::namesOfColumnsAreCutAlike() {
    const auto tHeader = [](const char* sName) {
        OneCell tCell("", runtime::AlignLeft, 50);
        tCell.grd.Cells.SetText(0, 0, sName, runtime::AlignCentre);
        tCell.grd.SetColumn(0, "0", true, tCell.grd.TextWidth("0"));
        tCell.grd.Synchronize();
        return tCell.grd.horizontalHeader()->grab().toImage();
    };
    QCOMPARE(tHeader("Message Id"), tHeader("\xb7\xb7"));
    QVERIFY(tHeader("Message Id") != tHeader(""));
    QVERIFY(tHeader("7") != tHeader("8"));  // what fits is whole
}

void CellDelegateTest::widerColumnShowsTheWholeTextAgain() {
    OneCell tCell("4442.6", runtime::AlignRight, 30);
    QVERIFY(Ink(tCell.Picture()) != Ink(QStringLiteral("4442.6")));
    tCell.grd.setColumnWidth(0, 100);
    QCOMPARE(Ink(tCell.Picture()), Ink(QStringLiteral("4442.6")));
    tCell.grd.setColumnWidth(0, 30);
    QVERIFY(Ink(tCell.Picture()) != Ink(QStringLiteral("4442.6")));
}

void CellDelegateTest::otherFontIsLaidOutAnew() {
    OneCell tCell("4442.6", runtime::AlignLeft, 200);
    const QImage tBefore = Ink(tCell.Picture());
    QFont tFont = tCell.grd.font();
    tFont.setPointSizeF(tFont.pointSizeF() * 1.5);
    tCell.grd.setFont(tFont);
    QCoreApplication::processEvents();
    QVERIFY(Ink(tCell.Picture()).width() > tBefore.width() * 5 / 4);
}

// What is kept laid out is bounded, and what was forgotten is laid out again.
void CellDelegateTest::manyTextsAndWidthsAreForgotten() {
    struct OpenDelegate : toolkit::CellDelegate {
        using CellDelegate::m_tCut;
        using CellDelegate::m_tWhole;
    } tDelegate;
    QImage tImage(100, 20, QImage::Format_RGB32);
    const auto tPaint = [&](const QString& sText, int iWidth) {
        tImage.fill(QGuiApplication::palette().color(QPalette::Base));
        QPainter tPainter(&tImage);
        tPainter.setFont(QGuiApplication::font());
        tPainter.setPen(QGuiApplication::palette().color(QPalette::Text));
        tDelegate.DrawText(tPainter, QRect(0, 0, iWidth, 20), Qt::AlignRight, sText);
    };
    qsizetype iMostWhole = 0, iMostCut = 0;
    for (int i = 0; i < 10000; ++i) {
        tPaint(QString::number(1000000 + i), 20 + i % 30);
        iMostWhole = std::max(iMostWhole, tDelegate.m_tWhole.Size());
        iMostCut = std::max(iMostCut, tDelegate.m_tCut.Size());
    }
    QVERIFY(iMostWhole > 1000 && iMostWhole <= 4096);
    QVERIFY(iMostCut > 500 && iMostCut <= 1024);
    tPaint(QStringLiteral("4442.6"), 100);
    QCOMPARE(Ink(tImage), Ink(QStringLiteral("4442.6")));
}

// By the clock of the paintings: a table whose texts change slowly fills no store for hours.
void CellDelegateTest::textsThatAreNotDrawnAreForgotten() {
    struct OpenDelegate : toolkit::CellDelegate {
        using CellDelegate::m_tCut;
        using CellDelegate::m_tWhole;
    } tDelegate;
    QImage tImage(100, 20, QImage::Format_RGB32);
    QPainter tPainter(&tImage);
    for (int i = 0; i < 100; ++i) {
        const QString sText = QString::number(1000000 + i);
        tDelegate.DrawText(tPainter, QRect(0, 0, i % 2 == 0 ? 100 : 20, 20), Qt::AlignRight, sText);
    }
    QCOMPARE(tDelegate.m_tWhole.Size(), qsizetype{100});
    QCOMPARE(tDelegate.m_tCut.Size(), qsizetype{50});
    for (int i = 0; i < 2 * toolkit::CellDelegate::PaintingsToGeneration; ++i) {
        tDelegate.BeginPainting();
        tDelegate.DrawText(tPainter, QRect(0, 0, 100, 20), Qt::AlignRight, QStringLiteral("4442.6"));
    }
    QCOMPARE(tDelegate.m_tWhole.Size(), qsizetype{2});  // the same text, in both generations
    QCOMPARE(tDelegate.m_tCut.Size(), qsizetype{0});
}

QTEST_MAIN(CellDelegateTest)
#include "CellDelegateTest.moc"
