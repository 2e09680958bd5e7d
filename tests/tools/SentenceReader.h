// Reads sentences back for the simulator's tests, by the standard and without the program's own decoder: fields,
// checksum, and the bits of a payload as a text of "0" and "1".
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace reader {

inline std::vector<std::string> Fields(std::string_view sText, char sSeparator = ',') {
    std::vector<std::string> sFields(1);
    for (const char c : sText) {
        if (c == sSeparator)
            sFields.emplace_back();
        else
            sFields.back() += c;
    }
    return sFields;
}

// "*" third from the end, and behind it the exclusive or of everything between the first character and it.
inline bool ChecksumRight(std::string_view sLine) {
    if (sLine.size() < 4 || sLine[sLine.size() - 3] != '*') return false;
    unsigned iSum = 0;
    for (const char c : sLine.substr(1, sLine.size() - 4)) iSum ^= static_cast<unsigned char>(c);
    const std::string_view sDigits = "0123456789ABCDEF";
    return sLine[sLine.size() - 2] == sDigits[iSum >> 4] && sLine.back() == sDigits[iSum & 15U];
}

inline std::string BitsOf(std::string_view sPayload) {
    std::string sBits;
    for (const char c : sPayload) {
        int iValue = c - 48;
        if (iValue > 40) iValue -= 8;
        for (int i = 5; i >= 0; --i) sBits += (iValue >> i & 1) != 0 ? '1' : '0';
    }
    return sBits;
}

inline std::int64_t Number(std::string_view sBits, std::size_t iFrom, std::size_t iCount) {
    std::int64_t l = 0;
    for (const char c : sBits.substr(iFrom, iCount)) l = l * 2 + (c == '1' ? 1 : 0);
    return l;
}

inline std::int64_t Signed(std::string_view sBits, std::size_t iFrom, std::size_t iCount) {
    const std::int64_t l = Number(sBits, iFrom, iCount);
    return sBits[iFrom] == '1' ? l - (std::int64_t{1} << iCount) : l;
}

// Six-bit characters without the filling "@" at the end.
inline std::string Text(std::string_view sBits, std::size_t iFrom, std::size_t iCharacters) {
    std::string s;
    for (std::size_t i = 0; i < iCharacters; ++i) {
        const std::int64_t l = Number(sBits, iFrom + 6 * i, 6);
        s += static_cast<char>(l < 32 ? l + 64 : l);
    }
    return s.substr(0, s.find('@'));
}

// An !AIVDM sentence cut into its fields.
struct Vdm {
    int iCount = 0;
    int iPart = 0;
    std::string sSequence;
    std::string sChannel;
    std::string sPayload;
    int iFillBits = 0;
};

inline bool IsVdm(std::string_view sLine) { return sLine.substr(0, 7) == "!AIVDM,"; }

inline Vdm ReadVdm(std::string_view sLine) {
    const auto s = Fields(sLine.substr(0, sLine.size() - 3));
    Vdm t;
    if (s.size() != 7) return t;
    t.iCount = std::stoi(s[1]);
    t.iPart = std::stoi(s[2]);
    t.sSequence = s[3];
    t.sChannel = s[4];
    t.sPayload = s[5];
    t.iFillBits = std::stoi(s[6]);
    return t;
}

}  // namespace reader
