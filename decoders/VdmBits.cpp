// The term tables of the fields, and their sums.
#include "decoders/VdmBits.h"

#include <array>
#include <cstddef>
#include <utility>

namespace decoders {

namespace {

// One term of a field: a character of the payload (from 1), the bits of it that belong to the field, and what the
// lowest bit of a character counts. "All" takes the character as it is.
struct Term {
    std::size_t iCharacter;
    std::int32_t lMask;
    double dFactor;
};
constexpr std::int32_t All = -1;

constexpr double Power(int iExponent) { return static_cast<double>(std::int64_t{1} << iExponent); }

// clang-format off
//                                 character mask  factor
constexpr std::array Mmsi        = {Term{ 2,  15, Power(26)},  // bits 8 to 37
                                    Term{ 3, All, Power(20)},
                                    Term{ 4, All, Power(14)},
                                    Term{ 5, All, Power(8)},
                                    Term{ 6, All, 4},
                                    Term{ 7,  48, 1.0 / 16}};

constexpr std::array RateOfTurnA = {Term{ 8, All, 4},          // bits 42 to 49
                                    Term{ 9,  48, 1.0 / 16}};

constexpr std::array SpeedA      = {Term{ 9,  15, 64},         // bits 50 to 59
                                    Term{10, All, 1}};
// Kept on purpose: the field is bits 46 to 55; mask 15 takes the two reserved bits 44 and 45 in as its top bits, so a
// station that sets them shows 102.4 knots and more.
constexpr std::array SpeedB      = {Term{ 8,  15, Power(8)},   // bits 44 to 55
                                    Term{ 9, All, 4},
                                    Term{10,  48, 1.0 / 16}};

// Kept on purpose: the field ends above the lowest bit of its last character. Mask 63 takes that bit in as one half.
// It is the sign of the latitude, so south of the equator the rounding makes an odd longitude the next even one.
constexpr std::array LongitudeA  = {Term{11,  31, Power(23)},  // bits 61 to 88
                                    Term{12, All, Power(17)},
                                    Term{13, All, Power(11)},
                                    Term{14, All, Power(5)},
                                    Term{15,  63, 1.0 / 2}};
// Kept on purpose: the same half.
constexpr std::array LongitudeBase = {Term{14,  31, Power(23)}, // bits 79 to 106
                                    Term{15, All, Power(17)},
                                    Term{16, All, Power(11)},
                                    Term{17, All, Power(5)},
                                    Term{18,  63, 1.0 / 2}};
constexpr std::array LongitudeB  = {Term{10,   7, Power(25)},  // bits 57 to 84
                                    Term{11, All, Power(19)},
                                    Term{12, All, Power(13)},
                                    Term{13, All, Power(7)},
                                    Term{14, All, 2},
                                    Term{15,  32, 1.0 / 32}};

constexpr std::array LatitudeA   = {Term{15,   1, Power(26)},  // bits 89 to 115
                                    Term{16, All, Power(20)},
                                    Term{17, All, Power(14)},
                                    Term{18, All, Power(8)},
                                    Term{19, All, 4},
                                    Term{20,  48, 1.0 / 16}};
constexpr std::array LatitudeBase = {Term{18,   1, Power(26)}, // bits 107 to 133
                                    Term{19, All, Power(20)},
                                    Term{20, All, Power(14)},
                                    Term{21, All, Power(8)},
                                    Term{22, All, 4},
                                    Term{23,  48, 1.0 / 16}};
constexpr std::array LatitudeB   = {Term{15,  31, Power(22)},  // bits 85 to 111
                                    Term{16, All, Power(16)},
                                    Term{17, All, Power(10)},
                                    Term{18, All, Power(4)},
                                    Term{19,  60, 1.0 / 4}};

constexpr std::array CourseA     = {Term{20,  15, Power(8)},   // bits 116 to 127
                                    Term{21, All, 4},
                                    Term{22,  48, 1.0 / 16}};
constexpr std::array CourseB     = {Term{19,   3, Power(10)},  // bits 112 to 123
                                    Term{20, All, Power(4)},
                                    Term{21,  60, 1.0 / 4}};

constexpr std::array HeadingA    = {Term{22,  15, 32},         // bits 128 to 136
                                    Term{23,  62, 1.0 / 2}};
constexpr std::array HeadingB    = {Term{21,   3, Power(7)},   // bits 124 to 132
                                    Term{22, All, 2},
                                    Term{23,  32, 1.0 / 32}};
// clang-format on

// Sums are made in whole thirty-seconds: every factor is a multiple of 1/32, so nothing is lost and the result is that
// of the sum in double precision. No sum leaves 32 bits, whatever the characters: values run from -48 to 199, and the
// largest field, the MMSI, stays between -52 and 1220 million.
constexpr std::int64_t UnitsPerOne = 32;

constexpr std::int32_t RoundUnits(std::int64_t lUnits) {
    const std::int64_t lOdd = lUnits >> 5 & 1;  // arithmetic shifts: towards minus infinity
    return static_cast<std::int32_t>((lUnits + UnitsPerOne / 2 - 1 + lOdd) >> 5);
}

template <const auto& Terms, std::size_t... I>
std::int32_t SumOf(VdmView lData, std::index_sequence<I...>) {
    static_assert(((static_cast<double>(static_cast<std::int64_t>(Terms[I].dFactor * UnitsPerOne)) ==
                    Terms[I].dFactor * UnitsPerOne) &&
                   ...));
    return RoundUnits(((std::int64_t{lData[Terms[I].iCharacter] & Terms[I].lMask} *
                        static_cast<std::int64_t>(Terms[I].dFactor * UnitsPerOne)) +
                       ...));
}

template <const auto& Terms>
std::int32_t Sum(VdmView lData) {
    return SumOf<Terms>(lData, std::make_index_sequence<Terms.size()>{});
}

}  // namespace

VdmLayout LayoutOf(std::int32_t lMessageId) {
    switch (lMessageId) {
        case 1:
        case 2:
        case 3:
            return VdmLayout::ClassA;
        case 4:
            return VdmLayout::Base;
        case 18:
        case 19:
            return VdmLayout::ClassB;
        default:
            return VdmLayout::None;
    }
}

std::int32_t RawMmsi(VdmView lData) { return Sum<Mmsi>(lData); }

std::int32_t RawRateOfTurn(VdmView lData) { return Sum<RateOfTurnA>(lData); }

std::int32_t RawSpeed(VdmView lData, VdmLayout eLayout) {
    if (eLayout == VdmLayout::ClassA) return Sum<SpeedA>(lData);
    if (eLayout == VdmLayout::ClassB) return Sum<SpeedB>(lData);
    return 0;
}

std::int32_t RawLongitude(VdmView lData, VdmLayout eLayout) {
    if (eLayout == VdmLayout::ClassA) return Sum<LongitudeA>(lData);
    if (eLayout == VdmLayout::Base) return Sum<LongitudeBase>(lData);
    if (eLayout == VdmLayout::ClassB) return Sum<LongitudeB>(lData);
    return 0;
}

std::int32_t RawLatitude(VdmView lData, VdmLayout eLayout) {
    if (eLayout == VdmLayout::ClassA) return Sum<LatitudeA>(lData);
    if (eLayout == VdmLayout::Base) return Sum<LatitudeBase>(lData);
    if (eLayout == VdmLayout::ClassB) return Sum<LatitudeB>(lData);
    return 0;
}

std::int32_t RawCourse(VdmView lData, VdmLayout eLayout) {
    if (eLayout == VdmLayout::ClassA) return Sum<CourseA>(lData);
    if (eLayout == VdmLayout::ClassB) return Sum<CourseB>(lData);
    return 0;
}

std::int32_t RawHeading(VdmView lData, VdmLayout eLayout) {
    if (eLayout == VdmLayout::ClassA) return Sum<HeadingA>(lData);
    if (eLayout == VdmLayout::ClassB) return Sum<HeadingB>(lData);
    return 0;
}

}  // namespace decoders
