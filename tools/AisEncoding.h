// AIS messages from field values: the bits, their armoured characters and the sentences around them. This is the
// sending side, written on its own; the program's decoder is not used here and so is tested against it.
//
// A message is a row of bit fields (ITU-R M.1371, annex 8). Six bits at a time become one character: value v is the
// character v + 48, or v + 56 from 40 on, so the first character of a type 1 report is always "1". What is missing to
// a multiple of six is filled with zero bits, and the sentence says how many. A sentence may have 82 characters with
// its line end; a type 5 message of 424 bits makes 71 characters and so needs two sentences with a common number:
//
//   !AIVDM,2,1,4,A,<60 characters>,0*hh
//   !AIVDM,2,2,4,A,<11 characters>,2*hh
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/runtime/DateTime.h"

namespace simulator {

inline constexpr double NoLatitude = 91.0;
inline constexpr double NoLongitude = 181.0;
inline constexpr double NoSpeed = 102.3;
inline constexpr double NoCourse = 360.0;
inline constexpr int NoHeading = 511;
inline constexpr int NoTurn = -128;
inline constexpr std::size_t LongestSentence = 80;  // characters, line end not counted

// Takes bit fields, most significant bit first, and gives the armoured payload.
class BitWriter {
public:
    void Clear();
    void Unsigned(std::uint64_t lValue, int iBits);
    // Two's complement.
    void Signed(std::int64_t lValue, int iBits) { Unsigned(static_cast<std::uint64_t>(lValue), iBits); }
    // Six-bit characters ("A" is 1, "@" is 0 and fills up); a longer text is cut, small letters become capitals.
    void Text(std::string_view sText, int iCharacters);
    // Fills the last character with zero bits. No fields may follow.
    void Finish();
    int Bits() const { return m_iBits; }
    int FillBits() const { return m_iFillBits; }
    std::string_view Payload() const { return {m_sPayload.data(), m_iCharacters}; }

private:
    std::array<char, 180> m_sPayload{};  // the longest AIS message has 1,064 bits
    std::size_t m_iCharacters = 0;
    std::uint64_t m_lPending = 0;  // bits not yet made a character
    int m_iPending = 0;
    int m_iBits = 0;
    int m_iFillBits = 0;
};

struct Fix {
    double dLatitude = NoLatitude;    // degrees, north positive
    double dLongitude = NoLongitude;  // degrees, east positive
};

// What a moving station tells of its way.
struct Motion {
    Fix tFix;
    double dSpeed = NoSpeed;    // knots
    double dCourse = NoCourse;  // degrees
    int iHeading = NoHeading;   // degrees
    int iSecond = 60;           // of the UTC minute, 60: not known
};

struct Hull {
    int iShipType = 0;
    int iBow = 0;  // metres from the antenna
    int iStern = 0;
    int iPort = 0;
    int iStarboard = 0;
};

struct Identity {
    std::uint32_t lMmsi = 0;
    std::uint32_t lImo = 0;
    std::string_view sName;
    std::string_view sCallSign;
    std::string_view sDestination;
    Hull tHull;
};

// The 8-bit rate-of-turn figure of a turn in degrees per minute: 4.733 times its root, at most 126, with its sign.
int TurnFigure(double dDegreesPerMinute);

// Each of these clears the writer, puts the message in and finishes it. Types 1 to 3; 4 and 11; 5; 15; 18; 19; 20; 21;
// 24 A and B.
void EncodePosition(BitWriter& tBits, int iType, std::uint32_t lMmsi, int iStatus, int iTurnFigure, const Motion& t);
void EncodeBase(BitWriter& tBits, int iType, std::uint32_t lMmsi, const Fix& tFix, runtime::DateTime dtUtc);
void EncodeStatic(BitWriter& tBits, const Identity& t);
void EncodeInterrogation(BitWriter& tBits, std::uint32_t lMmsi, std::uint32_t lAsked, int iWantedType);
void EncodeClassB(BitWriter& tBits, std::uint32_t lMmsi, const Motion& t);
void EncodeClassBExtended(BitWriter& tBits, const Identity& tWho, const Motion& t);
void EncodeLinkManagement(BitWriter& tBits, std::uint32_t lMmsi, int iOffset, int iSlots, int iIncrement);
void EncodeAid(BitWriter& tBits, const Identity& tWho, int iAidType, const Fix& tFix, int iSecond);
void EncodeStaticA(BitWriter& tBits, const Identity& t);
void EncodeStaticB(BitWriter& tBits, const Identity& t);

// Adds "*" and the checksum.
void CloseSentence(std::string& sBody);

// How many sentences the payload needs.
int SentenceCount(std::string_view sPayload);
// Sentence iPart (1 to iCount) of the message, without line end. iSequence, 0 to 9, stands only in messages of more
// than one sentence.
std::string VdmSentence(std::string_view sPayload, int iFillBits, char sChannel, int iSequence, int iCount, int iPart);

}  // namespace simulator
