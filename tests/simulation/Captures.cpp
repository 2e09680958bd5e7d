// Lines as the format's page has them.
#include "tests/simulation/Captures.h"

#include <sys/stat.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>

#include "tests/simulation/Failure.h"
#include "tests/simulation/Stamp.h"

namespace simulation {

namespace {

constexpr std::size_t LongestPiece = 1024;

// 0 where there is no such file.
std::uint64_t NumberOf(const std::string& sFile) {
    struct stat t {};
    return ::stat(sFile.c_str(), &t) == 0 ? t.st_ino : 0;
}

void AppendEscaped(std::string& sTo, std::string_view sBytes) {
    for (const char c : sBytes) {
        const auto i = static_cast<unsigned char>(c);
        if (c == '\\') {
            sTo += "\\\\";
        } else if (c == '\r') {
            sTo += "\\r";
        } else if (c == '\n') {
            sTo += "\\n";
        } else if (i >= 32 && i <= 126) {
            sTo += c;
        } else {
            char s[8];
            std::snprintf(s, sizeof s, "\\x%02X", i);
            sTo += s;
        }
    }
}

}  // namespace

void Captures::Expect(runtime::DateTime dt, int iPort, char cKind, std::string_view sBytes) {
    if (m_sWaiting.empty()) m_dtWaiting = dt;
    while (!sBytes.empty()) {
        const std::size_t iEnd = sBytes.find('\n');
        const std::size_t iPiece = std::min({iEnd == sBytes.npos ? sBytes.size() : iEnd + 1, LongestPiece});
        m_sWaiting += Stamp(dt);
        m_sWaiting += {static_cast<char>('1' + iPort), ' ', cKind, ' '};
        AppendEscaped(m_sWaiting, sBytes.substr(0, iPiece));
        m_sWaiting += "\r\n";
        sBytes.remove_prefix(iPiece);
    }
}

ExpectedFile* Captures::Newest() {
    const auto it = m_tFiles.find(m_lNewest);
    return it == m_tFiles.end() ? nullptr : &it->second;
}

void Captures::WentTo(const std::string& sFile, bool bAlone) {
    if (m_sWaiting.empty()) return;
    if (sFile != m_sNewest || !Newest()) {
        const std::uint64_t lFile = NumberOf(sFile);
        if (lFile == 0) throw Failure("there is no capture " + sFile);
        if (Newest() && lFile == m_lNewest && m_bAlone) {
            Newest()->MovedTo(sFile);
            m_bAlone = false;
        } else {
            if (ExpectedFile* p = Newest()) p->Flushed();
            Verify();
            m_lNewest = lFile;
            m_bAlone = bAlone;
            m_tFiles.erase(lFile);  // the number of one that has gone
            ExpectedFile& tFile = m_tFiles.try_emplace(lFile, sFile, ExpectedFile::Milliseconds).first->second;
            tFile.Expect(Stamp(m_dtWaiting));
            tFile.Expect("Tidewatch capture 1\r\n");
        }
        m_sNewest = sFile;
    }
    Newest()->Expect(m_sWaiting);
    m_sWaiting.clear();
}

void Captures::Flushed() {
    if (ExpectedFile* p = Newest()) p->Flushed();
}

void Captures::Trouble() {
    if (ExpectedFile* p = Newest()) p->Trouble();
}

// In the middle of a second something may not have been handed to the system yet.
void Captures::Verify() {
    if (m_bAway) return;
    std::erase_if(m_tFiles, [this](const auto& t) { return m_bMayGo && !std::filesystem::exists(t.second.Path()); });
    for (auto& [lNumber, tFile] : m_tFiles) m_lLines += tFile.Compare(true);
    std::erase_if(m_tFiles, [this](const auto& t) { return t.first != m_lNewest; });
}

void Captures::Forget() {
    if (const ExpectedFile* p = Newest()) std::filesystem::remove(p->Path());
    m_tFiles.clear();
}

}  // namespace simulation
