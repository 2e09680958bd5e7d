// Cuts the signal sentence and turns its levels into dBm.
#include "decoders/SignalSentence.h"

#include <cstddef>

#include "platform/runtime/Convert.h"
#include "platform/runtime/Format.h"

namespace decoders {

namespace {

constexpr std::size_t FirstField = 7;  // behind "$PNMLS" and its comma

// The text from iStart up to cEnd; iStart moves behind it. False when cEnd is missing or follows at once.
bool NextField(std::string_view sSentence, char cEnd, std::size_t& iStart, std::string_view& sField) {
    const std::size_t iEnd = sSentence.find(cEnd, iStart);
    if (iEnd == std::string_view::npos || iEnd == iStart) return false;
    sField = sSentence.substr(iStart, iEnd - iStart);
    iStart = iEnd + 1;
    return true;
}

}  // namespace

std::string_view SignalSplit(std::string_view sSentence, SignalSentence& tFields) {
    std::size_t iStart = FirstField;
    if (!NextField(sSentence, ',', iStart, tFields.sSignal)) return "Error - Signal, ";
    if (!NextField(sSentence, ',', iStart, tFields.sThreshold)) return "Error - Threshold, ";
    if (!NextField(sSentence, '*', iStart, tFields.sInterval)) return "Error - Interval, ";
    return {};
}

double SignalToDbm(std::string_view sLevel) {
    const double x = runtime::LeadingNumber(sLevel) - 19.0;
    return -0.008658 * (x * x) + 2.08658 * x - 107.0;
}

void SignalLevels::Keep(const SignalSentence& t, bool bInDbm) {
    sSignal = t.sSignal;
    sThreshold = t.sThreshold;
    sInterval = t.sInterval;
    bDbm = bInDbm;
}

SignalLevels SignalLevels::Shown() const {
    SignalLevels t = *this;
    if (!bDbm) return t;
    t.sSignal = runtime::Format(SignalToDbm(sSignal), runtime::PictureWhole);
    t.sThreshold = runtime::Format(SignalToDbm(sThreshold), runtime::PictureWhole);
    t.bDbm = false;
    return t;
}

}  // namespace decoders
