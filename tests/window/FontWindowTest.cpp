// The window in other fonts and styles: nothing is cut, and a change while it runs gives what a window started in that
// font would have.
#include <QApplication>
#include <QHeaderView>
#include <QStyleFactory>
#include <QTest>

#include "platform/toolkit/Latin1.h"
#include "tests/support/PrintString.h"
#include "tests/window/Bench.h"

using support::AnyReport;
using support::ShownWindow;
using support::TestWindow;
using support::World;

namespace {

// Another font for as long as this lives.
class OtherFont {
public:
    explicit OtherFont(double dPoints) {
        QFont tFont = m_tUsual;
        tFont.setPointSizeF(dPoints);
        QApplication::setFont(tFont);
    }
    ~OtherFont() { QApplication::setFont(m_tUsual); }
    OtherFont(const OtherFont&) = delete;
    OtherFont& operator=(const OtherFont&) = delete;

private:
    QFont m_tUsual = QApplication::font();
};

void AddFonts() {
    QTest::addColumn<double>("points");
    QTest::newRow("9 pt") << 9.0;
    QTest::newRow("12.5 pt") << 12.5;
    QTest::newRow("20 pt") << 20.0;
}

// A change of font is told in one turn of the event loop and laid out in the next.
void Settle() {
    for (int i = 0; i < 4; ++i) QCoreApplication::processEvents();
}

// The first and the last column of a field that carry ink of its text.
std::pair<int, int> InkedColumns(QLineEdit& txt) {
    const QString sText = txt.text();
    const QImage tWith = txt.grab().toImage();
    const QSignalBlocker tBlocker(txt);
    txt.setText(QString());
    const QImage tWithout = txt.grab().toImage();
    txt.setText(sText);
    int iFirst = tWith.width();
    int iLast = -1;
    for (int iX = 0; iX < tWith.width(); ++iX) {
        for (int iY = 0; iY < tWith.height(); ++iY) {
            if (tWith.pixel(iX, iY) == tWithout.pixel(iX, iY)) continue;
            iFirst = std::min(iFirst, iX);
            iLast = std::max(iLast, iX);
        }
    }
    return {iFirst, iLast};
}

// A text shows whole when it has as much ink as in a field with room for it five times.
void ShowsWhole(QLineEdit& txt, const QString& sText) {
    const QSignalBlocker tBlocker(txt);
    txt.setText(sText);
    txt.setCursorPosition(0);
    const auto [iFirst, iLast] = InkedColumns(txt);
    const QRect tPlace = txt.geometry();
    txt.resize(5 * tPlace.width(), tPlace.height());
    txt.setCursorPosition(0);
    const auto [iFreeFirst, iFreeLast] = InkedColumns(txt);
    txt.setGeometry(tPlace);
    QVERIFY2(iFreeLast > iFreeFirst, qPrintable(txt.objectName()));
    QCOMPARE(iLast - iFirst, iFreeLast - iFreeFirst);
}

QStringList Places(const std::map<std::string, ui::Rect>& tRects) {
    QStringList sPlaces;
    for (const auto& [sName, t] : tRects) {
        sPlaces << QStringLiteral("%1 %2 %3 %4 %5")
                       .arg(QString::fromStdString(sName))
                       .arg(t.dLeft)
                       .arg(t.dTop)
                       .arg(t.dWidth)
                       .arg(t.dHeight);
    }
    return sPlaces;
}

QList<int> ColumnWidths(toolkit::Grid& grd) {
    grd.Synchronize();
    QList<int> iWidths;
    for (int i = 0; i < grd.model()->columnCount(); ++i) iWidths << grd.ColWidth(i);
    return iWidths;
}

// Compares what two windows show of each tab, pixel by pixel.
void LookTheSame(TestWindow& t, TestWindow& tOther) {
    QCOMPARE(Places(t.DesignRects()), Places(tOther.DesignRects()));
    // A status bar that has been shown may take a pixel more than one that has not.
    const QSize tLeast = t.minimumSize() - tOther.minimumSize();
    QVERIFY2(std::abs(tLeast.width()) <= 1 && std::abs(tLeast.height()) <= 1, qPrintable(QDebug::toString(tLeast)));
    for (TestWindow* p : {&t, &tOther}) {
        p->resize(t.minimumSize().expandedTo(tOther.minimumSize()) + QSize(200, 100));
        if (p->focusWidget() != nullptr) p->focusWidget()->clearFocus();
    }
    for (int iTab = 0; iTab < t.SSTab.Count(); ++iTab) {
        for (TestWindow* p : {&t, &tOther}) {
            p->SSTab.SetTab(iTab);
            QCoreApplication::processEvents();
            p->Synchronize();
        }
        QVERIFY2(t.Client.grab().toImage() == tOther.Client.grab().toImage(), qPrintable(t.SSTab.Bar().tabText(iTab)));
    }
}

}  // namespace

