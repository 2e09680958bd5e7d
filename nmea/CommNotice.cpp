// The texts of the communication events, the same for input and output ports.
#include "nmea/CommNotice.h"

#include "platform/runtime/CommEvents.h"

namespace nmea {

namespace {

// "1 sentence", "2 sentences"
std::string Counted(std::int64_t lCount, std::string_view sThing) {
    return std::to_string(lCount).append(" ").append(sThing).append(lCount == 1 ? "" : "s");
}

}  // namespace

std::string CommNotice(int iEvent) {
    switch (iEvent) {
        case runtime::CommBreak:
            return "<<Break Signal Received>>";
        case runtime::CommFrame:
            return "<<Framing Error>>";
        case runtime::CommOverrun:
            return "<<Port Overrun>>";
        case runtime::CommRxOver:
            return "<<Rx Overflow>>";
        case runtime::CommRxParity:
            return "<<Parity Error>>";
        default:
            return "<<Event " + std::to_string(iEvent) + ">>";
    }
}

std::string OutputNotice(std::string_view sWhy, std::int64_t lSentences) {
    return std::string("<<Output ").append(sWhy) + " - " + Counted(lSentences, "sentence") + " dropped>>";
}

std::string NotOpenedNotice(std::string_view sReason) {
    return std::string("<<Device not opened - ").append(sReason) + ">>";
}

std::string HalfLineNotice(std::size_t iCharacters) {
    return "<<Half line dropped - " + Counted(static_cast<std::int64_t>(iCharacters), "character") + ">>";
}

std::string LongLineNotice(std::size_t iCharacters) {
    return "<<Line dropped - longer than " + Counted(static_cast<std::int64_t>(iCharacters), "character") + ">>";
}

}  // namespace nmea
