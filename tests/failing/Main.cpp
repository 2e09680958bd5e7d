// Every call that can fail fails once: each scenario is played as often as it has such calls, in a process of its own
// each time, so that a crash or a hang is told with the call that brought it. See docs/reliability.md.
//
//     failing-calls [--scenario NAME]... [--mode once|stays|interrupted|short]... [--call NAME] [--number N]
//                   [--every N] [--seed N] [--verbose]
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QApplication>
#include <QFile>
#include <QTemporaryDir>
#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <string>
#include <vector>

#include "tests/failing/Course.h"
#include "tests/failing/Scenarios.h"

namespace {

using namespace failing;

constexpr unsigned Patience = 120;  // seconds for a course, which takes a fraction of one: what takes longer hangs
constexpr const char* ModeNames[] = {"none", "once", "stays", "interrupted", "short"};

struct Options {
    std::vector<std::string> sScenarios, sModes;
    std::string sCall;
    int iNumber = 0;      // 0: all
    unsigned iEvery = 1;  // of all these courses each Nth
    unsigned iSeed = 0;   // the first of them
    bool bVerbose = false;
};

Course* g_pCourse = nullptr;
std::string g_sReference;  // what could be seen where nothing failed

const char* NameOf(Mode e) { return ModeNames[static_cast<int>(e)]; }

bool IsWanted(const std::vector<std::string>& sWanted, const char* sName) {
    return sWanted.empty() || std::find(sWanted.begin(), sWanted.end(), sName) != sWanted.end();
}

// Without those by which Qt's threads are woken.
std::vector<std::string> OpenDescriptors() {
    std::vector<std::string> sNames;
    for (const QFileInfo& t : QDir(QStringLiteral("/proc/self/fd")).entryInfoList(QDir::Files | QDir::System)) {
        if (!t.symLinkTarget().endsWith(QLatin1String("[eventfd]"))) sNames.push_back(t.symLinkTarget().toStdString());
    }
    std::ranges::sort(sNames);
    return sNames;
}

// Without those that Qt keeps for a while.
int RunningThreads() {
    int iCount = 0;
    for (const QString& s : QDir(QStringLiteral("/proc/self/task")).entryList(QDir::NoDotAndDotDot | QDir::Dirs)) {
        QFile tName(QStringLiteral("/proc/self/task/%1/comm").arg(s));
        if (tName.open(QIODevice::ReadOnly) && !tName.readAll().startsWith("Thread (pooled)")) ++iCount;
    }
    return iCount;
}

// The process of a course.
[[noreturn]] void Play(const Scenario& t) {
    ::alarm(Patience);
    UseState(&g_pCourse->tState);
    const int iThreads = RunningThreads();
    const std::vector<std::string> sBefore = OpenDescriptors();
    try {
        {
            Stage tStage(t.sUnattended);
            Watch(tStage.tWorld.Folder().toStdString());
            Watch("/dev/pts/");
            Watch("/run/lock/LCK..");
            for (const support::PtyPort* p : {&tStage.tInputs[0], &tStage.tInputs[1], &tStage.tOutput}) {
                Watch(p->Link().toStdString());
            }
            t.pPlay(tStage);
            g_pCourse->tState.bArmed = false;
        }
        while (RunningThreads() > iThreads) ::usleep(100);  // they end by themselves
        std::vector<std::string> sLeft;
        std::ranges::set_difference(OpenDescriptors(), sBefore, std::back_inserter(sLeft));
        Require(sLeft.empty(), "descriptors are left open: " + (sLeft.empty() ? "" : sLeft.front()));
    } catch (const std::exception& tError) {
        g_pCourse->tState.bArmed = false;
        std::snprintf(g_pCourse->sMessage, sizeof g_pCourse->sMessage, "%s", tError.what());
    }
    g_pCourse->bEnded = true;
    ::_exit(0);
}

// Empty where all held.
std::string Judge(int iStatus) {
    const Course& t = *g_pCourse;
    const std::string sAt = std::string(" in \"") + t.sStep + "\"";
    if (WIFSIGNALED(iStatus) && WTERMSIG(iStatus) == SIGALRM) return "hangs" + sAt;
    if (WIFSIGNALED(iStatus)) return "crashes by signal " + std::to_string(WTERMSIG(iStatus)) + sAt;
    if (!t.bEnded || WEXITSTATUS(iStatus) != 0) return "ends with " + std::to_string(WEXITSTATUS(iStatus)) + sAt;
    if (t.sMessage[0] != '\0') return t.sMessage;
    if (t.tState.tPlan.eMode < Mode::Interrupted || t.tState.iFired == 0) return {};
    return t.sOutcome == g_sReference
               ? std::string()
               : "what can be seen is another than where nothing happened:\n" + std::string(t.sOutcome) +
                     "\n--- and where nothing happened:\n" + g_sReference;
}

// What failed, in words, or nothing. Output of the course is shown where something did.
std::string Course1(const Scenario& tScenario, const Plan& tPlan) {
    new (g_pCourse) Course();
    g_pCourse->tState.tPlan = tPlan;
    std::fflush(stdout);
    const pid_t iChild = ::fork();
    if (iChild == 0) Play(tScenario);
    int iStatus = 0;
    while (::waitpid(iChild, &iStatus, 0) < 0 && errno == EINTR) continue;
    return Judge(iStatus);
}

std::string TextOf(const Scenario& t, const Plan& tPlan) {
    std::string s = t.sName;
    if (tPlan.eMode == Mode::Count) return s + ": nothing fails";
    s += std::string(": ") + KindOf(tPlan.eCall).sName + " #" + std::to_string(tPlan.iNumber);
    if (tPlan.iThread != 0) s += " of a helper";
    return s + " " + NameOf(tPlan.eMode);
}

struct Sum {
    int iCalls = 0, iCourses = 0, iFired = 0, iFailures = 0;
};

// A call of a scenario in all modes.
void PlayNumber(const Scenario& t, Plan tPlan, const Options& tOptions, unsigned& iCourse, Sum& tSum) {
    for (const Mode e : {Mode::Once, Mode::Stays, Mode::Interrupted, Mode::Short}) {
        if (!Happens(tPlan.eCall, e) || !IsWanted(tOptions.sModes, NameOf(e))) continue;
        if (iCourse++ % tOptions.iEvery != tOptions.iSeed % tOptions.iEvery) continue;
        tPlan.eMode = e;
        const std::string sFailure = Course1(t, tPlan);
        ++tSum.iCourses;
        tSum.iFired += g_pCourse->tState.iFired > 0 ? 1 : 0;
        tSum.iFailures += sFailure.empty() ? 0 : 1;
        if (sFailure.empty() && !tOptions.bVerbose) continue;
        std::printf("%s (%s, step \"%s\")%s%s\n", TextOf(t, tPlan).c_str(), g_pCourse->tState.sWhere, g_pCourse->sStep,
                    sFailure.empty() ? "" : " FAILS: ", sFailure.c_str());
    }
}

void PlayScenario(const Scenario& t, const Options& tOptions, unsigned& iCourse, Sum& tAll) {
    Sum tSum;
    if (const std::string sFailure = Course1(t, {}); !sFailure.empty()) {
        std::printf("%s FAILS: %s\n", TextOf(t, {}).c_str(), sFailure.c_str());
        ++tAll.iFailures;
        return;
    }
    g_sReference = g_pCourse->sOutcome;
    if (tOptions.bVerbose && tOptions.sCall.empty()) std::printf("%s\n%s\n", t.sName, g_sReference.c_str());
    int iCounts[CallCount][Threads];
    for (int i = 0; i < CallCount; ++i) {
        for (int j = 0; j < Threads; ++j) iCounts[i][j] = g_pCourse->tState.iCounts[i][j];
    }
    for (int i = 0; i < CallCount; ++i) {
        const Call e = static_cast<Call>(i);
        if (!tOptions.sCall.empty() && tOptions.sCall != KindOf(e).sName) continue;
        for (int j = 0; j < Threads; ++j) {
            for (int iNumber = 1; iNumber <= iCounts[i][j]; ++iNumber) {
                ++tSum.iCalls;
                if (tOptions.iNumber != 0 && tOptions.iNumber != iNumber) continue;
                PlayNumber(t, {Mode::Count, e, j, iNumber}, tOptions, iCourse, tSum);
            }
        }
    }
    std::printf("%-12s %4d calls, %4d courses, %4d met their failure, %d failed\n", t.sName, tSum.iCalls, tSum.iCourses,
                tSum.iFired, tSum.iFailures);
    tAll.iCalls += tSum.iCalls;
    tAll.iCourses += tSum.iCourses;
    tAll.iFired += tSum.iFired;
    tAll.iFailures += tSum.iFailures;
}

bool ReadOptions(int argc, char** argv, Options& t) {
    for (int i = 1; i < argc; ++i) {
        const std::string sWord = argv[i];
        if (sWord == "--verbose") {
            t.bVerbose = true;
            continue;
        }
        if (++i == argc) return false;
        if (sWord == "--scenario") {
            t.sScenarios.emplace_back(argv[i]);
        } else if (sWord == "--mode") {
            t.sModes.emplace_back(argv[i]);
        } else if (sWord == "--call") {
            t.sCall = argv[i];
        } else if (sWord == "--number") {
            t.iNumber = std::atoi(argv[i]);
        } else if (sWord == "--every") {
            t.iEvery = static_cast<unsigned>(std::max(1, std::atoi(argv[i])));
        } else if (sWord == "--seed") {
            t.iSeed = static_cast<unsigned>(std::atoi(argv[i]));
        } else {
            return false;
        }
    }
    return true;
}

void Hush(QtMsgType eType, const QMessageLogContext&, const QString& sMessage) {
    if (sMessage.startsWith(QLatin1String("This plugin does not support"))) return;
    std::fprintf(stderr, "%s\n", qPrintable(sMessage));
    if (eType == QtFatalMsg) std::abort();
}

}  // namespace

