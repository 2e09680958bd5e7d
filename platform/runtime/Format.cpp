// The pictures: a quick road over scaled whole numbers for nearly every value (16 ns against 130, half a dozen of them
// in every report that is shown), and a decimal one for values that lie too near to a rounding border, or are too
// large, for binary arithmetic to decide.
#include "platform/runtime/Format.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string_view>

namespace runtime {
namespace {

constexpr int SignificantDigits = 15;
// Below it every whole number of the scaled value has at most fifteen digits.
constexpr double LargestScaled = 1e15;
// More than the distance between a double and its reading of fifteen digits, relative to the value.
constexpr double ReadingError = 1e-14;
constexpr std::array<double, 7> PowerOfTen{1, 10, 100, 1e3, 1e4, 1e5, 1e6};

// Appends a whole number of units of the last decimal, given by its digits without leading zeros (none for zero).
void AppendDigits(std::string& sText, bool bNegative, std::string_view sDigits, Picture tPicture) {
    const auto iDecimals = static_cast<std::size_t>(tPicture.iDecimals);
    const std::size_t iBehind = std::min(sDigits.size(), iDecimals);
    const std::size_t iFront = sDigits.size() - iBehind;
    const std::size_t iWhole = std::max(iFront, static_cast<std::size_t>(tPicture.iWhole));
    if (bNegative && !sDigits.empty()) sText += '-';
    sText.resize(sText.size() + iWhole + (iDecimals > 0 ? 1 + iDecimals : 0), '0');
    char* pEnd = sText.data() + sText.size();
    if (iDecimals > 0) {
        std::copy(sDigits.end() - static_cast<std::ptrdiff_t>(iBehind), sDigits.end(), pEnd - iBehind);
        pEnd -= iDecimals + 1;
        *pEnd = '.';
    }
    std::copy_n(sDigits.begin(), iFront, pEnd - iFront);
}

// Adds one to the last digit and carries.
void Increment(std::string& sDigits) {
    for (auto p = sDigits.rbegin(); p != sDigits.rend(); ++p) {
        if (*p != '9') {
            ++*p;
            return;
        }
        *p = '0';
    }
    sDigits.insert(sDigits.begin(), '1');
}

// Writes "d.dddddddddddddde+xx" and rounds that decimal text. dMagnitude is finite and above zero.
void AppendByReading(std::string& sText, bool bNegative, double dMagnitude, Picture tPicture) {
    constexpr std::size_t ExponentSign = SignificantDigits + 2;
    std::array<char, 32> sReading{};
    const auto tWritten = std::to_chars(sReading.data(), sReading.data() + sReading.size(), dMagnitude,
                                        std::chars_format::scientific, SignificantDigits - 1);
    int iExponent = 0;
    std::from_chars(sReading.data() + ExponentSign + 1, tWritten.ptr, iExponent);
    if (sReading[ExponentSign] == '-') iExponent = -iExponent;

    std::string sDigits(1, sReading[0]);
    sDigits.append(sReading.data() + 2, SignificantDigits - 1);
    const int iKept = iExponent + 1 + tPicture.iDecimals;
    if (iKept < 0) {
        sDigits.clear();
    } else if (iKept >= SignificantDigits) {
        sDigits.append(static_cast<std::size_t>(iKept - SignificantDigits), '0');
    } else {
        const bool bUp = sDigits[static_cast<std::size_t>(iKept)] >= '5';
        sDigits.resize(static_cast<std::size_t>(iKept));
        if (bUp) Increment(sDigits);
    }
    AppendDigits(sText, bNegative, sDigits, tPicture);
}

// lUnits of the picture's last place, below LargestScaled: digits written from the end, then taken over at once.
void AppendUnits(std::string& sText, bool bNegative, std::uint64_t lUnits, Picture tPicture) {
    std::array<char, 48> sBuffer;
    char* const pEnd = sBuffer.data() + sBuffer.size();
    char* p = pEnd;
    const auto PutDigit = [&p, &lUnits] {
        *--p = static_cast<char>('0' + lUnits % 10);
        lUnits /= 10;
    };
    for (int i = 0; i < tPicture.iDecimals; ++i) PutDigit();
    if (tPicture.iDecimals > 0) *--p = '.';
    for (int i = 0; i < tPicture.iWhole || lUnits != 0; ++i) PutDigit();
    if (bNegative) *--p = '-';
    sText.append(p, static_cast<std::size_t>(pEnd - p));
}

double Scale(int iDecimals) {
    const auto i = static_cast<std::size_t>(iDecimals);
    return i < PowerOfTen.size() ? PowerOfTen[i] : std::pow(10.0, iDecimals);
}

}  // namespace

void AppendFormat(std::string& sText, double dValue, Picture tPicture) {
    if (std::isnan(dValue)) {
        sText += "nan";
        return;
    }
    if (std::isinf(dValue)) {
        sText += dValue < 0 ? "-inf" : "inf";
        return;
    }
    const double dMagnitude = std::fabs(dValue);
    const double dScaled = dMagnitude * Scale(tPicture.iDecimals);
    if (dScaled >= LargestScaled || tPicture.iWhole + tPicture.iDecimals > SignificantDigits) {
        return AppendByReading(sText, dValue < 0, dMagnitude, tPicture);
    }

    auto lUnits = static_cast<std::uint64_t>(dScaled);
    const double dRest = dScaled - static_cast<double>(lUnits);
    if (std::fabs(dRest - 0.5) <= dScaled * ReadingError) {
        return AppendByReading(sText, dValue < 0, dMagnitude, tPicture);
    }
    if (dRest > 0.5) ++lUnits;
    AppendUnits(sText, dValue < 0 && lUnits != 0, lUnits, tPicture);
}

std::string Format(double dValue, Picture tPicture) {
    std::string sText;
    AppendFormat(sText, dValue, tPicture);
    return sText;
}

void AppendInteger(std::string& sText, std::int64_t lValue) {
    std::array<char, 20> sDigits;  // "-9223372036854775808"
    const auto tWritten = std::to_chars(sDigits.data(), sDigits.data() + sDigits.size(), lValue);
    sText.append(sDigits.data(), tWritten.ptr);
}

void AppendTwoDigits(std::string& sText, int iValue) {
    const std::array<char, 2> sDigits{static_cast<char>('0' + iValue / 10), static_cast<char>('0' + iValue % 10)};
    sText.append(sDigits.data(), sDigits.size());
}

}  // namespace runtime
