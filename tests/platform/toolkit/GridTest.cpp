// The grid: takes over its cells on a beat, keeps the user's place, widths and selection, tells places.
#include "platform/toolkit/Grid.h"

#include <QAbstractItemModelTester>
#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <algorithm>
#include <memory>
#include <random>

#include "platform/toolkit/Scopes.h"
#include "tests/platform/toolkit/NamedGrid.h"

using namespace support;
using toolkit::Grid;

namespace {

QString Shown(const Grid& t, int iRow, int iCol) { return t.model()->index(iRow - 1, iCol).data().toString(); }

QString SelectedNames(const Grid& t) {
    QModelIndexList tRows = t.selectionModel()->selectedRows(0);
    std::ranges::sort(tRows, {}, [](const QModelIndex& i) { return i.row(); });
    QString sNames;
    for (const QModelIndex& tRow : tRows) sNames += tRow.data().toString();
    return sNames;
}

}  // namespace

class GridTest : public QObject {
    Q_OBJECT
private slots:
    void rowZeroIsTheHeader();
    void cellsShowTheirTextAndAlignment();
    void latinLettersAreShown();
    void nothingIsTakenOverBeforeTheBeat();
    void beatComesByItself();
    void unseenGridWaitsUntilItIsShown();
    void redrawOffHoldsTheViewBack();
    void hiddenRowsAndColumnsHaveNoSize();
    void columnsAreAsWideAsAsked();
    void placesFollowOneAnother();
    void placesFollowTheScrolling();
    void widthSetByHandStays();
    void otherShownColumnsBeginWithTheirWidths();
    void otherWidthOfTheProgramIsTaken();
    void enterActivatesTheRow();
    void liveRowIsWhereTheShownOneHasGone();
    void shownTextsStayWithTheirRowsBetweenBeats();
    void selectionFollowsTheRows();
    void selectionEndsWithItsRow();
    void copyTakesShownColumnsOfShownRows();
    void copyAfterATrafficRushTakesTheUsersRows();
    void scrollPlaceStays();
    void currentCellIsTheProgramsOnly();
    void modelKeepsItsPromises();
};

void GridTest::rowZeroIsTheHeader() {
    const auto p = MakeGrid(2);
    p->Synchronize();
    QCOMPARE(p->model()->rowCount(), 2);
    QCOMPARE(p->model()->columnCount(), 3);
    QCOMPARE(p->model()->headerData(1, Qt::Horizontal).toString(), QStringLiteral("Number"));
    QCOMPARE(p->model()->headerData(1, Qt::Horizontal, Qt::TextAlignmentRole).value<Qt::Alignment>(),
             Qt::Alignment(Qt::AlignCenter));
}

void GridTest::cellsShowTheirTextAndAlignment() {
    const auto p = MakeGrid(2);
    p->Synchronize();
    QCOMPARE(Shown(*p, 2, 0), QStringLiteral("b"));
    const auto tAlignment = [&p](int iCol) {
        return p->model()->index(0, iCol).data(Qt::TextAlignmentRole).value<Qt::Alignment>();
    };
    QCOMPARE(tAlignment(0), Qt::AlignLeft | Qt::AlignVCenter);
    QCOMPARE(tAlignment(1), Qt::AlignRight | Qt::AlignVCenter);
    p->Cells.SetText(1, 1, "7", runtime::AlignCentre);
    QCOMPARE(tAlignment(1), Qt::Alignment(Qt::AlignCenter));
}

void GridTest::latinLettersAreShown() {
    const auto p = MakeGrid(1);
    p->Cells.SetText(1, 0, "47\xb0 \xe9");
    p->Synchronize();
    QCOMPARE(Shown(*p, 1, 0), QStringLiteral("47\u00b0 \u00e9"));
}

