// The items of a list of numbers: ascending, each once, with their data.
#include "platform/runtime/NumberItems.h"

#include <QByteArray>
#include <QTest>
#include <limits>
#include <map>
#include <random>

#include "tests/support/Bytes.h"

using runtime::NumberItems;
using support::Bytes;

class NumberItemsTest : public QObject {
    Q_OBJECT
private slots:
    void newNumberGetsItsData();
    void knownNumberKeepsItsData();
    void numbersStandInNumericOrder();
    void textsAreDecimal();
    void clearLeavesNothing();
    void onlyNewItemsAreAChange();
    void anyUseEqualsAMap();
};

void NumberItemsTest::newNumberGetsItsData() {
    NumberItems t;
    QCOMPARE(t.FindOrInsert(7, 42).lData, 42);
    QCOMPARE(t.Count(), 1);
    QCOMPARE(t.At(0).lNumber, 7);
    QCOMPARE(t.At(0).lData, 42);
}

void NumberItemsTest::knownNumberKeepsItsData() {
    NumberItems t;
    t.FindOrInsert(7, 42);
    QCOMPARE(t.FindOrInsert(7, 43).lData, 42);
    t.FindOrInsert(7, 0).lData = 44;
    QCOMPARE(t.At(0).lData, 44);
    QCOMPARE(t.Count(), 1);
}

void NumberItemsTest::numbersStandInNumericOrder() {
    NumberItems t;
    for (const std::int32_t l : {100, 20, 3, 1000, 21, 19}) t.FindOrInsert(l, 0);
    QByteArray sNumbers;
    for (int i = 0; i < t.Count(); ++i) sNumbers += Bytes(t.At(i).sText) + ' ';
    QCOMPARE(sNumbers, QByteArray("3 19 20 21 100 1000 "));
}

void NumberItemsTest::textsAreDecimal() {
    NumberItems t;
    for (const std::int32_t l : {0, 1, 999999999, std::numeric_limits<std::int32_t>::max(), -5}) {
        QCOMPARE(Bytes(t.FindOrInsert(l, 0).sText), QByteArray::number(l));
    }
}

void NumberItemsTest::clearLeavesNothing() {
    NumberItems t;
    t.FindOrInsert(7, 42);
    t.Clear();
    QCOMPARE(t.Count(), 0);
    QCOMPARE(t.FindOrInsert(7, 1).lData, 1);
}

void NumberItemsTest::onlyNewItemsAreAChange() {
    NumberItems t;
    t.FindOrInsert(7, 42);
    QVERIFY(t.Changed.Marked());
    t.Changed.Clear();
    t.FindOrInsert(7, 43).lData = 5;
    QVERIFY(!t.Changed.Marked());
    t.FindOrInsert(8, 43);
    QVERIFY(t.Changed.Marked());
    t.Changed.Clear();
    t.Clear();
    QVERIFY(t.Changed.Marked());
}

void NumberItemsTest::anyUseEqualsAMap() {
    std::mt19937 tRandom(1);
    NumberItems t;
    std::map<std::int32_t, std::int32_t> tMap;
    for (std::int32_t i = 0; i < 5000; ++i) {
        const auto lNumber = static_cast<std::int32_t>(tRandom() % 700);
        NumberItems::Item& tItem = t.FindOrInsert(lNumber, i);
        QCOMPARE(tItem.lData, tMap.try_emplace(lNumber, i).first->second);
        if (tRandom() % 2 == 0) tItem.lData = tMap[lNumber] = -i;
    }
    QCOMPARE(static_cast<std::size_t>(t.Count()), tMap.size());
    int iItem = 0;
    for (const auto& [lNumber, lData] : tMap) {
        QCOMPARE(t.At(iItem).lNumber, lNumber);
        QCOMPARE(t.At(iItem).lData, lData);
        QCOMPARE(Bytes(t.At(iItem++).sText), QByteArray::number(lNumber));
    }
}

QTEST_GUILESS_MAIN(NumberItemsTest)
#include "NumberItemsTest.moc"
