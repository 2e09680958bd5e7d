// Reading a coordinate from left to right: letter or sign, degrees, minutes, seconds, letter.
#include "nav/PositionReading.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace nav {

namespace {

constexpr double UnitsPerDegree = 6000;  // hundredths of a minute

struct Axis {
    char cPositive;
    char cNegative;
    double dLimit;  // degrees
};
constexpr Axis Latitude{'N', 'S', 90};
constexpr Axis Longitude{'E', 'W', 180};

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\xA0'; }

char Upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

// A place in a text that only goes forward.
class Reader {
public:
    explicit Reader(std::string_view sText) : m_sRest(sText) {}

    bool AtEnd() const { return m_sRest.empty(); }
    char Next() const { return m_sRest.empty() ? '\0' : m_sRest.front(); }

    bool SkipBlanks() {
        const std::size_t iBefore = m_sRest.size();
        while (!m_sRest.empty() && IsBlank(m_sRest.front())) m_sRest.remove_prefix(1);
        return m_sRest.size() < iBefore;
    }

    // One of these characters.
    bool Skip(std::string_view sAny) {
        if (m_sRest.empty() || sAny.find(m_sRest.front()) == std::string_view::npos) return false;
        m_sRest.remove_prefix(1);
        return true;
    }

    // Digits, with a point among or behind them if bFraction; bWhole tells that there was no point.
    std::optional<double> Number(bool& bWhole) {
        const auto lEnd = static_cast<std::size_t>(
            std::ranges::find_if_not(m_sRest, [](char c) { return IsDigit(c) || c == '.'; }) - m_sRest.begin());
        const std::string_view sNumber = m_sRest.substr(0, lEnd);
        if (sNumber.empty() || !IsDigit(sNumber.front())) return std::nullopt;
        double dValue = 0;
        const auto tEnd = std::from_chars(sNumber.data(), sNumber.data() + lEnd, dValue, std::chars_format::fixed);
        if (tEnd.ec != std::errc() || tEnd.ptr != sNumber.data() + lEnd) return std::nullopt;
        bWhole = sNumber.find('.') == std::string_view::npos;
        m_sRest.remove_prefix(lEnd);
        return dValue;
    }

    // The letter of a hemisphere: true when there is one, bNegative says which.
    bool Letter(const Axis& tAxis, bool& bNegative) {
        const char c = Upper(Next());
        if (AtEnd() || (c != tAxis.cPositive && c != tAxis.cNegative)) return false;
        bNegative = c == tAxis.cNegative;
        m_sRest.remove_prefix(1);
        return true;
    }

private:
    std::string_view m_sRest;
};

// What may stand behind a number: the mark of its unit, blanks, or both.
bool SkipUnit(Reader& t, std::string_view sMarks) {
    bool bAny = t.SkipBlanks();
    if (t.Skip(sMarks)) bAny = true;
    bAny = t.SkipBlanks() || bAny;
    return bAny;
}

// What must be followed by the next number.
bool SkipJoint(Reader& t) { return t.Skip(":-"); }

// Degrees, minutes, seconds as one magnitude in degrees.
std::optional<double> ReadMagnitude(Reader& t) {
    bool bWhole = false;
    const auto dDegrees = t.Number(bWhole);
    if (!dDegrees) return std::nullopt;
    const bool bJoint = SkipJoint(t);
    if (!bJoint && !SkipUnit(t, "\xB0\xBA")) return dDegrees;
    if (!IsDigit(t.Next())) return bJoint ? std::nullopt : dDegrees;
    if (!bWhole) return std::nullopt;

    const auto dMinutes = t.Number(bWhole);
    if (!dMinutes || *dMinutes >= 60) return std::nullopt;
    const double dSoFar = *dDegrees + *dMinutes / 60;
    const bool bSecondJoint = SkipJoint(t);
    if (!bSecondJoint && !SkipUnit(t, "'")) return dSoFar;
    if (!IsDigit(t.Next())) return bSecondJoint ? std::nullopt : std::optional(dSoFar);
    if (!bWhole) return std::nullopt;

    const auto dSeconds = t.Number(bWhole);
    if (!dSeconds || *dSeconds >= 60) return std::nullopt;
    t.SkipBlanks();
    if (t.Skip("'") && !t.Skip("'")) return std::nullopt;  // the mark of seconds may be two of minutes
    t.Skip("\"");
    return dSoFar + *dSeconds / 3600;
}

std::optional<double> ReadCoordinate(std::string_view sText, const Axis& tAxis) {
    Reader t(sText);
    bool bNegative = false;
    t.SkipBlanks();
    bool bDirected = t.Letter(tAxis, bNegative);
    if (!bDirected && (t.Next() == '+' || t.Next() == '-')) {
        bDirected = true;
        bNegative = t.Skip("-");
        t.Skip("+");
    }
    t.SkipBlanks();
    const auto dMagnitude = ReadMagnitude(t);
    if (!dMagnitude) return std::nullopt;
    t.SkipBlanks();
    if (!bDirected) t.Letter(tAxis, bNegative);
    t.SkipBlanks();
    if (!t.AtEnd() || *dMagnitude > tAxis.dLimit) return std::nullopt;
    const double dRounded = std::round(*dMagnitude * UnitsPerDegree) / UnitsPerDegree;
    return bNegative ? -dRounded : dRounded;
}

}  // namespace

std::optional<double> ReadLatitude(std::string_view sText) { return ReadCoordinate(sText, Latitude); }

std::optional<double> ReadLongitude(std::string_view sText) { return ReadCoordinate(sText, Longitude); }

std::optional<Position> ReadPosition(std::string_view sText) {
    if (ReadLatitude(sText) || ReadLongitude(sText)) return std::nullopt;  // "4 8.6 W" is not 4 N, 8.6 W
    std::optional<Position> tFound;
    const std::size_t iLength = sText.size();
    for (std::size_t i = 1; i < iLength; ++i) {
        // Where blanks stand, the last one divides: otherwise each would be another way to divide the text.
        const char c = sText[i];
        const bool bMark = c == ',' || c == ';';
        const bool bLastBlank = IsBlank(c) && i + 1 < iLength && !IsBlank(sText[i + 1]);
        if (!bMark && !bLastBlank) continue;
        const auto dLatitude = ReadLatitude(sText.substr(0, i));
        const auto dLongitude = ReadLongitude(sText.substr(i + 1));
        if (!dLatitude || !dLongitude) continue;
        if (tFound) return std::nullopt;
        tFound = Position{*dLatitude, *dLongitude};
    }
    return tFound;
}

}  // namespace nav
