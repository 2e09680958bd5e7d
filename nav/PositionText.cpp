// The two formatters and the two parsers, each pair one routine that is told the width and the letters.
#include "nav/PositionText.h"

#include <cmath>

#include "platform/runtime/Convert.h"
#include "platform/runtime/Format.h"

namespace nav {
namespace {

std::string PositionToString(double dDegrees, runtime::Picture tWhole, char cPositive, char cNegative) {
    const double dMagnitude = std::fabs(dDegrees);
    const double dWhole = std::floor(dMagnitude);
    std::string sText;
    runtime::AppendFormat(sText, dWhole, tWhole);
    sText += DegreeSign;
    // Kept on purpose: the minutes are rounded by themselves, so 60.00 may print, without a carry into the degrees.
    runtime::AppendFormat(sText, (dMagnitude - dWhole) * 60, runtime::PictureMinutes);
    sText += '\'';
    sText += dDegrees < 0 ? cNegative : cPositive;
    return sText;
}

// The first cMark at or behind iFrom, else the first blank there.
std::size_t FindMarkOrBlank(std::string_view sText, char cMark, std::size_t iFrom) {
    const std::size_t i = sText.find(cMark, iFrom);
    return i != std::string_view::npos ? i : sText.find(' ', iFrom);
}

std::optional<double> ParsePosition(std::string_view sText, std::string_view sNegative) {
    const std::size_t iSeparator = FindMarkOrBlank(sText, DegreeSign, 0);
    if (iSeparator == std::string_view::npos) return std::nullopt;
    const std::size_t iMinutes = iSeparator + 1;
    const std::size_t iEnd = FindMarkOrBlank(sText, '\'', iMinutes);
    if (iEnd == std::string_view::npos) return std::nullopt;
    try {
        // Kept on purpose: a sign on the degrees does not reach the minutes, so "-47 30.00 N" is -46.5.
        const double dDegrees = runtime::ToReal(sText.substr(0, iSeparator)) +
                                runtime::ToReal(sText.substr(iMinutes, iEnd - iMinutes)) / 60;
        return sText.substr(iEnd + 1) == sNegative ? -dDegrees : dDegrees;
    } catch (const runtime::ConversionError&) {
        return std::nullopt;
    }
}

}  // namespace

std::string LatitudeToString(double dLatitude) { return PositionToString(dLatitude, runtime::PictureTwo, 'N', 'S'); }

std::string LongitudeToString(double dLongitude) {
    return PositionToString(dLongitude, runtime::PictureThree, 'E', 'W');
}

std::optional<double> ParseLatitude(std::string_view sLatitude) { return ParsePosition(sLatitude, "S"); }

std::optional<double> ParseLongitude(std::string_view sLongitude) { return ParsePosition(sLongitude, "W"); }

}  // namespace nav
