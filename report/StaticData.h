// What ships tell of themselves that does not change: names, call sign, type and size, from message types 5, 19, 21 and
// 24 (ITU-R M.1371, annex 8).
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "decoders/VdmMessage.h"

namespace report {

// Nothing, 0 or an empty text stands for what was not told.
struct StaticData {
    std::string sName;
    std::string sCallSign;
    std::int32_t lShipType = 0;  // of an aid to navigation: its kind
    std::int32_t lLength = 0;    // metres
    std::int32_t lBeam = 0;
};

// Puts what the message tells into t and leaves the rest as it is. False for a message that tells nothing of this kind
// or ends before it is complete. lLength: payload characters that were sent.
bool ReadStaticData(decoders::VdmView lData, std::int32_t lLength, StaticData& t);

// Bits lFirst (from 0) to lFirst + lCount - 1 of the message as a number without sign, at most 30 of them. Characters
// outside the alphabet count by their lowest six bits.
std::int32_t BitsOf(decoders::VdmView lData, std::int32_t lFirst, std::int32_t lCount);

}  // namespace report
