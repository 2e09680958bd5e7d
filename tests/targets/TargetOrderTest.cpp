// The sort keys and how two texts compare under them.
#include "targets/TargetOrder.h"

#include <QTest>
#include <cmath>

#include "tests/support/Bytes.h"

using support::View;
using targets::CompareValues;
using targets::SortKey;
using targets::SortValue;

class TargetOrderTest : public QObject {
    Q_OBJECT

private slots:
    void criterionHasItsFirstKey_data();
    void criterionHasItsFirstKey();
    void secondKeyIsTheTimeText();
    void textsCompare_data();
    void textsCompare();
    void numbersCompare_data();
    void numbersCompare();
    void unknownKeyTypeHasNoAnswer();
};

void TargetOrderTest::criterionHasItsFirstKey_data() {
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("column");  // -1: the keys of the sort before stay
    QTest::addColumn<int>("type");
    QTest::newRow("MMSI ascending") << 0 << 1 << 3;
    QTest::newRow("Range, farthest first") << 1 << 8 << 4;
    QTest::newRow("Signal ascending") << 2 << 3 << 3;
    QTest::newRow("nothing selected") << -1 << -1 << 0;
    QTest::newRow("no such criterion") << 3 << -1 << 0;
}

void TargetOrderTest::criterionHasItsFirstKey() {
    QFETCH(int, index);
    QFETCH(int, column);
    QFETCH(int, type);
    const auto tKey = targets::FirstKey(index);
    QCOMPARE(tKey.has_value(), column != -1);
    if (!tKey) return;
    QCOMPARE(tKey->lCol, column);
    QCOMPARE(tKey->lType, type);
}

void TargetOrderTest::secondKeyIsTheTimeText() {
    QCOMPARE(targets::SecondKey.lCol, 6);
    QCOMPARE(targets::SecondKey.lType, 7);
}

void TargetOrderTest::textsCompare_data() {
    QTest::addColumn<QByteArray>("a");
    QTest::addColumn<QByteArray>("b");
    QTest::addColumn<int>("order");
    QTest::newRow("equal") << QByteArray("12:00:00") << QByteArray("12:00:00") << 0;
    QTest::newRow("earlier") << QByteArray("09:59:59") << QByteArray("10:00:00") << -1;
    QTest::newRow("after midnight comes first") << QByteArray("00:00:01") << QByteArray("23:59:59") << -1;
    QTest::newRow("capitals before small letters") << QByteArray("Z") << QByteArray("a") << -1;
    QTest::newRow("case counts") << QByteArray("a") << QByteArray("A") << 1;
    QTest::newRow("as text, not as number") << QByteArray("10") << QByteArray("9") << -1;
    QTest::newRow("beginning of the other") << QByteArray("12") << QByteArray("12:00") << -1;
    QTest::newRow("empty first") << QByteArray("") << QByteArray(" ") << -1;
    QTest::newRow("bytes above 127 come last") << QByteArray("\xB0") << QByteArray("z") << 1;
    QTest::newRow("NUL counts") << QByteArray("a\0b", 3) << QByteArray("a") << 1;
}

void TargetOrderTest::textsCompare() {
    QFETCH(QByteArray, a);
    QFETCH(QByteArray, b);
    QFETCH(int, order);
    const SortValue tA{View(a), 5};  // the numbers say nothing here
    const SortValue tB{View(b), 5};
    QCOMPARE(CompareValues(7, tA, tB).value(), order);
    QCOMPARE(CompareValues(7, tB, tA).value(), -order);
    QCOMPARE(CompareValues(8, tA, tB).value(), -order);
    QCOMPARE(CompareValues(8, tB, tA).value(), order);
    QCOMPARE(CompareValues(3, tA, tB).value(), 0);
}

void TargetOrderTest::numbersCompare_data() {
    QTest::addColumn<double>("a");
    QTest::addColumn<double>("b");
    QTest::addColumn<int>("order");
    QTest::newRow("equal") << 12.5 << 12.5 << 0;
    QTest::newRow("smaller") << 9.0 << 10.0 << -1;
    QTest::newRow("negative") << -107.0 << -87.0 << -1;
    QTest::newRow("no range counts as zero") << 0.0 << 0.1 << -1;
    QTest::newRow("not-a-number is zero") << std::nan("") << 0.0 << 0;
    QTest::newRow("not-a-number before positive") << std::nan("") << 1.0 << -1;
    QTest::newRow("not-a-number after negative") << std::nan("") << -1.0 << 1;
    QTest::newRow("both not-a-number") << std::nan("") << std::nan("") << 0;
}

void TargetOrderTest::numbersCompare() {
    QFETCH(double, a);
    QFETCH(double, b);
    QFETCH(int, order);
    const SortValue tA{"x", a};  // the texts say nothing here
    const SortValue tB{"x", b};
    QCOMPARE(CompareValues(3, tA, tB).value(), order);
    QCOMPARE(CompareValues(3, tB, tA).value(), -order);
    QCOMPARE(CompareValues(4, tA, tB).value(), -order);
    QCOMPARE(CompareValues(4, tB, tA).value(), order);
    QCOMPARE(CompareValues(7, tA, tB).value(), 0);
}

void TargetOrderTest::unknownKeyTypeHasNoAnswer() {
    const SortValue tA{"a", 1};
    const SortValue tB{"b", 2};
    for (const int iType : {-1, 0, 1, 2, 5, 6, 9}) QVERIFY(!CompareValues(iType, tA, tB));
}

QTEST_GUILESS_MAIN(TargetOrderTest)
#include "TargetOrderTest.moc"
