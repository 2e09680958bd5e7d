// The timing planner: which of a transmitter's messages a receiver hears that alternates between the two AIS channels.
// Pure arithmetic from three rates and the rows' places to filled rectangles, lines and texts; draws nothing itself.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/runtime/Geometry.h"

namespace ui {

using runtime::Primitive;
using runtime::Rgb;

inline constexpr Rgb ChannelAColour{128, 255, 128};
inline constexpr Rgb ChannelBColour{255, 128, 128};
inline constexpr Rgb TickColour{0, 0, 0};

// Where a row's bar stands: between its name label and its percentage label.
struct TimingRow {
    std::int32_t lLeft, lRight, lTop, lBottom;
};

struct TimingInputs {
    double dRateTx;    // seconds per message
    double dRateRc;    // seconds per channel
    double dTimeSpan;  // seconds shown
};

inline constexpr double LongestTimingRun = 1000000;  // steps (messages or bands) that a plan may take

// Reads the three texts. Returns an empty text, else one that names the field and what is wrong with it ("Tx Rate is
// not a number"): no number, zero, negative, infinite, more than LongestTimingRun steps, or a span in which the number
// of messages rounds to 0. tInputs is then unchanged.
std::string ReadTimingInputs(std::string_view sRateTx, std::string_view sRateRc, std::string_view sTimeSpan,
                             TimingInputs& tInputs);

struct TimingDrawing {
    std::vector<Primitive> tPrimitives;
    std::string sPercentage;  // "50%"
};

// One fixed channel: every second message from dOffset on.
TimingDrawing TimingChannel(const TimingRow& tRow, const TimingInputs& tInputs, double dOffset, Rgb tColour);

struct TimingAlternateDrawing : TimingDrawing {
    std::string sSummary;  // three lines joined by carriage returns
};
// The alternating receiver. Both take inputs that ReadTimingInputs accepted.
TimingAlternateDrawing TimingAlternate(const TimingRow& tRow, const TimingInputs& tInputs);

}  // namespace ui
