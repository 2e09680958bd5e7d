// The command that follows a recording for days and says when something is the matter with it.
#pragma once

#include "report/Options.h"

namespace report {

// Follows the last of the files; those before say what is usual. Writes a row for each event, or runs the command that
// is asked for. Ends at SIGINT and SIGTERM with ExitGood, and with ExitUnsaid when the file cannot be followed. Raises
// std::runtime_error when the result cannot be written.
int Watch(const Options& tOptions, Writer& tWriter, Sink& tResult, Sink& tNotes);

}  // namespace report