void GridTest::nothingIsTakenOverBeforeTheBeat() {
    const auto p = MakeGrid(2);
    Show(*p);
    QSignalSpy tLayouts(p->model(), &QAbstractItemModel::layoutChanged);
    QSignalSpy tData(p->model(), &QAbstractItemModel::dataChanged);
    for (int i = 0; i < 1000; ++i) {
        p->Cells.SetRows(p->Cells.Rows() + 1);
        SortByKey(*p);
    }
    QCOMPARE(p->model()->rowCount(), 2);
    QCOMPARE(tLayouts.count() + tData.count(), 0);
    p->Synchronize();
    QCOMPARE(p->model()->rowCount(), 1002);
    QCOMPARE(tLayouts.count() + tData.count(), 1);
    p->Synchronize();
    QCOMPARE(tLayouts.count() + tData.count(), 1);
}

void GridTest::beatComesByItself() {
    const auto p = MakeGrid(2);
    Show(*p);
    p->Cells.SetRows(5);
    QTRY_COMPARE(p->model()->rowCount(), 4);
}

void GridTest::unseenGridWaitsUntilItIsShown() {
    const auto p = MakeGrid(2);
    QTest::qWait(150);
    QCOMPARE(p->model()->rowCount(), 0);
    p->show();
    QCOMPARE(p->model()->rowCount(), 2);
}

void GridTest::redrawOffHoldsTheViewBack() {
    const auto p = MakeGrid(2);
    Show(*p);
    {
        const toolkit::RedrawOff tRedraw(*p);
        QVERIFY(!p->Redraw());
        p->Cells.SetRows(5);
        p->Synchronize();
        QCOMPARE(p->model()->rowCount(), 2);
    }
    QVERIFY(p->Redraw());
    p->Synchronize();
    QCOMPARE(p->model()->rowCount(), 4);
}

void GridTest::hiddenRowsAndColumnsHaveNoSize() {
    const auto p = MakeGrid(3);
    p->Cells.SetHidden(2, true);
    Show(*p);
    QVERIFY(p->RowHeight(1) > 0);
    QCOMPARE(p->RowHeight(2), 0);
    QCOMPARE(p->RowHeight(3), p->RowHeight(1));
    QCOMPARE(p->ColWidth(2), 0);
    p->Cells.SetHidden(2, false);
    p->SetColumn(2, "Key", true, 70);
    p->Synchronize();
    QCOMPARE(p->RowHeight(2), p->RowHeight(1));
    QCOMPARE(p->ColWidth(2), 70);
}

void GridTest::columnsAreAsWideAsAsked() {
    const auto p = MakeGrid(1);
    p->SetColumn(0, "Name", true, p->TextWidth("--Name--"));
    p->SetColumn(1, "0", true, 1);
    Show(*p);
    QCOMPARE(p->columnWidth(0), p->fontMetrics().horizontalAdvance(QStringLiteral("--Name--")));
    QCOMPARE(p->columnWidth(1), 1);
    QCOMPARE(p->Columns()[0].sTemplate, std::string("Name"));
}

void GridTest::placesFollowOneAnother() {
    const auto p = MakeGrid(3);
    Show(*p);
    QCOMPARE(p->ColPos(1), p->ColPos(0) + p->ColWidth(0));
    for (int i = 1; i <= 3; ++i) QCOMPARE(p->RowPos(i), p->RowPos(i - 1) + p->RowHeight(i - 1));
    const QPoint tCell = p->viewport()->mapTo(p.get(), p->visualRect(p->model()->index(1, 1)).topLeft());
    QCOMPARE(tCell, QPoint(p->ColPos(1), p->RowPos(2)));
    QCOMPARE(p->horizontalHeader()->height(), p->RowHeight(0));
}

void GridTest::placesFollowTheScrolling() {
    const auto p = MakeGrid(200);
    Show(*p);
    const int iBefore = p->RowPos(50);
    p->verticalScrollBar()->setValue(100);
    QCOMPARE(p->RowPos(50), iBefore - 100);
    QCOMPARE(p->RowPos(0), p->frameWidth());
}

