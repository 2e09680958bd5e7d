// The newest of a row of values, in the memory of those that went.
#include "platform/runtime/Ring.h"

#include <QTest>
#include <string>

class RingTest : public QObject {
    Q_OBJECT

private slots:
    void oldestGoesFirst();
    void placesAreUsedAgain();
};

void RingTest::oldestGoesFirst() {
    runtime::Ring<int, 3> t;
    QVERIFY(t.Empty() && !t.Full());
    for (const int i : {1, 2, 3}) t.Add() = i;
    QVERIFY(t.Full());
    QCOMPARE(t.Oldest(), 1);
    t.Add() = 4;  // where all places are taken
    QCOMPARE(t.Count(), std::size_t{3});
    for (const int i : {2, 3, 4}) {
        QCOMPARE(t.Oldest(), i);
        QCOMPARE(t.Newest(), 4);
        t.DropOldest();
    }
    QVERIFY(t.Empty());
}

void RingTest::placesAreUsedAgain() {
    runtime::Ring<std::string, 2> t;
    t.Add() = "one";
    t.Add() = "two";
    QCOMPARE(t.Add(), std::string("one"));
    QCOMPARE(t.Oldest(), std::string("two"));
}

QTEST_GUILESS_MAIN(RingTest)
#include "RingTest.moc"
