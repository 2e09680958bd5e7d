// What must stand in the captures beside the recordings: every byte of both inputs, their events, the commands that
// were sent, by a reading of docs/capture-format.md of its own; the milliseconds are not compared.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

#include "platform/runtime/DateTime.h"
#include "tests/simulation/ExpectedFile.h"

namespace simulation {

class Captures {
public:
    // What is captured in this moment, in order; which file it goes into is known afterwards.
    void Expect(runtime::DateTime dt, int iPort, char cKind, std::string_view sBytes);
    // It went into this file, or nowhere because the program was not capturing. Alone: its recording has no file yet,
    // and gives it another name when it has.
    void WentTo(const std::string& sFile, bool bAlone);
    bool Knows(const std::string& sFile) const { return !m_tFiles.empty() && sFile == m_sNewest; }
    void WentNowhere() { m_sWaiting.clear(); }

    // As of the recordings.
    void Flushed();
    void Trouble();
    void Away(bool bAway) { m_bAway = bAway; }
    void MayGo(bool bMayGo) { m_bMayGo = bMayGo; }
    void Verify();
    void Forget();  // and removes the file
    std::int64_t Lines() const { return m_lLines; }

private:
    ExpectedFile* Newest();

    std::map<std::uint64_t, ExpectedFile> m_tFiles;  // by the system's number: a file may get another name
    std::string m_sNewest;
    std::uint64_t m_lNewest = 0;
    bool m_bAlone = false;  // the newest, when it began
    std::string m_sWaiting;
    runtime::DateTime m_dtWaiting;  // of its first line
    bool m_bAway = false;
    bool m_bMayGo = false;
    std::int64_t m_lLines = 0;
};

}  // namespace simulation
