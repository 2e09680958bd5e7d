// The cells of a grid: rows that come, go and move, numbers beside them, and a sort that equals a stable sort of all.
#include "platform/runtime/GridCells.h"

#include <QByteArray>
#include <QTest>
#include <algorithm>
#include <random>

#include "tests/support/Bytes.h"

using namespace runtime;
using support::Bytes;

namespace {

// Orders in which a row's place depends on columns 1 and 2, or on column 1 alone.
constexpr SortKey Rising[] = {{1, 1}, {2, 1}};
constexpr SortKey Falling[] = {{1, 2}, {2, 2}};
constexpr SortKey FallingNumber[] = {{1, 2}};

int Compare(const GridCells& t, int iRow1, int iRow2) {
    if (t.Number(iRow1, 1) != t.Number(iRow2, 1)) return t.Number(iRow1, 1) < t.Number(iRow2, 1) ? -1 : 1;
    return t.Text(iRow1, 2).compare(t.Text(iRow2, 2));
}

void Sort(GridCells& t) {
    t.Sort(Rising, [&t](int iRow1, int iRow2) { return Compare(t, iRow1, iRow2); });
}

GridCells Grid(const std::vector<int>& iFirstCells) {
    GridCells t;
    t.SetCols(3);
    t.SetRows(1);
    for (const int i : iFirstCells) {
        t.SetRows(t.Rows() + 1);
        t.SetText(t.Rows() - 1, 1, std::to_string(i));
    }
    return t;
}

QByteArray Column(const GridCells& t, int iCol) {
    QByteArray sCells;
    for (int iRow = 1; iRow < t.Rows(); ++iRow) sCells += Bytes(t.Text(iRow, iCol)) + ' ';
    return sCells.trimmed();
}

}  // namespace

class GridCellsTest : public QObject {
    Q_OBJECT
private slots:
    void newRowIsEmpty();
    void usedRowComesBackEmpty();
    void removedRowTakesItsCellsAlong();
    void columnsComeAndGoAtTheRight();
    void numberIsTheLeadingPartOfTheText_data();
    void numberIsTheLeadingPartOfTheText();
    void integersAreWrittenInDecimal();
    void numbersMoveWithTheirRows();
    void rowsUpToANumberAreRemoved();
    void everyRowHasASerialOfItsOwn();
    void headerNeverMoves();
    void equalsKeepTheirOrder();
    void otherOrderSortsAnew();
    void writtenKeySortsAnew();
    void changesAreMarkedOnce();
    void sortEqualsAStableSortOfAll_data();
    void sortEqualsAStableSortOfAll();
};

void GridCellsTest::newRowIsEmpty() {
    GridCells t;
    t.SetCols(3);
    t.SetRows(2);
    QCOMPARE(t.Rows(), 2);
    QCOMPARE(t.Cols(), 3);
    for (int iCol = 0; iCol < 3; ++iCol) {
        QCOMPARE(Bytes(t.Text(1, iCol)), QByteArray());
        QCOMPARE(t.Number(1, iCol), 0.0);
        QCOMPARE(t.CellAlignment(1, iCol), AlignNone);
    }
    QVERIFY(!t.Hidden(1));
}

void GridCellsTest::usedRowComesBackEmpty() {
    GridCells t = Grid({1, 2});
    t.SetText(2, 0, "77 old", AlignRight);
    t.SetHidden(2, true);
    t.SetRowNumber(2, 9);
    QCOMPARE(t.Number(2, 0), 77.0);
    t.RemoveRow(2);
    t.SetRows(3);
    QCOMPARE(Bytes(t.Text(2, 0)), QByteArray());
    QCOMPARE(t.Number(2, 0), 0.0);
    QCOMPARE(t.CellAlignment(2, 0), AlignNone);
    QVERIFY(!t.Hidden(2));
    QCOMPARE(t.FindRowNumber(9), -1);
    t.SetText(2, 0, "", AlignRight);
    t.SetInteger(2, 2, 5);  // its text has not been asked for
    t.RemoveRow(2);
    t.SetRows(3);
    QCOMPARE(t.CellAlignment(2, 0), AlignNone);
    QCOMPARE(Bytes(t.Text(2, 2)), QByteArray());
    QCOMPARE(t.Number(2, 2), 0.0);
}

void GridCellsTest::removedRowTakesItsCellsAlong() {
    GridCells t = Grid({10, 20, 30, 40});
    t.SetHidden(3, true);
    t.RemoveRow(2);
    QCOMPARE(Column(t, 1), QByteArray("10 30 40"));
    QVERIFY(t.Hidden(2));
    QVERIFY(!t.Hidden(3));
    t.SetRows(2);
    QCOMPARE(Column(t, 1), QByteArray("10"));
}

