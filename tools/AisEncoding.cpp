// See AisEncoding.h. Each message is written field by field, so that a function can be held beside its table in
// ITU-R M.1371.
#include "tools/AisEncoding.h"

#include <algorithm>
#include <cmath>

#include "nmea/NmeaChecksum.h"

namespace simulator {

namespace {

constexpr std::size_t SinglePayload = 61;  // behind "!AIVDM,1,1,,A," and before ",0*hh"
constexpr std::size_t PartPayload = 60;    // behind "!AIVDM,2,1,4,A,"
constexpr int FixGps = 1;                  // position fixing devices
constexpr int FixSurveyed = 7;

void Head(BitWriter& tBits, int iType, std::uint32_t lMmsi) {
    tBits.Clear();
    tBits.Unsigned(static_cast<std::uint64_t>(iType), 6);
    tBits.Unsigned(0, 2);  // repeat indicator
    tBits.Unsigned(lMmsi, 30);
}

std::int64_t TenThousandths(double dDegrees) { return std::llround(dDegrees * 600000.0); }
std::uint64_t Tenths(double dValue) { return static_cast<std::uint64_t>(std::llround(dValue * 10.0)); }
std::uint64_t Whole(int iValue) { return static_cast<std::uint64_t>(iValue); }

void Place(BitWriter& tBits, const Fix& t) {
    tBits.Signed(TenThousandths(t.dLongitude), 28);
    tBits.Signed(TenThousandths(t.dLatitude), 27);
}

void Dimensions(BitWriter& tBits, const Hull& t) {
    tBits.Unsigned(Whole(t.iBow), 9);
    tBits.Unsigned(Whole(t.iStern), 9);
    tBits.Unsigned(Whole(t.iPort), 6);
    tBits.Unsigned(Whole(t.iStarboard), 6);
}

}  // namespace

void BitWriter::Clear() {
    m_iCharacters = 0;
    m_lPending = 0;
    m_iPending = 0;
    m_iBits = 0;
    m_iFillBits = 0;
}

void BitWriter::Unsigned(std::uint64_t lValue, int iBits) {
    m_iBits += iBits;
    m_lPending = (m_lPending << iBits) | (lValue & ((std::uint64_t{1} << iBits) - 1));
    m_iPending += iBits;
    while (m_iPending >= 6) {
        m_iPending -= 6;
        const auto iValue = static_cast<int>((m_lPending >> m_iPending) & 63U);
        m_sPayload[m_iCharacters++] = static_cast<char>(iValue + (iValue < 40 ? 48 : 56));
    }
}

void BitWriter::Text(std::string_view sText, int iCharacters) {
    for (int i = 0; i < iCharacters; ++i) {
        const auto k = static_cast<std::size_t>(i);
        const char c = k < sText.size() ? sText[k] : '@';
        Unsigned(static_cast<std::uint64_t>(c) & (c >= '@' ? 31U : 63U), 6);
    }
}

void BitWriter::Finish() {
    m_iFillBits = (6 - m_iBits % 6) % 6;
    const int iBits = m_iBits;
    Unsigned(0, m_iFillBits);
    m_iBits = iBits;
}

int TurnFigure(double dDegreesPerMinute) {
    const int iFigure = std::min(126, static_cast<int>(std::lround(4.733 * std::sqrt(std::abs(dDegreesPerMinute)))));
    return dDegreesPerMinute < 0 ? -iFigure : iFigure;
}

void EncodePosition(BitWriter& tBits, int iType, std::uint32_t lMmsi, int iStatus, int iTurnFigure, const Motion& t) {
    Head(tBits, iType, lMmsi);
    tBits.Unsigned(Whole(iStatus), 4);
    tBits.Signed(iTurnFigure, 8);
    tBits.Unsigned(Tenths(t.dSpeed), 10);
    tBits.Unsigned(1, 1);  // position accuracy
    Place(tBits, t.tFix);
    tBits.Unsigned(Tenths(t.dCourse), 12);
    tBits.Unsigned(Whole(t.iHeading), 9);
    tBits.Unsigned(Whole(t.iSecond), 6);
    tBits.Unsigned(0, 2 + 3 + 1);  // special manoeuvre, spare, RAIM
    tBits.Unsigned(0, 19);         // communication state
    tBits.Finish();
}

void EncodeBase(BitWriter& tBits, int iType, std::uint32_t lMmsi, const Fix& tFix, runtime::DateTime dtUtc) {
    const runtime::CivilDate tDate = runtime::DateOf(dtUtc);
    const std::int32_t lSecond = runtime::SecondOfDay(dtUtc);
    Head(tBits, iType, lMmsi);
    tBits.Unsigned(Whole(tDate.iYear), 14);
    tBits.Unsigned(Whole(tDate.iMonth), 4);
    tBits.Unsigned(Whole(tDate.iDay), 5);
    tBits.Unsigned(Whole(lSecond / 3600), 5);
    tBits.Unsigned(Whole(lSecond / 60 % 60), 6);
    tBits.Unsigned(Whole(lSecond % 60), 6);
    tBits.Unsigned(1, 1);  // position accuracy
    Place(tBits, tFix);
    tBits.Unsigned(Whole(FixSurveyed), 4);
    tBits.Unsigned(0, 10 + 1);  // spare, RAIM
    tBits.Unsigned(0, 19);      // communication state
    tBits.Finish();
}

void EncodeStatic(BitWriter& tBits, const Identity& t) {
    Head(tBits, 5, t.lMmsi);
    tBits.Unsigned(0, 2);  // AIS version
    tBits.Unsigned(t.lImo, 30);
    tBits.Text(t.sCallSign, 7);
    tBits.Text(t.sName, 20);
    tBits.Unsigned(Whole(t.tHull.iShipType), 8);
    Dimensions(tBits, t.tHull);
    tBits.Unsigned(Whole(FixGps), 4);
    tBits.Unsigned(0, 4 + 5);         // arrival: no month, no day
    tBits.Unsigned(24, 5);            // no hour
    tBits.Unsigned(60, 6);            // no minute
    tBits.Unsigned(t.lMmsi % 90, 8);  // draught in tenths of a metre
    tBits.Text(t.sDestination, 20);
    tBits.Unsigned(0, 1 + 1);  // data terminal ready, spare
    tBits.Finish();
}

void EncodeInterrogation(BitWriter& tBits, std::uint32_t lMmsi, std::uint32_t lAsked, int iWantedType) {
    Head(tBits, 15, lMmsi);
    tBits.Unsigned(0, 2);  // spare
    tBits.Unsigned(lAsked, 30);
    tBits.Unsigned(Whole(iWantedType), 6);
    tBits.Unsigned(0, 12);  // slot offset
    tBits.Finish();
}

void EncodeClassB(BitWriter& tBits, std::uint32_t lMmsi, const Motion& t) {
    Head(tBits, 18, lMmsi);
    tBits.Unsigned(0, 8);  // regional
    tBits.Unsigned(Tenths(t.dSpeed), 10);
    tBits.Unsigned(0, 1);  // position accuracy
    Place(tBits, t.tFix);
    tBits.Unsigned(Tenths(t.dCourse), 12);
    tBits.Unsigned(Whole(t.iHeading), 9);
    tBits.Unsigned(Whole(t.iSecond), 6);
    tBits.Unsigned(0, 2);          // regional
    tBits.Unsigned(0b1011100, 7);  // carrier sense, no display, DSC, whole band, message 22, autonomous, no RAIM
    tBits.Unsigned(1, 1);          // the state that follows is ITDMA
    tBits.Unsigned(393222, 19);    // of carrier-sense units: always this value
    tBits.Finish();
}

void EncodeClassBExtended(BitWriter& tBits, const Identity& tWho, const Motion& t) {
    Head(tBits, 19, tWho.lMmsi);
    tBits.Unsigned(0, 8);  // regional
    tBits.Unsigned(Tenths(t.dSpeed), 10);
    tBits.Unsigned(0, 1);  // position accuracy
    Place(tBits, t.tFix);
    tBits.Unsigned(Tenths(t.dCourse), 12);
    tBits.Unsigned(Whole(t.iHeading), 9);
    tBits.Unsigned(Whole(t.iSecond), 6);
    tBits.Unsigned(0, 4);  // regional
    tBits.Text(tWho.sName, 20);
    tBits.Unsigned(Whole(tWho.tHull.iShipType), 8);
    Dimensions(tBits, tWho.tHull);
    tBits.Unsigned(Whole(FixGps), 4);
    tBits.Unsigned(0, 1 + 1 + 1 + 4);  // RAIM, data terminal ready, mode, spare
    tBits.Finish();
}

void EncodeLinkManagement(BitWriter& tBits, std::uint32_t lMmsi, int iOffset, int iSlots, int iIncrement) {
    Head(tBits, 20, lMmsi);
    tBits.Unsigned(0, 2);  // spare
    tBits.Unsigned(Whole(iOffset), 12);
    tBits.Unsigned(Whole(iSlots), 4);
    tBits.Unsigned(7, 3);  // minutes until timeout
    tBits.Unsigned(Whole(iIncrement), 11);
    tBits.Unsigned(0, 2);  // spare
    tBits.Finish();
}

void EncodeAid(BitWriter& tBits, const Identity& tWho, int iAidType, const Fix& tFix, int iSecond) {
    Head(tBits, 21, tWho.lMmsi);
    tBits.Unsigned(Whole(iAidType), 5);
    tBits.Text(tWho.sName, 20);
    tBits.Unsigned(1, 1);  // position accuracy
    Place(tBits, tFix);
    Dimensions(tBits, tWho.tHull);
    tBits.Unsigned(Whole(FixSurveyed), 4);
    tBits.Unsigned(Whole(iSecond), 6);
    tBits.Unsigned(0, 1 + 8 + 1 + 1 + 1 + 1);  // on position, status, RAIM, real, mode, spare
    tBits.Finish();
}

void EncodeStaticA(BitWriter& tBits, const Identity& t) {
    Head(tBits, 24, t.lMmsi);
    tBits.Unsigned(0, 2);  // part A
    tBits.Text(t.sName, 20);
    tBits.Finish();
}

void EncodeStaticB(BitWriter& tBits, const Identity& t) {
    Head(tBits, 24, t.lMmsi);
    tBits.Unsigned(1, 2);  // part B
    tBits.Unsigned(Whole(t.tHull.iShipType), 8);
    tBits.Text("SIM", 3);   // maker
    tBits.Unsigned(0, 24);  // unit model and serial number
    tBits.Text(t.sCallSign, 7);
    Dimensions(tBits, t.tHull);
    tBits.Unsigned(Whole(FixGps), 4);
    tBits.Unsigned(0, 2);  // spare
    tBits.Finish();
}

void CloseSentence(std::string& sBody) {
    const std::string sSum = nmea::NmeaChecksum(sBody);
    sBody += '*';
    sBody += sSum;
}

int SentenceCount(std::string_view sPayload) {
    if (sPayload.size() <= SinglePayload) return 1;
    return static_cast<int>((sPayload.size() + PartPayload - 1) / PartPayload);
}

std::string VdmSentence(std::string_view sPayload, int iFillBits, char sChannel, int iSequence, int iCount, int iPart) {
    const bool bLast = iPart == iCount;
    const std::string_view sPart =
        iCount == 1 ? sPayload : sPayload.substr(static_cast<std::size_t>(iPart - 1) * PartPayload, PartPayload);
    std::string s;
    s.reserve(LongestSentence);
    s += "!AIVDM,";
    s += static_cast<char>('0' + iCount);
    s += ',';
    s += static_cast<char>('0' + iPart);
    s += ',';
    if (iCount > 1) s += static_cast<char>('0' + iSequence);
    s += ',';
    s += sChannel;
    s += ',';
    s += sPart;
    s += ',';
    s += static_cast<char>('0' + (bLast ? iFillBits : 0));
    CloseSentence(s);
    return s;
}

}  // namespace simulator
