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

}  // namespace nmea
