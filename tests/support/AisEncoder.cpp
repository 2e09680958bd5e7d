// The message layouts, written down field by field in the order of the standard's tables.
#include "tests/support/AisEncoder.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace support {

namespace {

// The armouring alphabet in order: the character at place n stands for n.
constexpr std::string_view PayloadAlphabet = "0123456789:;<=>?@ABCDEFGHIJKLMNOPQRSTUVW`abcdefghijklmnopqrstuvw";
// The alphabet of names in messages: the character at place n is sent as n.
constexpr std::string_view TextAlphabet = "@ABCDEFGHIJKLMNOPQRSTUVWXYZ[\\]^_ !\"#$%&'()*+,-./0123456789:;<=>?";

constexpr std::size_t BitsPerCharacter = 6;

}  // namespace

AisWriter::AisWriter(int iType, std::uint32_t lMmsi) {
    Unsigned(static_cast<std::uint64_t>(iType), 6);
    Zeros(2);  // repeat indicator
    Unsigned(lMmsi, 30);
}

AisWriter& AisWriter::Unsigned(std::uint64_t lValue, int iBits) {
    for (int iBit = iBits - 1; iBit >= 0; --iBit) m_sBits += ((lValue >> iBit) & 1U) != 0 ? '1' : '0';
    return *this;
}

AisWriter& AisWriter::Signed(std::int64_t lValue, int iBits) {
    return Unsigned(static_cast<std::uint64_t>(lValue), iBits);
}

AisWriter& AisWriter::Text(std::string_view sText, int iCharacters) {
    for (std::size_t i = 0; i < static_cast<std::size_t>(iCharacters); ++i) {
        char c = i < sText.size() ? sText[i] : '@';
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
        const std::size_t iPlace = TextAlphabet.find(c);
        if (iPlace == std::string_view::npos) throw std::invalid_argument("no six-bit character");
        Unsigned(iPlace, 6);
    }
    return *this;
}

std::int32_t AisAngle(int iDegrees, double dMinutes, bool bNegative) {
    const auto lAngle = static_cast<std::int32_t>(std::lround((iDegrees * 60 + dMinutes) * 10000));
    return bNegative ? -lAngle : lAngle;
}

AisBits AisClassA(int iType, const AisReport& t) {
    return AisWriter(iType, t.lMmsi)
        .Unsigned(t.lStatus, 4)
        .Signed(t.lRateOfTurn, 8)
        .Unsigned(t.lSpeed, 10)
        .Unsigned(0, 1)  // position accuracy
        .Signed(t.lLongitude, 28)
        .Signed(t.lLatitude, 27)
        .Unsigned(t.lCourse, 12)
        .Unsigned(t.lHeading, 9)
        .Unsigned(t.lSecond, 6)
        .Zeros(2)   // special manoeuvre
        .Zeros(3)   // spare
        .Zeros(1)   // RAIM
        .Zeros(19)  // communication state
        .Bits();
}

AisBits AisBaseStation(int iType, const AisReport& t) {
    return AisWriter(iType, t.lMmsi)
        .Unsigned(2011, 14)  // UTC year, month, day, hour, minute, second
        .Unsigned(5, 4)
        .Unsigned(15, 5)
        .Unsigned(12, 5)
        .Unsigned(34, 6)
        .Unsigned(t.lSecond, 6)
        .Unsigned(1, 1)  // position accuracy
        .Signed(t.lLongitude, 28)
        .Signed(t.lLatitude, 27)
        .Unsigned(1, 4)  // kind of position fixing device
        .Zeros(1)        // transmission control
        .Zeros(9)        // spare
        .Zeros(1)        // RAIM
        .Zeros(19)       // communication state
        .Bits();
}

