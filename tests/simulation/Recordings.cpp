// Which file a line belongs into. Expected texts wait until they are compared, some minutes at the most.
#include "tests/simulation/Recordings.h"

#include <filesystem>

#include "tests/simulation/Failure.h"
#include "tests/simulation/Stamp.h"

namespace simulation {

void Recordings::Expect(const std::string& sFile, runtime::DateTime dt, std::string_view sSentence) {
    const std::int64_t lPeriods = m_lPeriod == 0 ? 0 : dt.lSeconds / m_lPeriod - m_dtFirst.lSeconds / m_lPeriod;
    const bool bNextDue = lPeriods > 0 || lPeriods < -1;
    const bool bNext = sFile != m_sNewest;
    if (bNext && !bNextDue && !m_bFresh) throw Failure("a new file for no reason: " + sFile + " after " + m_sNewest);
    if (!bNext && bNextDue && !m_bFresh) {
        throw Failure("no new file for " + std::string(Stamp(dt)) + ", still in " + sFile);
    }
    if (bNext) {
        if (m_tFiles.contains(sFile)) throw Failure("a file is written twice: " + sFile);
        Verify();  // the former one is complete
        m_sNewest = sFile;
        m_dtFirst = dt;
    }
    m_bFresh = false;
    ExpectedFile& tFile = m_tFiles.try_emplace(sFile, sFile).first->second;
    tFile.Expect(Stamp(dt));
    tFile.Expect(sSentence);
    tFile.Expect("\r\n");
}

void Recordings::Flushed() {
    if (const auto it = m_tFiles.find(m_sNewest); it != m_tFiles.end()) it->second.Flushed();
}

void Recordings::Trouble() {
    m_bFresh = true;
    if (const auto it = m_tFiles.find(m_sNewest); it != m_tFiles.end()) it->second.Trouble();
}

void Recordings::Moved(const std::string& sFrom, const std::string& sTo) {
    if (const auto it = m_tFiles.find(sFrom); it != m_tFiles.end()) it->second.MovedTo(sTo);
}

void Recordings::Verify() {
    if (m_bAway) return;
    std::erase_if(m_tFiles, [this](const auto& t) { return m_bMayGo && !std::filesystem::exists(t.second.Path()); });
    for (auto& [sName, tFile] : m_tFiles) m_lLines += tFile.Compare(false);
    std::erase_if(m_tFiles, [this](const auto& t) { return t.first != m_sNewest; });
}

}  // namespace simulation
