// How a grid is painted: its rows look as in a stock table view; at a beat the rows are painted that differ from what
// stands there, once, and the screen shows what a whole painting would.
#include <QAbstractItemModelTester>
#include <QBackingStore>
#include <QHeaderView>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <functional>
#include <memory>
#include <random>

#include "platform/toolkit/CellDelegate.h"
#include "platform/toolkit/Grid.h"

using toolkit::Grid;

namespace {

constexpr int Rows = 40;
constexpr int KeyColumn = 2;

// Rows named r1, r2 ... with their number as key.
std::unique_ptr<Grid> MakeGrid() {
    auto p = std::make_unique<Grid>();
    p->resize(400, 300);
    p->Cells.SetCols(3);
    p->Cells.SetRows(Rows + 1);
    for (int i = 0; i < 3; ++i) {
        p->Cells.SetText(0, i, "Column", runtime::AlignCentre);
        p->SetColumn(i, "Column", true, 90);
    }
    for (int i = 1; i <= Rows; ++i) {
        p->Cells.SetText(i, 0, "r" + std::to_string(i), runtime::AlignLeft);
        p->Cells.SetText(i, 1, "x", runtime::AlignCentre);
        p->Cells.SetInteger(i, KeyColumn, i);
    }
    p->show();
    p->Synchronize();
    QCoreApplication::processEvents();
    return p;
}

void SortByKey(Grid& t) {
    static constexpr runtime::SortKey Keys[] = {{KeyColumn, 1}};
    t.Cells.Sort(Keys, [&t](int iRow1, int iRow2) {
        const double d = t.Cells.Number(iRow1, KeyColumn) - t.Cells.Number(iRow2, KeyColumn);
        return d < 0 ? -1 : static_cast<int>(d > 0);
    });
}

// As a message does to a full table: one row goes, another comes, all are sorted.
void Replace(Grid& t, int iRow, int iKey) {
    t.Cells.RemoveRow(iRow);
    const int iNew = t.Cells.Rows();
    t.Cells.SetRows(iNew + 1);
    t.Cells.SetText(iNew, 0, "new");
    t.Cells.SetInteger(iNew, KeyColumn, iKey);
    SortByKey(t);
}

// The same rows in Qt's own table view, which fills the ground and draws the lines; only its texts are laid out by
// ours.
class StockView : public QTableView {
public:
    explicit StockView(Grid& t) {
        setAttribute(Qt::WA_DontShowOnScreen);
        setModel(t.model());
        setSelectionModel(t.selectionModel());
        setItemDelegate(&m_tDelegate);
        setAlternatingRowColors(true);
        setVerticalScrollMode(ScrollPerPixel);
        setHorizontalScrollMode(ScrollPerPixel);
        setFont(t.font());
        setPalette(t.palette());
        verticalHeader()->hide();
        verticalHeader()->setMinimumSectionSize(1);
        verticalHeader()->setDefaultSectionSize(t.verticalHeader()->defaultSectionSize());
        for (int i = 0; i < t.model()->rowCount(); ++i) setRowHidden(i, t.isRowHidden(i));
        for (int i = 0; i < t.model()->columnCount(); ++i) {
            setColumnWidth(i, t.columnWidth(i));
            setColumnHidden(i, t.isColumnHidden(i));
        }
        resize(t.size());
        show();
        QCoreApplication::processEvents();
        verticalScrollBar()->setValue(t.verticalScrollBar()->value());
        horizontalScrollBar()->setValue(t.horizontalScrollBar()->value());
    }

private:
    struct Delegate : QStyledItemDelegate {
        toolkit::CellDelegate tTexts;
        void paint(QPainter* p, const QStyleOptionViewItem& t, const QModelIndex& tIndex) const override {
            const bool bSelected = (t.state & QStyle::State_Selected) != 0;
            const auto eGroup = (t.state & QStyle::State_Active) != 0 ? QPalette::Active : QPalette::Inactive;
            if (bSelected) p->fillRect(t.rect, t.palette.brush(eGroup, QPalette::Highlight));
            p->setPen(t.palette.color(eGroup, bSelected ? QPalette::HighlightedText : QPalette::Text));
            const auto eAlignment = tIndex.data(Qt::TextAlignmentRole).value<Qt::Alignment>();
            tTexts.DrawText(*p, t.rect, eAlignment, tIndex.data().toString());
        }
    };
    Delegate m_tDelegate;
};

// Notes what of the rows is painted from now on.
class Watch : public QObject {
public:
    explicit Watch(const Grid& t) { t.viewport()->installEventFilter(this); }
    bool eventFilter(QObject* pObject, QEvent* pEvent) override {
        if (pEvent->type() == QEvent::Paint) {
            ++iPaintings;
            tPainted += static_cast<QPaintEvent*>(pEvent)->region();
        }
        return QObject::eventFilter(pObject, pEvent);
    }
    int iPaintings = 0;
    QRegion tPainted;
};

void Beat(Grid& t) {
    t.Synchronize();
    for (int i = 0; i < 5; ++i) QCoreApplication::processEvents();
}

QRegion RowsOf(const Grid& t, int iFirst, int iLast) {
    const int iTop = t.rowViewportPosition(iFirst - 1);
    const QRect tRows(0, iTop, t.horizontalHeader()->length(), t.rowViewportPosition(iLast) - iTop);
    return tRows & t.viewport()->rect();  // the ground right of the cells stays
}

// The rows in a picture of the whole grid, in the picture's own pixels.
QImage RowsIn(const Grid& t, const QImage& tPicture) {
    const double d = t.devicePixelRatioF();
    const QRectF tPlace(t.viewport()->geometry());
    const QPoint tTopLeft(qCeil(tPlace.left() * d), qCeil(tPlace.top() * d));
    const QPoint tEnd(qFloor(tPlace.right() * d), qFloor(tPlace.bottom() * d));
    QImage tRows = tPicture.copy(QRect(tTopLeft, tEnd - QPoint(1, 1))).convertToFormat(QImage::Format_RGB32);
    tRows.setDevicePixelRatio(1);
    return tRows;
}

// What has been painted for the screen so far.
QImage Screen(const Grid& t) {
    const auto* pPicture = dynamic_cast<const QImage*>(t.backingStore()->paintDevice());
    return pPicture ? RowsIn(t, *pPicture) : QImage();
}

// The same painted wholly and anew.
QImage Whole(Grid& t) { return RowsIn(t, t.grab().toImage()); }

QString Name(const QModelIndex& t) { return t.siblingAtColumn(0).data().toString(); }

}  // namespace

