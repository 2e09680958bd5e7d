// How the lines of the logs and the rows of the tables look, by their pixels: marked and selected ones have their
// grounds, the first is whole, all are as high as designed, cells stand where they are aligned and keep to themselves.
#include <QHeaderView>
#include <QScrollBar>
#include <QTest>

#include "tests/window/Look.h"
#include "tests/window/Shown.h"

using namespace support;

namespace {

constexpr int UsualRow = 18;      // pixels of a table's row: 14 of the usual font, and 4
constexpr int CellPadding = 2;    // between a cell's text and its edge
constexpr int FreeOfLetters = 2;  // that the first and last letter may have at its edge

constexpr char NotDecoded[] = "$GPZDA,120000,15,05,2011,00,00";
constexpr char Notice[] = "<<Checksum Error>>";

// Of a log's line, in pixels: its font, which is the desktop's fixed one, and 1.
int LineHeight(const toolkit::LogList& lst) { return lst.fontMetrics().height() + 1; }

// A table of numbers on all columns, the widths as designed.
struct Table : Look {
    Table() {
        t.cmbTargetDetail.SetText("All");
        t.txtGpsLat.SetText("50 00.00 N");
        t.txtGpsLon.SetText("001 00.00 W");
        t.StartBoth();
        t.TargetGridSetup(true);
        const AisReport tReport{
            .lMmsi = 244123456, .lRateOfTurn = 30, .lSpeed = 123, .lLongitude = -700000, .lLatitude = 600000 * 51};
        t.FeedLine(0, AisSentence(AisClassA(1, tReport)));
        t.FeedLine(0, "$PNMLS,21,9,3");
        t.Advance(500);
        t.FeedLine(0, AisSentence(AisClassA(1, tReport)));
        Show(ui::TabTargets);
    }
    QRect Cell(int iRow, int iCol) const {
        return t.grdTargetData.visualRect(t.grdTargetData.model()->index(iRow, iCol));
    }
};

// A log of a decoded line, one that is not, and a notice.
struct ThreeLines : Look {
    toolkit::LogList& lst = t.lstCommData(0);
    ThreeLines() {
        t.StartBoth();
        t.FeedLine(0, AnyReport);
        t.FeedLine(0, NotDecoded);
        t.FeedLine(0, std::string(NotDecoded) + "*00");
        Settle();
    }
    QImage Line(int i) {
        return Seen(QRect(PlaceIn(t, *lst.viewport()).topLeft() + lst.visualRect(Index(i)).topLeft(), LineSize()));
    }
    QSize LineSize() { return {lst.viewport()->width(), lst.visualRect(Index(0)).height()}; }
    QModelIndex Index(int i) { return lst.model()->index(i, 0); }
    QColor Colour(QPalette::ColorRole eRole) { return lst.palette().color(QPalette::Active, eRole); }
    // Its end, where no text stands.
    QColor Ground(int i) { return Line(i).pixelColor(LineSize().width() - 3, LineSize().height() / 2); }
    bool Shows(int i, const char* sText, bool bBold, QPalette::ColorRole eInk) {
        QFont tFont = lst.font();
        tFont.setBold(bBold);
        return FindText(Line(i), QString::fromLatin1(sText), tFont, Colour(eInk)).has_value();
    }
    // Bold letters have more ink: whether a line's is nearer to theirs.
    bool IsBold(int i, const char* sText) {
        QFont tBold = lst.font();
        tBold.setBold(true);
        const auto iShown = Ink(Line(i), Colour(QPalette::Text), Colour(QPalette::Base)).Letters();
        const auto iPlain = InkOf(QString::fromLatin1(sText), lst.font(), 0).Letters();
        const auto iBold = InkOf(QString::fromLatin1(sText), tBold, 0).Letters();
        return 2 * iShown > iPlain + iBold;
    }
};

}  // namespace

class RowsWindowTest : public QObject {
    Q_OBJECT
private slots:
    void markedLinesAreTintedAndNoticesBold();
    void selectedLineAloneIsSelected();
    void marksAreDrawnInTheLogsThatHaveThem();
    void firstLineOfEveryLogIsWhole();
    void firstRowsOfEveryTableAreWhole();
    void rowsAreAsHighAsDesigned();
    void selectedRowAloneIsSelected();
    void cellsStandWhereTheyAreAligned();
    void longTextsStayInTheirCells();
};

