// The comparison of files. Expected texts wait until they are compared, some minutes at the most.
#include "tests/simulation/Recordings.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "tests/simulation/Failure.h"

namespace simulation {

namespace {

// "mm/dd/yyyy hh:nn:ss "
std::string Stamp(runtime::DateTime dt) {
    using namespace std::chrono;
    const sys_seconds tTime = sys_days{1899y / 12 / 30} + seconds{dt.lSeconds};
    const auto tDay = floor<days>(tTime);
    const year_month_day tDate{tDay};
    const hh_mm_ss tClock{tTime - tDay};
    char s[40];
    std::snprintf(s, sizeof s, "%02u/%02u/%04d %02d:%02d:%02d ", static_cast<unsigned>(tDate.month()),
                  static_cast<unsigned>(tDate.day()), static_cast<int>(tDate.year()),
                  static_cast<int>(tClock.hours().count()), static_cast<int>(tClock.minutes().count()),
                  static_cast<int>(tClock.seconds().count()));
    return s;
}

std::string ReadFrom(const std::string& sPath, std::int64_t lAt) {
    std::ifstream tFile(sPath, std::ios::binary);
    tFile.seekg(lAt);
    std::ostringstream t;
    t << tFile.rdbuf();
    return t.str();
}

std::string Around(std::string_view s, std::size_t iAt) {
    const std::size_t iFrom = iAt > 60 ? iAt - 60 : 0;
    return "[" + std::string(s.substr(std::min(iFrom, s.size()), 160)) + "]";
}

}  // namespace

void Recordings::Expect(const std::string& sFile, runtime::DateTime dt, std::string_view sSentence) {
    const std::int64_t lPeriods = m_lPeriod == 0 ? 0 : dt.lSeconds / m_lPeriod - m_dtFirst.lSeconds / m_lPeriod;
    const bool bNextDue = lPeriods > 0 || lPeriods < -1;
    const bool bNext = sFile != m_sNewest;
    if (bNext && !bNextDue && !m_bFresh) throw Failure("a new file for no reason: " + sFile + " after " + m_sNewest);
    if (!bNext && bNextDue && !m_bFresh) throw Failure("no new file for " + Stamp(dt) + ", still in " + sFile);
    if (bNext) {
        if (m_tFiles.contains(sFile)) throw Failure("a file is written twice: " + sFile);
        Verify();  // the former one is complete
        m_tFiles[sFile].sPath = sFile;
        m_sNewest = sFile;
        m_dtFirst = dt;
    }
    m_bFresh = false;
    m_tFiles[sFile].sExpected.append(Stamp(dt)).append(sSentence).append("\r\n");
}

void Recordings::Flushed() {
    if (const auto it = m_tFiles.find(m_sNewest); it != m_tFiles.end() && !it->second.bTrouble) {
        it->second.lFlushed = it->second.lVerified + static_cast<std::int64_t>(it->second.sExpected.size());
    }
}

void Recordings::Trouble() {
    m_bFresh = true;
    if (const auto it = m_tFiles.find(m_sNewest); it != m_tFiles.end()) it->second.bTrouble = true;
}

void Recordings::Moved(const std::string& sFrom, const std::string& sTo) {
    if (const auto it = m_tFiles.find(sFrom); it != m_tFiles.end()) it->second.sPath = sTo;
}

void Recordings::Verify() {
    if (m_bAway) return;
    std::erase_if(m_tFiles, [this](const auto& t) { return m_bMayGo && !std::filesystem::exists(t.second.sPath); });
    for (auto& [sName, tFile] : m_tFiles) Compare(tFile);
    std::erase_if(m_tFiles, [this](const auto& t) { return t.first != m_sNewest; });
}

// Of a file in trouble what is there must be the beginning of what was to be there.
void Recordings::Compare(File& t) {
    const std::string sThere = ReadFrom(t.sPath, t.lVerified);
    const std::string_view sWanted = t.sExpected;
    const auto [itThere, itWanted] = std::ranges::mismatch(sThere, sWanted);
    const auto iSame = static_cast<std::size_t>(itThere - sThere.begin());
    const bool bEnough =
        t.bTrouble ? t.lVerified + static_cast<std::int64_t>(iSame) >= t.lFlushed : iSame == sWanted.size();
    if (iSame != sThere.size() || !bEnough) {
        throw Failure("the recording " + t.sPath + " differs at byte " +
                      std::to_string(t.lVerified + static_cast<std::int64_t>(iSame)) + ":\n  there  " +
                      Around(sThere, iSame) + "\n  wanted " + Around(sWanted, iSame));
    }
    m_lLines += std::ranges::count(sThere, '\n');
    t.lVerified += static_cast<std::int64_t>(iSame);
    t.sExpected = sWanted.substr(iSame);
    if (t.sExpected.empty()) t.sExpected.shrink_to_fit();
}

}  // namespace simulation
