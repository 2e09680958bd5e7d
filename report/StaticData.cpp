// Where the fields stand.
#include "report/StaticData.h"

#include <array>

#include "decoders/VdmFields.h"

namespace report {

namespace {

// The first bit of each field, 0 where a type does not have it.
struct Layout {
    std::int32_t lType;
    std::int32_t lPart;        // of type 24: 0 is part A, 1 is part B; -1 for other types
    std::int32_t lCharacters;  // payload characters that the last of these fields ends in
    std::int32_t lCallSign, lName, lShipType, lShipTypeBits, lDimensions;
};

// clang-format off
//                            type part chars call name type bits dimensions
constexpr std::array Layouts = {
    Layout{                      5,  -1,  45,  70, 112, 232,   8, 240},
    Layout{                     19,  -1,  51,   0, 143, 263,   8, 271},
    Layout{                     21,  -1,  42,   0,  43,  38,   5, 219},
    Layout{                     24,   0,  27,   0,  40,   0,   0,   0},
    Layout{                     24,   1,  27,  90,   0,  40,   8, 132},
};
// clang-format on
constexpr std::int32_t AuxiliaryCraft = 98;  // the first two digits of its MMSI
constexpr std::int32_t PartBit = 38;
constexpr std::int32_t NameCharacters = 20;
constexpr std::int32_t CallSignCharacters = 7;

// Six-bit characters: 1 to 26 are letters, 32 to 63 as in ASCII, 0 ends the text. Without the blanks at its end.
std::string TextOf(decoders::VdmView lData, std::int32_t lFirst, std::int32_t lCharacters) {
    std::string s;
    for (std::int32_t i = 0; i < lCharacters; ++i) {
        const std::int32_t l = BitsOf(lData, lFirst + i * BitsPerCharacter, BitsPerCharacter);
        if (l == 0) break;
        s += static_cast<char>(l < 32 ? l + 64 : l);
    }
    s.erase(s.find_last_not_of(' ') + 1);
    return s;
}

void ReadDimensions(decoders::VdmView lData, std::int32_t lFirst, StaticData& t) {
    const std::int32_t lBow = BitsOf(lData, lFirst, 9);
    const std::int32_t lStern = BitsOf(lData, lFirst + 9, 9);
    const std::int32_t lPort = BitsOf(lData, lFirst + 18, 6);
    const std::int32_t lStarboard = BitsOf(lData, lFirst + 24, 6);
    if (lBow + lStern > 0) t.lLength = lBow + lStern;
    if (lPort + lStarboard > 0) t.lBeam = lPort + lStarboard;
}

}  // namespace

bool ReadStaticData(decoders::VdmView lData, std::int32_t lLength, StaticData& t) {
    const std::int32_t lType = lData[1];
    for (const Layout& tLayout : Layouts) {
        if (tLayout.lType != lType || lLength < tLayout.lCharacters) continue;
        if (tLayout.lPart >= 0 && BitsOf(lData, PartBit, 2) != tLayout.lPart) continue;
        if (tLayout.lName > 0) {
            std::string s = TextOf(lData, tLayout.lName, NameCharacters);
            if (!s.empty()) t.sName = std::move(s);
        }
        if (tLayout.lCallSign > 0) {
            std::string s = TextOf(lData, tLayout.lCallSign, CallSignCharacters);
            if (!s.empty()) t.sCallSign = std::move(s);
        }
        if (tLayout.lShipType > 0) {
            const std::int32_t l = BitsOf(lData, tLayout.lShipType, tLayout.lShipTypeBits);
            if (l > 0) t.lShipType = l;
        }
        // An auxiliary craft tells its mother ship's MMSI in that place.
        const bool bAuxiliary = lType == 24 && decoders::VdmMmsi(lData) / 10000000 == AuxiliaryCraft;
        if (tLayout.lDimensions > 0 && !bAuxiliary) ReadDimensions(lData, tLayout.lDimensions, t);
        return true;
    }
    return false;
}

}  // namespace report
