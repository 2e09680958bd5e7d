// The items of a list of numbers: ascending, each once, with their data.
#include "platform/runtime/NumberItems.h"

#include <QByteArray>
#include <QTest>
#include <limits>
#include <map>
#include <random>
#include <vector>

using runtime::NumberItems;

class NumberItemsTest : public QObject {
    Q_OBJECT
private slots:
    void newNumberGetsItsData();
    void knownNumberKeepsItsData();
    void numbersStandInNumericOrder();
    void anyNumberIsFoundAgain();
    void itemsThatComeBetweenLooksFindTheirPlace();
    void clearLeavesNothing();
    void onlyNewItemsAreAChange();
    void anyUseEqualsAMap();
};

void NumberItemsTest::newNumberGetsItsData() {
    NumberItems t;
    QCOMPARE(t.FindOrInsert(7, 42), 42);
    QCOMPARE(t.Count(), 1);
    QCOMPARE(t.At(0).lNumber, 7);
    QCOMPARE(t.At(0).lData, 42);
}

void NumberItemsTest::knownNumberKeepsItsData() {
    NumberItems t;
    t.FindOrInsert(7, 42);
    QCOMPARE(t.FindOrInsert(7, 43), 42);
    t.FindOrInsert(7, 0) = 44;
    QCOMPARE(t.At(0).lData, 44);
    QCOMPARE(t.Count(), 1);
}

void NumberItemsTest::numbersStandInNumericOrder() {
    NumberItems t;
    for (const std::int32_t l : {100, 20, 3, 1000, 21, 19}) t.FindOrInsert(l, 0);
    QByteArray sNumbers;
    for (int i = 0; i < t.Count(); ++i) sNumbers += QByteArray::number(t.At(i).lNumber) + ' ';
    QCOMPARE(sNumbers, QByteArray("3 19 20 21 100 1000 "));
}

void NumberItemsTest::anyNumberIsFoundAgain() {
    NumberItems t;
    using Limits = std::numeric_limits<std::int32_t>;
    const std::vector<std::int32_t> lNumbers = {0, 1, 999999999, Limits::max(), -5, Limits::min(), 1 << 16, 1 << 20};
    for (const std::int32_t l : lNumbers) t.FindOrInsert(l, l / 2);
    for (const std::int32_t l : lNumbers) QCOMPARE(t.FindOrInsert(l, 7), l / 2);
    QCOMPARE(t.Count(), static_cast<int>(lNumbers.size()));
}

void NumberItemsTest::itemsThatComeBetweenLooksFindTheirPlace() {
    NumberItems t;
    t.FindOrInsert(30, 3);
    QCOMPARE(t.At(0).lNumber, 30);
    t.FindOrInsert(10, 1);
    QCOMPARE(t.At(0).lNumber, 10);
    QCOMPARE(t.At(1).lData, 3);
    t.FindOrInsert(30, 0) = 4;  // a value alone changes no order
    QCOMPARE(t.At(1).lData, 4);
    t.Clear();
    t.FindOrInsert(20, 2);
    QCOMPARE(t.At(0).lNumber, 20);
}

void NumberItemsTest::clearLeavesNothing() {
    NumberItems t;
    t.FindOrInsert(7, 42);
    t.Clear();
    QCOMPARE(t.Count(), 0);
    QCOMPARE(t.FindOrInsert(7, 1), 1);
}

void NumberItemsTest::onlyNewItemsAreAChange() {
    NumberItems t;
    t.FindOrInsert(7, 42);
    QVERIFY(t.Changed.Marked());
    t.Changed.Clear();
    t.FindOrInsert(7, 43) = 5;
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
    for (std::int32_t i = 0; i < 20000; ++i) {
        const auto lNumber = static_cast<std::int32_t>(tRandom() % 3000);
        std::int32_t& lData = t.FindOrInsert(lNumber, i);
        QCOMPARE(lData, tMap.try_emplace(lNumber, i).first->second);
        if (tRandom() % 2 == 0) lData = tMap[lNumber] = -i;
    }
    QCOMPARE(static_cast<std::size_t>(t.Count()), tMap.size());
    int iItem = 0;
    for (const auto& [lNumber, lData] : tMap) {
        QCOMPARE(t.At(iItem).lNumber, lNumber);
        QCOMPARE(t.At(iItem++).lData, lData);
    }
}

QTEST_GUILESS_MAIN(NumberItemsTest)
#include "NumberItemsTest.moc"