void GridCellsTest::columnsComeAndGoAtTheRight() {
    GridCells t = Grid({10, 20});
    t.SetCols(5);
    t.SetText(1, 4, "right");
    QCOMPARE(Column(t, 1), QByteArray("10 20"));
    t.SetCols(2);
    t.SetCols(5);
    QCOMPARE(Bytes(t.Text(1, 4)), QByteArray());
    QCOMPARE(Column(t, 1), QByteArray("10 20"));
    t.RemoveRow(1);
    t.SetRows(4);
    QCOMPARE(Bytes(t.Text(3, 4)), QByteArray());  // a row used again has all columns
}

void GridCellsTest::numberIsTheLeadingPartOfTheText_data() {
    QTest::addColumn<QByteArray>("sText");
    QTest::addColumn<double>("dNumber");
    QTest::newRow("empty") << QByteArray() << 0.0;
    QTest::newRow("whole") << QByteArray("366999123") << 366999123.0;
    QTest::newRow("decimals") << QByteArray("-12.5") << -12.5;
    QTest::newRow("text behind") << QByteArray("12 knots") << 12.0;
    QTest::newRow("blanks before") << QByteArray("  7") << 7.0;
    QTest::newRow("no number") << QByteArray("n/a") << 0.0;
    QTest::newRow("sign alone") << QByteArray("-") << 0.0;
}

void GridCellsTest::numberIsTheLeadingPartOfTheText() {
    QFETCH(QByteArray, sText);
    QFETCH(double, dNumber);
    GridCells t = Grid({99});
    QCOMPARE(t.Number(1, 1), 99.0);
    t.SetText(1, 1, support::View(sText));
    QCOMPARE(t.Number(1, 1), dNumber);
    QCOMPARE(t.Number(1, 1), dNumber);
}

void GridCellsTest::integersAreWrittenInDecimal() {
    GridCells t = Grid({0});
    for (const std::int32_t l : {0, -86399, 2147483647, -2147483647 - 1}) {
        t.SetInteger(1, 1, l);
        QCOMPARE(Bytes(t.Text(1, 1)), QByteArray::number(l));
        QCOMPARE(t.Number(1, 1), static_cast<double>(l));
    }
}

void GridCellsTest::numbersMoveWithTheirRows() {
    GridCells t = Grid({30, 10, 20});
    for (int i = 1; i <= 3; ++i) t.SetRowNumber(i, 100 + i);
    Sort(t);
    QCOMPARE(t.FindRowNumber(102), 1);
    QCOMPARE(t.FindRowNumber(103), 2);
    QCOMPARE(t.FindRowNumber(101), 3);
    QCOMPARE(t.FindRowNumber(7), -1);
    QCOMPARE(t.FindRowNumber(0), -1);  // the header does not count
    t.SetRowNumber(1, 101);
    QCOMPARE(t.FindRowNumber(101), 3);  // the last one
}

void GridCellsTest::rowsUpToANumberAreRemoved() {
    GridCells t = Grid({30, 10, 20, 40});
    for (int i = 1; i <= 4; ++i) t.SetRowNumber(i, i);
    Sort(t);
    t.RemoveNumbersUpTo(2);
    QCOMPARE(Column(t, 1), QByteArray("20 40"));
    t.RemoveNumbersUpTo(2);
    QCOMPARE(t.Rows(), 3);
    t.RemoveNumbersUpTo(1000);
    QCOMPARE(t.Rows(), 1);
}

void GridCellsTest::everyRowHasASerialOfItsOwn() {
    GridCells t = Grid({3, 1, 2});
    const std::uint64_t lFirst = t.RowSerial(1);
    Sort(t);
    QCOMPARE(t.RowSerial(3), lFirst);
    std::vector<std::uint64_t> lSeen;
    for (int i = 0; i < 50; ++i) {
        for (int iRow = 0; iRow < t.Rows(); ++iRow) {
            if (std::ranges::find(lSeen, t.RowSerial(iRow)) == lSeen.end()) lSeen.push_back(t.RowSerial(iRow));
        }
        t.RemoveRow(1);
        t.SetRows(4);
    }
    QCOMPARE(lSeen.size(), std::size_t{4 + 49});
}

void GridCellsTest::headerNeverMoves() {
    GridCells t = Grid({30, 10});
    t.SetText(0, 1, "99999");
    Sort(t);
    QCOMPARE(Bytes(t.Text(0, 1)), QByteArray("99999"));
    t.SetText(0, 1, "-5");
    Sort(t);
    QCOMPARE(Bytes(t.Text(0, 1)), QByteArray("-5"));
    QCOMPARE(Column(t, 1), QByteArray("10 30"));
}

void GridCellsTest::equalsKeepTheirOrder() {
    GridCells t = Grid({5, 5, 4, 5, 4});
    for (int i = 1; i <= 5; ++i) t.SetText(i, 0, std::to_string(i));
    Sort(t);
    QCOMPARE(Column(t, 0), QByteArray("3 5 1 2 4"));
}

