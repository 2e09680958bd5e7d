// A record file, or a capture, as a row of stamped sentences. Where the window's playback ends at a line that it cannot
// read, this one says so and goes on.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "app/RecordLine.h"
#include "report/CaptureReader.h"
#include "report/Event.h"
#include "report/InputName.h"
#include "report/LineReader.h"

namespace report {

struct Record {
    LineEvent tLine;  // of kind NoStamp or TooLong, else Other: what it is, is still to be found out
    std::string_view sSentence;
};

class RecordReader {
public:
    // A file, or "FILE#1", the first input of a capture. Raises InputError.
    explicit RecordReader(const std::string& sName);

    // False at the end. Views hold until the next call. Raises InputError.
    bool Next(Record& t);
    // After the end: something stands behind the last line end and was left.
    bool Unfinished() const { return m_tLines.Unfinished(); }
    std::int64_t BytesTaken() const { return m_tLines.File().BytesTaken(); }
    bool Packed() const { return m_tLines.File().Packed(); }
    int Descriptor() const { return m_tLines.File().Descriptor(); }

private:
    bool NextOfCapture(Record& t);
    void Stamp(LineEvent& tLine, runtime::DateTime dt);

    InputName m_tName;
    LineReader m_tLines;
    std::optional<CaptureReader> m_tCapture;  // when the first line says so
    bool m_bBegun = false;
    app::RecordStampReader m_tStamps;
    runtime::DateTime m_dtLast;
    bool m_bTimed = false;  // m_dtLast has been set
};

}  // namespace report
