// What a received line is: whether its length and checksum pass, and which decoder it belongs to.
#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "nmea/NmeaChecksum.h"
#include "platform/runtime/PortIndex.h"

namespace nmea {

enum class SentenceFault { None, Size, Checksum };

inline constexpr std::size_t ShortestSentence = 6;  // characters, line end not counted

// Size below ShortestSentence; Checksum when the third character from the end is "*" and the two behind it are not the
// checksum of what stands before it. A line without "*" there passes unchecked.
inline SentenceFault TestSentence(std::string_view sLine) {
    if (sLine.size() < ShortestSentence) return SentenceFault::Size;
    const bool bCarriesChecksum = sLine[sLine.size() - 3] == '*';
    if (bCarriesChecksum && !ChecksumMatches(sLine)) return SentenceFault::Checksum;
    return SentenceFault::None;
}

// A row for each sentence that is decoded: its address field, where "?" stands for any character, and the operation of
// a program's Decoders that takes it.
template <class Decoders>
struct SentenceRow {
    using Operation = void (Decoders::*)(runtime::PortIndex);

    constexpr SentenceRow(std::string_view sAddress, Operation pOperation) : pDecode(pOperation) {
        std::array<char, 8> sMask{};
        std::array<char, 8> sValue{};
        for (std::size_t i = 0; i < ShortestSentence; ++i) {
            if (sAddress[i] == '?') continue;
            sMask[i] = '\xFF';
            sValue[i] = sAddress[i];
        }
        lMask = std::bit_cast<std::uint64_t>(sMask);
        lValue = std::bit_cast<std::uint64_t>(sValue);
    }

    Operation pDecode;
    std::uint64_t lMask;  // the characters that count, as one number
    std::uint64_t lValue;
};

// Case counts, and so does the order.
template <class Decoders>
inline constexpr std::array SentenceTable = {
    SentenceRow<Decoders>{"$PNMLS", &Decoders::PnmlsDecode},
    SentenceRow<Decoders>{"!AIVDM", &Decoders::VdmDecode},
    SentenceRow<Decoders>{"???GLL", &Decoders::GllDecode},  // of any talker
    SentenceRow<Decoders>{"???RMC", &Decoders::RmcDecode},
};

// The operation of the first row that sLine answers to, null where there is none. sLine has at least six characters.
template <class Decoders>
typename SentenceRow<Decoders>::Operation FindDecoder(std::string_view sLine) {
    std::uint64_t lAddress = 0;
    std::memcpy(&lAddress, sLine.data(), ShortestSentence);
    for (const auto& tRow : SentenceTable<Decoders>) {
        if ((lAddress & tRow.lMask) == tRow.lValue) return tRow.pDecode;
    }
    return nullptr;
}

}  // namespace nmea
