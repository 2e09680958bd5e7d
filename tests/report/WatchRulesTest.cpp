// Each trouble is told of once when it begins and once when it is over, at the time at which its rule says so; the
// clock is the test's.
#include "report/WatchRules.h"

#include <QTest>

using report::Trouble;
using report::WatchRules;

namespace {

constexpr std::int64_t Hour = 3600;
constexpr std::int64_t Day = 24 * Hour;
const std::int64_t Midnight = runtime::MakeDateTime({2025, 6, 14}, 0, 0, 0).lSeconds;

// "quiet" or "quiet over", with what belongs to it.
QByteArray Text(const report::WatchEvent& t) {
    QByteArray s = t.eTrouble == Trouble::Quiet ? "quiet" : t.eTrouble == Trouble::Stopped ? "stopped" : "below";
    if (t.bOver) s += " over";
    if (t.lHeard) return s + " " + QByteArray::number(*t.lHeard) + " of " + QByteArray::number(*t.dUsual);
    return s + " " + QByteArray::number(t.dSeconds);
}

QByteArray Texts(const std::vector<report::WatchEvent>& tEvents) {
    QByteArrayList s;
    for (const auto& t : tEvents) s += Text(t);
    return s.join(", ");
}

report::WatchLimits Limits() { return {600, 300, 50, 3}; }

// An hour with so many messages, begun and ended by other lines.
void PlayHour(WatchRules& t, std::int64_t lStart, int iMessages) {
    t.Line({lStart});
    for (int i = 0; i < iMessages; ++i) {
        t.Line({lStart + 10 + i});
        t.Message();
    }
    t.Line({lStart + Hour - 1});
}

// Days with the same number of messages in each hour from 8 to 12. Those of 8 and 12 are not whole: nobody saw them
// begin or end.
void PlayDays(WatchRules& t, const std::vector<int>& iMessages) {
    std::int64_t lDay = Midnight - static_cast<std::int64_t>(iMessages.size()) * Day;
    for (const int i : iMessages) {
        for (int iHour = 8; iHour < 13; ++iHour) PlayHour(t, lDay + iHour * Hour, i);
        lDay += Day;
    }
}

}  // namespace

class WatchRulesTest : public QObject {
    Q_OBJECT

private slots:
    void stoppedIsToldOnceAndOnceWhenOver();
    void quietIsTheFileThatGrowsWithoutMessages();
    void aFileThatStopsIsNotQuiet();
    void theTimesCountFromTheBeginning();
    void anHourBelowTheUsual();
    void anHourWithoutAnyLine();
    void aFileThatWasOverBeforeIsNotJudged();
    void whatIsUsual_data();
    void whatIsUsual();
    void hoursThatCannotBeJudged_data();
    void hoursThatCannotBeJudged();
    void theUsualIsThatOfTheLastDays();
};

void WatchRulesTest::stoppedIsToldOnceAndOnceWhenOver() {
    WatchRules t(Limits());
    t.Begin(1000);
    t.Grew();
    QCOMPARE(Texts(t.Tick(1010)), "");
    QCOMPARE(Texts(t.Tick(1309.9)), "");
    QCOMPARE(Texts(t.Tick(1310)), "stopped 300");
    QCOMPARE(Texts(t.Tick(1311)), "");
    QCOMPARE(Texts(t.Tick(9000)), "");
    t.Grew();
    QCOMPARE(Texts(t.Tick(9010)), "stopped over 8000");
    QCOMPARE(Texts(t.Tick(9011)), "");
    QCOMPARE(Texts(t.Tick(9310)), "stopped 300");
}

void WatchRulesTest::quietIsTheFileThatGrowsWithoutMessages() {
    WatchRules t(Limits());
    t.Line({Midnight});
    t.Message();
    t.Begin(0);
    for (int i = 1; i < 60; ++i) {
        t.Grew();
        t.Line({Midnight + i * 10});
        QCOMPARE(Texts(t.Tick(i * 10)), "");
    }
    t.Grew();
    QCOMPARE(Texts(t.Tick(600)), "quiet 600");
    t.Grew();
    QCOMPARE(Texts(t.Tick(700)), "");
    t.Grew();
    t.Line({Midnight + 710});
    t.Message();
    QCOMPARE(Texts(t.Tick(710)), "quiet over 710");
    t.Grew();
    QCOMPARE(Texts(t.Tick(720)), "");
}

void WatchRulesTest::aFileThatStopsIsNotQuiet() {
    WatchRules t(Limits());
    t.Begin(0);
    QCOMPARE(Texts(t.Tick(300)), "stopped 300");
    QCOMPARE(Texts(t.Tick(5000)), "");
    // It grows again, still without a message: quiet only when that goes on.
    for (int i = 5001; i < 5601; i += 100) {
        t.Grew();
        QCOMPARE(Texts(t.Tick(i)), i == 5001 ? "stopped over 5001" : "");
    }
    t.Grew();
    QCOMPARE(Texts(t.Tick(5601)), "quiet 5601");
}

void WatchRulesTest::theTimesCountFromTheBeginning() {
    WatchRules t(Limits());
    t.Grew();  // what stood in the file before
    t.Begin(1e6);
    QCOMPARE(Texts(t.Tick(1e6 + 299)), "");
    QCOMPARE(Texts(t.Tick(1e6 + 300)), "stopped 300");
}

