// Fuzz target for playback: any bytes as a record file, once as a burst and once at its own pace, which must leave the
// same; and where it is played to its end the report counts as many messages.
#include "tests/fuzz/MemoryFile.h"
#include "tests/fuzz/ReportCounter.h"
#include "tests/fuzz/WindowHarness.h"

namespace {

using fuzz::Promise;
using support::TestWindow;

void Open(fuzz::Window& tWindow, const std::string& sPath, const char* sKey) {
    tWindow.Begin();
    tWindow.t.Press("Stop");
    tWindow.t.TheWorld().tFileAnswers = {QString::fromStdString(sPath)};
    tWindow.t.Press(sKey);
}

// Second after second, and then in ever longer ones: a file may tell of a thousand years.
void PlayToTheEnd(TestWindow& t) {
    constexpr int MostTicks = 100;
    std::int64_t lAhead = 0;
    for (int i = 0; i < MostTicks && t.m_bPlayback; ++i) {
        t.TheWorld().dtNow.lSeconds += lAhead;
        if (i > 10) lAhead = lAhead * 2 + 1;
        t.Advance(1);
    }
    Promise(!t.m_bPlayback);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t iSize) {
    static fuzz::Window& tBurst = fuzz::Window::Make();
    static fuzz::Window& tPaced = fuzz::Window::Make();
    const fuzz::MemoryFile tFile(fuzz::Text(pData, iSize));
    const fuzz::Cost tCost = fuzz::CostOf([&tFile] { Open(tBurst, tFile.Path(), "Playback Burst"); });
    fuzz::PromiseLinear(tCost, iSize, {100000, 3000}, {400, 4});
    Open(tPaced, tFile.Path(), "Playback");
    PlayToTheEnd(tPaced.t);
    fuzz::PromiseBounds(tBurst.t);
    fuzz::PromiseBounds(tPaced.t);
    const QString sDifference = support::Difference(support::Views(tBurst.t), support::Views(tPaced.t));
    if (!sDifference.isEmpty()) std::fprintf(stderr, "%s\n", qPrintable(sDifference));
    Promise(sDifference.isEmpty());
    const std::string sState = tPaced.t.StatusBar.PanelText(1);
    Promise(sState == "Done" || sState == "Stopped");
    if (sState != "Done") return 0;
    fuzz::ReportCounter tCounter;
    if (tCounter.Count(tFile.Path()).bUnfinished) return 0;  // the report leaves a last line that has no end
    Promise(tCounter.lMessages == tPaced.t.m_lMessageNumber);
    return 0;
}
