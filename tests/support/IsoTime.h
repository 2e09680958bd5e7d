// Date and time as tests and scenario scripts write them: "yyyy-mm-ddThh:nn:ss".
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/runtime/DateTime.h"

namespace support {

std::string IsoText(runtime::DateTime dt);
// Reads exactly that form, of a real date from year 1 on and a real time; nothing otherwise.
std::optional<runtime::DateTime> FromIso(std::string_view sText);

}  // namespace support
