// The pictures of a result alone, each a file in a folder.
#pragma once

#include <memory>
#include <string>

#include "report/PlotScript.h"
#include "report/Writer.h"

namespace report {

// The folder is made where it is missing. What cannot be drawn, because there is nothing to show, is told to tNotes.
// Raises std::runtime_error when it cannot be written or drawn.
std::unique_ptr<Writer> MakePictureWriter(const std::string& sFolder, PlotFormat e, Sink& tNotes);

}  // namespace report
