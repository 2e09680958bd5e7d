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

SignalTexts ShownSignal(const SignalSentence& t, bool bDbm) {
    const auto Shown = [bDbm](std::string_view sLevel) {
        if (!bDbm) return std::string(sLevel);
        return runtime::Format(SignalToDbm(sLevel), runtime::PictureWhole);
    };
    return {Shown(t.sSignal), Shown(t.sThreshold), t.sInterval};
}

}  // namespace decoders
