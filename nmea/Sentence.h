// What a received line is: whether its length and checksum pass, and which decoder it belongs to. The dispatch
// (frmMain_Dispatch) acts on these answers.
#pragma once

#include <string_view>

namespace nmea {

enum class SentenceFault { None, Size, Checksum };
enum class SentenceKind { Pnmls, Aivdm, Gll, Rmc, Other };

inline constexpr std::size_t ShortestSentence = 6;  // characters, line end not counted

// Size below ShortestSentence; Checksum when the third character from the end is "*" and the two behind it are not the
// checksum of what stands before it. A line without "*" there passes unchecked.
SentenceFault TestSentence(std::string_view sLine);

// By the address field, case-sensitive, in this order: the first six characters "$PNMLS", "!AIVDM", then characters 4
// to 6 "GLL", "RMC" of any talker. sLine has at least six characters.
SentenceKind KindOf(std::string_view sLine);

}  // namespace nmea