void RowsWindowTest::markedLinesAreTintedAndNoticesBold() {
    ThreeLines f;
    const QStringList sLog = Log(f.t, f.lst);
    QCOMPARE(sLog.size(), 4);
    QCOMPARE(sLog.last(), QString::fromLatin1(Notice));
    const QColor tBase = f.Colour(QPalette::Base);
    const QColor tHighlight = f.Colour(QPalette::Highlight);
    // The ground of a marked line lies between the two, nearer to the plain one, all along the line.
    const QColor tTint = f.Ground(0);
    const auto Away = [](const QColor& a, const QColor& b) {
        return std::abs(a.red() - b.red()) + std::abs(a.green() - b.green()) + std::abs(a.blue() - b.blue());
    };
    QVERIFY(Away(tTint, tBase) > 30);
    QVERIFY(Away(tTint, tBase) < Away(tTint, tHighlight));
    QCOMPARE(GroundOf(f.Line(0)), tTint);
    for (int i = 1; i < 4; ++i) QCOMPARE(GroundOf(f.Line(i)), tBase);
    // In front of it a bar of four pixels, of none else.
    const QImage tMarked = f.Line(0);
    for (int y = 0; y < tMarked.height(); ++y) {
        for (int x = 0; x < 8; ++x) QCOMPARE(tMarked.pixelColor(x, y), x < 4 ? tHighlight : tTint);
    }
    for (int i = 1; i < 4; ++i) QCOMPARE(f.Line(i).pixelColor(1, 7), tBase);
    QVERIFY(f.Shows(0, AnyReport, false, QPalette::Text));
    QVERIFY(f.Shows(1, NotDecoded, false, QPalette::Text));
    QVERIFY(f.Shows(3, Notice, true, QPalette::Text));
    QVERIFY(f.IsBold(3, Notice));
    QVERIFY(!f.IsBold(1, NotDecoded));
}

void RowsWindowTest::selectedLineAloneIsSelected() {
    ThreeLines f;
    const QColor tHighlight = f.Colour(QPalette::Highlight);
    for (int i = 0; i < 4; ++i) QVERIFY(GroundOf(f.Line(i)) != tHighlight);  // none, before it is clicked
    const QColor tTint = f.Ground(0);
    QTest::mouseClick(f.lst.viewport(), Qt::LeftButton, {}, f.lst.visualRect(f.Index(1)).center());
    f.t.SSTab.Bar().setFocus();
    f.Settle();
    QCOMPARE(GroundOf(f.Line(1)), tHighlight);
    QCOMPARE(f.Ground(1), tHighlight);
    QVERIFY(f.Shows(1, NotDecoded, false, QPalette::HighlightedText));
    QCOMPARE(f.Ground(0), tTint);
    for (int i = 2; i < 4; ++i) QCOMPARE(GroundOf(f.Line(i)), f.Colour(QPalette::Base));
    // A marked one keeps its bar, which stands out from the selection.
    QTest::mouseClick(f.lst.viewport(), Qt::LeftButton, {}, f.lst.visualRect(f.Index(0)).center());
    QCOMPARE(GroundOf(f.Line(0)), tHighlight);
    QCOMPARE(f.Line(0).pixelColor(1, 7), f.Colour(QPalette::HighlightedText));
    QVERIFY(f.Shows(0, AnyReport, false, QPalette::HighlightedText));
    QCOMPARE(GroundOf(f.Line(1)), f.Colour(QPalette::Base));
}

void RowsWindowTest::marksAreDrawnInTheLogsThatHaveThem() {
    Look f;
    f.t.chkCommEnabled(1).setChecked(true);
    const QColor tBase = f.t.lstAisData.palette().color(QPalette::Active, QPalette::Base);
    for (const auto& [eTab, pList, bMarks] : std::initializer_list<std::tuple<ui::Tab, toolkit::LogList*, bool>>{
             {ui::TabInput, &f.t.lstCommData(0), true},
             {ui::TabInput, &f.t.lstCommData(1), true},
             {ui::TabOutput, &f.t.lstOutputData, true},
             {ui::TabAis, &f.t.lstAisData, false},
             {ui::TabGps, &f.t.lstGpsData, false},
             {ui::TabReceiver, &f.t.lstRxData, false}}) {
        pList->Lines.Add("marked", true);
        pList->Lines.Add("not marked", false);
        f.Show(eTab);
        const QImage tLines = f.Seen(*pList->viewport());
        const auto Plain = [&](int iLine) {
            const int y = iLine * LineHeight(*pList) + LineHeight(*pList) / 2;
            return tLines.pixelColor(1, y) == tBase && tLines.pixelColor(tLines.width() - 3, y) == tBase;
        };
        QVERIFY2(Plain(0) != bMarks, qPrintable(pList->objectName()));
        QVERIFY2(Plain(1), qPrintable(pList->objectName()));
    }
}

