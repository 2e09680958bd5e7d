// gnuplot as a process: a program of its own, so that a run without pictures neither loads nor starts anything.
#pragma once

#include <string>

#include "report/PlotScript.h"

namespace report {

// The picture's bytes. Raises std::runtime_error when gnuplot cannot be started or does not draw it.
std::string Drawn(const Picture& t, PlotFormat e);

}  // namespace report
