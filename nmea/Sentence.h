// What a received line is: whether its length and checksum pass, and which decoder it belongs to.
#pragma once

#include <array>
#include <string_view>

#include "platform/runtime/PortIndex.h"

namespace nmea {

enum class SentenceFault { None, Size, Checksum };

inline constexpr std::size_t ShortestSentence = 6;  // characters, line end not counted

// Size below ShortestSentence; Checksum when the third character from the end is "*" and the two behind it are not the
// checksum of what stands before it. A line without "*" there passes unchecked.
SentenceFault TestSentence(std::string_view sLine);

// A row for each sentence that is decoded: what its address field says at which place, and the operation of a program's
// Decoders that takes it.
template <class Decoders>
struct SentenceRow {
    std::string_view sAddress;
    std::size_t iPlace;  // 3: behind the start character and any two-letter talker
    void (Decoders::*pDecode)(runtime::PortIndex);
};

// Case counts, and so does the order.
template <class Decoders>
inline constexpr std::array SentenceTable = {
    SentenceRow<Decoders>{"$PNMLS", 0, &Decoders::PnmlsDecode},
    SentenceRow<Decoders>{"!AIVDM", 0, &Decoders::VdmDecode},
    SentenceRow<Decoders>{"GLL", 3, &Decoders::GllDecode},
    SentenceRow<Decoders>{"RMC", 3, &Decoders::RmcDecode},
};

// The first row that sLine answers to, null where there is none. sLine has at least six characters.
template <class Decoders>
const SentenceRow<Decoders>* FindSentence(std::string_view sLine) {
    for (const auto& tRow : SentenceTable<Decoders>) {
        if (sLine.substr(tRow.iPlace).starts_with(tRow.sAddress)) return &tRow;
    }
    return nullptr;
}

}  // namespace nmea
