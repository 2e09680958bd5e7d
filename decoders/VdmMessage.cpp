// Payload characters to 6-bit values.
#include "decoders/VdmMessage.h"

#include <array>
#include <cstring>

namespace decoders {

namespace {

constexpr unsigned char SecondRange = 96;  // the alphabet is "0" to "W" (48 to 87) and "`" to "w" (96 to 119)

constexpr std::size_t Lanes = 16;

constexpr std::int32_t ValueOf(unsigned char cPayload) {
    const unsigned char cZero = cPayload < SecondRange ? 48 : 56;
    return cPayload - cZero;
}

// A loop of fixed length over a copy that nothing else can reach: the compiler does all sixteen at once.
void UnarmorLanes(const char* pPayload, std::int32_t* plTo) {
    std::array<unsigned char, Lanes> cLanes;
    std::memcpy(cLanes.data(), pPayload, Lanes);
    for (std::size_t i = 0; i < Lanes; ++i) plTo[i] = ValueOf(cLanes[i]);
}

}  // namespace

void VdmUnarmor(std::string_view sPayload, VdmValues& lData, std::int32_t lLength) {
    std::int32_t* const plTo = lData.data() + lLength + 1;
    const std::size_t iSize = sPayload.size();
    if (iSize < Lanes) {
        for (std::size_t i = 0; i < iSize; ++i) plTo[i] = ValueOf(static_cast<unsigned char>(sPayload[i]));
        return;
    }
    for (std::size_t i = 0; i + Lanes < iSize; i += Lanes) UnarmorLanes(sPayload.data() + i, plTo + i);
    UnarmorLanes(sPayload.data() + iSize - Lanes, plTo + iSize - Lanes);  // the last, some of them once more
}

}  // namespace decoders
