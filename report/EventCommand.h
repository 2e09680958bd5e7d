// A command of the user's, run by the shell at an event.
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

#include "report/Writer.h"

namespace report {

class EventCommand {
public:
    EventCommand(std::string sCommand, Sink& tNotes) : m_sCommand(std::move(sCommand)), m_tNotes(tNotes) {}

    // Starts it with these variables ("NAME=value") beside our own, its input empty, and does not wait for it.
    void Run(const std::vector<std::string>& sVariables);
    // Takes leave of those that have ended, and says of what failed that it did.
    void Reap();

private:
    void Note(const std::string& sText);

    const std::string m_sCommand;
    Sink& m_tNotes;
    std::vector<pid_t> m_iRunning;
};

}  // namespace report
