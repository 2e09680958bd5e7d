// How fast a million recorded lines go through the real window, from the press of Playback Burst to the text in panel
// 1, under every sort order, tracking off and on, with few ships and many, own position known. Beside it a plain loop
// that keeps the same (Limit.h) and, where it is installed, gpsdecode on the same sentences. Prints figures; ends with
// 1 when window and plain loop did not come to the same totals.
#include <sys/resource.h>

#include <QApplication>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <algorithm>
#include <array>
#include <cstdio>
#include <string>
#include <vector>

#include "targets/TargetColumns.h"
#include "tests/bench/Limit.h"
#include "tests/bench/LimitCheck.h"
#include "tests/support/TestWindow.h"
#include "tools/AisEncoding.h"
#include "tools/Random.h"
#include "tools/RecordWriter.h"

namespace {

constexpr std::int64_t Lines = 1000000;
constexpr int Rounds = 5;

double Median(std::vector<double> dValues) {
    std::ranges::sort(dValues);
    return dValues[dValues.size() / 2];
}

long PeakMegabytes() {
    rusage t{};
    getrusage(RUSAGE_SELF, &t);
    return t.ru_maxrss / 1024;
}

struct Recording {
    std::string sName;
    QString sRecord;     // a record file
    QString sSentences;  // its sentences alone
};

// A file's content, mapped while this lives.
class MappedFile {
public:
    explicit MappedFile(const QString& sPath) : m_tFile(sPath) {
        if (m_tFile.open(QIODevice::ReadOnly)) m_p = m_tFile.map(0, m_tFile.size());
    }
    std::string_view Content() const {
        return {reinterpret_cast<const char*>(m_p), m_p ? static_cast<std::size_t>(m_tFile.size()) : 0};
    }

private:
    QFile m_tFile;
    const uchar* m_p = nullptr;
};

struct Setting {
    int iSort = 0;
    bool bTrack = false;
    bool bDbm = false;
};

// Seconds that this process, or its children that have ended, have kept a processor busy. The clock on the wall would
// measure what else the machine is doing.
double ProcessorSeconds(int iWho) {
    rusage t{};
    getrusage(iWho, &t);
    const auto SecondsOf = [](const timeval& v) {
        return static_cast<double>(v.tv_sec) + static_cast<double>(v.tv_usec) * 1e-6;
    };
    return SecondsOf(t.ru_utime) + SecondsOf(t.ru_stime);
}

Recording Save(const support::World& tWorld, const std::string& sName, const std::string& sRecord) {
    std::string sSentences;
    for (std::size_t iStart = 0; iStart < sRecord.size();) {
        const std::size_t iEnd = sRecord.find('\n', iStart) + 1;
        sSentences.append(sRecord, iStart + app::RecordSentenceColumn, iEnd - iStart - app::RecordSentenceColumn);
        iStart = iEnd;
    }
    const QString sFile = QString::fromStdString(sName);
    Recording t{sName, tWorld.Path(sFile + QLatin1String(".txt")), tWorld.Path(sFile + QLatin1String(".nmea"))};
    tWorld.WriteFile(t.sRecord, sRecord);
    tWorld.WriteFile(t.sSentences, sSentences);
    return t;
}

// A kind of the simulator's.
Recording Simulated(const support::World& tWorld, const char* sKind) {
    simulator::RecordWriter tWriter(*simulator::FindRecordKind(sKind), Lines);
    std::string sRecord;
    for (std::int64_t i = 0; i < Lines; ++i) tWriter.AppendLine(sRecord);
    return Save(tWorld, sKind, sRecord);
}

// Position reports of so many ships, any of them at any time, a hundred a second: more than two radio channels carry.
Recording Fleet(const support::World& tWorld, int iShips) {
    constexpr std::int64_t LinesPerSecond = 100;
    const runtime::DateTime dtStart = runtime::MakeDateTime({2025, 6, 14}, 8, 0, 0);
    simulator::Random tChance(1);
    simulator::BitWriter tBits;
    std::string sRecord;
    for (std::int64_t i = 0; i < Lines; ++i) {
        const auto lShip = static_cast<std::uint32_t>(tChance.Whole(1, iShips));
        const simulator::Fix tFix{50.0 + tChance.Unit(), -1.5 + tChance.Unit()};
        const simulator::Motion tMotion{tFix, tChance.Between(0, 20), tChance.Between(0, 359), 90, 0};
        simulator::EncodePosition(tBits, 1, 200000000 + lShip * 3571, 0, 0, tMotion);
        runtime::AppendRecordStamp(sRecord, {dtStart.lSeconds + i / LinesPerSecond});
        sRecord += ' ';
        sRecord += simulator::VdmSentence(tBits.Payload(), tBits.FillBits(), i % 2 == 0 ? 'A' : 'B', 0, 1, 1);
        sRecord += "\r\n";
    }
    return Save(tWorld, "fleet of " + std::to_string(iShips), sRecord);
}

// A window ready to play the recording, the own position known.
void Prepare(support::TestWindow& t, const Recording& tRecording, const Setting& tSetting) {
    t.LoadAndShow();
    t.SSTab.SetTab(ui::TabTargets);
    t.txtGpsLat.SetText("51 30.00 N");
    t.txtGpsLon.SetText("001 20.00 E");
    t.cmbTargetSort.SetListIndex(tSetting.iSort);
    t.chkTargetTrack.setChecked(tSetting.bTrack);
    t.chkRxNasaPower.setChecked(tSetting.bDbm);
    t.TheWorld().tFileAnswers = {tRecording.sRecord};
    QApplication::processEvents();
}

double BurstRate(const Recording& tRecording, const Setting& tSetting) {
    std::vector<double> dRates;
    for (int i = 0; i < Rounds; ++i) {
        support::World tBurstWorld;
        support::TestWindow t(tBurstWorld);
        Prepare(t, tRecording, tSetting);
        const double dStart = ProcessorSeconds(RUSAGE_SELF);
        t.Press("Playback Burst");
        t.Synchronize();
        dRates.push_back(static_cast<double>(Lines) / (ProcessorSeconds(RUSAGE_SELF) - dStart));
    }
    return Median(dRates);
}

// Reading the file belongs to it.
double LimitRate(const Recording& tRecording) {
    std::vector<double> dRates;
    for (int i = 0; i < Rounds; ++i) {
        const double dStart = ProcessorSeconds(RUSAGE_SELF);
        const MappedFile tFile(tRecording.sRecord);
        bench::Limit tLimit;
        tLimit.Read(tFile.Content());
        dRates.push_back(static_cast<double>(Lines) / (ProcessorSeconds(RUSAGE_SELF) - dStart));
    }
    return Median(dRates);
}

// Whether window and plain loop come to the same; says where not.
bool SameTotals(const Recording& tRecording) {
    support::World tCheckWorld;
    support::TestWindow t(tCheckWorld);
    Prepare(t, tRecording, {});
    t.Press("Playback Burst");
    const MappedFile tFile(tRecording.sRecord);
    bench::Limit tLimit;
    tLimit.Read(tFile.Content());
    const std::string sDifference = bench::FirstDifference(tLimit, t);
    if (!sDifference.empty()) std::fprintf(stderr, "%s: %s\n", tRecording.sName.c_str(), sDifference.c_str());
    return sDifference.empty();
}

// SentenceDispatch in a loop, every line shown in the stores before the next, sorted by MMSI.
double DispatchRate(const Recording& tRecording) {
    std::vector<double> dRates;
    for (int i = 0; i < Rounds; ++i) {
        support::World tDispatchWorld;
        support::TestWindow t(tDispatchWorld);
        Prepare(t, tRecording, {});
        t.TargetGridSetup(true);
        const std::string sSentences = tDispatchWorld.ReadFile(tRecording.sSentences);
        t.m_dtCommLast(0) = tDispatchWorld.dtNow;
        const double dStart = ProcessorSeconds(RUSAGE_SELF);
        for (std::size_t lStart = 0; lStart < sSentences.size();) {
            const std::size_t lEnd = sSentences.find('\r', lStart);
            t.m_sCommBuffer(0).assign(std::string_view(sSentences).substr(lStart, lEnd - lStart));
            t.SentenceDispatch(0);
            lStart = lEnd + 2;
        }
        dRates.push_back(static_cast<double>(Lines) / (ProcessorSeconds(RUSAGE_SELF) - dStart));
    }
    return Median(dRates);
}

// gpsdecode on the same sentences; 0 where it is not installed.
double GpsdecodeRate(const Recording& tRecording) {
    const QString sProgram = QStandardPaths::findExecutable(QStringLiteral("gpsdecode"));
    if (sProgram.isEmpty()) return 0;
    std::vector<double> dRates;
    for (int i = 0; i < Rounds; ++i) {
        const double dStart = ProcessorSeconds(RUSAGE_CHILDREN);
        QProcess tProcess;
        tProcess.setStandardInputFile(tRecording.sSentences);
        tProcess.setStandardOutputFile(QProcess::nullDevice());
        tProcess.start(sProgram, {QStringLiteral("-c"), QStringLiteral("-s")});
        if (!tProcess.waitForFinished(-1)) return 0;
        dRates.push_back(static_cast<double>(Lines) / (ProcessorSeconds(RUSAGE_CHILDREN) - dStart));
    }
    return Median(dRates);
}

// One line of the table; nothing stands where there is no other rate to compare with.
void PrintRow(const Recording& tRecording, const char* sWhat, const char* sTrack, const char* sDbm, double dRate,
              double dLimit, double dGpsdecode) {
    const auto Ratio = [dRate](double dOther) {
        std::array<char, 16> s{};
        if (dOther > 0) std::snprintf(s.data(), s.size(), "%.2f", dRate / dOther);
        return std::string(s.data());
    };
    std::printf("| %s | %s | %s | %s | %.0f | %s | %s |\n", tRecording.sName.c_str(), sWhat, sTrack, sDbm, dRate,
                Ratio(dLimit).c_str(), Ratio(dGpsdecode).c_str());
    std::fflush(stdout);
}

void PrintRecording(const Recording& tRecording, const std::vector<Setting>& tSettings, bool bLineByLine,
                    bool bGpsdecode) {
    const double dLimit = LimitRate(tRecording);
    const double dGpsdecode = bGpsdecode ? GpsdecodeRate(tRecording) : 0;
    PrintRow(tRecording, "plain loop", "", "", dLimit, dLimit, dGpsdecode);
    for (const Setting& t : tSettings) {
        PrintRow(tRecording, targets::SortCriteria[static_cast<std::size_t>(t.iSort)].data(), t.bTrack ? "on" : "off",
                 t.bDbm ? "on" : "off", BurstRate(tRecording, t), dLimit, dGpsdecode);
    }
    if (bLineByLine)
        PrintRow(tRecording, "MMSI, line by line", "off", "off", DispatchRate(tRecording), dLimit, dGpsdecode);
    if (dGpsdecode > 0) PrintRow(tRecording, "gpsdecode -c -s", "", "", dGpsdecode, dLimit, dGpsdecode);
}

// Every sort order with tracking off and on, and the levels in dBm where they cost most and least.
std::vector<Setting> AllSettings(bool bLevels) {
    std::vector<Setting> t;
    for (int iSort = 0; iSort < 3; ++iSort) {
        for (const bool bTrack : {false, true}) t.push_back({iSort, bTrack, false});
    }
    if (bLevels) t.insert(t.end(), {{0, false, true}, {2, false, true}});
    return t;
}

}  // namespace