class FontWindowTest : public QObject {
    Q_OBJECT

private slots:
    void fieldsShowTheirTextsWhole_data();
    void fieldsShowTheirTextsWhole();
    void listsOfChoicesShowTheirEntriesWhole_data();
    void listsOfChoicesShowTheirEntriesWhole();
    void diagramCaptionsFitTheirBoxes_data();
    void diagramCaptionsFitTheirBoxes();
    void labelsAndBoxesShowTheirCaptionsWhole_data();
    void labelsAndBoxesShowTheirCaptionsWhole();
    void changedFontLaysEverythingOutAnew_data();
    void changedFontLaysEverythingOutAnew();
    void changedFontFillsTheShowingTab();
    void changedFontOfTheWindowCountsToo();
    void changedFontKeepsWhatIsShown();
    void changedStyleLaysEverythingOutAnew();
    void logsAreInTheFixedFontOfTheSameSize_data();
    void logsAreInTheFixedFontOfTheSameSize();
};

void FontWindowTest::fieldsShowTheirTextsWhole_data() { AddFonts(); }

void FontWindowTest::fieldsShowTheirTextsWhole() {
    QFETCH(double, points);
    const OtherFont tFont(points);
    ShownWindow t;
    const QString sLatitude = toolkit::FromLatin1(
        "48\xB0"
        "08.08'N");
    const QString sLongitude = toolkit::FromLatin1(
        "048\xB0"
        "08.08'W");
    const QString sSettings = QStringLiteral("38400,n,8,1.5");
    const QString sPort = QStringLiteral("/dev/ttyUSB0");
    ShowsWhole(t.txtGpsLat, sLatitude);
    ShowsWhole(t.txtGpsLon, sLongitude);
    for (toolkit::TextBox* p : {&t.txtCommSettings(0), &t.txtCommSettings(1), &t.txtOutputSettings}) {
        ShowsWhole(*p, sSettings);
    }
    ShowsWhole(t.txtCommPort(0), sPort);
    ShowsWhole(t.txtCommPort(1), sPort);
    ShowsWhole(t.txtOutputPort, sPort);
    for (toolkit::TextBox* p : {&t.txtTimingRateTx, &t.txtTimingRateRc, &t.txtTimingTimeSpan}) {
        ShowsWhole(*p, QStringLiteral("43200"));
    }
    ShowsWhole(t.txtRxNasaChannel, QStringLiteral("S"));
    ShowsWhole(t.txtRxNasaInterval, QStringLiteral("255"));
}

void FontWindowTest::listsOfChoicesShowTheirEntriesWhole_data() { AddFonts(); }

void FontWindowTest::listsOfChoicesShowTheirEntriesWhole() {
    QFETCH(double, points);
    const OtherFont tFont(points);
    ShownWindow t;
    for (const QComboBox* p :
         {static_cast<QComboBox*>(&t.cmbTargetDetail), static_cast<QComboBox*>(&t.cmbTargetSort)}) {
        // That would give itself another height than its row's, a while later.
        QVERIFY(p->sizeAdjustPolicy() != QComboBox::AdjustToContents);
        QStyleOptionComboBox tOption;
        tOption.initFrom(p);
        const QRect tText = p->style()->subControlRect(QStyle::CC_ComboBox, &tOption, QStyle::SC_ComboBoxEditField, p);
        for (int i = 0; i < p->count(); ++i) {
            QVERIFY2(p->fontMetrics().horizontalAdvance(p->itemText(i)) <= tText.width(), qPrintable(p->itemText(i)));
        }
    }
    ShowsWhole(*t.cmbTargetTarget.lineEdit(), QStringLiteral("888888888"));
}

void FontWindowTest::diagramCaptionsFitTheirBoxes_data() { AddFonts(); }

void FontWindowTest::diagramCaptionsFitTheirBoxes() {
    QFETCH(double, points);
    const OtherFont tFont(points);
    ShownWindow t;
    const auto pCaptions = t.pctDiagram.findChildren<QLabel*>();
    QCOMPARE(pCaptions.size(), 14);
    for (const QLabel* p : pCaptions) {
        const QSize tNeeded = p->fontMetrics().size(Qt::TextSingleLine, p->text());
        // Not even at the border.
        QVERIFY2(tNeeded.width() + 8 <= p->width() && tNeeded.height() + 8 <= p->height(), qPrintable(p->text()));
        QVERIFY(t.pctDiagram.rect().contains(p->geometry()));
        for (const QLabel* pOther : pCaptions) QVERIFY(p == pOther || !p->geometry().intersects(pOther->geometry()));
    }
}

void FontWindowTest::labelsAndBoxesShowTheirCaptionsWhole_data() { AddFonts(); }

