// The two commands that the receiver board understands, complete with checksum and CR LF.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace decoders {

// "$PNMLC," and the channel text as typed: "A" channel 1, "B" channel 2, "S" alternating. Not checked.
std::string ChannelCommand(std::string_view sChannel);

// The character code that the interval text stands for: a number 0 to 255 (rounded half to even); nothing otherwise.
std::optional<std::uint8_t> IntervalCode(std::string_view sInterval);

// "$PNMLT," and the one character with that code (3 is the control character 3, not the digit: the board wants it so).
std::string IntervalCommand(std::uint8_t iInterval);

}  // namespace decoders