class GridPaintTest : public QObject {
    Q_OBJECT
private slots:
    void rowsLookAsInAStockView_data();
    void rowsLookAsInAStockView();
    void aCellPaintsItsRow();
    void nothingIsPaintedWhereNothingChanged();
    void movedRowsArePaintedWhereTheyMoved();
    void rowsOutOfSightAreNotPainted();
    void aMessagePaintsOnce();
    void cursorAndSelectionFollowWithoutALayout();
    void selectedRangesArePulledApart();
    void selectionEndsWithItsRow();
    void screenShowsWhatAWholePaintingWould();
};

void GridPaintTest::rowsLookAsInAStockView_data() {
    QTest::addColumn<std::function<void(Grid&)>>("tDo");
    const auto tRow = [](const char* sName, std::function<void(Grid&)> tDo) { QTest::newRow(sName) << tDo; };
    tRow("plain", [](Grid&) {});
    tRow("selected rows", [](Grid& t) {
        t.selectRow(2);
        t.selectionModel()->select(t.model()->index(5, 0), QItemSelectionModel::Select | QItemSelectionModel::Rows);
    });
    tRow("hidden rows and columns", [](Grid& t) {
        for (const int iRow : {1, 4, 5, 9}) t.Cells.SetHidden(iRow, true);
        t.SetColumn(1, "Column", false, 90);
    });
    tRow("scrolled down", [](Grid& t) { t.verticalScrollBar()->setValue(101); });
    tRow("scrolled to the end", [](Grid& t) { t.verticalScrollBar()->setValue(t.verticalScrollBar()->maximum()); });
    tRow("scrolled to the right", [](Grid& t) {
        t.resize(150, 300);
        QCoreApplication::processEvents();
        t.horizontalScrollBar()->setValue(35);
    });
    tRow("few rows", [](Grid& t) { t.Cells.SetRows(4); });
    tRow("no rows", [](Grid& t) { t.Cells.SetRows(1); });
    tRow("other font", [](Grid& t) { t.setFont(QFont(t.font().family(), t.font().pointSize() * 2)); });
    tRow("other colours", [](Grid& t) {
        QPalette tDark(QColor(40, 60, 40));
        tDark.setColor(QPalette::AlternateBase, Qt::darkBlue);
        tDark.setColor(QPalette::Text, Qt::yellow);
        t.setPalette(tDark);
        t.selectRow(1);
    });
}

