// The comparison, from where the last one ended.
#include "tests/simulation/ExpectedFile.h"

#include <algorithm>
#include <fstream>
#include <sstream>

#include "tests/simulation/Failure.h"

namespace simulation {

namespace {

constexpr std::size_t SecondsLength = 19;      // "05/15/2011 12:00:00"
constexpr std::size_t MillisecondsLength = 4;  // ".123"

std::string ReadFrom(const std::string& sPath, std::int64_t lAt) {
    std::ifstream tFile(sPath, std::ios::binary);
    tFile.seekg(lAt);
    std::ostringstream t;
    t << tFile.rdbuf();
    return std::move(t).str();
}

// Each line's fraction of a second. Whatever else stands there stays, and differs.
std::string WithoutMilliseconds(std::string_view s) {
    std::string sWithout;
    sWithout.reserve(s.size());
    while (!s.empty()) {
        const std::string_view sLine = s.substr(0, s.find('\n') == s.npos ? s.npos : s.find('\n') + 1);
        s.remove_prefix(sLine.size());
        const std::string_view sFraction = sLine.substr(std::min(SecondsLength, sLine.size()), MillisecondsLength);
        const bool bFraction =
            sFraction.starts_with('.') && sFraction.find_first_not_of("0123456789", 1) == std::string_view::npos;
        sWithout.append(sLine.substr(0, SecondsLength));
        if (sLine.size() > SecondsLength)
            sWithout.append(sLine.substr(SecondsLength + (bFraction ? sFraction.size() : 0)));
    }
    return sWithout;
}

std::string Around(std::string_view s, std::size_t iAt) {
    const std::size_t iFrom = iAt > 60 ? iAt - 60 : 0;
    return "[" + std::string(s.substr(std::min(iFrom, s.size()), 160)) + "]";
}

}  // namespace

void ExpectedFile::Flushed() {
    if (!m_bTrouble) m_lFlushed = m_lCompared + static_cast<std::int64_t>(m_sExpected.size());
}

std::int64_t ExpectedFile::Compare(bool bFlushed) {
    const std::string sRead = ReadFrom(m_sPath, m_lRead);
    const std::string sThere = m_eStamps == Milliseconds ? WithoutMilliseconds(sRead) : sRead;
    const std::string_view sWanted = m_sExpected;
    const auto [itThere, itWanted] = std::ranges::mismatch(sThere, sWanted);
    const auto iSame = static_cast<std::size_t>(itThere - sThere.begin());
    const bool bEnough =
        bFlushed || m_bTrouble ? m_lCompared + static_cast<std::int64_t>(iSame) >= m_lFlushed : iSame == sWanted.size();
    if (iSame != sThere.size() || !bEnough) {
        throw Failure("the file " + m_sPath + " differs at byte " +
                      std::to_string(m_lCompared + static_cast<std::int64_t>(iSame)) + ":\n  there  " +
                      Around(sThere, iSame) + "\n  wanted " + Around(sWanted, iSame));
    }
    m_lRead += static_cast<std::int64_t>(sRead.size());
    m_lCompared += static_cast<std::int64_t>(iSame);
    std::string(sWanted.substr(iSame)).swap(m_sExpected);  // its memory goes: what the program takes is measured
    return std::ranges::count(sThere, '\n');
}

}  // namespace simulation
