// A recording that is played back, and which of its lines are due when.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "platform/runtime/DateTime.h"

namespace simulation {

class Played {
public:
    // Writes the end of a recording, whole lines, into a file of its own. Without any line there is nothing to play.
    Played(const std::string& sRecording, const std::string& sFile);
    bool Empty() const { return m_tLines.empty(); }

    // What is to be shown with this tick: of the first line at once, of the others when so much time has passed since
    // the first tick as lies between their stamps.
    std::vector<std::string> Due(runtime::DateTime dtNow);
    std::vector<std::string> All() const;
    bool Over() const { return m_iNext == m_tLines.size(); }

private:
    struct Line {
        runtime::DateTime dt;
        std::string sSentence;
    };
    std::vector<Line> m_tLines;
    std::size_t m_iNext = 0;
    runtime::DateTime m_dtBegan;
};

}  // namespace simulation
