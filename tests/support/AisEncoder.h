// Builds AIS messages from field values, bit by bit as ITU-R M.1371 lays them out, and wraps them in !AIVDM sentences.
// It shares nothing with the decoders, so that a mistake in one does not hide in the other.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace support {

// A message is a text of "0" and "1", bit 0 first: every field can be looked at with substr().
using AisBits = std::string;

// Appends fields to a message. A value too large for its field loses its upper bits.
class AisWriter {
public:
    AisWriter(int iType, std::uint32_t lMmsi);
    AisWriter& Unsigned(std::uint64_t lValue, int iBits);
    AisWriter& Signed(std::int64_t lValue, int iBits);
    // Six-bit text, filled up with "@"; lower case becomes upper case.
    AisWriter& Text(std::string_view sText, int iCharacters);
    AisWriter& Zeros(int iBits) { return Unsigned(0, iBits); }
    AisBits Bits() const { return m_sBits; }

private:
    AisBits m_sBits;
};

// Raw values of position, motion and identity as they are sent; the first values mean "not available".
struct AisReport {
    std::uint32_t lMmsi = 0;
    std::uint32_t lStatus = 15;
    std::int32_t lRateOfTurn = -128;
    std::uint32_t lSpeed = 1023;          // tenths of knots
    std::int32_t lLongitude = 108600000;  // ten-thousandths of a minute, east positive
    std::int32_t lLatitude = 54600000;    // the same, north positive
    std::uint32_t lCourse = 3600;         // tenths of degrees
    std::uint32_t lHeading = 511;         // degrees
    std::uint32_t lSecond = 60;           // of the UTC minute
    std::uint32_t lReserved = 0;          // the eight reserved bits 38 to 45 of class B
};

// Whole ten-thousandths of a minute of an angle in degrees and minutes; negative for south and west.
std::int32_t AisAngle(int iDegrees, double dMinutes, bool bNegative = false);

AisBits AisClassA(int iType, const AisReport& tReport);                        // 1, 2, 3: 168 bits
AisBits AisBaseStation(int iType, const AisReport& tReport);                   // 4, 11: 168 bits
AisBits AisStaticVoyage(std::uint32_t lMmsi, std::string_view sName);          // 5: 424 bits
AisBits AisInterrogation(std::uint32_t lMmsi, std::uint32_t lAsked);           // 15: 88 bits
AisBits AisClassB(const AisReport& tReport);                                   // 18: 168 bits
AisBits AisClassBExtended(const AisReport& tReport, std::string_view sName);   // 19: 312 bits
AisBits AisDataLink(std::uint32_t lMmsi);                                      // 20: 72 bits
AisBits AisAidToNavigation(const AisReport& tReport, std::string_view sName);  // 21: 272 bits
AisBits AisStaticDataA(std::uint32_t lMmsi, std::string_view sName);           // 24 A: 168 bits
AisBits AisStaticDataB(std::uint32_t lMmsi, std::string_view sCallSign);       // 24 B: 168 bits
AisBits AisOther(int iType, std::uint32_t lMmsi, int iBits = 168);             // any id 0 to 63; zeros behind the MMSI

// A field of a message, bits iFirst to iLast, both included.
std::uint32_t AisUnsigned(const AisBits& sBits, std::size_t iFirst, std::size_t iLast);
std::int32_t AisSigned(const AisBits& sBits, std::size_t iFirst, std::size_t iLast);

// The payload characters; the last one is filled up with zeros.
std::string AisPayload(const AisBits& sBits);
int AisFillBits(const AisBits& sBits);

// sBody (from the "!" or "$" on) with "*" and checksum.
std::string WithChecksum(std::string_view sBody);

// The message's sentences, without line ends. A message with more than iCharacters payload characters is spread over
// several, which then carry the sequential id.
std::vector<std::string> AisSentences(const AisBits& sBits, char cChannel = 'A', int iSequence = 0,
                                      std::size_t iCharacters = 60);
// The same for a message that fits one sentence.
std::string AisSentence(const AisBits& sBits, char cChannel = 'A');

}  // namespace support
