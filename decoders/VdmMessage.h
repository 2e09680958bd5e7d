// The store of a message's 6-bit values, filled sentence by sentence. One per input port; it is never cleared, so a
// payload too short for its type reads what earlier messages left.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

namespace decoders {

inline constexpr std::int32_t VdmCapacity = 512;  // payload characters of a message, all its sentences together

// Element 0 is never used; the first payload character of a message goes to element 1.
using VdmValues = std::array<std::int32_t, VdmCapacity + 1>;

// Values to read fields from: element 1 is the message type; fields read up to element 23.
using VdmView = std::span<const std::int32_t>;

struct VdmMessage {
    VdmValues lData{};
    std::int32_t lLength = 0;  // elements 1 to lLength are valid
};

// Appends one value per payload character at element lLength + 1 onward; leaves lLength. A character below code 96
// gives code - 48, any other code - 56 (ITU-R M.1371 / IEC 61162-1 armouring; characters outside the alphabet follow
// the same rule). The caller has made sure that the values fit.
void VdmUnarmor(std::string_view sPayload, VdmValues& lData, std::int32_t lLength);

}  // namespace decoders
