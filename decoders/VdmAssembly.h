// From the sentences of a port to whole messages: they are joined as they come.
#pragma once

#include <string_view>

#include "decoders/VdmMessage.h"
#include "decoders/VdmSentence.h"

namespace decoders {

// Splits an !AIVDM sentence and puts its payload behind what the port's store holds, or at its beginning for sentence
// number 1: the message can be read from there when tFields completes it. Returns what VdmSplit does; a payload that
// the store cannot hold fails as "Error, ". Nothing is stored then.
inline std::string_view VdmTake(std::string_view sSentence, VdmMessage& tMessage, VdmSentence& tFields) {
    const std::string_view sError = VdmSplit(sSentence, tFields);
    if (!sError.empty()) return sError;
    const std::int32_t lHeld = tFields.lSentence == 1 ? 0 : tMessage.lLength;
    if (tFields.sPayload.size() > static_cast<std::size_t>(VdmCapacity - lHeld)) return "Error, ";
    VdmUnarmor(tFields.sPayload, tMessage.lData, lHeld);
    tMessage.lLength = lHeld + static_cast<std::int32_t>(tFields.sPayload.size());
    return {};
}

}  // namespace decoders
