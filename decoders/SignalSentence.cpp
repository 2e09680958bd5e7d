// Cuts the signal sentence and turns its levels into dBm.
#include "decoders/SignalSentence.h"

#include "nmea/FieldReader.h"
#include "platform/runtime/Convert.h"
#include "platform/runtime/Format.h"

namespace decoders {

std::string_view SignalSplit(std::string_view sSentence, SignalSentence& tFields) {
    nmea::FieldReader tReader(sSentence);
    if (!tReader.NextFilled(tFields.sSignal)) return "Error - Signal, ";
    if (!tReader.NextFilled(tFields.sThreshold)) return "Error - Threshold, ";
    if (!tReader.NextFilled(tFields.sInterval, '*')) return "Error - Interval, ";
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
