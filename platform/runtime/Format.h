// Numbers as text, by the few fixed pictures that the program shows. Every figure in a cell, a log line or a
// sentence comes through here, so the rounding is the same everywhere.
#pragma once

#include <cstdint>
#include <string>

namespace runtime {

// A picture such as "00.00": at least iWhole digits before the point, exactly iDecimals behind it.
struct Picture {
    int iWhole;
    int iDecimals;
};

inline constexpr Picture PictureWhole{1, 0};    // "0"
inline constexpr Picture PictureTenths{1, 1};   // "0.0"
inline constexpr Picture PictureTwo{2, 0};      // "00"
inline constexpr Picture PictureThree{3, 0};    // "000"
inline constexpr Picture PictureMinutes{2, 2};  // "00.00"
inline constexpr Picture PictureCourse{3, 1};   // "000.0"

// Appends dValue by the picture. Rounds half away from zero on the value's decimal reading of 15 significant digits
// (0.15 by "0.0" is "0.2", 1.005 by "00.00" is "01.01"). A negative value that rounds to zero shows no sign.
// Not-a-number prints "nan", infinities "inf" and "-inf".
void AppendFormat(std::string& sText, double dValue, Picture tPicture);
std::string Format(double dValue, Picture tPicture);

// Appends a whole number in decimal, "-" in front of a negative one.
void AppendInteger(std::string& sText, std::int64_t lValue);
// Appends a whole number from 0 to 99 as two digits.
void AppendTwoDigits(std::string& sText, int iValue);

}  // namespace runtime