AisBits AisStaticVoyage(std::uint32_t lMmsi, std::string_view sName) {
    return AisWriter(5, lMmsi)
        .Zeros(2)               // AIS version
        .Unsigned(9074729, 30)  // IMO number
        .Text("TEST1", 7)       // call sign
        .Text(sName, 20)
        .Unsigned(70, 8)   // type of ship and cargo
        .Unsigned(100, 9)  // metres from the antenna to bow, stern, port and starboard
        .Unsigned(20, 9)
        .Unsigned(10, 6)
        .Unsigned(12, 6)
        .Unsigned(1, 4)  // kind of position fixing device
        .Unsigned(5, 4)  // estimated arrival: month, day, hour, minute
        .Unsigned(16, 5)
        .Unsigned(8, 5)
        .Unsigned(30, 6)
        .Unsigned(65, 8)      // draught
        .Text("HARBOUR", 20)  // destination
        .Zeros(1)             // data terminal equipment
        .Zeros(1)             // spare
        .Bits();
}

AisBits AisInterrogation(std::uint32_t lMmsi, std::uint32_t lAsked) {
    return AisWriter(15, lMmsi)
        .Zeros(2)  // spare
        .Unsigned(lAsked, 30)
        .Unsigned(5, 6)  // message asked for
        .Zeros(12)       // slot offset
        .Bits();
}

namespace {

// The part that 18 and 19 share.
AisWriter ClassBCommon(int iType, const AisReport& t) {
    return AisWriter(iType, t.lMmsi)
        .Unsigned(t.lReserved, 8)
        .Unsigned(t.lSpeed, 10)
        .Zeros(1)  // position accuracy
        .Signed(t.lLongitude, 28)
        .Signed(t.lLatitude, 27)
        .Unsigned(t.lCourse, 12)
        .Unsigned(t.lHeading, 9)
        .Unsigned(t.lSecond, 6);
}

}  // namespace

AisBits AisClassB(const AisReport& t) {
    return ClassBCommon(18, t)
        .Zeros(2)        // reserved
        .Unsigned(1, 1)  // carrier sense unit
        .Zeros(1)        // display
        .Unsigned(1, 1)  // DSC
        .Unsigned(1, 1)  // whole marine band
        .Unsigned(1, 1)  // message 22
        .Zeros(1)        // assigned mode
        .Zeros(1)        // RAIM
        .Unsigned(1, 1)  // communication state selector
        .Zeros(19)       // communication state
        .Bits();
}

AisBits AisClassBExtended(const AisReport& t, std::string_view sName) {
    return ClassBCommon(19, t)
        .Zeros(4)  // reserved
        .Text(sName, 20)
        .Unsigned(37, 8)  // type of ship
        .Unsigned(8, 9)   // metres from the antenna to bow, stern, port and starboard
        .Unsigned(4, 9)
        .Unsigned(2, 6)
        .Unsigned(2, 6)
        .Unsigned(1, 4)  // kind of position fixing device
        .Zeros(1)        // RAIM
        .Zeros(1)        // data terminal equipment
        .Zeros(1)        // assigned mode
        .Zeros(4)        // spare
        .Bits();
}

AisBits AisDataLink(std::uint32_t lMmsi) {
    return AisWriter(20, lMmsi)
        .Zeros(2)            // spare
        .Unsigned(2047, 12)  // offset, number of slots, time-out, increment
        .Unsigned(5, 4)
        .Unsigned(7, 3)
        .Unsigned(225, 11)
        .Zeros(2)  // spare
        .Bits();
}

AisBits AisAidToNavigation(const AisReport& t, std::string_view sName) {
    return AisWriter(21, t.lMmsi)
        .Unsigned(14, 5)  // kind of aid
        .Text(sName, 20)
        .Zeros(1)  // position accuracy
        .Signed(t.lLongitude, 28)
        .Signed(t.lLatitude, 27)
        .Zeros(30)       // dimensions
        .Unsigned(7, 4)  // kind of position fixing device
        .Unsigned(t.lSecond, 6)
        .Zeros(1)  // off position
        .Zeros(8)  // reserved
        .Zeros(1)  // RAIM
        .Zeros(1)  // virtual
        .Zeros(1)  // assigned mode
        .Zeros(1)  // spare
        .Bits();
}

