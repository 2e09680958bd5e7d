// Text to numbers over std::from_chars, behind a scan of our own: the library's grammar takes "inf" and "nan", and no
// plus sign, and neither is wanted here.
#include "platform/runtime/Convert.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <string>
#include <system_error>

namespace runtime {
namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// A number at the begin of a text: sNumber is what from_chars takes (no plus sign), iEnd the first character behind it.
struct Scanned {
    std::string_view sNumber;  // empty where there is none
    std::size_t iEnd = 0;
};

std::size_t SkipDigits(std::string_view sText, std::size_t i) {
    while (i < sText.size() && IsDigit(sText[i])) ++i;
    return i;
}

// The end of "e", sign and digits at i, or i itself where the digits are missing.
std::size_t SkipExponent(std::string_view sText, std::size_t i) {
    if (i >= sText.size() || (sText[i] != 'e' && sText[i] != 'E')) return i;
    std::size_t iDigits = i + 1;
    if (iDigits < sText.size() && (sText[iDigits] == '+' || sText[iDigits] == '-')) ++iDigits;
    const std::size_t iEnd = SkipDigits(sText, iDigits);
    return iEnd > iDigits ? iEnd : i;
}

Scanned ScanNumber(std::string_view sText) {
    std::size_t i = 0;
    while (i < sText.size() && sText[i] == ' ') ++i;
    std::size_t iBegin = i;
    if (i < sText.size() && (sText[i] == '+' || sText[i] == '-')) {
        if (sText[i] == '+') ++iBegin;
        ++i;
    }
    const std::size_t iWhole = SkipDigits(sText, i);
    std::size_t iDigits = iWhole - i;
    i = iWhole;
    if (i < sText.size() && sText[i] == '.') {
        const std::size_t iFraction = SkipDigits(sText, i + 1);
        iDigits += iFraction - (i + 1);
        i = iFraction;
    }
    if (iDigits == 0) return {};
    i = SkipExponent(sText, i);
    return {sText.substr(iBegin, i - iBegin), i};
}

// Only asked of numbers beyond the range of a double, whose size is therefore far from 1.
bool IsHuge(std::string_view sNumber) {
    const std::size_t iExponent = sNumber.find_first_of("eE");
    const std::string_view sMantissa = sNumber.substr(0, iExponent);
    const auto iPoint = static_cast<std::int64_t>(std::min(sMantissa.find('.'), sMantissa.size()));
    const auto iFirst = static_cast<std::int64_t>(sMantissa.find_first_of("123456789"));
    if (iExponent == std::string_view::npos) return iFirst < iPoint;
    std::string_view sDigits = sNumber.substr(iExponent + 1);
    if (sDigits.front() == '+') sDigits.remove_prefix(1);
    std::int64_t lExponent = 0;
    const auto tRead = std::from_chars(sDigits.data(), sDigits.data() + sDigits.size(), lExponent);
    if (tRead.ec != std::errc()) return sDigits.front() != '-';
    return lExponent > iFirst - iPoint;
}

// Infinite where a double cannot hold it, zero where it is too small for one.
double ValueOf(std::string_view sNumber) {
    double dValue = 0.0;
    const auto tRead = std::from_chars(sNumber.data(), sNumber.data() + sNumber.size(), dValue);
    if (tRead.ec != std::errc::result_out_of_range) return dValue;
    if (!IsHuge(sNumber)) return 0.0;
    constexpr double Infinity = std::numeric_limits<double>::infinity();
    return sNumber.front() == '-' ? -Infinity : Infinity;
}

[[noreturn]] void Refuse(std::string_view sText, const char* sReason) {
    throw ConversionError('"' + std::string(sText) + "\" " + sReason);
}

}  // namespace

double LeadingNumber(std::string_view sText) noexcept {
    const Scanned tScanned = ScanNumber(sText);
    return tScanned.sNumber.empty() ? 0.0 : ValueOf(tScanned.sNumber);
}

double ToReal(std::string_view sText) {
    const Scanned tScanned = ScanNumber(sText);
    if (tScanned.sNumber.empty()) Refuse(sText, "is not a number");
    if (sText.find_first_not_of(' ', tScanned.iEnd) != std::string_view::npos) Refuse(sText, "is not a number");
    const double dValue = ValueOf(tScanned.sNumber);
    if (std::isinf(dValue)) Refuse(sText, "is too large");
    return dValue;
}

std::int32_t ToInteger(std::string_view sText) {
    const double dValue = std::nearbyint(ToReal(sText));
    if (dValue < std::numeric_limits<std::int32_t>::min() || dValue > std::numeric_limits<std::int32_t>::max()) {
        Refuse(sText, "is too large");
    }
    return static_cast<std::int32_t>(dValue);
}

std::int32_t RoundHalfEven(double dValue) noexcept { return static_cast<std::int32_t>(std::lrint(dValue)); }

}  // namespace runtime
