// Window and report hold together: the same file through the window's burst and through the report gives the same
// counts by type, the same ships, and for each of the newest messages the same ship, channel, levels, range and
// bearing.
#include <QFile>
#include <QTest>
#include <array>
#include <deque>
#include <set>

#include "platform/runtime/Format.h"
#include "report/Sequence.h"
#include "targets/TargetColumns.h"
#include "tests/support/TestWindow.h"
#include "tools/RecordWriter.h"

namespace {

constexpr std::size_t RowsCompared = 255;

// What the table shows of a message.
struct Row {
    std::string sMmsi, sChannel, sSignal, sThreshold, sRange, sBearing;
    friend bool operator==(const Row&, const Row&) = default;
};

class Heard : public report::Collector {
public:
    void Line(const report::LineEvent&) override { ++lLines; }
    void Message(const report::Report& t) override {
        if (t.lType > 0 && t.lType <= 32) ++lCounts[static_cast<std::size_t>(t.lType)];
        lShips.insert(t.lMmsi);
        if (tRows.size() == RowsCompared) tRows.pop_front();
        const auto Text = [](bool bThere, double d, runtime::Picture tPicture) {
            return bThere ? runtime::Format(d, tPicture) : std::string();
        };
        tRows.push_back({std::to_string(t.lMmsi),
                         std::string(report::ChannelNames[static_cast<std::size_t>(t.eChannel)]),
                         Text(t.bLevels, t.tLevels.dSignal, runtime::PictureWhole),
                         Text(t.bLevels, t.tLevels.dThreshold, runtime::PictureWhole),
                         Text(t.bRange, t.tFromUs.Range(), runtime::PictureTenths),
                         Text(t.bRange, t.tFromUs.Bearing(), runtime::PictureWhole)});
    }
    bool Finish() override { return true; }

    std::int64_t lLines = 0;
    std::array<std::int64_t, 33> lCounts{};
    std::set<std::int32_t> lShips;
    std::deque<Row> tRows;
};

std::string Simulated(const char* sKind, int iTargets, std::int64_t lLines) {
    simulator::RecordKind tKind = *simulator::FindRecordKind(sKind);
    if (iTargets > 0) tKind.tTraffic.iTargets = iTargets;
    simulator::RecordWriter tWriter(tKind, lLines);
    std::string s;
    for (std::int64_t l = 0; l < lLines; ++l) tWriter.AppendLine(s);
    return s;
}

// A sample up to its impossible date, where the window's playback ends.
std::string Sample(const QString& sName) {
    QFile t(QStringLiteral(TIDEWATCH_SAMPLES) + QLatin1Char('/') + sName);
    if (!t.open(QIODevice::ReadOnly)) qFatal("no sample");
    const std::string s = t.readAll().toStdString();
    const std::size_t lEnd = s.find("02/30/2025");
    return s.substr(0, lEnd);
}

std::vector<Row> WindowRows(support::TestWindow& t) {
    using namespace targets;
    std::map<std::int64_t, Row> tRows;
    const auto sNumbers = t.Column(ColNumber), sMmsi = t.Column(ColMmsi), sChannel = t.Column(ColChannel);
    const auto sSignal = t.Column(ColSignal), sThreshold = t.Column(ColThreshold);
    const auto sRange = t.Column(ColRange), sBearing = t.Column(ColBearing);
    for (std::size_t i = 0; i < sNumbers.size(); ++i) {
        tRows[std::stoll(sNumbers[i])] = {sMmsi[i], sChannel[i], sSignal[i], sThreshold[i], sRange[i], sBearing[i]};
    }
    std::vector<Row> tNewest;
    for (const auto& [lNumber, tRow] : tRows) tNewest.push_back(tRow);
    if (tNewest.size() > RowsCompared) tNewest.erase(tNewest.begin(), tNewest.end() - RowsCompared);
    return tNewest;
}

}  // namespace

class WindowAndReportTest : public QObject {
    Q_OBJECT

private slots:
    void sayTheSame_data();
    void sayTheSame();
};

void WindowAndReportTest::sayTheSame_data() {
    QTest::addColumn<std::string>("sFile");
    QTest::newRow("harbour") << Sample(QStringLiteral("harbour.txt"));
    QTest::newRow("night, across midnight") << Sample(QStringLiteral("night.txt"));
    QTest::newRow("damaged") << Sample(QStringLiteral("damaged.txt"));
    QTest::newRow("mixed") << Simulated("mixed", 0, 20000);
    QTest::newRow("reports alone") << Simulated("reports", 0, 20000);
    QTest::newRow("many ships") << Simulated("mixed", 3000, 20000);
    QTest::newRow("few lines") << Simulated("mixed", 0, 60);
    // The newest message is hit by levels twice: the first sentence of the next one stands before the second pair.
    const std::string sStamp = "06/14/2025 08:00:00 ";
    const auto Line = [&](std::string_view sBody) {
        return sStamp + support::TestWindow::WithChecksum(sBody) + "\r\n";
    };
    QTest::newRow("levels twice") << Line("!AIVDM,1,1,,A,15M67F@uQqG?w<hK?Mu8iFv00000,0") + Line("$PNMLS,29,19,3") +
                                         Line("!AIVDM,2,1,1,A,55P5TL01VIaAL@7WKO@mBplU@<PDhh000000001S,0") +
                                         Line("$PNMLS,39,21,3") + Line("$PNMLS,50,22,3");
}

void WindowAndReportTest::sayTheSame() {
    QFETCH(std::string, sFile);
    support::World tWorld;
    const QString sPath = tWorld.Path(QStringLiteral("record.txt"));
    tWorld.WriteFile(sPath, sFile);

    Heard tHeard;
    report::Sequence tSequence({QFile::encodeName(sPath).toStdString()}, report::OwnPosition());
    tSequence.Play(tHeard, [](double) {});
    QCOMPARE(tHeard.lLines, std::count(sFile.begin(), sFile.end(), '\n'));
    QVERIFY(!tHeard.tRows.empty());

    support::TestWindow t(tWorld);
    t.LoadAndShow();
    tWorld.tFileAnswers = {sPath};
    t.Press("Playback Burst");
    for (int i = 1; i <= 32; ++i) {
        QCOMPARE(t.Cell(t.grdMessageData, i, 1), std::to_string(tHeard.lCounts[static_cast<std::size_t>(i)]));
    }
    std::set<std::int32_t> lShips;
    const runtime::NumberItems& tItems = t.cmbTargetTarget.Items;
    for (int i = 0; i < tItems.Count(); ++i) lShips.insert(tItems.At(i).lNumber);
    QVERIFY(lShips == tHeard.lShips);

    const std::vector<Row> tRows = WindowRows(t);
    QCOMPARE(tHeard.tRows.size(), tRows.size());
    for (std::size_t i = 0; i < tRows.size(); ++i) {
        const Row &tWindow = tRows[i], &tReport = tHeard.tRows[i];
        QCOMPARE(tReport.sMmsi, tWindow.sMmsi);
        QCOMPARE(tReport.sChannel, tWindow.sChannel);
        QCOMPARE(tReport.sSignal, tWindow.sSignal);
        QCOMPARE(tReport.sThreshold, tWindow.sThreshold);
        QCOMPARE(tReport.sRange, tWindow.sRange);
        QCOMPARE(tReport.sBearing, tWindow.sBearing);
    }
}

QTEST_MAIN(WindowAndReportTest)
#include "WindowAndReportTest.moc"
