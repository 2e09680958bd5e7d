// The mouse on a grid: which cell a click means, what is none, and where the mouse is.
#include <QHeaderView>
#include <QMouseEvent>
#include <QSignalSpy>
#include <QTest>

#include "tests/platform/toolkit/NamedGrid.h"

using namespace support;

namespace {

QRect CellPlace(const Grid& t, int iRow, int iCol) { return t.visualRect(t.model()->index(iRow - 1, iCol)); }

// Row and column of a click that was told.
std::pair<int, int> Cell(const QSignalSpy& tClicks, qsizetype i) {
    return {tClicks.at(i).at(0).toInt(), tClicks.at(i).at(1).toInt()};
}

}  // namespace

class GridMouseTest : public QObject {
    Q_OBJECT
private slots:
    void clickTellsItsCell();
    void clickMeansTheRowOfThePress();
    void releaseElsewhereIsNoClick();
    void wholeCellIsItsOwn();
    void doubleClickIsNoSecondClick();
    void buttonsOnTheHeaderMeanNoCell();
    void movesAreToldInTheGridsCoordinates();
    void leavingIsAMoveToNowhere();
};

void GridMouseTest::clickTellsItsCell() {
    const auto p = MakeGrid(3);
    Show(*p);
    QSignalSpy tClicks(p.get(), &Grid::Clicked);
    QTest::mouseClick(p->viewport(), Qt::LeftButton, {}, CellPlace(*p, 2, 1).center());
    QCOMPARE(tClicks.count(), 1);
    QCOMPARE(Cell(tClicks, 0), std::make_pair(2, 1));
    QTest::mouseClick(p->viewport(), Qt::MiddleButton, {}, CellPlace(*p, 2, 1).center());
    QTest::mouseClick(p->viewport(), Qt::RightButton, {}, CellPlace(*p, 2, 1).center());
    QTest::mouseClick(p->viewport(), Qt::LeftButton, {}, CellPlace(*p, 3, 1).bottomRight() + QPoint(50, 50));
    QCOMPARE(tClicks.count(), 1);
    // At a place in the grid's own coordinates.
    p->Click(static_cast<float>(p->ColPos(0) + 5), static_cast<float>(p->RowPos(3) + 5));
    QCOMPARE(tClicks.count(), 2);
    QCOMPARE(Cell(tClicks, 1), std::make_pair(3, 0));
    p->Click(static_cast<float>(p->ColPos(0) + 5), static_cast<float>(p->RowPos(0) + 5));
    p->Click(-1000000, -1000000);
    QCOMPARE(tClicks.count(), 2);
}

void GridMouseTest::clickMeansTheRowOfThePress() {
    const auto p = MakeGrid(3);
    Show(*p);
    QSignalSpy tClicks(p.get(), &Grid::Clicked);
    const QPoint tPlace = CellPlace(*p, 1, 1).center();
    QTest::mousePress(p->viewport(), Qt::LeftButton, {}, tPlace);
    p->Cells.SetText(1, 2, "9");
    SortByKey(*p);  // b c a
    p->Synchronize();
    p->Cells.SetRows(5);
    p->Cells.SetText(4, 2, "-1");
    SortByKey(*p);  // the new one, b, c, a: not yet taken over
    QTest::mouseRelease(p->viewport(), Qt::LeftButton, {}, tPlace);
    QCOMPARE(tClicks.count(), 1);
    QCOMPARE(Cell(tClicks, 0), std::make_pair(4, 1));
    QTest::mousePress(p->viewport(), Qt::LeftButton, {}, tPlace);
    p->Cells.SetRows(1);
    p->Cells.SetRows(3);
    QTest::mouseRelease(p->viewport(), Qt::LeftButton, {}, tPlace);
    QCOMPARE(Cell(tClicks, 1).first, -1);
    QTest::mousePress(p->viewport(), Qt::LeftButton, {}, tPlace);
    p->Cells.SetRows(1);
    p->Cells.SetRows(3);
    p->Synchronize();
    QTest::mouseRelease(p->viewport(), Qt::LeftButton, {}, tPlace);
    QCOMPARE(Cell(tClicks, 2).first, -1);
}

void GridMouseTest::releaseElsewhereIsNoClick() {
    const auto p = MakeGrid(3);
    Show(*p);
    QSignalSpy tClicks(p.get(), &Grid::Clicked);
    const QPoint tPlace = CellPlace(*p, 2, 0).center();
    for (const QPoint tElsewhere : {CellPlace(*p, 3, 0).center(), CellPlace(*p, 2, 1).center(), QPoint(-200, -200),
                                    QPoint(5, 1000), QPoint(5, -5)}) {
        QTest::mousePress(p->viewport(), Qt::LeftButton, {}, tPlace);
        QTest::mouseRelease(p->viewport(), Qt::LeftButton, {}, tElsewhere);
        QCOMPARE(tClicks.count(), 0);
    }
    QTest::mousePress(p->viewport(), Qt::LeftButton, {}, tPlace);
    QTest::mouseRelease(p->viewport(), Qt::LeftButton, {}, tPlace + QPoint(3, 1));
    QCOMPARE(tClicks.count(), 1);
}