void RowsWindowTest::firstLineOfEveryLogIsWhole() {
    Look f;
    const std::vector<std::pair<ui::Tab, toolkit::LogList*>> pLists = {
        {ui::TabInput, &f.t.lstCommData(0)}, {ui::TabInput, &f.t.lstCommData(1)}, {ui::TabReceiver, &f.t.lstRxData},
        {ui::TabAis, &f.t.lstAisData},       {ui::TabGps, &f.t.lstGpsData},       {ui::TabOutput, &f.t.lstOutputData}};
    f.t.chkCommEnabled(1).setChecked(true);
    for (const auto& [eTab, pList] : pLists) {
        for (int i = 0; i < 90; ++i) pList->Lines.Add(i == 0 ? "Qg first" : i == 89 ? "Qg last" : "Qg");
        f.Show(eTab);
        const auto Shows = [&f, pList = pList](int iLine, const char* sText) {
            const QRect tLine = pList->visualRect(pList->model()->index(iLine, 0));
            const QRect tLines = PlaceIn(f.t, *pList->viewport());
            const QRect tPlace(tLines.left(), tLines.top() + tLine.top(), tLines.width(), tLine.height());
            return tLines.contains(tPlace) && FindText(f.Seen(tPlace), QString::fromLatin1(sText), pList->font(),
                                                       pList->palette().color(QPalette::Active, QPalette::Text));
        };
        QVERIFY2(Shows(89, "Qg last"), qPrintable(pList->objectName()));
        pList->verticalScrollBar()->setValue(0);
        QCOMPARE(pList->visualRect(pList->model()->index(0, 0)).top(), 0);
        QVERIFY2(Shows(0, "Qg first"), qPrintable(pList->objectName()));
    }
}

void RowsWindowTest::firstRowsOfEveryTableAreWhole() {
    Table f;
    for (const auto& [eTab, pGrid, sFirst] : {std::tuple{ui::TabTargets, &f.t.grdTargetData, "244123456"},
                                              std::tuple{ui::TabMessages, &f.t.grdMessageData, "1=Position Scheduled"},
                                              std::tuple{ui::TabSpec, &f.t.grdSpecData, "Ship at Anchor"}}) {
        f.Show(eTab);
        const QRect tRows = PlaceIn(f.t, *pGrid->viewport());
        const QRect tNames = PlaceIn(f.t, *pGrid->horizontalHeader());
        QVERIFY(tNames.height() >= UsualRow);
        QCOMPARE(tNames.bottom() + 1, tRows.top());
        QCOMPARE(tNames.top(), PlaceIn(f.t, *pGrid).top() + pGrid->frameWidth());
        const QImage tRow = f.Seen(QRect(tRows.topLeft(), QSize(tRows.width(), UsualRow)));
        QVERIFY2(FindText(tRow, QString::fromLatin1(sFirst), pGrid->font(),
                          pGrid->palette().color(QPalette::Active, QPalette::Text)),
                 sFirst);
    }
}

// Read off the lines of a table and the texts of a log, in the usual font: DejaVu Sans at 9 points, and in the
// desktop's fixed font.
void RowsWindowTest::rowsAreAsHighAsDesigned() {
    Look f;
    QCOMPARE(f.t.grdSpecData.fontMetrics().height(), UsualRow - 4);
    f.Show(ui::TabSpec);
    const QImage tRows = f.Seen(*f.t.grdSpecData.viewport());
    const int iFree = f.t.grdSpecData.columnWidth(0) - 10;  // right of the texts of the first column
    const QRgb lLine = tRows.pixel(iFree, UsualRow - 1);
    QList<int> iLines, iExpected;
    for (int y = 0; y < tRows.height(); ++y) {
        if (tRows.pixel(iFree, y) == lLine) iLines << y;
    }
    for (int i = 1; i <= 13; ++i) iExpected << i * UsualRow - 1;
    QCOMPARE(iLines, iExpected);

    for (int i = 0; i < 20; ++i) f.t.lstAisData.Lines.Add("Qg");
    f.Show(ui::TabAis);
    const QImage tLog = f.Seen(*f.t.lstAisData.viewport());
    const QColor tInk = f.t.lstAisData.palette().color(QPalette::Active, QPalette::Text);
    for (int i = 0; i < 20; ++i) {
        const QImage tLine = tLog.copy(0, i * LineHeight(f.t.lstAisData), 60, LineHeight(f.t.lstAisData));
        QVERIFY(FindText(tLine, QStringLiteral("Qg"), f.t.lstAisData.font(), tInk));
    }
}

