// Simulates days of the program in seconds, seed by seed; the first that fails is printed with what repeats it.
//
//     simulation --seeds FROM-TO --days N        or --hours N; --verbose tells of every seed, --twice repeats each
#include <QApplication>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <exception>
#include <string>

#include "tests/simulation/Causes.h"
#include "tests/simulation/Failure.h"
#include "tests/simulation/Hand.h"
#include "tests/simulation/Invariants.h"

namespace {

using namespace simulation;

constexpr int SecondsOfHour = 3600;

struct Options {
    std::uint64_t lFrom = 0, lTo = 3;
    int iHours = 24;
    bool bVerbose = false;
    bool bTwice = false;  // and both times the same must have been seen
};

struct Outcome {
    std::string sFailure;  // empty: all held
    std::uint64_t lDigest = 0;
    std::int64_t lSentences = 0, lRecorded = 0, lCauses = 0, lNotices = 0;
    double dFirstHour = 0, dLastHour = 0;  // seconds of processor, told only: other programs are running
    Invariants::Hour tFirst{}, tLast{}, tMost{};
    std::int64_t lMostMemoryAtFirst = 0;
};

double Processor() {
    timespec t{};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &t);
    return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_nsec) * 1e-9;
}

Outcome Simulate(std::uint64_t lSeed, int iHours) {
    Outcome tOutcome;
    Scene tScene(SettingOf(lSeed));
    Planner tPlanner(lSeed);
    Hand tHand(lSeed);
    Invariants tInvariants;
    int iHour = 0;
    try {
        tScene.Begin();
        for (; iHour < iHours; ++iHour) {
            const double dBefore = Processor();
            for (int i = 0; i < SecondsOfHour; ++i) {
                tPlanner.Second(tScene);
                tHand.Second(tScene);
                tScene.PassSecond();
            }
            tInvariants.Check(tScene);
            tOutcome.dLastHour = Processor() - dBefore;
            if (iHour == 0) tOutcome.dFirstHour = tOutcome.dLastHour;
        }
        tPlanner.EndAll(tScene);
        tScene.End();
    } catch (const std::exception& tError) {
        tScene.tFullDisk.reset();  // else nothing could be printed into a file
        tScene.tDisk.Release();
        tOutcome.sFailure = "hour " + std::to_string(iHour) + ", second " + std::to_string(tScene.lSecond) + ": " +
                            tError.what() + "\nplanted last:" + tPlanner.Latest() + "\nthe hand last " + tHand.Latest();
    }
    tOutcome.lDigest = tInvariants.Digest();
    tOutcome.lSentences = tScene.tLedger.Sentences();
    tOutcome.lRecorded = tScene.tRecordings.Lines();
    tOutcome.lCauses = tPlanner.Planted();
    tOutcome.lNotices = tScene.tNotices.Seen();
    tOutcome.tFirst = tInvariants.First();
    tOutcome.tLast = tInvariants.Last();
    tOutcome.tMost = tInvariants.Most();
    tOutcome.lMostMemoryAtFirst = tInvariants.MostMemoryAtFirst();
    return tOutcome;
}

double Megabytes(std::int64_t lBytes) { return static_cast<double>(lBytes) / 1e6; }

void Tell(std::uint64_t lSeed, const Outcome& t) {
    std::printf(
        "seed %llu (%s): %lld sentences, %lld recorded, %lld causes, %lld notices; allocations a sentence %.4f "
        "then at most %.4f, a tick %.1f then at most %.1f; memory %.2f MB, at most %.2f, behind the fourth day %.2f, "
        "at "
        "last %.2f; an hour %.3f s then %.3f; digest %016llx\n",
        static_cast<unsigned long long>(lSeed), SettingOf(lSeed).Text().c_str(), static_cast<long long>(t.lSentences),
        static_cast<long long>(t.lRecorded), static_cast<long long>(t.lCauses), static_cast<long long>(t.lNotices),
        t.tFirst.dPerSentence, t.tMost.dPerSentence, t.tFirst.dPerTick, t.tMost.dPerTick, Megabytes(t.tFirst.lMemory),
        Megabytes(t.lMostMemoryAtFirst), Megabytes(t.tMost.lMemory), Megabytes(t.tLast.lMemory), t.dFirstHour,
        t.dLastHour, static_cast<unsigned long long>(t.lDigest));
    std::fflush(stdout);
}

bool ReadOptions(int argc, char** argv, Options& t) {
    for (int i = 1; i < argc; ++i) {
        unsigned long long lFrom = 0;
        unsigned long long lTo = 0;
        if (std::strcmp(argv[i], "--verbose") == 0) {
            t.bVerbose = true;
        } else if (std::strcmp(argv[i], "--twice") == 0) {
            t.bTwice = true;
        } else if (i + 1 == argc) {
            return false;
        } else if (std::strcmp(argv[i], "--seeds") == 0 && std::sscanf(argv[i + 1], "%llu-%llu", &lFrom, &lTo) == 2) {
            t.lFrom = lFrom;
            t.lTo = lTo;
            ++i;
        } else if (std::strcmp(argv[i], "--days") == 0) {
            t.iHours = 24 * std::atoi(argv[++i]);
        } else if (std::strcmp(argv[i], "--hours") == 0) {
            t.iHours = std::atoi(argv[++i]);
        } else {
            return false;
        }
    }
    return t.iHours > 0 && t.lFrom <= t.lTo;
}

void Hush(QtMsgType eType, const QMessageLogContext&, const QString& sMessage) {
    if (sMessage.startsWith(QLatin1String("This plugin does not support"))) return;
    std::fprintf(stderr, "%s\n", qPrintable(sMessage));
    if (eType == QtFatalMsg) std::abort();
}

}  // namespace

int main(int argc, char** argv) {
    Options tOptions;
    if (!ReadOptions(argc, argv, tOptions)) {
        std::fprintf(stderr, "usage: simulation [--seeds FROM-TO] [--days N | --hours N] [--verbose] [--twice]\n");
        return 2;
    }
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler(Hush);
    const QApplication tApplication(argc, argv);
    std::int64_t lSentences = 0;
    for (std::uint64_t lSeed = tOptions.lFrom; lSeed <= tOptions.lTo; ++lSeed) {
        Outcome t = Simulate(lSeed, tOptions.iHours);
        if (tOptions.bTwice && t.sFailure.empty() && Simulate(lSeed, tOptions.iHours).lDigest != t.lDigest) {
            t.sFailure = "its repetition: another course";
        }
        lSentences += t.lSentences;
        if (tOptions.bVerbose) Tell(lSeed, t);
        if (t.sFailure.empty()) continue;
        std::printf("seed %llu FAILS in %s\nrepeat: simulation --seeds %llu-%llu --hours %d\n",
                    static_cast<unsigned long long>(lSeed), t.sFailure.c_str(), static_cast<unsigned long long>(lSeed),
                    static_cast<unsigned long long>(lSeed), tOptions.iHours);
        return 1;
    }
    std::printf("seeds %llu-%llu of %d hours: all held, %lld sentences\n",
                static_cast<unsigned long long>(tOptions.lFrom), static_cast<unsigned long long>(tOptions.lTo),
                tOptions.iHours, static_cast<long long>(lSentences));
    return 0;
}
