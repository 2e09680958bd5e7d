// Joins the sentences of a message as they come.
#include "decoders/VdmAssembly.h"

namespace decoders {

std::string_view VdmTake(std::string_view sSentence, VdmMessage& tMessage, VdmSentence& tFields) {
    const std::string_view sError = VdmSplit(sSentence, tFields);
    if (!sError.empty()) return sError;
    const std::int32_t lHeld = tFields.lSentence == 1 ? 0 : tMessage.lLength;
    if (tFields.sPayload.size() > static_cast<std::size_t>(VdmCapacity - lHeld)) return "Error, ";
    VdmUnarmor(tFields.sPayload, tMessage.lData, lHeld);
    tMessage.lLength = lHeld + static_cast<std::int32_t>(tFields.sPayload.size());
    return {};
}

}  // namespace decoders
