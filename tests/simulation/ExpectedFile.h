// A file that the program writes, what must stand in it, and the comparison of the two. What has been compared is
// forgotten, so that a file of months takes no memory.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace simulation {

class ExpectedFile {
public:
    enum Stamps { WholeSeconds, Milliseconds };
    // With milliseconds: those of each line are left out of the comparison.
    explicit ExpectedFile(std::string sPath, Stamps eStamps = WholeSeconds)
        : m_sPath(std::move(sPath)), m_eStamps(eStamps) {}

    const std::string& Path() const { return m_sPath; }
    void MovedTo(const std::string& sPath) { m_sPath = sPath; }
    void Expect(std::string_view s) { m_sExpected += s; }
    // All of it was handed to the system by now, and must be there whatever happens.
    void Flushed();
    // The disk fails: the file may end anywhere behind what was flushed.
    void Trouble() { m_bTrouble = true; }
    // Raises Failure where the file differs, or ends too early: it must hold everything, or with bFlushed at least what
    // was flushed. How many lines of it are new.
    std::int64_t Compare(bool bFlushed);

private:
    std::string m_sPath;
    Stamps m_eStamps;
    std::int64_t m_lRead = 0;      // bytes of the file that were compared
    std::int64_t m_lCompared = 0;  // characters of the expected text that were
    std::int64_t m_lFlushed = 0;   // the same
    std::string m_sExpected;       // behind those compared
    bool m_bTrouble = false;
};

}  // namespace simulation
