// The lines of a bounded log: the newest 101 with their marks.
#include "platform/runtime/LogLines.h"

#include <QByteArray>
#include <QTest>
#include <deque>
#include <random>
#include <utility>

#include "tests/support/Bytes.h"

using runtime::LogLines;
using support::Bytes;

class LogLinesTest : public QObject {
    Q_OBJECT
private slots:
    void linesStandInOrder();
    void hundredAndOneLinesRemain();
    void marksStayWithTheirLines();
    void clearLeavesNothing();
    void linesMayHoldAnything();
    void addedAndClearedAreCounted();
    void viewsAreCopiedWhenTheyAreKept();
    void markIsTakenFromOneLine();
    void changesAreMarkedOnce();
    void anyUseEqualsAPlainQueue_data();
    void anyUseEqualsAPlainQueue();
};

void LogLinesTest::linesStandInOrder() {
    LogLines t;
    QCOMPARE(t.Count(), 0);
    t.Add("one");
    t.Add("two", true);
    QCOMPARE(t.Count(), 2);
    QCOMPARE(Bytes(t.Line(0)), QByteArray("one"));
    QCOMPARE(Bytes(t.Line(1)), QByteArray("two"));
    QVERIFY(!t.Mark(0));
    QVERIFY(t.Mark(1));
}

void LogLinesTest::hundredAndOneLinesRemain() {
    LogLines t;
    for (int i = 1; i <= 100; ++i) t.Add(std::to_string(i));
    QCOMPARE(t.Count(), 100);
    t.Add("101");
    QCOMPARE(t.Count(), 101);
    QCOMPARE(Bytes(t.Line(0)), QByteArray("1"));
    t.Add("102");
    QCOMPARE(t.Count(), 101);
    QCOMPARE(Bytes(t.Line(0)), QByteArray("2"));
    QCOMPARE(Bytes(t.Line(100)), QByteArray("102"));
}

void LogLinesTest::marksStayWithTheirLines() {
    LogLines t;
    for (int i = 0; i < 300; ++i) t.Add(std::to_string(i), i % 3 == 0);
    for (int i = 0; i < t.Count(); ++i) QCOMPARE(t.Mark(i), std::stoi(t.Line(i)) % 3 == 0);
}

void LogLinesTest::clearLeavesNothing() {
    LogLines t;
    for (int i = 0; i < 150; ++i) t.Add("x", true);
    t.Clear();
    QCOMPARE(t.Count(), 0);
    t.Add("new");
    QCOMPARE(t.Count(), 1);
    QCOMPARE(Bytes(t.Line(0)), QByteArray("new"));
    QVERIFY(!t.Mark(0));
}

void LogLinesTest::linesMayHoldAnything() {
    LogLines t;
    std::string sAll;
    for (int i = 0; i < 256; ++i) sAll += static_cast<char>(i);
    t.Add(sAll);
    t.Add("");
    t.Add(std::string(100000, 'x'));
    QVERIFY(t.Line(0) == sAll);
    QVERIFY(t.Line(1).empty());
    QCOMPARE(t.Line(2).size(), std::size_t{100000});
}

void LogLinesTest::addedAndClearedAreCounted() {
    LogLines t;
    for (int i = 0; i < 250; ++i) t.Add("x");
    t.Clear();
    t.Add("x");
    t.Clear();
    QCOMPARE(t.Added(), std::uint64_t{251});
    QCOMPARE(t.Cleared(), std::uint64_t{2});
}