void GridPaintTest::rowsLookAsInAStockView() {
    QFETCH(std::function<void(Grid&)>, tDo);
    const auto p = MakeGrid();
    tDo(*p);
    Beat(*p);
    StockView tStock(*p);
    QCOMPARE(p->viewport()->grab().toImage(), tStock.viewport()->grab().toImage());
    const QRect tPiece(10, 40, 100, 33);
    QCOMPARE(p->viewport()->grab(tPiece).toImage(), tStock.viewport()->grab(tPiece).toImage());
}

void GridPaintTest::aCellPaintsItsRow() {
    const auto p = MakeGrid();
    Watch tWatch(*p);
    p->Cells.SetText(3, 1, "y");
    p->Cells.SetText(6, 1, "x", runtime::AlignRight);
    p->Cells.SetText(7, 1, "x", runtime::AlignRight);
    Beat(*p);
    QCOMPARE(tWatch.tPainted, RowsOf(*p, 3, 3) + RowsOf(*p, 6, 7));
}

void GridPaintTest::nothingIsPaintedWhereNothingChanged() {
    const auto p = MakeGrid();
    Watch tWatch(*p);
    SortByKey(*p);
    p->Cells.SetHidden(2, false);
    Beat(*p);
    QCOMPARE(tWatch.iPaintings, 0);
}

void GridPaintTest::movedRowsArePaintedWhereTheyMoved() {
    const auto p = MakeGrid();
    Watch tWatch(*p);
    Replace(*p, 3, 6);
    Beat(*p);
    QCOMPARE(tWatch.tPainted, RowsOf(*p, 3, 6));
    QCOMPARE(Name(p->model()->index(2, 0)), QStringLiteral("r4"));
    QCOMPARE(Name(p->model()->index(5, 0)), QStringLiteral("new"));
}

void GridPaintTest::rowsOutOfSightAreNotPainted() {
    const auto p = MakeGrid();
    Watch tWatch(*p);
    Replace(*p, 33, 36);
    Beat(*p);
    QCOMPARE(tWatch.iPaintings, 0);
    p->verticalScrollBar()->setValue(p->verticalScrollBar()->maximum());
    QCoreApplication::processEvents();
    QCOMPARE(Screen(*p), Whole(*p));
}

void GridPaintTest::aMessagePaintsOnce() {
    const auto p = MakeGrid();
    Watch tWatch(*p);
    for (int i = 0; i < 10; ++i) Replace(*p, 1 + i, 12 - i);
    Beat(*p);
    QCOMPARE(tWatch.iPaintings, 1);
}