// From its first pixel line to its grid lines.
void GridMouseTest::wholeCellIsItsOwn() {
    const auto p = MakeGrid(3);
    Show(*p);
    QSignalSpy tClicks(p.get(), &Grid::Clicked);
    const QRect tPlace(p->columnViewportPosition(1), p->rowViewportPosition(1), p->columnWidth(1), p->rowHeight(1));
    for (const QPoint t : {tPlace.topLeft(), tPlace.topRight(), tPlace.bottomLeft(), tPlace.bottomRight()}) {
        QTest::mouseClick(p->viewport(), Qt::LeftButton, {}, t);
        QCOMPARE(Cell(tClicks, tClicks.count() - 1), std::make_pair(2, 1));
    }
    QCOMPARE(tClicks.count(), 4);
}

void GridMouseTest::doubleClickIsNoSecondClick() {
    const auto p = MakeGrid(3);
    Show(*p);
    QSignalSpy tClicks(p.get(), &Grid::Clicked);
    QSignalSpy tDoubles(p.get(), &Grid::DblClicked);
    const QPoint tPlace = CellPlace(*p, 2, 0).center();
    QTest::mousePress(p->viewport(), Qt::LeftButton, {}, tPlace);
    QTest::mouseRelease(p->viewport(), Qt::LeftButton, {}, tPlace);
    QTest::mouseDClick(p->viewport(), Qt::LeftButton, {}, tPlace);
    QTest::mouseRelease(p->viewport(), Qt::LeftButton, {}, tPlace);
    QCOMPARE(tClicks.count(), 1);
    QCOMPARE(tDoubles.count(), 1);
    QTest::mouseDClick(p->viewport(), Qt::RightButton, {}, tPlace);
    QCOMPARE(tDoubles.count(), 1);
    QTest::mouseClick(p->viewport(), Qt::LeftButton, {}, tPlace);
    QCOMPARE(tClicks.count(), 2);
}

void GridMouseTest::buttonsOnTheHeaderMeanNoCell() {
    const auto p = MakeGrid(3);
    Show(*p);
    QSignalSpy tClicks(p.get(), &Grid::Clicked);
    QSignalSpy tDoubles(p.get(), &Grid::DblClicked);
    for (const int x : {10, 100}) {  // on a name, on a border
        QTest::mouseClick(p->horizontalHeader()->viewport(), Qt::LeftButton, {}, QPoint(x, 5));
        QTest::mouseDClick(p->horizontalHeader()->viewport(), Qt::LeftButton, {}, QPoint(x, 5));
    }
    QCOMPARE(tClicks.count() + tDoubles.count(), 0);
}

void GridMouseTest::movesAreToldInTheGridsCoordinates() {
    const auto p = MakeGrid(3);
    Show(*p);
    QSignalSpy tMoves(p.get(), &Grid::MouseMoved);
    for (QWidget* pWidget : {p->viewport(), p->horizontalHeader()->viewport()}) {
        const QPoint tPlace(12, 7);
        QMouseEvent tMove(QEvent::MouseMove, tPlace, pWidget->mapToGlobal(tPlace), Qt::NoButton, Qt::NoButton, {});
        QCoreApplication::sendEvent(pWidget, &tMove);
        const QPoint tInGrid = pWidget->mapTo(p.get(), tPlace);
        QVERIFY(!tMoves.isEmpty());
        QCOMPARE(QPointF(tMoves.last().at(0).toDouble(), tMoves.last().at(1).toDouble()), QPointF(tInGrid));
    }
}

void GridMouseTest::leavingIsAMoveToNowhere() {
    const auto p = MakeGrid(3);
    Show(*p);
    QSignalSpy tMoves(p.get(), &Grid::MouseMoved);
    QEvent tLeave(QEvent::Leave);
    QCoreApplication::sendEvent(p->viewport(), &tLeave);
    QCOMPARE(tMoves.count(), 1);
    QCOMPARE(tMoves.at(0).at(0).toFloat(), -1.0F);
    QCOMPARE(tMoves.at(0).at(1).toFloat(), -1.0F);
}

QTEST_MAIN(GridMouseTest)
#include "GridMouseTest.moc"
