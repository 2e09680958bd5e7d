// Stamps the lines.
#include "report/RecordReader.h"

#include <optional>

namespace report {

RecordReader::RecordReader(const std::string& sPath) : m_tLines(sPath) {}

// Member by member: a structure that is put together and then copied waits for its bytes, once for every line.
bool RecordReader::Next(Record& t) {
    std::string_view sLine;
    const LineReader::Found eFound = m_tLines.Next(sLine);
    if (eFound == LineReader::Found::End) return false;
    LineEvent& tLine = t.tLine;
    tLine.bSetBack = false;
    const auto dt = eFound == LineReader::Found::Line ? m_tStamps.Read(sLine) : std::nullopt;
    if (dt) {
        tLine.eKind = LineKind::Other;
        tLine.bSetBack = m_bTimed && *dt < m_dtLast;
        m_bTimed = true;
        m_dtLast = *dt;
        t.sSentence = app::RecordSentence(sLine);
    } else {
        tLine.eKind = eFound == LineReader::Found::Line ? LineKind::NoStamp : LineKind::TooLong;
        t.sSentence = {};
    }
    tLine.dt = m_dtLast;
    tLine.bTimed = m_bTimed;
    return true;
}

}  // namespace report
