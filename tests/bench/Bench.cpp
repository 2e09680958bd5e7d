// How fast a million recorded lines go through the real window, from the press of Playback Burst to the text in panel
// 1, under every sort order, tracking off and on, own position known. Beside it, where it is installed, gpsdecode on
// the same sentences. Prints figures, asserts nothing.
#include <sys/resource.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QStandardPaths>
#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "targets/TargetColumns.h"
#include "tests/support/TestWindow.h"
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
    std::string sKind;
    QString sRecord;     // a record file
    QString sSentences;  // its sentences alone
};

Recording MakeRecording(const support::World& tWorld, const std::string& sKind) {
    simulator::RecordWriter tWriter(*simulator::FindRecordKind(sKind), Lines);
    std::string sRecord;
    std::string sSentences;
    for (std::int64_t i = 0; i < Lines; ++i) {
        const std::size_t lStart = sRecord.size();
        tWriter.AppendLine(sRecord);
        sSentences.append(sRecord, lStart + app::RecordSentenceColumn);
    }
    const QString sName = QString::fromStdString(sKind);
    Recording t{sKind, tWorld.Path(sName + QLatin1String(".txt")), tWorld.Path(sName + QLatin1String(".nmea"))};
    tWorld.WriteFile(t.sRecord, sRecord);
    tWorld.WriteFile(t.sSentences, sSentences);
    return t;
}

// Seconds of one burst.
double Burst(support::TestWindow& t, support::World& tWorld, const Recording& tRecording) {
    tWorld.tFileAnswers = {tRecording.sRecord};
    QElapsedTimer tTimer;
    tTimer.start();
    t.Press("Playback Burst");
    t.Synchronize();
    const double dSeconds = static_cast<double>(tTimer.nsecsElapsed()) / 1e9;
    if (t.Panel(1) != "Playback") std::fprintf(stderr, "the burst did not end as it should: %s\n", t.Panel(2).c_str());
    return dSeconds;
}

double BurstRate(const Recording& tRecording, int iSort, bool bTrack) {
    std::vector<double> dRates;
    for (int i = 0; i < Rounds; ++i) {
        support::World tBurstWorld;
        support::TestWindow t(tBurstWorld);
        t.LoadAndShow();
        t.SSTab.SetTab(ui::TabTargets);
        t.txtGpsLat.SetText("51 30.00 N");
        t.txtGpsLon.SetText("001 20.00 E");
        t.cmbTargetSort.SetListIndex(iSort);
        t.chkTargetTrack.setChecked(bTrack);
        QApplication::processEvents();
        dRates.push_back(static_cast<double>(Lines) / Burst(t, tBurstWorld, tRecording));
    }
    return Median(dRates);
}

// Lines a second of SentenceDispatch in a loop, every line shown in the stores before the next, sorted by MMSI.
double DispatchRate(const Recording& tRecording) {
    std::vector<double> dRates;
    for (int i = 0; i < Rounds; ++i) {
        support::World tDispatchWorld;
        support::TestWindow t(tDispatchWorld);
        t.LoadAndShow();
        t.TargetGridSetup(true);
        t.txtGpsLat.SetText("51 30.00 N");
        t.txtGpsLon.SetText("001 20.00 E");
        const std::string sSentences = t.TheWorld().ReadFile(tRecording.sSentences);
        t.m_dtCommLast(0) = tDispatchWorld.dtNow;
        QElapsedTimer tTimer;
        tTimer.start();
        for (std::size_t lStart = 0; lStart < sSentences.size();) {
            const std::size_t lEnd = sSentences.find('\r', lStart);
            t.m_sCommBuffer(0).assign(sSentences, lStart, lEnd - lStart);
            t.SentenceDispatch(0);
            lStart = lEnd + 2;
        }
        dRates.push_back(static_cast<double>(Lines) / (static_cast<double>(tTimer.nsecsElapsed()) / 1e9));
    }
    return Median(dRates);
}

// Lines a second of gpsdecode on the same sentences; 0 where it is not installed.
double GpsdecodeRate(const Recording& tRecording) {
    const QString sProgram = QStandardPaths::findExecutable(QStringLiteral("gpsdecode"));
    if (sProgram.isEmpty()) return 0;
    std::vector<double> dRates;
    for (int i = 0; i < Rounds; ++i) {
        QProcess tProcess;
        tProcess.setStandardInputFile(tRecording.sSentences);
        tProcess.setStandardOutputFile(QProcess::nullDevice());
        QElapsedTimer tTimer;
        tTimer.start();
        tProcess.start(sProgram, {QStringLiteral("-c"), QStringLiteral("-s")});
        if (!tProcess.waitForFinished(-1)) return 0;
        dRates.push_back(static_cast<double>(Lines) / (static_cast<double>(tTimer.nsecsElapsed()) / 1e9));
    }
    return Median(dRates);
}

}  // namespace

int main(int argc, char* argv[]) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication tApplication(argc, argv);
    const std::string_view sOption = argc > 1 ? argv[1] : "";
    const bool bProfile = sOption == "--profile";  // one burst row each and nothing else, for a profiler
    const bool bQuick = bProfile || sOption == "--quick";
    support::World tWorld;
    std::printf("A million lines, median of %d, lines a second\n\n", Rounds);
    std::printf("| recording | sort | track | lines/s | times gpsdecode |\n|---|---|---|---|---|\n");
    for (const char* sKind : {"mixed", "reports"}) {
        const Recording tRecording = MakeRecording(tWorld, sKind);
        const double dOther = bQuick ? 0 : GpsdecodeRate(tRecording);
        for (int iSort = 0; iSort < 3; ++iSort) {
            for (const bool bTrack : {false, true}) {
                if (bQuick && (bTrack || iSort > 0)) continue;
                const double dRate = BurstRate(tRecording, iSort, bTrack);
                std::printf("| %s | %s | %s | %.0f | %s |\n", sKind,
                            std::string(targets::SortCriteria[static_cast<std::size_t>(iSort)]).c_str(),
                            bTrack ? "on" : "off", dRate,
                            dOther > 0 ? std::to_string(dRate / dOther).substr(0, 4).c_str() : "-");
                std::fflush(stdout);
            }
        }
        if (!bProfile) std::printf("| %s | MMSI, line by line | off | %.0f | |\n", sKind, DispatchRate(tRecording));
        if (dOther > 0) std::printf("| %s | gpsdecode -c -s | | %.0f | 1 |\n", sKind, dOther);
    }
    std::printf("\nPeak memory of this process, the recordings' making included: %ld MB\n", PeakMegabytes());
    return 0;
}
