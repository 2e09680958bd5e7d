// Reads GLL and RMC field by field; the first field that fails ends it.
#include "decoders/GpsSentence.h"

#include <charconv>
#include <cstddef>
#include <optional>

#include "nmea/FieldReader.h"

namespace decoders {

namespace {

constexpr std::size_t TimeDigits = 6;        // "hhmmss"
constexpr std::size_t LatitudeDegrees = 2;   // digits of "ddmm.mmmm" that are degrees
constexpr std::size_t LongitudeDegrees = 3;  // the same of "dddmm.mmmm"

// What tells the two coordinates apart.
struct Coordinate {
    std::size_t iDegrees;
    std::string_view sPositive;  // letter and the comma behind it
    std::string_view sNegative;
    std::string_view sFieldError;
    std::string_view sSignError;
};
constexpr Coordinate Latitude{LatitudeDegrees, "N,", "S,", "Error - Latitude, ", "Error - Latitude Sign, "};
constexpr Coordinate Longitude{LongitudeDegrees, "E,", "W,", "Error - Longitude, ", "Error - Longitude Sign, "};

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
    explicit Reader(std::string_view sSentence) : m_tFields(sSentence) {}

    GpsPosition tPosition;

    // Field, comma, letter, comma.
    bool ReadCoordinate(const Coordinate& tKind, double& dDegrees, std::string_view& sPiece) {
        std::string_view sField;
        if (!m_tFields.Next(sField)) return Fail(tKind.sFieldError);
        const auto dMagnitude = DegreesOf(sField, tKind.iDegrees);
        if (!dMagnitude) return Fail(tKind.sFieldError);
        const bool bNegative = m_tFields.Skip(tKind.sNegative);
        dDegrees = bNegative ? -*dMagnitude : *dMagnitude;
        if (!bNegative && !m_tFields.Skip(tKind.sPositive)) return Fail(tKind.sSignError);
        sPiece = {sField.data(), sField.size() + 2};  // with comma and letter
        return true;
    }

    bool ReadTime() {
        std::string_view sField;
        if (!m_tFields.Next(sField) || sField.size() < TimeDigits) return Fail("Error - Time, ");
        m_sTime = sField.substr(0, TimeDigits);
        tPosition.sUtc = {sField[0], sField[1], ':', sField[2], sField[3], ':', sField[4], sField[5]};
        return true;
    }

    // sValid is the letter, in RMC with the comma that follows; in GLL the checksum may follow at once.
    bool ReadStatus(std::string_view sValid) {
        if (m_tFields.Skip(sValid)) return true;
        return Fail("Error - Time Valid, ");
    }

    void Finish() { tPosition.sTime = m_sTime; }

private:
    bool Fail(std::string_view sError) {
        tPosition.sError = sError;
        return false;
    }

    nmea::FieldReader m_tFields;
    std::string_view m_sTime;
};

}  // namespace

GpsPosition DecodeGll(std::string_view sSentence) {
    Reader tReader(sSentence);
    GpsPosition& tPosition = tReader.tPosition;
    if (tReader.ReadCoordinate(Latitude, tPosition.dLatitude, tPosition.sLatitude) &&
        tReader.ReadCoordinate(Longitude, tPosition.dLongitude, tPosition.sLongitude) && tReader.ReadTime() &&
        tReader.ReadStatus("A")) {
        tReader.Finish();
    }
    return tPosition;
}

GpsPosition DecodeRmc(std::string_view sSentence) {
    Reader tReader(sSentence);
    GpsPosition& tPosition = tReader.tPosition;
    if (tReader.ReadTime() && tReader.ReadStatus("A,") &&
        tReader.ReadCoordinate(Latitude, tPosition.dLatitude, tPosition.sLatitude) &&
        tReader.ReadCoordinate(Longitude, tPosition.dLongitude, tPosition.sLongitude)) {
        tReader.Finish();
    }
    return tPosition;
}

}  // namespace decoders
