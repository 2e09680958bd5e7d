// How long a port has been silent, as panels 3 and 4 of the status bar show it.
#pragma once

#include <cstdint>
#include <string>

namespace app {

// "00:07"; 60 seconds are "00:60" (the bound is inclusive on purpose), 61 "01:01", 3600 "60:00", 6000 "100:00".
std::string SilenceText(std::int32_t lSeconds);

}  // namespace app
