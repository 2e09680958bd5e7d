// What a name on the command line means: a file, or one input of a capture.
#pragma once

#include <optional>
#include <string>

#include "platform/runtime/PortIndex.h"

namespace report {

struct InputName {
    std::string sFile;
    std::optional<runtime::PortIndex> Port;  // its lines alone
};

// "FILE#1" and "FILE#2" mean an input of FILE, unless there is a file of that whole name.
InputName ReadInputName(const std::string& sName);

}  // namespace report
