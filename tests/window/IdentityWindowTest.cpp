// An hour of simulated traffic: heard live on one port and recorded, then played back at its own pace, as a burst, and
// heard live once more from the record. Every run must leave the same table, counts, logs and record.
#include <QFileInfo>
#include <QTest>
#include <algorithm>

#include "tests/support/Bytes.h"
#include "tests/support/PrintString.h"
#include "tests/window/Bench.h"
#include "tests/window/Views.h"
#include "tools/Traffic.h"

using support::AnyReport;
using support::Bytes;
using support::Difference;
using support::ShownWindow;
using support::TestWindow;
using support::Views;
using support::World;

namespace {

constexpr std::int64_t Hour = 3600;  // seconds
constexpr int Targets = 40;
const runtime::DateTime Start = runtime::MakeDateTime({2011, 5, 15}, 23, 30, 0);  // passes midnight

struct TimedLine {
    std::int64_t lSecond;
    std::string sText;
};
using TimedLines = std::vector<TimedLine>;

TimedLines Simulated(std::uint64_t lSeed) {
    simulator::TrafficOptions tOptions;
    tOptions.lSeed = lSeed;
    tOptions.iTargets = Targets;
    tOptions.dtStart = Start;
    simulator::Traffic tTraffic(tOptions);
    TimedLines tLines;
    for (const simulator::TrafficLine* p = &tTraffic.Next(); p->lMilliseconds < Hour * 1000; p = &tTraffic.Next()) {
        tLines.push_back({p->lMilliseconds / 1000, p->sText});
    }
    return tLines;
}

// The lines of a record, read here on their own: 19 characters of stamp, a blank, the sentence, CR LF.
TimedLines Recorded(const std::string& sRecord) {
    TimedLines tLines;
    for (std::size_t i = 0; i < sRecord.size();) {
        const std::size_t iEnd = sRecord.find("\r\n", i);
        if (iEnd == std::string::npos) break;
        const std::string sLine = sRecord.substr(i, iEnd - i);
        const auto tNumber = [&sLine](std::size_t iAt) { return std::stoi(sLine.substr(iAt, 2)); };
        const std::int64_t lDay = tNumber(3) - 15;
        const std::int64_t lClock = tNumber(11) * 3600 + tNumber(14) * 60 + tNumber(17);
        tLines.push_back({lDay * 86400 + lClock - (23 * 3600 + 30 * 60), sLine.substr(20)});
        i = iEnd + 2;
    }
    return tLines;
}

void Prepare(TestWindow& t, int iSort, bool bTrack) {
    t.LoadAndShow();
    t.cmbTargetSort.SetListIndex(iSort);
    t.cmbTargetDetail.SetText("All");
    t.chkTargetTrack.setChecked(bTrack);
}

// Heard on the first port, the clocks ticking each second, and recorded.
std::string RunLive(TestWindow& t, const TimedLines& tLines) {
    World& tWorld = t.TheWorld();
    const QString sFile = tWorld.Path(QStringLiteral("record.txt"));
    tWorld.dtNow = Start;
    t.txtCommPort(0).SetText("1");
    t.Press("Start");
    tWorld.tFileAnswers = {sFile};
    t.Press("Record");
    for (const TimedLine& tLine : tLines) {
        while (tWorld.dtNow.lSeconds - Start.lSeconds < tLine.lSecond) t.Advance(1);
        t.FeedLine(0, tLine.sText);
    }
    t.Press("Stop");
    return tWorld.ReadFile(sFile);
}

}  // namespace

class IdentityWindowTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void hourOfTrafficIsTheSamePlayedBack_data();
    void hourOfTrafficIsTheSamePlayedBack();
    void linesOfBothPortsComeBackAsOne();
};

// The hours pass in seconds here: their record files go where bringing them to the disk costs nothing.
void IdentityWindowTest::initTestCase() {
    const QByteArray sMemory("/dev/shm");
    if (QFileInfo(QString::fromLatin1(sMemory)).isWritable()) qputenv("TMPDIR", sMemory);
}

void IdentityWindowTest::hourOfTrafficIsTheSamePlayedBack_data() {
    QTest::addColumn<int>("sort");
    QTest::addColumn<bool>("track");
    QTest::newRow("by MMSI") << 0 << false;
    QTest::newRow("by range, tracking") << 1 << true;
    QTest::newRow("by signal") << 2 << false;
}

void IdentityWindowTest::hourOfTrafficIsTheSamePlayedBack() {
    QFETCH(int, sort);
    QFETCH(bool, track);
    const TimedLines tLines = Simulated(static_cast<std::uint64_t>(sort) + 1);
    QVERIFY(tLines.size() > 20000);

    World tLiveWorld;
    TestWindow tLive(tLiveWorld);
    Prepare(tLive, sort, track);
    const std::string sRecord = RunLive(tLive, tLines);
    const QStringList sLive = Views(tLive);
    QVERIFY(std::stoi(tLive.Cell(tLive.grdMessageData, 34, 1)) > 5000);
    QCOMPARE(std::count(sRecord.begin(), sRecord.end(), '\n'), static_cast<std::ptrdiff_t>(tLines.size()));
    const QString sFile = tLiveWorld.Path(QStringLiteral("record.txt"));

    {
        World tWorld;
        tWorld.SetClock("2020-02-29T08:00:00");
        TestWindow t(tWorld);
        Prepare(t, sort, track);
        tWorld.tFileAnswers = {sFile};
        t.Press("Playback Burst");
        QCOMPARE(Difference(Views(t), sLive), QString());
    }
    {
        World tWorld;
        tWorld.SetClock("2020-02-29T08:00:00");
        TestWindow t(tWorld);
        Prepare(t, sort, track);
        tWorld.tFileAnswers = {sFile};
        t.Press("Playback");
        for (std::int64_t i = 0; i <= Hour && t.m_bPlayback; ++i) t.Advance(1);
        QCOMPARE(t.Panel(1), std::string("Done"));
        QCOMPARE(Difference(Views(t), sLive), QString());
    }
    QCOMPARE(Bytes(tLiveWorld.ReadFile(sFile)), Bytes(sRecord));  // playing back leaves the file alone
    {
        World tWorld;
        TestWindow t(tWorld);
        Prepare(t, sort, track);
        QVERIFY(RunLive(t, Recorded(sRecord)) == sRecord);
        QCOMPARE(Difference(Views(t), sLive), QString());
    }
}

// The file does not tell the ports apart: what both heard comes back on the first.
void IdentityWindowTest::linesOfBothPortsComeBackAsOne() {
    ShownWindow t;
    t.StartBoth();
    const QString sFile = t.tWorld.Path(QStringLiteral("both.txt"));
    t.tWorld.tFileAnswers = {sFile, sFile};
    t.Press("Record");
    const char* sReport = AnyReport;
    t.FeedLine(0, sReport);
    t.FeedLine(1, "$GPGLL,4916.45,N,12311.12,W,225444,A");
    t.FeedLine(0, "$PNMLS,29,19,3*50");
    QCOMPARE(t.Cell(t.grdTargetData, 1, 3), std::string("29"));  // the other port's line does not part the two
    t.Press("Stop");
    t.Press("Playback Burst");
    QCOMPARE(t.Lines(t.lstCommData(0)).size(), std::size_t{3});
    QVERIFY(t.Lines(t.lstCommData(1)).empty());
    QCOMPARE(t.Cell(t.grdTargetData, 1, 1), std::string("366053209"));
    QCOMPARE(t.Cell(t.grdTargetData, 1, 3), std::string());  // played back it does
}

QTEST_MAIN(IdentityWindowTest)
#include "IdentityWindowTest.moc"
