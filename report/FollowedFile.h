// A record file that others write while it is read: it may not be there yet, grow, be cut to nothing or give its name
// to another.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "report/RecordReader.h"

namespace report {

class FollowedFile {
public:
    using Taker = std::function<void(Record&)>;

    explicit FollowedFile(std::string sPath) : m_sPath(std::move(sPath)) {}

    // Hands on the whole lines that have come since the last call, of a file that has taken the place of another from
    // its beginning. True when there is more than before, be it half a line. Raises InputError where what bears the
    // name cannot be followed: it is packed, or no plain file.
    bool Read(const Taker& Take);
    // There is a file of that name, or was at the last call.
    bool Open() const { return m_pReader.has_value(); }

private:
    bool ReadOn(const Taker& Take);
    bool IsAnother() const;

    const std::string m_sPath;
    std::optional<RecordReader> m_pReader;
    std::int64_t m_lTaken = 0;
};

}  // namespace report