void GridTest::widthSetByHandStays() {
    const auto p = MakeGrid(3);
    Show(*p);
    p->setColumnWidth(0, 37);
    p->Cells.SetRows(10);
    p->SetColumn(0, "Name", true, 100);  // the same as before: laid out anew, nothing else
    p->SetColumn(2, "Key", false, 100);
    p->Synchronize();
    QCOMPARE(p->columnWidth(0), 37);
    QCOMPARE(p->columnWidth(1), 100);
    p->Cells.SetRows(1);
    p->Cells.SetRows(3);
    p->Synchronize();
    QCOMPARE(p->columnWidth(0), 37);
}

void GridTest::otherShownColumnsBeginWithTheirWidths() {
    const auto p = MakeGrid(3);
    Show(*p);
    p->setColumnWidth(0, 37);
    p->SetColumn(2, "Key", true, 70);
    p->Synchronize();
    QCOMPARE(p->columnWidth(0), 100);
    QCOMPARE(p->columnWidth(2), 70);
    p->setColumnWidth(2, 200);
    p->SetColumn(2, "Key", false, 70);
    p->SetColumn(2, "Key", true, 70);
    p->Synchronize();
    QCOMPARE(p->columnWidth(2), 70);
}

void GridTest::otherWidthOfTheProgramIsTaken() {
    const auto p = MakeGrid(3);
    Show(*p);
    p->setColumnWidth(0, 37);
    p->setColumnWidth(1, 38);
    p->SetColumn(0, "Name", true, 80);
    p->Synchronize();
    QCOMPARE(p->columnWidth(0), 80);
    QCOMPARE(p->columnWidth(1), 38);
}

void GridTest::enterActivatesTheRow() {
    const auto p = MakeGrid(3);
    Show(*p);
    QSignalSpy tRows(p.get(), &Grid::RowActivated);
    p->setCurrentIndex(QModelIndex());
    QTest::keyClick(p.get(), Qt::Key_Return);
    QCOMPARE(tRows.count(), 0);
    p->setCurrentIndex(p->model()->index(1, 0));
    QTest::keyClick(p.get(), Qt::Key_Return);
    QTest::keyClick(p.get(), Qt::Key_Enter);
    QCOMPARE(tRows.count(), 2);
    QCOMPARE(tRows.at(0).at(0).toInt(), 2);
}

void GridTest::liveRowIsWhereTheShownOneHasGone() {
    const auto p = MakeGrid(3);
    Show(*p);
    p->Cells.SetText(1, 2, "9");
    SortByKey(*p);  // b c a
    QCOMPARE(p->LiveRow(0), 0);
    QCOMPARE(p->LiveRow(1), 3);
    QCOMPARE(p->LiveRow(2), 1);
    p->Cells.RemoveRow(1);
    QCOMPARE(p->LiveRow(2), -1);
    QCOMPARE(p->LiveRow(3), 1);
    QCOMPARE(p->LiveRow(4), -1);
    QCOMPARE(p->LiveRow(-1), -1);
}

void GridTest::shownTextsStayWithTheirRowsBetweenBeats() {
    const auto p = MakeGrid(3);
    Show(*p);
    p->Cells.SetText(1, 2, "9");
    SortByKey(*p);
    QCOMPARE(Shown(*p, 1, 0), QStringLiteral("a"));
    QCOMPARE(Shown(*p, 3, 0), QStringLiteral("c"));
    p->Cells.RemoveRow(1);
    QCOMPARE(Shown(*p, 2, 0), QString());
    p->Synchronize();
    QCOMPARE(Shown(*p, 1, 0), QStringLiteral("c"));
    QCOMPARE(Shown(*p, 2, 0), QStringLiteral("a"));
}

void GridTest::selectionFollowsTheRows() {
    const auto p = MakeGrid(5);
    Show(*p);
    p->selectRow(1);
    p->selectionModel()->select(p->model()->index(3, 0), QItemSelectionModel::Select | QItemSelectionModel::Rows);
    QCOMPARE(SelectedNames(*p), QStringLiteral("bd"));
    p->Cells.SetText(2, 2, "100");
    SortByKey(*p);
    p->Cells.RemoveRow(1);
    p->Synchronize();
    QCOMPARE(SelectedNames(*p), QStringLiteral("db"));
    QCOMPARE(p->currentIndex().siblingAtColumn(0).data().toString(), QStringLiteral("b"));
}

