// Text to numbers and reals to whole numbers. The decimal point is "." whatever the locale.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string_view>

namespace runtime {

// Raised where a text is no number, or a number does not fit its type.
struct ConversionError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// The leading numeric part of a text: blanks, sign, digits, point, digits, exponent with digits. 0 where there is none
// ("", "n/a", "nan"); trailing text is ignored ("12.5 kn" is 12.5).
double LeadingNumber(std::string_view sText) noexcept;

// The whole text as a decimal number, blanks around it allowed. Raises ConversionError for anything else, and for a
// magnitude that a double cannot hold.
double ToReal(std::string_view sText);

// ToReal rounded half to even. Raises ConversionError also outside the 32-bit range.
std::int32_t ToInteger(std::string_view sText);

// Half to even; the value must lie in the 32-bit range (use ToInteger for text from outside).
std::int32_t RoundHalfEven(double dValue) noexcept;

}  // namespace runtime
