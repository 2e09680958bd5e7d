// Fuzz target for the timing planner: any three texts as its inputs, a line each. What is refused is named, what is
// taken ends, and its rows are those of a second, plainer reckoning.
#include <algorithm>
#include <cmath>
#include <string>

#include "tests/fuzz/Harness.h"
#include "ui/TimingModel.h"

namespace {

using fuzz::Promise;

constexpr ui::TimingRow Row{100, 700, 10, 30};
constexpr double MostSteps = 5000;  // of a plan that is drawn here; the bound of a real one is a million

std::string_view TakeLine(std::string_view& s) {
    const std::size_t iEnd = std::min(s.find('\n'), s.size());
    const std::string_view sLine = s.substr(0, iEnd);
    s.remove_prefix(std::min(iEnd + 1, s.size()));
    return sLine;
}

// Ticks and bars inside the row, bars first.
std::int64_t Ticks(const ui::TimingDrawing& t) {
    std::int64_t lTicks = 0;
    for (const ui::Primitive& p : t.tPrimitives) {
        const bool bLine = p.eKind == ui::Primitive::Kind::Line;
        Promise(bLine || lTicks == 0);
        Promise(p.lX1 >= Row.lLeft && p.lX1 <= p.lX2 && p.lX2 <= Row.lRight);
        Promise(p.lY1 == Row.lTop && p.lY2 == Row.lBottom && (!bLine || p.lX1 == p.lX2));
        if (bLine) ++lTicks;
    }
    return lTicks;
}

void Percentage(const ui::TimingDrawing& t, const ui::TimingInputs& tInputs, std::int64_t lTicks) {
    const double dTotal = std::nearbyint(tInputs.dTimeSpan / tInputs.dRateTx);
    const double dShown = std::stod(t.sPercentage);
    Promise(t.sPercentage.size() >= 3 && t.sPercentage.back() == '%');
    Promise(std::fabs(dShown - static_cast<double>(lTicks) * 100 / dTotal) <= 0.5000001);
}

void Plan(const ui::TimingInputs& t) {
    std::int64_t lA = 0, lB = 0, lHeard = 0;
    for (double d = 0; d < t.dTimeSpan; d += 2 * t.dRateTx) ++lA;
    for (double d = t.dRateTx; d < t.dTimeSpan; d += 2 * t.dRateTx) ++lB;
    for (double d = 0; d < t.dTimeSpan; d += t.dRateTx) {
        const bool bSent = std::fmod(std::floor(d / t.dRateTx), 2) == 0;
        const bool bListening = std::fmod(std::floor(d / t.dRateRc), 2) == 0;
        if (bSent == bListening) ++lHeard;
    }
    const ui::TimingDrawing tA = ui::TimingChannel(Row, t, 0, ui::ChannelAColour);
    const ui::TimingDrawing tB = ui::TimingChannel(Row, t, t.dRateTx, ui::ChannelBColour);
    const ui::TimingAlternateDrawing tAlternate = ui::TimingAlternate(Row, t);
    Promise(Ticks(tA) == lA && Ticks(tB) == lB && Ticks(tAlternate) == lHeard && lHeard >= 1);
    Percentage(tA, t, lA);
    Percentage(tB, t, lB);
    Percentage(tAlternate, t, lHeard);
    Promise(std::count(tAlternate.sSummary.begin(), tAlternate.sSummary.end(), '\r') == 2);
    Promise(tAlternate.sSummary.find("nan") == std::string::npos);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t iSize) {
    std::string_view sRest = fuzz::Text(pData, iSize);
    const std::string_view sRateTx = TakeLine(sRest);
    const std::string_view sRateRc = TakeLine(sRest);
    const std::string_view sTimeSpan = TakeLine(sRest);
    ui::TimingInputs t{-1, -1, -1};
    const std::string sError = ui::ReadTimingInputs(sRateTx, sRateRc, sTimeSpan, t);
    Promise(sError.empty() == (t.dRateTx > 0) && sError.empty() == (t.dRateRc > 0 && t.dTimeSpan > 0));
    if (!sError.empty()) {
        Promise(sError.starts_with("Tx Rate ") || sError.starts_with("Rc Alternating Rate ") ||
                sError.starts_with("Time Span "));
        return 0;
    }
    const double dSteps = t.dTimeSpan / t.dRateTx + t.dTimeSpan / t.dRateRc;
    Promise(std::isfinite(dSteps) && dSteps <= 2 * ui::LongestTimingRun);
    if (dSteps > MostSteps) return 0;
    const fuzz::Cost tCost = fuzz::CostOf([&t] { Plan(t); });
    fuzz::PromiseLinear(tCost, static_cast<std::size_t>(dSteps), {20000, 100}, {200, 1});
    return 0;
}
