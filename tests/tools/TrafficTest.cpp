// What is heard of the harbour: the order and the form of the lines, the intervals and the shares, and what gets lost.
#include "tools/Traffic.h"

#include <QTest>
#include <algorithm>
#include <cmath>
#include <map>
#include <set>

#include "SentenceReader.h"
#include "tools/DeviceSentences.h"

using namespace simulator;

namespace {

struct Report {
    double dSeconds;
    std::string sChannel;
    std::string sBits;
    int iSignal;
    int Type() const { return static_cast<int>(reader::Number(sBits, 0, 6)); }
    std::int64_t Mmsi() const { return reader::Number(sBits, 8, 30); }
    Fix Place() const {
        const std::size_t iLongitude = Type() <= 3 ? 61 : 57;
        return {static_cast<double>(reader::Signed(sBits, iLongitude + 28, 27)) / 600000.0,
                static_cast<double>(reader::Signed(sBits, iLongitude, 28)) / 600000.0};
    }
};

TrafficOptions Options(int iTargets, double dMissing = 0) {
    TrafficOptions t;
    t.iTargets = iTargets;
    t.dMissingPercent = dMissing;
    t.dtStart = runtime::MakeDateTime({2025, 6, 14}, 23, 30, 0);
    return t;
}

std::vector<TrafficLine> Lines(Traffic& tTraffic, double dSeconds) {
    std::vector<TrafficLine> tLines;
    for (TrafficLine t = tTraffic.Next(); static_cast<double>(t.lMilliseconds) < dSeconds * 1000.0;
         t = tTraffic.Next()) {
        tLines.push_back(t);
    }
    return tLines;
}

// Complete messages with the signal level behind them.
std::vector<Report> Reports(const std::vector<TrafficLine>& tLines) {
    std::vector<Report> tReports;
    std::string sPayload;
    for (const TrafficLine& t : tLines) {
        if (t.sText.rfind("$PNMLS,", 0) == 0) tReports.back().iSignal = std::stoi(t.sText.substr(7));
        if (!reader::IsVdm(t.sText)) continue;
        const reader::Vdm tVdm = reader::ReadVdm(t.sText);
        sPayload = tVdm.iPart == 1 ? tVdm.sPayload : sPayload + tVdm.sPayload;
        if (tVdm.iPart < tVdm.iCount) continue;
        std::string sBits = reader::BitsOf(sPayload);
        sBits.resize(sBits.size() - static_cast<std::size_t>(tVdm.iFillBits));
        tReports.push_back({static_cast<double>(t.lMilliseconds) / 1000.0, tVdm.sChannel, sBits, 0});
    }
    return tReports;
}

std::vector<std::string> Texts(const std::vector<TrafficLine>& tLines) {
    std::vector<std::string> s;
    for (const TrafficLine& t : tLines) s.push_back(t.sText);
    return s;
}

double MedianOf(std::vector<double> d) {
    std::sort(d.begin(), d.end());
    return d[d.size() / 2];
}

}  // namespace

class TrafficTest : public QObject {
    Q_OBJECT

private slots:
    void everyChecksumIsRight();
    void timeNeverRunsBackwards();
    void noSlotOfAChannelIsUsedTwice();
    void sameSeedSameTraffic();
    void otherSeedOtherTraffic();
    void eachKindOfMessageHasItsShare_data();
    void eachKindOfMessageHasItsShare();
    void everyKindIsHeardInAnHour();
    void targetsKeepTheirInterval_data();
    void targetsKeepTheirInterval();
    void stationsUseTheChannelsInTurn();
    void longMessagesComeInTwoSentences();
    void signalFollowsEachMessage();
    void nearShipsAreLouder();
    void gpsSpeaksOnceASecond();
    void lostReportsAreMissingAndNothingElse();
    void oneChannelCanBeChosen();
    void intervalIsTold();
    void damagedLinesAreAsManyAsWanted();
    void damageNeverEndsALine();
    void aCrowdIsHeardWithoutDelay();
    void plainFormsOfDeviceSentences();
};

void TrafficTest::everyChecksumIsRight() {
    Traffic tTraffic(Options(120, 5));
    const auto tLines = Lines(tTraffic, 600);
    QVERIFY(tLines.size() > 5000);
    for (const TrafficLine& t : tLines) {
        QVERIFY2(reader::ChecksumRight(t.sText), t.sText.c_str());
        QVERIFY(t.sText.size() <= LongestSentence);
    }
}

