// Reads GLL and RMC field by field; the first field that fails ends it.
#include "decoders/GpsSentence.h"

#include <charconv>
#include <cstddef>
#include <optional>

namespace decoders {

namespace {

constexpr std::size_t FirstField = 7;        // behind the address field and its comma
constexpr std::size_t TimeDigits = 6;        // "hhmmss"
constexpr std::size_t LatitudeDegrees = 2;   // digits of "ddmm.mmmm" that are degrees
constexpr std::size_t LongitudeDegrees = 3;  // the same of "dddmm.mmmm"
constexpr std::size_t LetterWidth = 3;       // the hemisphere or status letter with the commas around it

// What tells the two coordinates apart.
struct Coordinate {
    std::size_t iDegrees;
    std::string_view sPositive;
    std::string_view sNegative;
    std::string_view sFieldError;
    std::string_view sSignError;
};
constexpr Coordinate Latitude{LatitudeDegrees, ",N,", ",S,", "Error - Latitude, ", "Error - Latitude Sign, "};
constexpr Coordinate Longitude{LongitudeDegrees, ",E,", ",W,", "Error - Longitude, ", "Error - Longitude Sign, "};

// Digits with at most one point. The conversion sees to the rest: a point alone is no number, and the value must fit a
// double.
std::optional<double> PlainDecimal(std::string_view sText) {
    bool bPoint = false;
    for (const char c : sText) {
        const bool bSecondPoint = c == '.' && bPoint;
        if (bSecondPoint || (c != '.' && (c < '0' || c > '9'))) return std::nullopt;
        bPoint = bPoint || c == '.';
    }
    double dValue = 0;
    if (std::from_chars(sText.data(), sText.data() + sText.size(), dValue).ec != std::errc{}) return std::nullopt;
    return dValue;
}

std::optional<double> DegreesOf(std::string_view sField, std::size_t iDegrees) {
    if (sField.size() <= iDegrees) return std::nullopt;
    double dDegrees = 0;
    for (const char c : sField.substr(0, iDegrees)) {
        if (c < '0' || c > '9') return std::nullopt;
        dDegrees = dDegrees * 10 + (c - '0');
    }
    const std::optional<double> dMinutes = PlainDecimal(sField.substr(iDegrees));
    if (!dMinutes) return std::nullopt;
    return dDegrees + *dMinutes / 60;
}

// Walks through a sentence and fills tPosition as far as it comes.
class Reader {
public:
    explicit Reader(std::string_view sSentence) : m_sSentence(sSentence) {}

    GpsPosition tPosition;

    // Field, comma and letter. Afterwards the reader stands behind the comma that follows the letter.
    bool ReadCoordinate(const Coordinate& tKind, double& dDegrees, std::string_view& sPiece) {
        if (!FindComma()) return Fail(tKind.sFieldError);
        const auto dMagnitude = DegreesOf(m_sSentence.substr(m_iStart, m_iComma - m_iStart), tKind.iDegrees);
        if (!dMagnitude) return Fail(tKind.sFieldError);
        dDegrees = *dMagnitude;
        const std::string_view sLetter = m_sSentence.substr(m_iComma, LetterWidth);
        if (sLetter != tKind.sPositive && sLetter != tKind.sNegative) return Fail(tKind.sSignError);
        if (sLetter == tKind.sNegative) dDegrees = -dDegrees;
        sPiece = m_sSentence.substr(m_iStart, m_iComma + 2 - m_iStart);
        m_iStart = m_iComma + LetterWidth;
        return true;
    }

    // Leaves the reader at the comma that ends the time.
    bool ReadTime() {
        if (!FindComma() || m_iComma - m_iStart < TimeDigits) return Fail("Error - Time, ");
        m_sTime = m_sSentence.substr(m_iStart, TimeDigits);
        tPosition.sUtc.reserve(TimeDigits + 2);
        tPosition.sUtc.append(m_sTime, 0, 2).append(1, ':').append(m_sTime, 2, 2).append(1, ':').append(m_sTime, 4, 2);
        return true;
    }

    // sValid stands at the comma behind the time: in GLL without, in RMC with the comma that follows, because in GLL
    // the checksum may follow at once.
    bool ReadStatus(std::string_view sValid) {
        if (m_sSentence.substr(m_iComma, sValid.size()) != sValid) return Fail("Error - Time Valid, ");
        m_iStart = m_iComma + LetterWidth;
        return true;
    }

    void Finish() { tPosition.sTime = m_sTime; }

private:
    bool FindComma() {
        m_iComma = m_sSentence.find(',', m_iStart);
        return m_iComma != std::string_view::npos;
    }

    bool Fail(std::string_view sError) {
        tPosition.sError = sError;
        return false;
    }

    std::string_view m_sSentence;
    std::string_view m_sTime;
    std::size_t m_iStart = FirstField;
    std::size_t m_iComma = 0;
};

}  // namespace

GpsPosition DecodeGll(std::string_view sSentence) {
    Reader tReader(sSentence);
    GpsPosition& tPosition = tReader.tPosition;
    if (tReader.ReadCoordinate(Latitude, tPosition.dLatitude, tPosition.sLatitude) &&
        tReader.ReadCoordinate(Longitude, tPosition.dLongitude, tPosition.sLongitude) && tReader.ReadTime() &&
        tReader.ReadStatus(",A")) {
        tReader.Finish();
    }
    return tPosition;
}

GpsPosition DecodeRmc(std::string_view sSentence) {
    Reader tReader(sSentence);
    GpsPosition& tPosition = tReader.tPosition;
    if (tReader.ReadTime() && tReader.ReadStatus(",A,") &&
        tReader.ReadCoordinate(Latitude, tPosition.dLatitude, tPosition.sLatitude) &&
        tReader.ReadCoordinate(Longitude, tPosition.dLongitude, tPosition.sLongitude)) {
        tReader.Finish();
    }
    return tPosition;
}

}  // namespace decoders
