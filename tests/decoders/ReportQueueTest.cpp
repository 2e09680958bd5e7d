// The reports that wait: first in, first out, with levels for the newest alone.
#include "decoders/ReportQueue.h"

#include <QByteArray>
#include <QTest>
#include <string>

#include "tests/support/Bytes.h"

using decoders::AisReport;
using decoders::ReportQueue;

namespace {

void Add(ReportQueue& t, std::int64_t lSeconds) { t.Add().dt = {lSeconds}; }

// The reports' times; "+" and the signal sentence behind those with levels.
QByteArray Drained(ReportQueue& tQueue) {
    QByteArray sAll;
    tQueue.Drain([&](const AisReport& t) {
        sAll += QByteArray::number(static_cast<qlonglong>(t.dt.lSeconds));
        if (!t.sSignal.empty()) sAll += '+' + support::Bytes(t.sSignal);
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
    void keptTextsOutliveTheirLines();
    void usedPlaceKeepsItsOwnTexts();
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
    QVERIFY(!t.AttachSignal("29", false));
    Add(t, 1);
    Add(t, 2);
    QVERIFY(t.AttachSignal("29", false));
    QVERIFY(!t.AttachSignal("30", false));  // it has them already
    QCOMPARE(t.Signals(), 1);
    Add(t, 3);
    QVERIFY(t.AttachSignal("31", false));
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
        QVERIFY(t.AttachSignal("29", false));
    }
    t.DropOldest();
    Add(t, 256);
    QCOMPARE(t.Signals(), 255);
    QVERIFY(Drained(t).endsWith(" 255+29 256 "));
}

// The lines that the texts stand in change when the queue has been told to keep them.
void ReportQueueTest::keptTextsOutliveTheirLines() {
    ReportQueue t;
    std::string sLines = "A.29.B.31.C";
    for (const std::size_t i : {0U, 5U}) {
        t.Add().sChannel = std::string_view(sLines).substr(i, 1);
        QVERIFY(t.AttachSignal(std::string_view(sLines).substr(i + 2, 2), true));
    }
    t.KeepTexts();
    t.Add().sChannel = std::string_view(sLines).substr(10, 1);
    t.KeepTexts();  // a second time for the two
    sLines.assign(sLines.size(), '#');
    QVERIFY(t.AttachSignal("33", false));
    t.KeepTexts();
    QByteArray sAll;
    t.Drain(
        [&](const AisReport& tReport) { sAll += support::Bytes(tReport.sChannel) + support::Bytes(tReport.sSignal); });
    QCOMPARE(sAll, QByteArray("A29B31C33"));
}

// A place that is used again keeps nothing of the report before.
void ReportQueueTest::usedPlaceKeepsItsOwnTexts() {
    ReportQueue t;
    for (int i = 0; i < 300; ++i) {
        if (t.Full()) t.DropOldest();
        const std::string sLine = std::to_string(i);
        t.Add().sChannel = sLine;
        QVERIFY(t.AttachSignal(sLine, false));
        t.KeepTexts();
    }
    int i = 300 - 256;
    t.Drain([&](const AisReport& tReport) {
        QCOMPARE(support::Bytes(tReport.sChannel), QByteArray::number(i));
        QCOMPARE(support::Bytes(tReport.sSignal), QByteArray::number(i++));
    });
    QCOMPARE(i, 300);
}

QTEST_GUILESS_MAIN(ReportQueueTest)
#include "ReportQueueTest.moc"