void GridTest::selectionEndsWithItsRow() {
    const auto p = MakeGrid(3);
    Show(*p);
    p->selectRow(1);
    p->Cells.RemoveRow(2);
    p->Synchronize();
    QCOMPARE(SelectedNames(*p), QString());
    // A row that takes over the removed one's memory is another one.
    p->Cells.SetRows(4);
    p->Synchronize();
    QCOMPARE(SelectedNames(*p), QString());
}

void GridTest::copyTakesShownColumnsOfShownRows() {
    const auto p = MakeGrid(4);
    p->Cells.SetHidden(3, true);
    Show(*p);
    QGuiApplication::clipboard()->setText(QStringLiteral("before"));
    QTest::keyClick(p.get(), Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("before"));
    p->selectAll();
    QTest::keyClick(p.get(), Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("a\t1\nb\t2\nd\t4\n"));
}

void GridTest::copyAfterATrafficRushTakesTheUsersRows() {
    const auto p = MakeGrid(4);
    Show(*p);
    p->selectRow(1);
    p->selectionModel()->select(p->model()->index(2, 0), QItemSelectionModel::Select | QItemSelectionModel::Rows);
    p->Cells.SetText(4, 2, "-1");
    SortByKey(*p);  // d a b c
    p->Cells.RemoveRow(4);
    QTest::keyClick(p.get(), Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("b\t2\n"));
}

void GridTest::scrollPlaceStays() {
    const auto p = MakeGrid(300);
    Show(*p);
    p->verticalScrollBar()->setValue(1000);
    p->Cells.SetText(300, 2, "-1");
    SortByKey(*p);
    p->Cells.SetRows(320);
    p->Synchronize();
    QCoreApplication::processEvents();
    QCOMPARE(p->verticalScrollBar()->value(), 1000);
}

void GridTest::currentCellIsTheProgramsOnly() {
    const auto p = MakeGrid(3);
    Show(*p);
    QCOMPARE(p->CurrentCell(), std::make_pair(-1, -1));
    p->setCurrentIndex(p->model()->index(2, 1));
    QCOMPARE(p->CurrentCell(), std::make_pair(-1, -1));
    p->SetCurrentCell(1, 1);
    QCOMPARE(p->CurrentCell(), std::make_pair(1, 1));
    QCOMPARE(p->currentIndex().row(), 2);
}

void GridTest::modelKeepsItsPromises() {
    const auto p = MakeGrid(10);
    const QAbstractItemModelTester tTester(p->model(), QAbstractItemModelTester::FailureReportingMode::Fatal);
    Show(*p);
    std::mt19937 tRandom(3);
    for (int i = 0; i < 2000; ++i) {
        const int iRows = p->Cells.Rows();
        const int iRow = iRows > 1 ? static_cast<int>(tRandom() % static_cast<unsigned>(iRows - 1)) + 1 : 0;
        switch (tRandom() % 7) {
            case 0:
            case 1:
                p->Cells.SetRows(iRows + 1);
                p->Cells.SetText(iRows, 2, std::to_string(tRandom() % 50));
                break;
            case 2:
                if (iRow > 0 && iRows > 20) p->Cells.RemoveRow(iRow);
                break;
            case 3:
                if (iRow > 0) p->Cells.SetHidden(iRow, tRandom() % 2 == 0);
                break;
            case 4:
                SortByKey(*p);
                break;
            case 5:
                p->selectRow(static_cast<int>(tRandom() % 20));
                break;
            default:
                if (i % 300 == 7) p->Cells.SetCols(3 + static_cast<int>(tRandom() % 3));
                if (i % 300 == 8) p->Cells.SetRows(1);
                p->Synchronize();
                break;
        }
    }
    p->Synchronize();
    QCOMPARE(p->model()->rowCount(), p->Cells.Rows() - 1);
}

QTEST_MAIN(GridTest)
#include "GridTest.moc"
