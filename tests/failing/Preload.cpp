// Loaded before a program: what FAILING_CALLS says ("CALL NUMBER MODE") fails in it, of its standard input and output
// and of names that begin like a line of FAILING_CALLS_NAMES; how many calls there were goes to FAILING_CALLS_COUNTS.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "tests/failing/FailingCalls.h"

namespace {

using namespace failing;

State g_tState;

Mode ModeOf(std::string_view s) {
    if (s == "once") return Mode::Once;
    if (s == "stays") return Mode::Stays;
    return s == "interrupted" ? Mode::Interrupted : Mode::Short;
}

void ReadPlan(const char* sPlan) {
    char sCall[32], sMode[32];
    if (std::sscanf(sPlan, "%31s %d %31s", sCall, &g_tState.tPlan.iNumber, sMode) != 3) return;
    for (int i = 0; i < CallCount; ++i) {
        if (std::strcmp(KindOf(static_cast<Call>(i)).sName, sCall) == 0) g_tState.tPlan.eCall = static_cast<Call>(i);
    }
    g_tState.tPlan.eMode = ModeOf(sMode);
}

// Programs that this one starts are left alone.
struct Preload {
    Preload() {
        const char* const sProgram = std::getenv("FAILING_CALLS_PROGRAM");
        if (sProgram == nullptr || std::strcmp(sProgram, program_invocation_short_name) != 0) return;
        UseState(&g_tState);
        WatchDescriptor(0);
        WatchDescriptor(1);
        std::string_view sNames = std::getenv("FAILING_CALLS_NAMES");
        while (!sNames.empty()) {
            const std::size_t iEnd = std::min(sNames.find('\n'), sNames.size());
            Watch(sNames.substr(0, iEnd));
            sNames.remove_prefix(std::min(iEnd + 1, sNames.size()));
        }
        if (const char* sPlan = std::getenv("FAILING_CALLS")) ReadPlan(sPlan);
        g_tState.bArmed = true;
    }
    ~Preload() {
        const char* const sCounts = g_tState.bArmed ? std::getenv("FAILING_CALLS_COUNTS") : nullptr;
        if (sCounts == nullptr) return;
        g_tState.bArmed = false;
        std::FILE* const pCounts = std::fopen(sCounts, "w");
        if (pCounts == nullptr) return;
        for (int i = 0; i < CallCount; ++i) {
            const Call e = static_cast<Call>(i);
            std::fprintf(pCounts, "%s %d %d %d %d\n", KindOf(e).sName, g_tState.iCounts[i][0].load(),
                         Happens(e, Mode::Interrupted), Happens(e, Mode::Short), g_tState.iFired.load());
        }
        std::fclose(pCounts);
    }
} g_tPreload;

}  // namespace
