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

inline constexpr std::int32_t BitsPerCharacter = 6;  // of a payload

// Bits lFirst (from 0) to lFirst + lCount - 1 of the message as a number without sign, at most 30 of them. Characters
// outside the alphabet count by their lowest six bits.
inline std::int32_t BitsOf(decoders::VdmView lData, std::int32_t lFirst, std::int32_t lCount) {
    const std::int32_t lEnd = lFirst + lCount;
    const std::int32_t lLast = (lEnd - 1) / BitsPerCharacter;
    std::uint64_t lValue = 0;  // of all characters that hold some of the bits
    for (std::int32_t i = lFirst / BitsPerCharacter; i <= lLast; ++i) {
        const auto lCharacter = static_cast<std::uint32_t>(lData[static_cast<std::size_t>(i) + 1]) & 63U;
        lValue = lValue << BitsPerCharacter | lCharacter;
    }
    lValue >>= (lLast + 1) * BitsPerCharacter - lEnd;
    return static_cast<std::int32_t>(lValue & ((std::uint64_t{1} << lCount) - 1));
}

}  // namespace report
