// A second reading of sentences, from the field's own documents and without the program's code: what FuzzSentence
// compares with. Plain and slow.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace fuzz {

// The lines that carriage returns end, line feeds left out.
std::vector<std::string> ReadLines(std::string_view sBytes);

// Two upper-case hexadecimal digits.
std::string ReadChecksum(std::string_view sBody);

// "PNMLS", "AIVDM", "GLL", "RMC", or empty: which decoder the line belongs to. It has at least six characters.
std::string_view ReadKind(std::string_view sLine);

// The text up to each of the first iCommas commas behind the address; fewer where there are fewer commas.
std::vector<std::string_view> ReadFields(std::string_view sLine, std::size_t iCommas);

// The six-bit values of a message's payload characters, as bits.
class Payload {
public:
    void Clear() { m_lValues.clear(); }
    void Add(std::string_view sCharacters);
    std::size_t Count() const { return m_lValues.size(); }
    std::int32_t Value(std::size_t iCharacter) const { return m_lValues[iCharacter]; }
    // True when at least so many values are there and all of them are of the alphabet.
    bool Plain(std::size_t iCharacters) const;
    // Bits iFirst to iLast as a number; of a Plain() payload.
    std::int64_t Bits(std::size_t iFirst, std::size_t iLast) const;
    std::int64_t SignedBits(std::size_t iFirst, std::size_t iLast) const;

private:
    std::vector<std::int32_t> m_lValues;
};

// Tenths as "12.3".
std::string Tenths(std::int64_t lValue);

}  // namespace fuzz
