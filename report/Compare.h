// Two recordings beside each other: two antennas or receivers at the same time, or at different times.
#pragma once

#include <vector>

#include "report/Options.h"
#include "report/Sequence.h"

namespace report {

// Reads the two files that the options name and writes the result; tEnds gets how each ended. False when what was asked
// for cannot be said from these files; the notes say why.
bool Compare(const Options& tOptions, Writer& tWriter, const Sequence::Progress& ShowProgress,
             std::vector<FileEnd>& tEnds);

}  // namespace report