void TrafficTest::timeNeverRunsBackwards() {
    Traffic tTraffic(Options(120));
    std::int64_t lLast = 0;
    for (const TrafficLine& t : Lines(tTraffic, 1800)) {
        QVERIFY(t.lMilliseconds >= lLast);
        lLast = t.lMilliseconds;
    }
    QVERIFY(lLast > 1'799'000);
}

void TrafficTest::noSlotOfAChannelIsUsedTwice() {
    Traffic tTraffic(Options(300));
    std::set<std::pair<std::string, long>> tUsed;
    for (const Report& t : Reports(Lines(tTraffic, 600))) {
        QVERIFY(tUsed.insert({t.sChannel, std::lround(t.dSeconds * 1000)}).second);
    }
}

void TrafficTest::sameSeedSameTraffic() {
    Traffic tOne(Options(80, 10));
    Traffic tOther(Options(80, 10));
    QCOMPARE(Texts(Lines(tOne, 300)), Texts(Lines(tOther, 300)));
}

void TrafficTest::otherSeedOtherTraffic() {
    TrafficOptions tOptions = Options(80);
    tOptions.bGps = false;
    Traffic tOne(tOptions);
    tOptions.lSeed = 2;
    Traffic tOther(tOptions);
    QVERIFY(Texts(Lines(tOne, 60)) != Texts(Lines(tOther, 60)));
}

void TrafficTest::eachKindOfMessageHasItsShare_data() {
    QTest::addColumn<int>("iType");
    QTest::addColumn<double>("dLow");
    QTest::addColumn<double>("dHigh");
    QTest::newRow("scheduled positions are most") << 1 << 45.0 << 80.0;
    QTest::newRow("assigned") << 2 << 0.1 << 8.0;
    QTest::newRow("position responses") << 3 << 8.0 << 35.0;
    QTest::newRow("base stations") << 4 << 1.0 << 6.0;
    QTest::newRow("static data") << 5 << 1.5 << 6.0;
    QTest::newRow("time responses") << 11 << 0.05 << 1.0;
    QTest::newRow("interrogations") << 15 << 0.1 << 1.5;
    QTest::newRow("class B") << 18 << 3.0 << 15.0;
    QTest::newRow("class B extended") << 19 << 0.05 << 1.0;
    QTest::newRow("data link management") << 20 << 0.1 << 1.5;
    QTest::newRow("aids to navigation") << 21 << 0.1 << 1.5;
    QTest::newRow("class B static") << 24 << 0.2 << 3.0;
}

void TrafficTest::eachKindOfMessageHasItsShare() {
    QFETCH(int, iType);
    QFETCH(double, dLow);
    QFETCH(double, dHigh);
    static const std::vector<Report> tReports = [] {
        Traffic tTraffic(Options(150));
        return Reports(Lines(tTraffic, 3600));
    }();
    const auto lCount =
        std::count_if(tReports.begin(), tReports.end(), [&](const Report& t) { return t.Type() == iType; });
    const double dShare = 100.0 * static_cast<double>(lCount) / static_cast<double>(tReports.size());
    QVERIFY2(dShare > dLow && dShare < dHigh, std::to_string(dShare).c_str());
}

void TrafficTest::everyKindIsHeardInAnHour() {
    Traffic tTraffic(Options(100));
    std::set<int> iSeen;
    for (const Report& t : Reports(Lines(tTraffic, 3600))) iSeen.insert(t.Type());
    QCOMPARE(iSeen, (std::set<int>{1, 2, 3, 4, 5, 11, 15, 18, 19, 20, 21, 24}));
}

// The middle of the times between two reports of one target, both of which show the same state.
void TrafficTest::targetsKeepTheirInterval_data() {
    QTest::addColumn<std::string>("sState");
    QTest::addColumn<double>("dSeconds");
    QTest::newRow("moored") << std::string("moored") << 180.0;
    QTest::newRow("slow ship") << std::string("slow") << 10.0;
    QTest::newRow("slow ship turning") << std::string("slow turning") << 10.0 / 3.0;
    QTest::newRow("fast ship") << std::string("fast") << 6.0;
    QTest::newRow("fast ship turning") << std::string("fast turning") << 2.0;
    QTest::newRow("very fast ship") << std::string("very fast") << 2.0;
    QTest::newRow("boat that lies still") << std::string("boat still") << 180.0;
    QTest::newRow("boat under way") << std::string("boat") << 30.0;
    QTest::newRow("base station") << std::string("base") << 10.0;
    QTest::newRow("aid to navigation") << std::string("aid") << 180.0;
}

