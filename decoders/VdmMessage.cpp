// Payload characters to 6-bit values.
#include "decoders/VdmMessage.h"

namespace decoders {

namespace {

constexpr std::int32_t SecondRange = 96;  // the alphabet is "0" to "W" (48 to 87) and "`" to "w" (96 to 119)

constexpr std::int32_t ValueOf(char cPayload) {
    const std::int32_t lCode = static_cast<unsigned char>(cPayload);
    return lCode < SecondRange ? lCode - 48 : lCode - 56;
}

}  // namespace

void VdmUnarmor(std::string_view sPayload, VdmValues& lData, std::int32_t lLength) {
    std::int32_t* plNext = lData.data() + lLength + 1;
    for (const char c : sPayload) *plNext++ = ValueOf(c);
}

}  // namespace decoders
