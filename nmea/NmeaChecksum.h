// The checksum of an NMEA 0183 sentence.
#pragma once

#include <string>
#include <string_view>

namespace nmea {

// XOR of the characters from the second to the last, as two upper-case hexadecimal digits. The first character ("$" or
// "!") is skipped; sBody holds everything before the "*". "00" for a body of one character or none. NMEA 0183, 5.3.
std::string NmeaChecksum(std::string_view sBody);

// True when the last three characters of sSentence are "*" and the checksum of what stands before, compared to the
// letter (lower-case digits do not match). sSentence has at least three characters.
bool ChecksumMatches(std::string_view sSentence);

}  // namespace nmea
