// What the process that is killed while it records had to record.
#pragma once

#include <string>

namespace support {

inline constexpr int SecondsTicked = 5;
inline constexpr int LinesPerSecond = 40;

// A decoded sentence, another one for each place.
inline std::string RecordedSentence(int iSecond, int iLine) {
    return "$PNMLS," + std::to_string(iSecond) + "," + std::to_string(iLine) + ",3*";
}

}  // namespace support
