// The arithmetic of the timing planner: message ticks, channel bands, percentages and the summary. Times accumulate by
// repeated addition on purpose, because with fractional rates the number of rounds depends on it.
#include "ui/TimingModel.h"

#include <cmath>

#include "platform/runtime/Convert.h"
#include "platform/runtime/Format.h"

namespace ui {

namespace {
constexpr std::string_view LabelRateTx = "Tx Rate";
constexpr std::string_view LabelRateRc = "Rc Alternating Rate";
constexpr std::string_view LabelTimeSpan = "Time Span";

std::string Refusal(std::string_view sLabel, std::string_view sReason) {
    return std::string(sLabel).append(" ").append(sReason);
}

// Reads one field. Returns what is wrong with it, empty when nothing is.
std::string ReadSeconds(std::string_view sLabel, std::string_view sText, double& dSeconds) {
    try {
        dSeconds = runtime::ToReal(sText);
    } catch (const runtime::ConversionError&) {
        return Refusal(sLabel, "is not a number");
    }
    if (dSeconds <= 0) return Refusal(sLabel, "must be greater than 0");
    return {};
}

// What is wrong with three positive numbers when they are put together. A run of LongestTimingRun steps at most also
// means that no step is ever lost in the rounding of the sum that it is added to.
std::string CheckPlan(const TimingInputs& t) {
    if (t.dTimeSpan / t.dRateTx > LongestTimingRun)
        return Refusal(LabelRateTx, "is too small for the Time Span (more than 1000000 messages)");
    if (t.dTimeSpan / t.dRateRc > LongestTimingRun)
        return Refusal(LabelRateRc, "is too small for the Time Span (more than 1000000 changes of channel)");
    if (runtime::RoundHalfEven(t.dTimeSpan / t.dRateTx) == 0)
        return Refusal(LabelTimeSpan, "is too short for the Tx Rate (it must be more than half of it)");
    return {};
}

std::int32_t TimeToX(const TimingRow& tRow, double dTime, double dTimeSpan) {
    return runtime::RoundHalfEven((tRow.lRight - tRow.lLeft) * (dTime / dTimeSpan) + tRow.lLeft);
}

// The channel that is on at a time when it changes every dPeriod seconds: 0 is A, 1 is B.
int ChannelAt(double dTime, double dPeriod) { return std::fmod(std::floor(dTime / dPeriod), 2.0) == 0.0 ? 0 : 1; }

Primitive Bar(const TimingRow& tRow, std::int32_t lX1, std::int32_t lX2, Rgb tColour) {
    return {Primitive::Kind::Rectangle, lX1, tRow.lTop, lX2, tRow.lBottom, tColour};
}

Primitive Tick(const TimingRow& tRow, std::int32_t lX) {
    return {Primitive::Kind::Line, lX, tRow.lTop, lX, tRow.lBottom, TickColour};
}

std::string Percentage(std::int32_t lCount, const TimingInputs& tInputs) {
    const double dTotal = runtime::RoundHalfEven(tInputs.dTimeSpan / tInputs.dRateTx);
    return runtime::Format(lCount * 100.0 / dTotal, runtime::PictureTwo) + "%";
}

// The bands of the alternating receiver, the first one on channel A. A last band that the span cuts is not drawn.
void AddBands(std::vector<Primitive>& tPrimitives, const TimingRow& tRow, const TimingInputs& tInputs) {
    std::int32_t lPrevious = tRow.lLeft;
    for (double dTime = tInputs.dRateRc; dTime <= tInputs.dTimeSpan; dTime += tInputs.dRateRc) {
        const std::int32_t lX = TimeToX(tRow, dTime, tInputs.dTimeSpan);
        // The band ends at this time, so it bears the colour of the channel before the change.
        const Rgb tColour = ChannelAt(dTime, tInputs.dRateRc) == 1 ? ChannelAColour : ChannelBColour;
        tPrimitives.push_back(Bar(tRow, lPrevious, lX, tColour));
        lPrevious = lX;
    }
}

std::string Seconds(double dSeconds) { return runtime::Format(dSeconds, runtime::PictureWhole) + " sec"; }

std::string Summary(double dRateTx, double dShortest, double dLongest) {
    // Kept on purpose: "Alterating" is how the caption has always been spelt.
    return "Dual Channel, Time Between Messages " + Seconds(dRateTx) + "\rSingle Ch Fixed, Time Between Messages " +
           Seconds(2 * dRateTx) + "\rSingle Ch Alterating, Time Between Messages, Min " + Seconds(dShortest) +
           ", Max " + Seconds(dLongest);
}
}  // namespace

std::string ReadTimingInputs(std::string_view sRateTx, std::string_view sRateRc, std::string_view sTimeSpan,
                             TimingInputs& tInputs) {
    TimingInputs tRead{};
    std::string sError = ReadSeconds(LabelRateTx, sRateTx, tRead.dRateTx);
    if (sError.empty()) sError = ReadSeconds(LabelRateRc, sRateRc, tRead.dRateRc);
    if (sError.empty()) sError = ReadSeconds(LabelTimeSpan, sTimeSpan, tRead.dTimeSpan);
    if (sError.empty()) sError = CheckPlan(tRead);
    if (sError.empty()) tInputs = tRead;
    return sError;
}

TimingDrawing TimingChannel(const TimingRow& tRow, const TimingInputs& tInputs, double dOffset, Rgb tColour) {
    TimingDrawing tDrawing;
    tDrawing.tPrimitives.push_back(Bar(tRow, tRow.lLeft, tRow.lRight, tColour));
    std::int32_t lCount = 0;
    for (double dTime = dOffset; dTime < tInputs.dTimeSpan; dTime += 2 * tInputs.dRateTx) {
        tDrawing.tPrimitives.push_back(Tick(tRow, TimeToX(tRow, dTime, tInputs.dTimeSpan)));
        ++lCount;
    }
    tDrawing.sPercentage = Percentage(lCount, tInputs);
    return tDrawing;
}

TimingAlternateDrawing TimingAlternate(const TimingRow& tRow, const TimingInputs& tInputs) {
    TimingAlternateDrawing tDrawing;
    AddBands(tDrawing.tPrimitives, tRow, tInputs);

    std::int32_t lCount = 0;
    double dLast = 0;
    double dShortest = tInputs.dTimeSpan;
    double dLongest = 0;
    for (double dTime = 0; dTime < tInputs.dTimeSpan; dTime += tInputs.dRateTx) {
        if (ChannelAt(dTime, tInputs.dRateTx) != ChannelAt(dTime, tInputs.dRateRc)) continue;
        tDrawing.tPrimitives.push_back(Tick(tRow, TimeToX(tRow, dTime, tInputs.dTimeSpan)));
        ++lCount;
        if (dTime != 0) {
            const double dGap = dTime - dLast;
            if (dGap < dShortest) dShortest = dGap;
            if (dGap > dLongest) dLongest = dGap;
        }
        dLast = dTime;
    }
    tDrawing.sPercentage = Percentage(lCount, tInputs);
    tDrawing.sSummary = Summary(tInputs.dRateTx, dShortest, dLongest);
    return tDrawing;
}

}  // namespace ui
