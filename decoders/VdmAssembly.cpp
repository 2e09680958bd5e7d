// Joins the sentences of a message as they come.
#include "decoders/VdmAssembly.h"

#include "decoders/VdmSentence.h"

namespace decoders {

VdmTaken VdmTake(std::string_view sSentence, VdmMessage& tMessage) {
    VdmSentence t;
    const std::string_view sError = VdmSplit(sSentence, t);
    if (!sError.empty()) return {.sError = sError};
    const std::int32_t lHeld = t.lSentence == 1 ? 0 : tMessage.lLength;
    if (t.sPayload.size() > static_cast<std::size_t>(VdmCapacity - lHeld)) return {.sError = "Error, "};
    VdmUnarmor(t.sPayload, tMessage.lData, lHeld);
    tMessage.lLength = lHeld + static_cast<std::int32_t>(t.sPayload.size());
    return {{}, t.lSentences == t.lSentence, t.sChannel};
}

}  // namespace decoders
