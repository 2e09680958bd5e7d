// A record file as a row of stamped sentences. Where the window's playback ends at a line that it cannot read, this
// one says so and goes on.
#pragma once

#include <string>
#include <string_view>

#include "app/RecordLine.h"
#include "report/Event.h"
#include "report/LineReader.h"

namespace report {

struct Record {
    LineEvent tLine;  // of kind NoStamp or TooLong, else Other: what it is, is still to be found out
    std::string_view sSentence;
};

class RecordReader {
public:
    explicit RecordReader(const std::string& sPath);  // raises InputError

    // False at the end. Views hold until the next call. Raises InputError.
    bool Next(Record& t);
    // After the end: something stands behind the last line end and was left.
    bool Unfinished() const { return m_tLines.Unfinished(); }
    std::int64_t BytesTaken() const { return m_tLines.File().BytesTaken(); }
    bool Packed() const { return m_tLines.File().Packed(); }
    int Descriptor() const { return m_tLines.File().Descriptor(); }

private:
    LineReader m_tLines;
    app::RecordStampReader m_tStamps;
    runtime::DateTime m_dtLast;
    bool m_bTimed = false;  // m_dtLast has been set
};

}  // namespace report
