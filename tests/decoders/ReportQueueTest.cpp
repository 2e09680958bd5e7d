// The reports that wait: first in, first out, with levels for the newest alone.
#include "decoders/ReportQueue.h"

#include <QByteArray>
#include <QTest>

using decoders::AisReport;
using decoders::ReportQueue;

namespace {

void Add(ReportQueue& t, std::int64_t lSeconds) { t.Add().dt = {lSeconds}; }

// The reports' times; "+" and the signal text behind those with levels.
QByteArray Drained(ReportQueue& tQueue) {
    QByteArray sAll;
    tQueue.Drain([&](const AisReport& t) {
        sAll += QByteArray::number(static_cast<qlonglong>(t.dt.lSeconds));
        if (t.bSignal) sAll += '+' + QByteArray::fromStdString(t.tSignal.Shown().sSignal);
        sAll += ' ';
    });
    return sAll;
}

}  // namespace

class ReportQueueTest : public QObject {
    Q_OBJECT

private slots:
    void comesOutInOrder();
    void fullQueueDropsItsOldest();
    void levelsBelongToTheNewest();
    void usedPlaceCarriesNoLevels();
    void levelsAreShownAsAsked();
};

void ReportQueueTest::comesOutInOrder() {
    ReportQueue t;
    QVERIFY(t.Empty());
    for (int i = 1; i <= 3; ++i) Add(t, i);
    QVERIFY(!t.Empty() && !t.Full());
    QCOMPARE(Drained(t), QByteArray("1 2 3 "));
    QVERIFY(t.Empty());
}

void ReportQueueTest::fullQueueDropsItsOldest() {
    ReportQueue t;
    QByteArray sExpected;
    for (int i = 0; i < 700; ++i) {
        QCOMPARE(t.Full(), i >= 256);
        if (t.Full()) {
            QCOMPARE(t.Oldest().dt.lSeconds, std::int64_t{i - 256});
            t.DropOldest();
        }
        Add(t, i);
        if (i >= 700 - 256) sExpected += QByteArray::number(i) + ' ';
    }
    QCOMPARE(Drained(t), sExpected);
}

void ReportQueueTest::levelsBelongToTheNewest() {
    ReportQueue t;
    QVERIFY(!t.AttachSignal({"29", "19", "3"}, false));
    Add(t, 1);
    Add(t, 2);
    QVERIFY(t.AttachSignal({"29", "19", "3"}, false));
    QVERIFY(!t.AttachSignal({"30", "19", "3"}, false));  // it has them already
    QCOMPARE(t.Signals(), 1);
    Add(t, 3);
    QVERIFY(t.AttachSignal({"31", "19", "3"}, false));
    QCOMPARE(t.Signals(), 2);
    t.DropOldest();
    QCOMPARE(t.Signals(), 2);
    t.DropOldest();
    QCOMPARE(t.Signals(), 1);
    QCOMPARE(Drained(t), QByteArray("3+31 "));
    QCOMPARE(t.Signals(), 0);
}

void ReportQueueTest::usedPlaceCarriesNoLevels() {
    ReportQueue t;
    for (int i = 0; i < 256; ++i) {
        Add(t, i);
        QVERIFY(t.AttachSignal({"29", "19", "3"}, false));
    }
    t.DropOldest();
    Add(t, 256);
    QCOMPARE(t.Signals(), 255);
    QVERIFY(Drained(t).endsWith(" 255+29 256 "));
}

void ReportQueueTest::levelsAreShownAsAsked() {
    ReportQueue t;
    Add(t, 1);
    QVERIFY(t.AttachSignal({"29", "40", "x"}, true));
    const decoders::SignalLevels tShown = t.Oldest().tSignal.Shown();
    QCOMPARE(tShown.sSignal, std::string("-87"));
    QCOMPARE(tShown.sThreshold, std::string("-67"));
    QCOMPARE(tShown.sInterval, std::string("x"));
}

QTEST_GUILESS_MAIN(ReportQueueTest)
#include "ReportQueueTest.moc"
