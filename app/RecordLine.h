// The line of a record file: arrival date and time, a blank, the sentence as received. See docs/record-format.md.
#pragma once

#include <array>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>

#include "platform/runtime/DateTime.h"

namespace app {

inline constexpr std::size_t RecordStampLength = 19;     // "mm/dd/yyyy hh:nn:ss"
inline constexpr std::size_t RecordSentenceColumn = 20;  // 0-based; column 20 counted from 1 is a blank

// Writes "mm/dd/yyyy hh:nn:ss sentence" over sLine, without line end.
void WriteRecordLine(std::string& sLine, runtime::DateTime dt, std::string_view sSentence);

// The sentence of a line (what stands from column 21 on, empty when there is nothing).
inline std::string_view RecordSentence(std::string_view sLine) {
    return sLine.size() > RecordSentenceColumn ? sLine.substr(RecordSentenceColumn) : std::string_view();
}

// Reads stamps; remembers the last minute, because in a recording hundreds of lines carry the same one.
class RecordStampReader {
public:
    // Nothing where the first 19 characters are not a date and time.
    std::optional<runtime::DateTime> Read(std::string_view sLine) {
        if (sLine.size() < RecordStampLength) return std::nullopt;
        if (!m_bMinute || std::memcmp(sLine.data(), m_sMinute.data(), SecondColumn) != 0) return ReadAnew(sLine);
        const int iTens = sLine[SecondColumn] - '0';
        const int iOnes = sLine[SecondColumn + 1] - '0';
        if (iTens < 0 || iTens > 5 || iOnes < 0 || iOnes > 9) return std::nullopt;
        return runtime::DateTime{m_dtMinute.lSeconds + std::int64_t{10} * iTens + iOnes};
    }

private:
    static constexpr std::size_t SecondColumn = RecordStampLength - 2;

    std::optional<runtime::DateTime> ReadAnew(std::string_view sLine);

    std::array<char, SecondColumn> m_sMinute{};
    runtime::DateTime m_dtMinute{};  // what m_sMinute says, once there is any
    bool m_bMinute = false;
};

}  // namespace app
