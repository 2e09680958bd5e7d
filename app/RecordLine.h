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

// Reads stamps; remembers the last one, because in a recording hundreds of lines carry the same second.
class RecordStampReader {
public:
    // Nothing where the first 19 characters are not a date and time. Holds until the next call.
    const std::optional<runtime::DateTime>& Read(std::string_view sLine) {
        if (!StartsWithLast(sLine)) ReadAnew(sLine);
        return m_dtLast;
    }

private:
    bool StartsWithLast(std::string_view sLine) const {
        return m_dtLast && sLine.size() >= RecordStampLength &&
               std::memcmp(sLine.data(), m_sLast.data(), RecordStampLength) == 0;
    }
    void ReadAnew(std::string_view sLine);

    std::array<char, RecordStampLength> m_sLast{};
    std::optional<runtime::DateTime> m_dtLast;  // what m_sLast says
};

}  // namespace app
