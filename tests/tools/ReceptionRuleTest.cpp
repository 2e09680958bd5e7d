// What a simulated receiver hears: the shares of its rule, the level of its curve, and that traffic, truth and file
// keep to them.
#include "tools/ReceptionRule.h"

#include <QTest>
#include <cmath>
#include <map>

#include "SentenceReader.h"
#include "decoders/SignalSentence.h"
#include "tools/DeviceSentences.h"
#include "tools/RecordWriter.h"

using namespace simulator;

namespace {

ReceptionRule Rule(std::vector<const char*> sWords) {
    sWords.insert(sWords.begin(), "program");
    return ReadReceptionRule(Arguments(static_cast<int>(sWords.size()), sWords.data(), ReceptionOptions));
}

RecordKind Sea(const ReceptionRule& tRule, std::uint64_t lChance = 0) {
    RecordKind t = *FindRecordKind("sea");
    t.tTraffic.tRule = tRule;
    t.tTraffic.lChance = lChance;
    return t;
}

// A quarter of an hour of it.
struct Recording {
    std::string sText;
    std::vector<SentMessage> tSent;
};

Recording Record(const RecordKind& tKind) {
    Recording t;
    RecordWriter tWriter(tKind, 0);
    tWriter.TellSent([&](const SentMessage& tMessage) { t.tSent.push_back(tMessage); });
    while (tWriter.Milliseconds() < 900'000) tWriter.AppendLine(t.sText);
    return t;
}

double ShareHeard(const Recording& t, const std::function<bool(const SentMessage&)>& Counts) {
    double dSent = 0, dHeard = 0;
    for (const SentMessage& tMessage : t.tSent) {
        if (!Counts(tMessage)) continue;
        ++dSent;
        dHeard += tMessage.bHeard ? 1 : 0;
    }
    return dSent < 300 ? -1 : dHeard / dSent;
}

std::size_t Find(const std::string& s, const char* sWhat) {
    std::size_t iFound = 0;
    for (std::size_t i = s.find(sWhat); i != std::string::npos; i = s.find(sWhat, i + 1)) ++iFound;
    return iFound;
}

}  // namespace

class ReceptionRuleTest : public QObject {
    Q_OBJECT

private slots:
    void everythingUnlessTold();
    void byRangeInStraightLinesAndSteps();
    void shadowBetweenBearingsFromADistanceOn();
    void sharesMultiply();
    void whatCannotBeReadIsRefused_data();
    void whatCannotBeReadIsRefused();
    void curveIsTheReceiversBothWays();
    void globeIsExact();
    void truthTellsWhatIsHeard();
    void otherChanceLosesOthersOfTheSame();
    void offsetMovesLevels();
    void clockMovesStampsAlone();
};

void ReceptionRuleTest::everythingUnlessTold() { QCOMPARE(Rule({}).Share(33, 270, 'B'), 1.0); }

void ReceptionRuleTest::byRangeInStraightLinesAndSteps() {
    const ReceptionRule t = Rule({"--heard", "2:90,10:50,20:50,20:10"});
    for (const auto& [dMiles, dShare] :
         std::map<double, double>{{0, 0.9}, {2, 0.9}, {4, 0.8}, {10, 0.5}, {19.999, 0.5}, {20, 0.1}, {100, 0.1}}) {
        QVERIFY2(std::abs(t.Share(dMiles, 0, 'A') - dShare) < 1e-3, std::to_string(dMiles).c_str());
    }
}

void ReceptionRuleTest::shadowBetweenBearingsFromADistanceOn() {
    const ReceptionRule t = Rule({"--shadow", "40-80:8:10"});
    const ReceptionRule tNorth = Rule({"--shadow", "350-20:0:0"});
    QCOMPARE(t.Share(8, 40, 'A'), 0.1);
    QCOMPARE(t.Share(30, 79.9, 'A'), 0.1);
    QCOMPARE(t.Share(7.9, 60, 'A'), 1.0);
    QCOMPARE(t.Share(30, 80, 'A'), 1.0);
    QCOMPARE(t.Share(30, 39.9, 'A'), 1.0);
    for (const double d : {350.0, 359.9, 0.0, 19.9}) QCOMPARE(tNorth.Share(1, d, 'A'), 0.0);
    for (const double d : {20.0, 180.0, 349.9}) QCOMPARE(tNorth.Share(1, d, 'A'), 1.0);
}

void ReceptionRuleTest::sharesMultiply() {
    const ReceptionRule t =
        Rule({"--heard", "0:50", "--shadow", "0-90:0:50", "--heard-a", "80", "--heard-b", "40", "--share", "50"});
    QVERIFY(std::abs(t.Share(1, 45, 'A') - 0.1) < 1e-12);
    QVERIFY(std::abs(t.Share(1, 145, 'B') - 0.1) < 1e-12);
}

void ReceptionRuleTest::whatCannotBeReadIsRefused_data() {
    QTest::addColumn<std::string>("sName");
    QTest::addColumn<std::string>("sValue");
    const std::pair<const char*, const char*> sCases[] = {
        {"--heard", "5"},        {"--heard", "5:x"},        {"--heard", "5:101"},      {"--heard", "5:50,4:40"},
        {"--shadow", "40-80:8"}, {"--shadow", "40:80:8:1"}, {"--shadow", "1-2:3:101"}, {"--heard-a", "-1"},
        {"--share", "101"},      {"--level", "21"},         {"--level", "loud"},       {"--heard", "1:2:3"}};
    for (const auto& [sName, sValue] : sCases) {
        QTest::newRow((std::string(sName) + " " + sValue).c_str()) << std::string(sName) << std::string(sValue);
    }
}

void ReceptionRuleTest::whatCannotBeReadIsRefused() {
    QFETCH(std::string, sName);
    QFETCH(std::string, sValue);
    QVERIFY_EXCEPTION_THROWN(Rule({sName.c_str(), sValue.c_str()}), ArgumentError);
}

void ReceptionRuleTest::curveIsTheReceiversBothWays() {
    for (int i = 0; i < 100; ++i) {
        QCOMPARE(DbmOfLevel(i), decoders::SignalToDbm(std::to_string(i)));
        QVERIFY(std::abs(LevelOfDbm(DbmOfLevel(i + 0.37)) - (i + 0.37)) < 1e-9);
    }
}

// Against values worked out by hand: a degree of latitude, and one of longitude at 60 degrees north.
void ReceptionRuleTest::globeIsExact() {
    QVERIFY(std::abs(GlobeMiles({50, -1}, {51, -1}) - 60) < 1e-9);
    QVERIFY(std::abs(GlobeMiles({60, 5}, {60, 6}) - 29.9989) < 1e-3);
    QVERIFY(std::abs(GlobeBearing({50, -1}, {51, -1})) < 1e-9);
    QVERIFY(std::abs(GlobeBearing({0, 0}, {0, -1}) - 270) < 1e-9);
}

void ReceptionRuleTest::truthTellsWhatIsHeard() {
    const ReceptionRule tRule = Rule({"--heard", "0:90,20:90,20:50", "--shadow", "180-270:0:50", "--heard-b", "80"});
    const Recording t = Record(Sea(tRule));
    std::size_t iHeard = 0;
    for (const SentMessage& tMessage : t.tSent) iHeard += tMessage.bHeard ? 1 : 0;
    QCOMPARE(Find(t.sText, "$PNMLS"), iHeard);
    const auto IsA = [](const SentMessage& s) { return s.sChannel == 'A'; };
    const auto IsNear = [](const SentMessage& s) { return s.dMiles < 20; };
    const auto IsClear = [](const SentMessage& s) { return s.dBearing < 180 || s.dBearing > 270; };
    const std::map<double, std::function<bool(const SentMessage&)>> Cases = {
        {0.9, [&](const SentMessage& s) { return IsA(s) && IsNear(s) && IsClear(s); }},
        {0.5, [&](const SentMessage& s) { return IsA(s) && !IsNear(s) && IsClear(s); }},
        {0.4, [&](const SentMessage& s) { return !IsA(s) && !IsNear(s) && IsClear(s); }},
        {0.25, [&](const SentMessage& s) { return IsA(s) && !IsNear(s) && !IsClear(s); }},
    };
    for (const auto& [dShare, Counts] : Cases) {
        // 4 standard errors at some 500 and more reports
        QVERIFY2(std::abs(ShareHeard(t, Counts) - dShare) < 0.08, std::to_string(dShare).c_str());
    }
}

void ReceptionRuleTest::otherChanceLosesOthersOfTheSame() {
    const Recording t = Record(Sea(Rule({"--share", "50"})));
    const Recording tOther = Record(Sea(Rule({"--share", "50"}), 2));
    const std::size_t iCount = std::min(t.tSent.size(), tOther.tSent.size());
    QVERIFY(iCount > 5000);
    double dBoth = 0;
    for (std::size_t i = 0; i < iCount; ++i) {
        QCOMPARE(t.tSent[i].lMilliseconds, tOther.tSent[i].lMilliseconds);
        QCOMPARE(t.tSent[i].lMmsi, tOther.tSent[i].lMmsi);
        QCOMPARE(t.tSent[i].dMiles, tOther.tSent[i].dMiles);
        dBoth += t.tSent[i].bHeard && tOther.tSent[i].bHeard ? 1 : 0;
    }
    QVERIFY(std::abs(dBoth / static_cast<double>(iCount) - 0.25) < 0.03);  // the one tells nothing of the other
}

void ReceptionRuleTest::offsetMovesLevels() {
    const Recording t = Record(Sea({}));
    const Recording tLouder = Record(Sea(Rule({"--level", "2"})));
    QCOMPARE(t.tSent.size(), tLouder.tSent.size());
    double dStep = 0, dLouder = 0;
    for (std::size_t i = 0; i < t.tSent.size(); ++i) {
        QVERIFY(std::abs(tLouder.tSent[i].dDbm - t.tSent[i].dDbm - 2) < 1e-9);
    }
    // In the file too, but for the board's whole steps and the ends of its scale.
    const auto Sum = [](const std::string& s) {
        double d = 0;
        for (std::size_t i = s.find("$PNMLS,"); i != std::string::npos; i = s.find("$PNMLS,", i + 1)) {
            d += DbmOfLevel(std::stoi(s.substr(i + 7)));
        }
        return d;
    };
    const auto dCount = static_cast<double>(Find(t.sText, "$PNMLS"));
    dStep = Sum(t.sText) / dCount;
    dLouder = Sum(tLouder.sText) / dCount;
    QVERIFY2(std::abs(dLouder - dStep - 2) < 0.15, std::to_string(dLouder - dStep).c_str());
}

void ReceptionRuleTest::clockMovesStampsAlone() {
    RecordKind tKind = Sea({});
    const std::string sRight = Record(tKind).sText;
    tKind.lClockSeconds = 61;
    const std::string sFast = Record(tKind).sText;
    QCOMPARE(sRight.substr(0, 19), std::string("06/14/2025 08:00:00"));
    QCOMPARE(sFast.substr(0, 19), std::string("06/14/2025 08:01:01"));
    QCOMPARE(sFast.substr(19, 60), sRight.substr(19, 60));
    QCOMPARE(sFast.size(), sRight.size());
}

QTEST_GUILESS_MAIN(ReceptionRuleTest)
#include "ReceptionRuleTest.moc"