namespace {

// Empty where the rounded figures do not tell on which side of a limit the ship is.
std::string StateOf(const Report& t) {
    const int iType = t.Type();
    if (iType == 4) return "base";
    if (iType == 21) return "aid";
    if (iType == 18) {
        const auto lSpeed = reader::Number(t.sBits, 46, 10);
        return lSpeed < 20 ? "boat still" : lSpeed > 20 && lSpeed < 140 ? "boat" : "";
    }
    if (iType > 3) return "";
    const auto lStatus = reader::Number(t.sBits, 38, 4);
    if (lStatus == 1 || lStatus == 5) return "moored";
    const auto lSpeed = reader::Number(t.sBits, 50, 10);
    const auto lTurn = reader::Signed(t.sBits, 42, 8);
    if (lTurn == -128 || lSpeed == 1023 || lSpeed == 140 || lSpeed == 230) return "";
    if (lSpeed > 230) return lTurn == 0 ? "very fast" : "";
    return std::string(lSpeed < 140 ? "slow" : "fast") + (lTurn != 0 ? " turning" : "");
}

}  // namespace

void TrafficTest::targetsKeepTheirInterval() {
    QFETCH(std::string, sState);
    QFETCH(double, dSeconds);
    static const std::vector<Report> tReports = [] {
        Traffic tTraffic(Options(150));
        return Reports(Lines(tTraffic, 3600));
    }();
    std::map<std::int64_t, Report> tLast;
    std::vector<double> dGaps;
    for (const Report& t : tReports) {
        if (StateOf(t).empty() && t.Type() != 18 && t.Type() > 3) continue;
        const auto it = tLast.find(t.Mmsi());
        if (it != tLast.end() && StateOf(t) == sState && StateOf(it->second) == sState) {
            dGaps.push_back(t.dSeconds - it->second.dSeconds);
        }
        tLast[t.Mmsi()] = t;
    }
    QVERIFY(dGaps.size() >= 30);
    const double dMedian = MedianOf(dGaps);
    QVERIFY2(std::abs(dMedian - dSeconds) < 0.05 * dSeconds + 0.05, std::to_string(dMedian).c_str());
    // A tenth of the interval to either side at both ends, and up to two seconds for a free slot.
    const double dLongest = *std::max_element(dGaps.begin(), dGaps.end());
    QVERIFY2(dLongest < dSeconds * 1.2 + 2.1, std::to_string(dLongest).c_str());
}

void TrafficTest::stationsUseTheChannelsInTurn() {
    Traffic tTraffic(Options(100));
    std::map<std::int64_t, std::string> sLast;
    int iCompared = 0;
    for (const Report& t : Reports(Lines(tTraffic, 900))) {
        if (t.Type() == 24 || t.Type() == 18) continue;  // the two halves of 24 share a channel
        const auto it = sLast.find(t.Mmsi());
        if (it != sLast.end() && t.Type() != 19) {
            QVERIFY(it->second != t.sChannel);
            ++iCompared;
        }
        if (t.Type() != 19) sLast[t.Mmsi()] = t.sChannel;
    }
    QVERIFY(iCompared > 1000);
}

void TrafficTest::longMessagesComeInTwoSentences() {
    Traffic tTraffic(Options(100));
    const auto tLines = Lines(tTraffic, 720);
    int iPairs = 0;
    std::set<std::string> sSequences;
    for (std::size_t i = 0; i + 1 < tLines.size(); ++i) {
        if (!reader::IsVdm(tLines[i].sText)) continue;
        const reader::Vdm tFirst = reader::ReadVdm(tLines[i].sText);
        if (tFirst.iCount == 1) {
            QVERIFY(tFirst.sSequence.empty());
            continue;
        }
        if (tFirst.iPart != 1) continue;
        const reader::Vdm tSecond = reader::ReadVdm(tLines[i + 1].sText);
        QCOMPARE(tFirst.iCount, 2);
        QCOMPARE(tSecond.iCount, 2);
        QCOMPARE(tSecond.iPart, 2);
        QCOMPARE(tSecond.sSequence, tFirst.sSequence);
        QCOMPARE(tSecond.sChannel, tFirst.sChannel);
        const std::string sBits = reader::BitsOf(tFirst.sPayload + tSecond.sPayload);
        QCOMPARE(reader::Number(sBits, 0, 6), std::int64_t{5});
        QCOMPARE(static_cast<int>(sBits.size()) - tSecond.iFillBits, 424);
        QCOMPARE(tFirst.iFillBits, 0);
        sSequences.insert(tFirst.sSequence);
        ++iPairs;
    }
    QVERIFY(iPairs > 50);
    QCOMPARE(sSequences.size(), std::size_t{10});
}

