// The second reading.
#include "tests/fuzz/SentenceReading.h"

#include <algorithm>

namespace fuzz {

std::vector<std::string> ReadLines(std::string_view sBytes) {
    std::vector<std::string> sLines;
    std::string sLine;
    for (const char c : sBytes) {
        if (c == '\r') sLines.push_back(std::move(sLine));
        if (c == '\r') sLine.clear();
        if (c != '\r' && c != '\n') sLine += c;
    }
    return sLines;
}

std::string ReadChecksum(std::string_view sBody) {
    unsigned lSum = 0;
    for (std::size_t i = 1; i < sBody.size(); ++i) lSum ^= static_cast<unsigned char>(sBody[i]);
    constexpr std::string_view Digits = "0123456789ABCDEF";
    return {Digits[lSum / 16], Digits[lSum % 16]};
}

std::string_view ReadKind(std::string_view sLine) {
    if (sLine.substr(0, 6) == "$PNMLS") return "PNMLS";
    if (sLine.substr(0, 6) == "!AIVDM") return "AIVDM";
    if (sLine.substr(3, 3) == "GLL") return "GLL";
    if (sLine.substr(3, 3) == "RMC") return "RMC";
    return {};
}

std::vector<std::string_view> ReadFields(std::string_view sLine, std::size_t iCommas) {
    std::vector<std::string_view> sFields;
    std::size_t iStart = 7;
    while (sFields.size() < iCommas && iStart <= sLine.size()) {
        const std::size_t iComma = sLine.find(',', iStart);
        if (iComma == std::string_view::npos) break;
        sFields.push_back(sLine.substr(iStart, iComma - iStart));
        iStart = iComma + 1;
    }
    return sFields;
}

void Payload::Add(std::string_view sCharacters) {
    for (const char c : sCharacters) {
        const int iCode = static_cast<unsigned char>(c);
        m_lValues.push_back(iCode < 96 ? iCode - 48 : iCode - 56);
    }
}

bool Payload::Plain(std::size_t iCharacters) const {
    if (m_lValues.size() < iCharacters) return false;
    const auto iEnd = m_lValues.begin() + static_cast<std::ptrdiff_t>(iCharacters);
    return std::all_of(m_lValues.begin(), iEnd, [](std::int32_t l) { return l >= 0 && l < 64; });
}

std::int64_t Payload::Bits(std::size_t iFirst, std::size_t iLast) const {
    std::int64_t lValue = 0;
    for (std::size_t i = iFirst; i <= iLast; ++i) lValue = lValue * 2 + (m_lValues[i / 6] >> (5 - i % 6) & 1);
    return lValue;
}

std::int64_t Payload::SignedBits(std::size_t iFirst, std::size_t iLast) const {
    const std::int64_t lSign = std::int64_t{1} << (iLast - iFirst);
    const std::int64_t lValue = Bits(iFirst, iLast);
    return lValue >= lSign ? lValue - 2 * lSign : lValue;
}

std::string Tenths(std::int64_t lValue) { return std::to_string(lValue / 10) + '.' + std::to_string(lValue % 10); }

}  // namespace fuzz