void GridPaintTest::cursorAndSelectionFollowWithoutALayout() {
    const auto p = MakeGrid();
    p->selectRow(4);
    p->selectionModel()->select(p->model()->index(7, 0), QItemSelectionModel::Select | QItemSelectionModel::Rows);
    Beat(*p);
    QSignalSpy tLayouts(p->model(), &QAbstractItemModel::layoutChanged);
    Watch tWatch(*p);
    Replace(*p, 2, 6);
    Beat(*p);
    QCOMPARE(tLayouts.count(), 0);
    QCOMPARE(tWatch.tPainted, RowsOf(*p, 2, 6));
    QCOMPARE(Name(p->currentIndex()), QStringLiteral("r5"));
    const QModelIndexList tSelected = p->selectionModel()->selectedRows(0);
    QCOMPARE(tSelected.size(), 2);
    QCOMPARE(Name(tSelected[0]), QStringLiteral("r5"));
    QCOMPARE(tSelected[0].row(), 3);
    QCOMPARE(Name(tSelected[1]), QStringLiteral("r8"));
}

void GridPaintTest::selectedRangesArePulledApart() {
    const auto p = MakeGrid();
    const QItemSelection tRange(p->model()->index(2, 0), p->model()->index(4, 2));  // r3 to r5
    p->selectionModel()->select(tRange, QItemSelectionModel::ClearAndSelect);
    p->Cells.SetInteger(4, KeyColumn, 20);
    SortByKey(*p);
    Beat(*p);
    QStringList sNames;
    for (const QModelIndex& t : p->selectionModel()->selectedRows(0)) sNames << Name(t);
    sNames.sort();
    QCOMPARE(sNames, QStringList({QStringLiteral("r3"), QStringLiteral("r4"), QStringLiteral("r5")}));
}

void GridPaintTest::selectionEndsWithItsRow() {
    const auto p = MakeGrid();
    p->selectRow(4);
    Replace(*p, 5, 5);
    Beat(*p);
    QVERIFY(!p->selectionModel()->hasSelection());
}

void GridPaintTest::screenShowsWhatAWholePaintingWould() {
    const auto p = MakeGrid();
    const QAbstractItemModelTester tTester(p->model(), QAbstractItemModelTester::FailureReportingMode::Fatal);
    std::mt19937 tRandom(5);
    const auto Any = [&tRandom](int iFrom, int iTo) {
        return iFrom + static_cast<int>(tRandom() % static_cast<unsigned>(iTo - iFrom + 1));
    };
    const auto Scroll = [&Any](QScrollBar* pBar) { pBar->setValue(Any(0, pBar->maximum())); };
    for (int i = 0; i < 300; ++i) {
        for (int iSteps = Any(0, 4); iSteps > 0; --iSteps) Replace(*p, Any(1, Rows), Any(1, Rows));
        if (Any(0, 3) == 0) p->Cells.SetText(Any(1, Rows), Any(0, 1), std::to_string(i));
        if (Any(0, 9) == 0) p->selectRow(Any(0, Rows - 1));
        if (Any(0, 9) == 0) p->Cells.SetHidden(Any(1, Rows), Any(0, 1) == 0);
        if (Any(0, 9) == 0) Scroll(p->verticalScrollBar());
        if (Any(0, 9) == 0) Scroll(p->horizontalScrollBar());
        if (Any(0, 9) == 0) p->setColumnWidth(Any(0, 2), Any(1, 200));
        if (Any(0, 9) == 0) p->resize(Any(150, 420), Any(100, 420));
        if (Any(0, 9) == 0) p->viewport()->update(Any(0, 200), Any(0, 200), Any(1, 100), Any(1, 100));
        if (Any(0, 19) == 0) p->selectAll();
        if (Any(0, 19) == 0) p->clearSelection();
        Beat(*p);
        QCOMPARE(Screen(*p), Whole(*p));
    }
}

QTEST_MAIN(GridPaintTest)
#include "GridPaintTest.moc"
