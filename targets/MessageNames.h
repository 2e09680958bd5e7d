// The titles of the AIS message types.
#pragma once

#include <cstdint>
#include <string>

namespace targets {

inline constexpr std::int32_t FirstCountedId = 1;
inline constexpr std::int32_t LastCountedId = 32;  // ids outside have no row of their own and count nowhere

// "1=Position Scheduled"; the bare number for a type without a name. A reference to a table for ids 0 to 63, to a text
// that the next call replaces for any other.
const std::string& MessageName(std::int32_t lMessageId);

}  // namespace targets
