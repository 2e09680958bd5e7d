// Positions as text, such as 47-36.50'N with the degree sign in place of the dash: degrees, the degree sign (Latin-1
// character 176), minutes, "'" and the hemisphere letter, and back. Degrees are decimal, north and east positive.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace nav {

inline constexpr double PositionUnknown = -999.0;
inline constexpr char DegreeSign = '\xB0';

// Degrees "00" or "000", minutes "00.00". Minutes are rounded on their own and may print as 60.00; degrees beyond the
// field print with more digits. Zero is N and E.
std::string LatitudeToString(double dLatitude);
std::string LongitudeToString(double dLongitude);

// Degrees up to the first degree sign (else the first blank), minutes up to the first "'" (else blank) behind it, the
// rest exactly "S" ("W") negates. Nothing when a separator is missing or a part is no number.
std::optional<double> ParseLatitude(std::string_view sLatitude);
std::optional<double> ParseLongitude(std::string_view sLongitude);

}  // namespace nav
