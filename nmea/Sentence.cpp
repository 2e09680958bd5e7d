// The tests that every received line goes through before anything is decoded.
#include "nmea/Sentence.h"

#include "nmea/NmeaChecksum.h"

namespace nmea {

SentenceFault TestSentence(std::string_view sLine) {
    if (sLine.size() < ShortestSentence) return SentenceFault::Size;
    const bool bCarriesChecksum = sLine[sLine.size() - 3] == '*';
    if (bCarriesChecksum && !ChecksumMatches(sLine)) return SentenceFault::Checksum;
    return SentenceFault::None;
}

SentenceKind KindOf(std::string_view sLine) {
    if (sLine.starts_with("$PNMLS")) return SentenceKind::Pnmls;
    if (sLine.starts_with("!AIVDM")) return SentenceKind::Aivdm;
    const std::string_view sFormatter = sLine.substr(3, 3);  // behind start character and two-letter talker
    if (sFormatter == "GLL") return SentenceKind::Gll;
    if (sFormatter == "RMC") return SentenceKind::Rmc;
    return SentenceKind::Other;
}

}  // namespace nmea
