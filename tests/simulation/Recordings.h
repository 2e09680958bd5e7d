// What must stand in the recordings, file by file, and the comparison with what stands there: complete, in order, and
// in the right file.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

#include "platform/runtime/DateTime.h"
#include "tests/simulation/ExpectedFile.h"

namespace simulation {

class Recordings {
public:
    explicit Recordings(std::int64_t lPeriod) : m_lPeriod(lPeriod) {}  // seconds until the next file; 0: never

    // Each recorded line, in order. A file may follow another only where a period or a run ends.
    void Expect(const std::string& sFile, runtime::DateTime dt, std::string_view sSentence);
    void RunBegins() { m_bFresh = true; }  // or begins again after trouble
    // A second is over: all lines so far were handed to the system, and must be there whatever happens.
    void Flushed();
    // The disk fails: the present file may end anywhere behind what was flushed, and another may follow it.
    void Trouble();
    // The folder is not where it was: nothing can be compared until it is.
    void Away(bool bAway) { m_bAway = bAway; }
    bool Away() const { return m_bAway; }
    // Files may be removed, by a keep rule or for room: the oldest by name, after a step of the clock maybe the one
    // that was recorded last. Of one that is being recorded a notice would tell.
    void MayGo(bool bMayGo) { m_bMayGo = bMayGo; }
    void Moved(const std::string& sFrom, const std::string& sTo);
    // Compares what is new in the files, and forgets all files but the newest. Raises Failure.
    void Verify();
    void Forget() { m_tFiles.clear(); }
    const std::string& Newest() const { return m_sNewest; }
    std::int64_t Lines() const { return m_lLines; }  // compared and found right

private:
    const std::int64_t m_lPeriod;
    std::map<std::string, ExpectedFile> m_tFiles;  // by the name under which the program knows them
    std::string m_sNewest;
    runtime::DateTime m_dtFirst;  // of the newest
    bool m_bFresh = true;
    bool m_bAway = false;
    bool m_bMayGo = false;
    std::int64_t m_lLines = 0;
};

}  // namespace simulation