void TrafficTest::signalFollowsEachMessage() {
    Traffic tTraffic(Options(100, 5));
    const auto tLines = Lines(tTraffic, 300);
    for (std::size_t i = 0; i + 1 < tLines.size(); ++i) {
        if (tLines[i].bGps) QVERIFY(tLines[i + 1].sText.rfind("$PNMLS", 0) != 0);
        if (!reader::IsVdm(tLines[i].sText)) continue;
        const reader::Vdm t = reader::ReadVdm(tLines[i].sText);
        if (t.iPart < t.iCount) continue;
        const std::string& sSignal = tLines[i + 1].sText;
        QVERIFY2(sSignal.rfind("$PNMLS,", 0) == 0, sSignal.c_str());
        const auto sFields = reader::Fields(sSignal.substr(7, sSignal.find('*') - 7));
        QCOMPARE(sFields.size(), std::size_t{3});
        const int iSignal = std::stoi(sFields[0]);
        const int iThreshold = std::stoi(sFields[1]);
        QVERIFY(iSignal >= 15 && iSignal <= 45);
        QVERIFY(iThreshold >= 15 && iThreshold <= iSignal);
        QCOMPARE(sFields[2], std::string("3"));
    }
}

void TrafficTest::nearShipsAreLouder() {
    Traffic tTraffic(Options(150));
    const Fix tOwn = Harbour(1, 0).Own(0).tFix;
    double dNear = 0, dFar = 0;
    int iNear = 0, iFar = 0;
    for (const Report& t : Reports(Lines(tTraffic, 120))) {
        if (t.Type() > 3 || t.Place().dLatitude > 90.0) continue;
        const double dMiles = DistanceMiles(tOwn, t.Place());
        if (dMiles < 5.0) dNear += t.iSignal, ++iNear;
        if (dMiles > 10.0) dFar += t.iSignal, ++iFar;
    }
    QVERIFY(iNear > 20 && iFar > 20);
    QVERIFY(dNear / iNear > dFar / iFar + 4.0);
}

void TrafficTest::gpsSpeaksOnceASecond() {
    Traffic tTraffic(Options(50));
    std::vector<std::string> sGps;
    for (const TrafficLine& t : Lines(tTraffic, 3)) {
        if (t.bGps) sGps.push_back(t.sText);
    }
    QCOMPARE(sGps.size(), std::size_t{6});
    const char* const sTimes[] = {"233000", "233001", "233002"};
    for (std::size_t i = 0; i < 3; ++i) {
        const auto sGll = reader::Fields(sGps[2 * i]);
        const auto sRmc = reader::Fields(sGps[2 * i + 1]);
        QCOMPARE(sGll[0], std::string("$GPGLL"));
        QCOMPARE(sRmc[0], std::string("$GPRMC"));
        QCOMPARE(sGll[5], std::string(sTimes[i]));
        QCOMPARE(sRmc[1], std::string(sTimes[i]));
        QCOMPARE(sGll[6], std::string("A"));
        QCOMPARE(sRmc[2], std::string("A"));
        QCOMPARE(sRmc[9], std::string("140625"));
        // The same place in both, at the harbour.
        for (std::size_t k = 0; k < 4; ++k) QCOMPARE(sRmc[3 + k], sGll[1 + k]);
        QCOMPARE(sGll[1].substr(0, 2), std::string("50"));
        QCOMPARE(sGll[2], std::string("N"));
        QCOMPARE(sGll[3].substr(0, 3), std::string("001"));
        QCOMPARE(sGll[4], std::string("W"));
    }
}