void FontWindowTest::labelsAndBoxesShowTheirCaptionsWhole() {
    QFETCH(double, points);
    const OtherFont tFont(points);
    ShownWindow t;
    t.resize(t.minimumSize());
    for (int iTab = 0; iTab < t.SSTab.Count(); ++iTab) {
        t.SSTab.SetTab(iTab);
        QCoreApplication::processEvents();
        for (const QLabel* p : t.Page(iTab).findChildren<QLabel*>()) {
            if (!p->isVisible()) continue;
            const QSize tNeeded = p->wordWrap() ? QSize(0, p->heightForWidth(p->width())) : p->sizeHint();
            QVERIFY2(tNeeded.width() <= p->width() && tNeeded.height() <= p->height(), qPrintable(p->text()));
        }
        for (const QAbstractButton* p : t.Page(iTab).findChildren<QAbstractButton*>()) {
            if (!p->isVisible() || p->text().isEmpty()) continue;
            QVERIFY2(p->sizeHint().width() <= p->width() && p->sizeHint().height() <= p->height(),
                     qPrintable(p->text()));
        }
    }
}

void FontWindowTest::changedFontLaysEverythingOutAnew_data() { AddFonts(); }

void FontWindowTest::changedFontLaysEverythingOutAnew() {
    QFETCH(double, points);
    ShownWindow t;
    const QStringList sUsual = Places(t.DesignRects());
    {
        const OtherFont tFont(points);
        Settle();
        World tOtherWorld;
        TestWindow tFresh(tOtherWorld);
        tFresh.LoadAndShow();
        LookTheSame(t, tFresh);
        for (const auto& [pGrid, pOther] :
             {std::pair{&t.grdTargetData, &tFresh.grdTargetData}, std::pair{&t.grdMessageData, &tFresh.grdMessageData},
              std::pair{&t.grdSpecData, &tFresh.grdSpecData}}) {
            QCOMPARE(ColumnWidths(*pGrid), ColumnWidths(*pOther));
        }
    }
    Settle();
    QCOMPARE(Places(t.DesignRects()), sUsual);
}

void FontWindowTest::changedFontFillsTheShowingTab() {
    ShownWindow t(ui::TabTargets);
    t.resize(1600, 1000);
    QCoreApplication::processEvents();
    const OtherFont tFont(QApplication::font().pointSizeF() + 1);
    Settle();
    QCOMPARE(t.size(), QSize(1600, 1000));
    const QRect tTable = t.grdTargetData.geometry();
    QVERIFY(tTable.width() > 1500);
    t.FormLayout();
    QCOMPARE(tTable, t.grdTargetData.geometry());
}

void FontWindowTest::changedFontOfTheWindowCountsToo() {
    ShownWindow t;
    const int iWidth = t.txtGpsLon.width();
    QFont tFont = t.font();
    tFont.setPointSizeF(2 * tFont.pointSizeF());
    t.setFont(tFont);
    Settle();
    QVERIFY(t.txtGpsLon.width() > iWidth + iWidth / 2);
    QVERIFY(t.lstCommData(0).font().pointSizeF() == tFont.pointSizeF());
    ShowsWhole(t.txtGpsLon, toolkit::FromLatin1("048\xB0"
                                                "08.08'W"));
}

void FontWindowTest::changedFontKeepsWhatIsShown() {
    ShownWindow t;
    t.cmbTargetDetail.SetText("All");
    t.StartBoth();
    t.FeedLine(0, AnyReport);
    const auto sCell = t.Cell(t.grdTargetData, 1, 1);
    const auto sCount = t.Cell(t.grdMessageData, 34, 1);
    const OtherFont tFont(20);
    Settle();
    t.Synchronize();
    QVERIFY(!sCell.empty());
    QCOMPARE(t.Cell(t.grdTargetData, 1, 1), sCell);
    QCOMPARE(t.Cell(t.grdMessageData, 34, 1), sCount);
    QCOMPARE(t.Lines(t.lstCommData(0)).size(), std::size_t{1});
    for (int iCol = 1; iCol < targets::TargetColumnCount; ++iCol) QVERIFY(!t.grdTargetData.isColumnHidden(iCol));
    const int iMmsi = t.grdTargetData.fontMetrics().horizontalAdvance(QStringLiteral("------MMSI-----"));
    QCOMPARE(t.grdTargetData.columnWidth(1), iMmsi);
}

void FontWindowTest::changedStyleLaysEverythingOutAnew() {
    ShownWindow t;
    const QString sUsual = QApplication::style()->name();
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Windows")));
    Settle();
    {
        World tOtherWorld;
        TestWindow tFresh(tOtherWorld);
        tFresh.LoadAndShow();
        LookTheSame(t, tFresh);
    }
    QApplication::setStyle(QStyleFactory::create(sUsual));
}

void FontWindowTest::logsAreInTheFixedFontOfTheSameSize_data() { AddFonts(); }

void FontWindowTest::logsAreInTheFixedFontOfTheSameSize() {
    QFETCH(double, points);
    const OtherFont tFont(points);
    ShownWindow t;
    for (const toolkit::LogList* p : {&t.lstCommData(0), &t.lstRxData, &t.lstAisData, &t.lstGpsData}) {
        QCOMPARE(p->font().pointSizeF(), points);
        QCOMPARE(p->fontMetrics().horizontalAdvance(QLatin1Char('i')),
                 p->fontMetrics().horizontalAdvance(QLatin1Char('W')));
    }
}

QTEST_MAIN(FontWindowTest)
#include "FontWindowTest.moc"
