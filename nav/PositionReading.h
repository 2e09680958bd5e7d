// Positions as people write them: in letters, on charts, in other programs. What is pasted into the own position's
// boxes is read here; the boxes' own texts and those of a GPS go through nav/PositionText, which is far more lenient.
//
// One coordinate is whole degrees with minutes ("50 21.4 N", "50-21.40'N", "N 50:21.4"), with minutes and seconds
// (50 21'24" N), or degrees with or without a fraction ("50.3567", "50.3567 S", "-4.135"). Degrees and minutes are
// followed by their mark, a blank, a colon or a dash. The hemisphere is a letter on either side, of either case, or a
// sign in front; without either it is north or east. Only "." is a decimal point.
#pragma once

#include <optional>
#include <string_view>

namespace nav {

struct Position {
    double dLatitude = 0;   // degrees, north positive
    double dLongitude = 0;  // degrees, east positive
};

// Degrees, rounded to the hundredth of a minute that a position text shows. Nothing when the text is anything else than
// one coordinate: both a sign and a letter, the other axis's letter, 60 minutes or more, more than 90 (180) degrees.
// Latin-1; both of its ring signs count as the degree sign.
std::optional<double> ReadLatitude(std::string_view sText);
std::optional<double> ReadLongitude(std::string_view sText);

// A latitude and a longitude behind it, with a comma, a semicolon, a line end or blanks in between. Nothing when the
// text can be divided in no way, or in more than one, or is one coordinate.
std::optional<Position> ReadPosition(std::string_view sText);

}  // namespace nav