void TrafficTest::lostReportsAreMissingAndNothingElse() {
    TrafficOptions tOptions = Options(120);
    tOptions.bSignal = false;
    Traffic tAll(tOptions);
    tOptions.dMissingPercent = 30;
    Traffic tSome(tOptions);
    const auto tEverything = Reports(Lines(tAll, 600));
    const auto tHeard = Reports(Lines(tSome, 600));
    std::multiset<std::string> sSent;
    for (const Report& t : tEverything) sSent.insert(t.sBits);
    for (const Report& t : tHeard) QVERIFY(sSent.count(t.sBits) > 0);
    const double dShare = static_cast<double>(tHeard.size()) / static_cast<double>(tEverything.size());
    QVERIFY(dShare > 0.66 && dShare < 0.74);
}

void TrafficTest::oneChannelCanBeChosen() {
    Traffic tTraffic(Options(100));
    Lines(tTraffic, 10);
    const auto HeardUntil = [&](double dSeconds) {
        std::set<std::string> sHeard;
        for (const Report& t : Reports(Lines(tTraffic, dSeconds))) sHeard.insert(t.sChannel);
        return sHeard;
    };
    tTraffic.SetChannel('A');
    QCOMPARE(HeardUntil(60), std::set<std::string>{"A"});
    tTraffic.SetChannel('B');
    QCOMPARE(HeardUntil(120), std::set<std::string>{"B"});
    tTraffic.SetChannel('S');
    QCOMPARE(HeardUntil(180), (std::set<std::string>{"A", "B"}));
}

void TrafficTest::intervalIsTold() {
    Traffic tTraffic(Options(100));
    tTraffic.SetInterval(5);
    int iSignals = 0;
    for (const TrafficLine& t : Lines(tTraffic, 10)) {
        if (t.sText.rfind("$PNMLS,", 0) != 0) continue;
        ++iSignals;
        QCOMPARE(t.sText.substr(t.sText.size() - 5, 3), std::string(",5*"));
    }
    QVERIFY(iSignals > 10);
}

void TrafficTest::damagedLinesAreAsManyAsWanted() {
    TrafficOptions tOptions = Options(120);
    tOptions.dDamagedPercent = 20;
    Traffic tTraffic(tOptions);
    const auto tLines = Lines(tTraffic, 600);
    const auto lWrong = std::count_if(tLines.begin(), tLines.end(),
                                      [](const TrafficLine& t) { return !reader::ChecksumRight(t.sText); });
    const double dShare = static_cast<double>(lWrong) / static_cast<double>(tLines.size());
    QVERIFY2(dShare > 0.17 && dShare < 0.23, std::to_string(dShare).c_str());
}

void TrafficTest::damageNeverEndsALine() {
    Random tChance(9);
    for (int i = 0; i < 20000; ++i) {
        const std::string sBefore = "$PNMLS,31,17,3*56";
        std::string s = sBefore;
        Damage(s, tChance);
        QVERIFY(s != sBefore);
        QVERIFY(!s.empty());
        QVERIFY(s.find_first_of("\r\n") == std::string::npos);
    }
}

// Far more ships than there are slots: what finds no free slot is not sent, and nobody waits for long.
void TrafficTest::aCrowdIsHeardWithoutDelay() {
    TrafficOptions tOptions = Options(3000);
    tOptions.bSignal = false;
    tOptions.bGps = false;
    Traffic tTraffic(tOptions);
    const auto tReports = Reports(Lines(tTraffic, 60));
    QVERIFY(tReports.size() > 3000);  // of 4,500 slots
    QVERIFY(tReports.size() <= 4500);
}

void TrafficTest::plainFormsOfDeviceSentences() {
    Motion t;
    t.tFix = {-(50.0 + 59.9996 / 60.0), 5.0 + 7.5 / 60.0};
    t.dSpeed = 4.0;
    t.dCourse = 7.25;
    const auto dt = runtime::MakeDateTime({2025, 6, 4}, 1, 2, 3);
    const std::string sGll = GllSentence(t, dt);
    const std::string sRmc = RmcSentence(t, dt);
    QCOMPARE(sGll.substr(0, sGll.size() - 3), std::string("$GPGLL,5100.000,S,00507.500,E,010203,A,A"));
    QCOMPARE(sRmc.substr(0, sRmc.size() - 3),
             std::string("$GPRMC,010203,A,5100.000,S,00507.500,E,4.0,007.3,040625,,,A"));
    QVERIFY(reader::ChecksumRight(sGll));
    QVERIFY(reader::ChecksumRight(sRmc));
    QCOMPARE(SignalSentence(19, 15, 7).substr(0, 15), std::string("$PNMLS,19,15,7*"));
}

QTEST_GUILESS_MAIN(TrafficTest)
#include "TrafficTest.moc"
