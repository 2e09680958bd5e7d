// The bracketed log text of a communication event.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace nmea {

// "<<Break Signal Received>>" (1001), "<<Framing Error>>" (1004), "<<Port Overrun>>" (1006), "<<Rx Overflow>>" (1008),
// "<<Parity Error>>" (1009), else "<<Event N>>" with the number in decimal.
std::string CommNotice(int iEvent);

// Notices of our own, beside those of the events.
// Sentences that did not leave; sWhy is "full", "lost" or "closed": "<<Output full - 816 sentences dropped>>".
std::string OutputNotice(std::string_view sWhy, std::int64_t lSentences);
// A device that is there again cannot be opened: "<<Device not opened - permission denied: /dev/ttyUSB0>>".
std::string NotOpenedNotice(std::string_view sReason);
// The beginning of a line whose end never comes: "<<Half line dropped - 23 characters>>".
std::string HalfLineNotice(std::size_t iCharacters);
// Characters come for a while and no sentence among them: "<<Bytes arrive but no sentence - is the speed right?>>".
inline constexpr char SpeedNotice[] = "<<Bytes arrive but no sentence - is the speed right?>>";
// A line of more than so many characters: "<<Line dropped - longer than 65536 characters>>".
std::string LongLineNotice(std::size_t iCharacters);

}  // namespace nmea