AisBits AisStaticDataA(std::uint32_t lMmsi, std::string_view sName) {
    return AisWriter(24, lMmsi).Unsigned(0, 2).Text(sName, 20).Zeros(8).Bits();
}

AisBits AisStaticDataB(std::uint32_t lMmsi, std::string_view sCallSign) {
    return AisWriter(24, lMmsi)
        .Unsigned(1, 2)
        .Unsigned(37, 8)  // type of ship
        .Text("ABC", 7)   // vendor
        .Text(sCallSign, 7)
        .Zeros(30)  // dimensions
        .Zeros(6)   // spare
        .Bits();
}

AisBits AisOther(int iType, std::uint32_t lMmsi, int iBits) {
    AisBits sBits = AisWriter(iType, lMmsi).Bits();
    sBits.resize(std::max(sBits.size(), static_cast<std::size_t>(iBits)), '0');
    return sBits;
}

std::uint32_t AisUnsigned(const AisBits& sBits, std::size_t iFirst, std::size_t iLast) {
    std::uint32_t lValue = 0;
    for (std::size_t i = iFirst; i <= iLast; ++i) lValue = lValue * 2 + (sBits.at(i) == '1' ? 1U : 0U);
    return lValue;
}

std::int32_t AisSigned(const AisBits& sBits, std::size_t iFirst, std::size_t iLast) {
    const std::int64_t lRange = std::int64_t{1} << (iLast - iFirst + 1);
    const std::int64_t lValue = AisUnsigned(sBits, iFirst, iLast);
    return static_cast<std::int32_t>(sBits.at(iFirst) == '1' ? lValue - lRange : lValue);
}

int AisFillBits(const AisBits& sBits) {
    return static_cast<int>((BitsPerCharacter - sBits.size() % BitsPerCharacter) % BitsPerCharacter);
}

std::string AisPayload(const AisBits& sBits) {
    AisBits sFilled = sBits + std::string(static_cast<std::size_t>(AisFillBits(sBits)), '0');
    std::string sPayload;
    for (std::size_t i = 0; i < sFilled.size(); i += BitsPerCharacter) {
        sPayload += PayloadAlphabet[AisUnsigned(sFilled, i, i + BitsPerCharacter - 1)];
    }
    return sPayload;
}

std::string WithChecksum(std::string_view sBody) {
    unsigned iSum = 0;
    for (std::size_t i = 1; i < sBody.size(); ++i) iSum ^= static_cast<unsigned char>(sBody[i]);
    std::string sSentence(sBody);
    sSentence += '*';
    sSentence += "0123456789ABCDEF"[iSum / 16];
    sSentence += "0123456789ABCDEF"[iSum % 16];
    return sSentence;
}

std::vector<std::string> AisSentences(const AisBits& sBits, char cChannel, int iSequence, std::size_t iCharacters) {
    const std::string sPayload = AisPayload(sBits);
    const std::size_t iCount = std::max<std::size_t>(1, (sPayload.size() + iCharacters - 1) / iCharacters);
    std::vector<std::string> sSentences;
    for (std::size_t i = 0; i < iCount; ++i) {
        std::string sBody = "!AIVDM," + std::to_string(iCount) + "," + std::to_string(i + 1) + ",";
        if (iCount > 1) sBody += std::to_string(iSequence);
        sBody += ',';
        sBody += cChannel;
        sBody += ',' + sPayload.substr(i * iCharacters, iCharacters) + ',';
        sBody += std::to_string(i + 1 == iCount ? AisFillBits(sBits) : 0);
        sSentences.push_back(WithChecksum(sBody));
    }
    return sSentences;
}

std::string AisSentence(const AisBits& sBits, char cChannel) {
    const std::vector<std::string> sSentences = AisSentences(sBits, cChannel, 0, sBits.size());
    return sSentences.front();
}

}  // namespace support
