// The program but for its main: so that tests and other programs can call it.
#pragma once

#include "report/CommandLine.h"

namespace report {

// Reads the files and writes the result to descriptor iResult, all else to iNotes. Returns the exit code.
int Run(const Asked& tAsked, int iResult, int iNotes);

}  // namespace report