int main(int argc, char* argv[]) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication tApplication(argc, argv);
    const std::string_view sOption = argc > 1 ? argv[1] : "";
    const bool bQuick = sOption == "--quick";
    if (sOption == "--profile") {  // bursts of the record files that are named and nothing else, for a profiler
        for (int i = 2; i < argc; ++i)
            std::printf("%.0f\n", BurstRate({argv[i], QString::fromLocal8Bit(argv[i]), {}}, {}));
        return 0;
    }
    support::World tWorld;
    const Recording tMixed = Simulated(tWorld, "mixed");
    const Recording tReports = Simulated(tWorld, "reports");
    std::printf("A million lines, median of %d, lines in a second of processor time\n\n", Rounds);
    std::printf("| recording | sort | track | dBm | lines/s | of the plain loop | times gpsdecode |\n");
    std::printf("|---|---|---|---|---|---|---|\n");
    const Recording tFew = Fleet(tWorld, 150);
    const Recording tMany = Fleet(tWorld, 100000);
    PrintRecording(tMixed, bQuick ? std::vector<Setting>{{}, {0, false, true}} : AllSettings(true), true, !bQuick);
    PrintRecording(tReports, bQuick ? std::vector<Setting>{{}} : AllSettings(false), true, !bQuick);
    for (const Recording* t : {&tFew, &tMany}) PrintRecording(*t, {{}}, false, false);
    std::printf("\nPeak memory of this process, the recordings' making included: %ld MB\n", PeakMegabytes());
    bool bSame = true;
    for (const Recording* t : {&tMixed, &tReports, &tFew, &tMany}) bSame = SameTotals(*t) && bSame;
    return bSame ? 0 : 1;
}
