// From the sentences of a port to whole messages.
#pragma once

#include <string_view>

#include "decoders/VdmMessage.h"

namespace decoders {

struct VdmTaken {
    std::string_view sError{};    // empty, else the text of the field that failed (VdmSplit); nothing was stored then
    bool bComplete = false;       // the message can be read from the store
    std::string_view sChannel{};  // of this sentence; points into it
};

// Splits an !AIVDM sentence and puts its payload behind what the port's store holds, or at its beginning for sentence
// number 1. A payload that the store cannot hold fails as "Error, ".
VdmTaken VdmTake(std::string_view sSentence, VdmMessage& tMessage);

}  // namespace decoders