namespace failing {

Course& TheCourse() { return *g_pCourse; }

void Course::Step(const char* s) { std::snprintf(sStep, sizeof sStep, "%s", s); }

void Course::Keep(const std::string& sSeen) { std::snprintf(sOutcome, sizeof sOutcome, "%s", sSeen.c_str()); }

}  // namespace failing

int main(int argc, char** argv) {
    Options tOptions;
    if (!ReadOptions(argc, argv, tOptions)) {
        std::fprintf(stderr,
                     "usage: failing-calls [--scenario NAME]... [--mode NAME]... [--call NAME] [--number N] "
                     "[--every N] [--seed N] [--verbose]\n");
        return 2;
    }
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    const QTemporaryDir tFolder;  // of all courses: what a crashed one leaves goes with it
    qputenv("TMPDIR", QFile::encodeName(tFolder.path()));
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(tFolder.path()));
    qInstallMessageHandler(Hush);
    void* const pShared = ::mmap(nullptr, sizeof(Course), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (pShared == MAP_FAILED) return 2;
    g_pCourse = new (pShared) Course();
    const QApplication tApplication(argc, argv);
    Sum tSum;
    unsigned iCourse = 0;
    for (const Scenario& t : Scenarios()) {
        if (IsWanted(tOptions.sScenarios, t.sName)) PlayScenario(t, tOptions, iCourse, tSum);
    }
    std::printf("%d calls, %d courses, %d met their failure, %d failed\n", tSum.iCalls, tSum.iCourses, tSum.iFired,
                tSum.iFailures);
    return tSum.iFailures == 0 ? 0 : 1;
}
