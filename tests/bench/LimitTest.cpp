// The benchmark's plain loop comes to the same totals as the window: otherwise their rates could not be compared.
#include "tests/bench/Limit.h"

#include <QTest>

#include "tests/bench/LimitCheck.h"
#include "tools/RecordWriter.h"

namespace {

std::string FileOf(simulator::RecordKind tKind, int iTargets, std::int64_t lLines) {
    if (iTargets > 0) tKind.tTraffic.iTargets = iTargets;
    simulator::RecordWriter tWriter(tKind, lLines);
    std::string s;
    for (std::int64_t l = 0; l < lLines; ++l) tWriter.AppendLine(s);
    return s;
}

void Play(support::TestWindow& t, const std::string& sFile) {
    support::World& tWorld = t.TheWorld();
    tWorld.WriteFile(tWorld.Path(QStringLiteral("record.txt")), sFile);
    tWorld.tFileAnswers = {tWorld.Path(QStringLiteral("record.txt"))};
    t.Press("Playback Burst");
}

}  // namespace

class LimitTest : public QObject {
    Q_OBJECT

private slots:
    void windowComesToTheSame_data();
    void windowComesToTheSame();
    void everyDifferenceIsSeen_data();
    void everyDifferenceIsSeen();
};

void LimitTest::windowComesToTheSame_data() {
    QTest::addColumn<std::string>("sKind");
    QTest::addColumn<int>("iTargets");
    QTest::addColumn<std::int64_t>("lLines");
    QTest::newRow("mixed") << std::string("mixed") << 0 << std::int64_t{20000};
    QTest::newRow("reports") << std::string("reports") << 0 << std::int64_t{20000};
    QTest::newRow("many ships") << std::string("mixed") << 3000 << std::int64_t{20000};
    QTest::newRow("across midnight") << std::string("night") << 0 << std::int64_t{11500};
    QTest::newRow("damaged, ends at an impossible date") << std::string("damaged") << 0 << std::int64_t{4000};
    QTest::newRow("few lines") << std::string("mixed") << 0 << std::int64_t{60};
}

void LimitTest::windowComesToTheSame() {
    QFETCH(std::string, sKind);
    QFETCH(int, iTargets);
    QFETCH(std::int64_t, lLines);
    const std::string sFile = FileOf(*simulator::FindRecordKind(sKind), iTargets, lLines);
    bench::Limit tLimit;
    tLimit.Read(sFile);
    QVERIFY(tLimit.lReports > 0);

    support::World tWorld;
    support::TestWindow t(tWorld);
    t.LoadAndShow();
    Play(t, sFile);
    const std::string sDifference = bench::FirstDifference(tLimit, t);
    QVERIFY2(sDifference.empty(), sDifference.c_str());
}

// The window plays one sentence and the loop reads another at the same place, iFromEnd lines before the end.
void LimitTest::everyDifferenceIsSeen_data() {
    QTest::addColumn<int>("iFromEnd");
    QTest::addColumn<std::string>("sPlayed");
    QTest::addColumn<std::string>("sRead");
    QTest::addColumn<std::string>("sDifference");
    const auto Message = [](const char* sChannel, const char* sType) {
        const std::string sBody =
            "!AIVDM,1,1,," + std::string(sChannel) + "," + sType + "000000000000000000000000000,0";
        return support::TestWindow::WithChecksum(sBody);
    };
    QTest::newRow("type") << 700 << Message("B", "G") << Message("B", "0") << std::string("type 23: window \"1\"");
    QTest::newRow("ship") << 700 << std::string("$GPXXX") << Message("B", "0") << std::string("ships: window");
    QTest::newRow("line") << 50 << std::string("$GPXXX,1") << std::string("$GPXXX,2") << std::string("raw line 50");
    QTest::newRow("row") << 200 << Message("A", "0") << Message("B", "0") << std::string("row ");
}

void LimitTest::everyDifferenceIsSeen() {
    QFETCH(int, iFromEnd);
    QFETCH(std::string, sPlayed);
    QFETCH(std::string, sRead);
    QFETCH(std::string, sDifference);
    const std::string sFile = FileOf(*simulator::FindRecordKind("reports"), 0, 2000);
    std::size_t iEnd = sFile.size() - 2;
    for (int i = 0; i < iFromEnd; ++i) iEnd = sFile.rfind("\r\n", iEnd - 1);
    const std::size_t iSentence = sFile.rfind("\r\n", iEnd - 1) + 2 + app::RecordSentenceColumn;
    const std::string sHead = sFile.substr(0, iSentence);
    const std::string sTail = sFile.substr(iEnd);

    const std::string sLimitFile = sHead + sRead + sTail;
    bench::Limit tLimit;
    tLimit.Read(sLimitFile);
    support::World tWorld;
    support::TestWindow t(tWorld);
    t.LoadAndShow();
    Play(t, sHead + sPlayed + sTail);
    const std::string sSeen = bench::FirstDifference(tLimit, t);
    QVERIFY2(sSeen.starts_with(sDifference), sSeen.c_str());
}

QTEST_MAIN(LimitTest)
#include "LimitTest.moc"
