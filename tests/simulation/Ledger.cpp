// A reading of the wire of its own, that shares no code with the program.
#include "tests/simulation/Ledger.h"

#include <cstdio>

namespace simulation {

namespace {

bool ChecksumFails(std::string_view s) {
    if (s[s.size() - 3] != '*') return false;
    unsigned iSum = 0;
    for (const char c : s.substr(1, s.size() - 4)) iSum ^= static_cast<unsigned char>(c);
    char sSum[3];
    std::snprintf(sSum, sizeof sSum, "%02X", iSum & 0xFF);
    return s.substr(s.size() - 2) != sSum;
}

Verdict Judge(std::string_view s) {
    if (s.size() < 6) return Verdict::TooShort;
    if (ChecksumFails(s)) return Verdict::WrongChecksum;
    const std::string_view sKind = s.substr(3, 3);
    const bool bDecoded = s.starts_with("!AIVDM") || s.starts_with("$PNMLS") || sKind == "GLL" || sKind == "RMC";
    return bDecoded ? Verdict::Decoded : Verdict::Unknown;
}

// "!AIVDM,2,2,...": the second of two.
bool CompletesMessage(std::string_view s) { return s.starts_with("!AIVDM") && s.size() > 10 && s[7] == s[9]; }

}  // namespace

void Ledger::Begin() {
    for (std::string& s : m_sPartial) s.clear();
    m_lMessages = 0;
}

std::vector<Line> Ledger::Take(int iPort, std::string_view sBytes) {
    std::vector<Line> tLines;
    std::string& sPartial = m_sPartial[static_cast<std::size_t>(iPort)];
    for (const char c : sBytes) {
        if (c != '\r' && c != '\n') sPartial += c;
        if (c != '\r') continue;
        tLines.push_back({sPartial, Judge(sPartial)});
        if (tLines.back().eVerdict == Verdict::Decoded && CompletesMessage(sPartial)) ++m_lMessages;
        if (tLines.back().eVerdict >= Verdict::Unknown) ++m_lSentences;
        sPartial.clear();
    }
    return tLines;
}

std::size_t Ledger::DropHalfLine(int iPort) {
    std::string& sPartial = m_sPartial[static_cast<std::size_t>(iPort)];
    const std::size_t iSize = sPartial.size();
    sPartial.clear();
    return iSize;
}

}  // namespace simulation
