// From the sentences of a port to whole messages.
#pragma once

#include <string_view>

#include "decoders/VdmMessage.h"
#include "decoders/VdmSentence.h"

namespace decoders {

// Splits an !AIVDM sentence and puts its payload behind what the port's store holds, or at its beginning for sentence
// number 1: the message can be read from there when tFields completes it. Returns what VdmSplit does; a payload that
// the store cannot hold fails as "Error, ". Nothing is stored then.
std::string_view VdmTake(std::string_view sSentence, VdmMessage& tMessage, VdmSentence& tFields);

}  // namespace decoders