void RowsWindowTest::selectedRowAloneIsSelected() {
    Table f;
    f.Show(ui::TabSpec);
    toolkit::Grid& grd = f.t.grdSpecData;
    const auto Ground = [&](int iRow) {
        return GroundOf(f.Seen(QRect(PlaceIn(f.t, *grd.viewport()).topLeft() + QPoint(0, iRow * UsualRow),
                                     QSize(grd.horizontalHeader()->length(), UsualRow - 1))));
    };
    const QColor tHighlight = grd.palette().color(QPalette::Active, QPalette::Highlight);
    for (int i = 0; i < 13; ++i) QVERIFY(Ground(i) != tHighlight);
    QTest::mouseClick(grd.viewport(), Qt::LeftButton, {}, grd.visualRect(grd.model()->index(3, 1)).center());
    f.t.SSTab.Bar().setFocus();
    f.Settle();
    for (int i = 0; i < 13; ++i) QCOMPARE(Ground(i) == tHighlight, i == 3);
    // Every other row has the other ground.
    QVERIFY(Ground(0) != Ground(1));
    QCOMPARE(Ground(0), Ground(2));
    QCOMPARE(Ground(0), grd.palette().color(QPalette::Active, QPalette::Base));
}

void RowsWindowTest::cellsStandWhereTheyAreAligned() {
    Table f;
    toolkit::Grid& grd = f.t.grdTargetData;
    const QImage tRows = f.Seen(*grd.viewport());
    const QColor tInk = grd.palette().color(QPalette::Active, QPalette::Text);
    int iRight = 0;
    for (int iCol = 1; iCol < 17; ++iCol) {
        const QString sText = toolkit::FromLatin1(f.t.Cell(grd, 2, iCol));
        if (iCol == 7 || sText.isEmpty()) continue;  // cut
        const QRect tCell = f.Cell(1, iCol);
        const auto tText = FindText(tRows.copy(tCell), sText, grd.font(), tInk);
        QVERIFY2(tText, qPrintable(sText));
        const int iFree = tCell.width() - 1 - tText->right();
        const bool bRight = iCol >= 8 && iCol != 14;
        QVERIFY2((bRight ? iFree : tText->left()) <= CellPadding + FreeOfLetters, qPrintable(sText));
        QVERIFY2((bRight ? tText->left() : iFree) > CellPadding + FreeOfLetters, qPrintable(sText));
        iRight += bRight ? 1 : 0;
    }
    QCOMPARE(iRight, 8);
    f.Show(ui::TabMessages);
    toolkit::Grid& grdCounts = f.t.grdMessageData;
    const QRect tCell = grdCounts.visualRect(grdCounts.model()->index(0, 1));
    const auto tCount = FindText(f.Seen(*grdCounts.viewport()).copy(tCell), QStringLiteral("2"), grd.font(), tInk);
    QVERIFY(tCount && tCell.width() - 1 - tCount->right() <= CellPadding + FreeOfLetters);
}

void RowsWindowTest::longTextsStayInTheirCells() {
    Table f;
    toolkit::Grid& grd = f.t.grdTargetData;
    const auto Changed = [&](int iCol, runtime::Alignment eAlignment) {
        grd.Cells.SetText(2, iCol, "", eAlignment);
        f.Settle();
        const QImage tWithout = f.Seen(*grd.viewport());
        grd.Cells.SetText(2, iCol, "WWWWWWWWWWWWWWWWWWWWWWWWWWWWWW", eAlignment);
        f.Settle();
        return support::Difference(tWithout, f.Seen(*grd.viewport()));
    };
    for (const auto eAlignment : {runtime::AlignLeft, runtime::AlignCentre, runtime::AlignRight}) {
        for (int iCol = 1; iCol < 17; ++iCol) {
            const QRect tChanged = Changed(iCol, eAlignment);
            QVERIFY2(!tChanged.isEmpty() && f.Cell(1, iCol).contains(tChanged), qPrintable(QString::number(iCol)));
        }
    }
    // No room even for the dot that stands for a text there: nothing of it in the next column.
    grd.Cells.SetText(2, 8, "");
    for (const int iWidth : {1, 2}) {
        grd.setColumnWidth(7, iWidth);
        for (const auto eAlignment : {runtime::AlignLeft, runtime::AlignCentre, runtime::AlignRight}) {
            const QRect tChanged = Changed(7, eAlignment);
            QVERIFY2(f.Cell(1, 7).contains(tChanged) || tChanged.isEmpty(), qPrintable(QDebug::toString(tChanged)));
        }
    }
}

QTEST_MAIN(RowsWindowTest)
#include "RowsWindowTest.moc"
