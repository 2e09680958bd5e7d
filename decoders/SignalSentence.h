// The receiver's signal sentence "$PNMLS,<signal>,<threshold>,<interval>*hh" and its level curve.
#pragma once

#include <string>
#include <string_view>

namespace decoders {

struct SignalSentence {
    std::string_view sSignal;
    std::string_view sThreshold;
    std::string_view sInterval;  // any text up to the "*"
};

// Returns an empty text, else "Error - Signal, ", "Error - Threshold, " or "Error - Interval, ". The views point into
// sSentence.
std::string_view SignalSplit(std::string_view sSentence, SignalSentence& tFields);

// dBm of a raw level text (its leading number, 0 where there is none): -0.008658 x^2 + 2.08658 x - 107.0 with
// x = level - 19; raw 19, 29 and 40 are 1, 10 and 100 uV.
double SignalToDbm(std::string_view sLevel);

// The fields as they are shown: the two levels in dBm by "0" where bDbm says so.
struct SignalTexts {
    std::string sSignal;
    std::string sThreshold;
    std::string_view sInterval;  // points where that of the sentence does
};
SignalTexts ShownSignal(const SignalSentence& t, bool bDbm);

}  // namespace decoders
