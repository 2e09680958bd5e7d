// Stamps the lines.
#include "report/RecordReader.h"

#include <utility>

namespace report {

RecordReader::RecordReader(const std::string& sPath) : m_tLines(sPath) {}

bool RecordReader::Next(Record& t) {
    std::string_view sLine;
    const LineReader::Found eFound = m_tLines.Next(sLine);
    if (eFound == LineReader::Found::End) return false;
    t.sSentence = {};
    t.tLine = {LineKind::TooLong, m_dtLast, m_bTimed, false};
    if (eFound == LineReader::Found::TooLong) return true;
    const auto dt = m_tStamps.Read(sLine);
    t.tLine.eKind = LineKind::NoStamp;
    if (!dt) return true;
    const runtime::DateTime dtBefore = std::exchange(m_dtLast, *dt);
    t.tLine = {LineKind::Other, *dt, true, std::exchange(m_bTimed, true) && *dt < dtBefore};
    t.sSentence = app::RecordSentence(sLine);
    return true;
}

}  // namespace report