void GridCellsTest::otherOrderSortsAnew() {
    GridCells t = Grid({1, 2, 3});
    Sort(t);
    t.Sort(Falling, [&t](int iRow1, int iRow2) { return Compare(t, iRow2, iRow1); });
    QCOMPARE(Column(t, 1), QByteArray("3 2 1"));
    Sort(t);
    QCOMPARE(Column(t, 1), QByteArray("1 2 3"));
}

void GridCellsTest::writtenKeySortsAnew() {
    GridCells t = Grid({1, 2, 3, 4});
    Sort(t);
    t.SetText(1, 1, "9");
    t.SetText(3, 1, "0");
    Sort(t);
    QCOMPARE(Column(t, 1), QByteArray("0 2 4 9"));
}

void GridCellsTest::changesAreMarkedOnce() {
    GridCells t = Grid({1});
    t.Changed.Clear();
    int iMarks = 0;
    t.Changed.SetListener([&] { ++iMarks; });
    t.SetText(1, 1, "2");
    t.SetText(1, 1, "3");
    t.SetHidden(1, true);
    QCOMPARE(iMarks, 1);
    t.Changed.Clear();
    t.RemoveRow(1);
    QCOMPARE(iMarks, 2);
    t.Changed.Clear();
    (void)t.Number(0, 1);
    QVERIFY(!t.Changed.Marked());
}

void GridCellsTest::sortEqualsAStableSortOfAll_data() {
    QTest::addColumn<quint32>("lSeed");
    for (quint32 i = 0; i < 40; ++i) QTest::addRow("seed %u", i) << i;
}

// Rows appended, removed, written and sorted in any order, beside a plain list that is sorted whole.
void GridCellsTest::sortEqualsAStableSortOfAll() {
    QFETCH(quint32, lSeed);
    struct Row {
        int iKey;
        std::string sTime;
        int iNumber;
    };
    std::vector<Row> tRows;
    GridCells t = Grid({});
    std::mt19937 tRandom(lSeed);
    const auto tDice = [&tRandom](std::size_t lBelow) { return static_cast<std::size_t>(tRandom() % lBelow); };
    int iNext = 1;
    for (int iStep = 0; iStep < 600; ++iStep) {
        const std::size_t lOperation = tDice(10);
        if (tRows.empty() || lOperation < 4) {
            tRows.push_back(
                {static_cast<int>(tDice(20)) - 5, std::string(1, static_cast<char>('a' + tDice(4))), iNext});
            t.SetRows(t.Rows() + 1);
            t.SetText(t.Rows() - 1, 0, std::to_string(iNext));
            t.SetText(t.Rows() - 1, 1, std::to_string(tRows.back().iKey));
            t.SetText(t.Rows() - 1, 2, tRows.back().sTime);
            t.SetRowNumber(t.Rows() - 1, iNext++);
        } else if (lOperation == 4) {
            const std::size_t lRow = tDice(tRows.size());
            tRows.erase(tRows.begin() + static_cast<std::ptrdiff_t>(lRow));
            t.RemoveRow(static_cast<int>(lRow) + 1);
        } else if (lOperation == 5) {
            const std::size_t lRow = tDice(tRows.size());
            tRows[lRow].iKey = static_cast<int>(tDice(20)) - 5;
            t.SetText(static_cast<int>(lRow) + 1, 1, std::to_string(tRows[lRow].iKey));
        } else if (lOperation == 6) {
            const std::size_t lRow = tDice(tRows.size());
            tRows[lRow].sTime = std::string(1, static_cast<char>('a' + tDice(4)));
            t.SetText(static_cast<int>(lRow) + 1, 2, tRows[lRow].sTime);
        } else if (lOperation == 7) {
            const int iUpTo = iNext - 1 - static_cast<int>(tDice(60));
            std::erase_if(tRows, [iUpTo](const Row& tRow) { return tRow.iNumber <= iUpTo; });
            t.RemoveNumbersUpTo(iUpTo);
        } else if (lOperation == 8) {
            // Falling keys: another order altogether.
            std::ranges::stable_sort(tRows, [](const Row& a, const Row& b) { return a.iKey > b.iKey; });
            t.Sort(FallingNumber, [&t](int iRow1, int iRow2) {
                const double d = t.Number(iRow2, 1) - t.Number(iRow1, 1);
                return d < 0 ? -1 : static_cast<int>(d > 0);
            });
        } else {
            std::ranges::stable_sort(tRows, [](const Row& a, const Row& b) {
                return a.iKey != b.iKey ? a.iKey < b.iKey : a.sTime < b.sTime;
            });
            Sort(t);
        }
        QByteArray sExpected;
        for (const Row& tRow : tRows) sExpected += QByteArray::number(tRow.iNumber) + ' ';
        QCOMPARE(Column(t, 0), sExpected.trimmed());
        for (int iRow = 1; iRow < t.Rows(); ++iRow) {
            QCOMPARE(t.FindRowNumber(tRows[static_cast<std::size_t>(iRow) - 1].iNumber), iRow);
        }
    }
}

QTEST_GUILESS_MAIN(GridCellsTest)
#include "GridCellsTest.moc"
