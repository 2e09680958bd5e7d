// The keyboard cursor of a table whose rows roll out: it takes the nearest row that is left, and nothing else moves.
#include <QScrollBar>
#include <QTest>

#include "tests/platform/toolkit/NamedGrid.h"

using namespace support;

namespace {

QString Cursor(const Grid& t) { return t.currentIndex().data().toString(); }

// Puts the cursor on a row (1 for the first) with the mouse.
void ClickRow(Grid& t, int iRow) {
    QTest::mouseClick(t.viewport(), Qt::LeftButton, {}, t.visualRect(t.model()->index(iRow - 1, 0)).center());
}

void Beat(Grid& t) {
    t.Synchronize();
    QCoreApplication::processEvents();
}

}  // namespace

class GridCursorTest : public QObject {
    Q_OBJECT
private slots:
    void takesTheNearestRow_data();
    void takesTheNearestRow();
    void goesOnFromThere();
    void keepsItsColumn();
    void staysOutOfHiddenRows();
    void selectsNothing();
    void leavesTheScrollPlace();
    void aClearedTableHasNone();
};

void GridCursorTest::takesTheNearestRow_data() {
    QTest::addColumn<int>("iCursor");
    QTest::addColumn<QList<int>>("iGone");  // as they stand, one after the other
    QTest::addColumn<QString>("sCursor");
    QTest::newRow("its own stays") << 5 << QList<int>{1, 1} << QStringLiteral("e");
    QTest::newRow("the one below") << 5 << QList<int>{5} << QStringLiteral("f");
    QTest::newRow("the one below, others gone as well") << 5 << QList<int>{1, 1, 3} << QStringLiteral("f");
    QTest::newRow("the one above, nearer") << 5 << QList<int>{5, 5} << QStringLiteral("d");
    QTest::newRow("the last row's is above") << 8 << QList<int>{8} << QStringLiteral("g");
    QTest::newRow("the first row's is below") << 1 << QList<int>{1, 1} << QStringLiteral("c");
}

void GridCursorTest::takesTheNearestRow() {
    QFETCH(int, iCursor);
    QFETCH(QList<int>, iGone);
    QFETCH(QString, sCursor);
    const auto p = MakeGrid(8);
    Show(*p);
    ClickRow(*p, iCursor);
    for (const int iRow : iGone) p->Cells.RemoveRow(iRow);
    Beat(*p);
    QCOMPARE(Cursor(*p), sCursor);
}

void GridCursorTest::goesOnFromThere() {
    const auto p = MakeGrid(8);
    Show(*p);
    ClickRow(*p, 5);
    for (const int iRow : {5, 1}) p->Cells.RemoveRow(iRow);
    Beat(*p);
    QTest::keyClick(p.get(), Qt::Key_Down);
    QCOMPARE(Cursor(*p), QStringLiteral("g"));
    QCOMPARE(p->SelectedText(), QStringLiteral("g\t7\n"));
}

void GridCursorTest::keepsItsColumn() {
    const auto p = MakeGrid(8);
    Show(*p);
    QTest::mouseClick(p->viewport(), Qt::LeftButton, {}, p->visualRect(p->model()->index(4, 1)).center());
    p->Cells.RemoveRow(5);
    Beat(*p);
    QCOMPARE(Cursor(*p), QStringLiteral("6"));
}

void GridCursorTest::staysOutOfHiddenRows() {
    const auto p = MakeGrid(8);
    Show(*p);
    ClickRow(*p, 5);
    for (const int iRow : {4, 6, 7}) p->Cells.SetHidden(iRow, true);
    p->Cells.RemoveRow(5);
    Beat(*p);
    QCOMPARE(Cursor(*p), QStringLiteral("c"));
}

void GridCursorTest::selectsNothing() {
    const auto p = MakeGrid(8);
    Show(*p);
    ClickRow(*p, 5);
    p->Cells.RemoveRow(5);
    Beat(*p);
    QCOMPARE(p->SelectedText(), QString());
}

void GridCursorTest::leavesTheScrollPlace() {
    const auto p = MakeGrid(200);
    Show(*p);
    ClickRow(*p, 2);
    p->verticalScrollBar()->setValue(p->verticalScrollBar()->maximum() / 2);
    const int iPlace = p->verticalScrollBar()->value();
    p->Cells.RemoveRow(2);
    Beat(*p);
    QCOMPARE(p->currentIndex().row(), 1);
    QCOMPARE(p->verticalScrollBar()->value(), iPlace);
}

void GridCursorTest::aClearedTableHasNone() {
    const auto p = MakeGrid(8);
    Show(*p);
    ClickRow(*p, 5);
    p->Cells.SetRows(1);
    p->Cells.SetRows(4);
    Beat(*p);
    QVERIFY(!p->currentIndex().isValid());
}

QTEST_MAIN(GridCursorTest)
#include "GridCursorTest.moc"