void WatchRulesTest::anHourBelowTheUsual() {
    WatchRules t(Limits());
    PlayDays(t, {100, 90, 110});
    PlayHour(t, Midnight + 8 * Hour, 0);  // the first of the day is not whole
    t.Begin(0);
    QCOMPARE(t.HoursKnown(), 3);
    PlayHour(t, Midnight + 9 * Hour, 50);
    PlayHour(t, Midnight + 10 * Hour, 49);
    QCOMPARE(Texts(t.Tick(1)), "");  // half of it is not below half, and the second may still go on
    PlayHour(t, Midnight + 11 * Hour, 10);
    QCOMPARE(Texts(t.Tick(2)), "below 49 of 100");
    t.Line({Midnight + 12 * Hour});
    QCOMPARE(Texts(t.Tick(3)), "");  // still below: told of already
    WatchRules tAgain(Limits());
    PlayDays(tAgain, {100, 90, 110});
    PlayHour(tAgain, Midnight + 8 * Hour, 0);
    tAgain.Begin(0);
    PlayHour(tAgain, Midnight + 9 * Hour, 1);
    PlayHour(tAgain, Midnight + 10 * Hour, 80);
    tAgain.Line({Midnight + 11 * Hour});
    QCOMPARE(Texts(tAgain.Tick(1)), "below 1 of 100, below over 80 of 100");
}

// Its end comes by the clock, a minute late for what is still on its way.
void WatchRulesTest::anHourWithoutAnyLine() {
    WatchRules t({100000, 100000, 50, 3});
    PlayDays(t, {100, 100, 100});
    t.Line({Midnight + 8 * Hour});
    t.Begin(-100);
    QCOMPARE(Texts(t.Tick(-50)), "");
    t.Line({Midnight + 9 * Hour - 1});
    QCOMPARE(Texts(t.Tick(0)), "");
    QCOMPARE(Texts(t.Tick(1 + Hour + 59)), "");
    QCOMPARE(Texts(t.Tick(1 + Hour + 60)), "below 0 of 100");
    QCOMPARE(Texts(t.Tick(1 + 2 * Hour + 60)), "");
}

void WatchRulesTest::aFileThatWasOverBeforeIsNotJudged() {
    WatchRules t({100000, 100000, 50, 3});
    PlayDays(t, {100, 100, 100});
    PlayHour(t, Midnight + 8 * Hour, 100);
    t.Line({Midnight + 9 * Hour});
    t.Begin(0);
    QCOMPARE(Texts(t.Tick(5 * Hour)), "");
}

void WatchRulesTest::whatIsUsual_data() {
    QTest::addColumn<QList<int>>("iDays");
    QTest::addColumn<QByteArray>("sExpected");
    QTest::newRow("median of three") << QList<int>{100, 300, 2} << QByteArray("below 1 of 100");
    QTest::newRow("mean of the two in the middle") << QList<int>{100, 20, 30, 1000} << QByteArray("below 1 of 65");
    QTest::newRow("two days are too few") << QList<int>{100, 100} << QByteArray("");
    QTest::newRow("usually nothing") << QList<int>{0, 0, 0} << QByteArray("");
}

void WatchRulesTest::whatIsUsual() {
    QFETCH(QList<int>, iDays);
    WatchRules t(Limits());
    PlayDays(t, {iDays.begin(), iDays.end()});
    PlayHour(t, Midnight + 8 * Hour, 5);
    t.Begin(0);
    PlayHour(t, Midnight + 9 * Hour, 1);
    t.Line({Midnight + 10 * Hour});
    QTEST(Texts(t.Tick(1)), "sExpected");
}

void WatchRulesTest::hoursThatCannotBeJudged_data() {
    QTest::addColumn<int>("iFirstLine");  // seconds after 9 o'clock
    QTest::addColumn<int>("iSecondLine");
    QTest::newRow("the recording went on in the middle") << int(30 * 60) << int(40 * 60);
    QTest::newRow("the clock was set back into it") << int(2 * Hour) << int(20 * 60);
}

void WatchRulesTest::hoursThatCannotBeJudged() {
    QFETCH(int, iFirstLine);
    QFETCH(int, iSecondLine);
    WatchRules t(Limits());
    PlayDays(t, {100, 100, 100});
    t.Begin(0);
    t.Line({Midnight + 9 * Hour + iFirstLine});
    t.Line({Midnight + 9 * Hour + iSecondLine});
    t.Line({Midnight + 10 * Hour});
    QCOMPARE(Texts(t.Tick(1)), "");
}

void WatchRulesTest::theUsualIsThatOfTheLastDays() {
    WatchRules t(Limits());
    std::vector<int> iDays(100, 1000);
    iDays.insert(iDays.end(), WatchRules::LongestMemory, 10);
    PlayDays(t, iDays);
    PlayHour(t, Midnight + 8 * Hour, 0);
    t.Begin(0);
    PlayHour(t, Midnight + 9 * Hour, 1);
    t.Line({Midnight + 10 * Hour});
    QCOMPARE(Texts(t.Tick(1)), "below 1 of 10");
}

QTEST_GUILESS_MAIN(WatchRulesTest)
#include "WatchRulesTest.moc"