// Views and copies by turns, more than a list holds, before the text that the views look at goes.
void LogLinesTest::viewsAreCopiedWhenTheyAreKept() {
    LogLines t;
    t.Add("first");
    std::string sBlock;
    for (int i = 0; i < 1000; ++i) sBlock += static_cast<char>('a' + i % 26);
    for (std::size_t i = 0; i < 150; ++i) {
        if (i % 3 == 0) {
            t.Add("copy");
        } else {
            t.AddView(std::string_view(sBlock).substr(i, 30), i % 3 == 1);
        }
    }
    const std::string sBefore = sBlock;
    t.KeepViews();
    sBlock.assign(sBlock.size(), '#');
    t.KeepViews();  // nothing is a view any more
    QCOMPARE(t.Count(), 101);
    QCOMPARE(t.Added(), std::uint64_t{151});
    for (int iLine = 0; iLine < t.Count(); ++iLine) {
        const auto i = static_cast<std::size_t>(iLine) + 49;
        QVERIFY(t.Line(iLine) == (i % 3 == 0 ? "copy" : sBefore.substr(i, 30)));
        QCOMPARE(t.Mark(iLine), i % 3 == 1);
    }
    t.AddView(sBlock, false);
    t.Clear();
    t.Add("one");
    t.KeepViews();
    QVERIFY(t.Line(0) == "one");
}

void LogLinesTest::markIsTakenFromOneLine() {
    runtime::LogLines t;
    const auto Marks = [&t] {
        QByteArray sMarks;
        for (int i = 0; i < t.Count(); ++i) sMarks += t.Mark(i) ? '+' : '-';
        return sMarks;
    };
    for (int i = 0; i < 4; ++i) t.Add("line", true);
    t.Unmark(2);
    QCOMPARE(Marks(), QByteArray("+-++"));
    t.Unmark(0);  // no line
    t.Unmark(5);  // not yet
    QCOMPARE(Marks(), QByteArray("+-++"));
    QCOMPARE(t.Unmarked(), std::uint64_t{1});
    for (int i = 0; i < 100; ++i) t.Add("line", true);  // the first three are gone
    t.Unmark(3);
    QCOMPARE(Marks(), QByteArray(101, '+'));
    t.Unmark(4);
    t.Unmark(104);
    QCOMPARE(Marks(), "-" + QByteArray(99, '+') + "-");
    t.Clear();
    t.Add("line", true);
    t.Unmark(104);
    QCOMPARE(Marks(), QByteArray("+"));
    t.Unmark(105);
    QCOMPARE(Marks(), QByteArray("-"));
}

void LogLinesTest::changesAreMarkedOnce() {
    LogLines t;
    int iMarks = 0;
    t.Changed.SetListener([&] { ++iMarks; });
    t.Add("x");
    t.Add("y");
    QCOMPARE(iMarks, 1);
    t.Changed.Clear();
    t.Clear();
    QCOMPARE(iMarks, 2);
}

void LogLinesTest::anyUseEqualsAPlainQueue_data() {
    QTest::addColumn<quint32>("lSeed");
    for (quint32 i = 0; i < 10; ++i) QTest::addRow("seed %u", i) << i;
}

void LogLinesTest::anyUseEqualsAPlainQueue() {
    QFETCH(quint32, lSeed);
    std::mt19937 tRandom(lSeed);
    LogLines t;
    std::deque<std::pair<std::string, bool>> tQueue;
    for (int i = 0; i < 3000; ++i) {
        if (tRandom() % 400 == 0) {
            t.Clear();
            tQueue.clear();
        } else {
            const bool bMark = tRandom() % 2 == 0;
            std::string sLine(tRandom() % 40, static_cast<char>('a' + tRandom() % 26));
            if (tRandom() % 2 == 0) {
                t.Add(sLine, bMark);
            } else {  // the text goes at the end of this turn
                t.AddView(sLine, bMark);
                t.KeepViews();
            }
            if (tQueue.size() > 100) tQueue.pop_front();
            tQueue.emplace_back(std::move(sLine), bMark);
        }
        QCOMPARE(static_cast<std::size_t>(t.Count()), tQueue.size());
        for (int iLine = 0; iLine < t.Count(); ++iLine) {
            const auto& [sLine, bMark] = tQueue[static_cast<std::size_t>(iLine)];
            QVERIFY(t.Line(iLine) == sLine && t.Mark(iLine) == bMark);
        }
    }
}

QTEST_GUILESS_MAIN(LogLinesTest)
#include "LogLinesTest.moc"
