// Stamps the lines.
#include "report/RecordReader.h"

#include <optional>
#include <utility>

namespace report {

RecordReader::RecordReader(const std::string& sName) : m_tName(ReadInputName(sName)), m_tLines(m_tName.sFile) {}

// Member by member: a structure that is put together and then copied waits for its bytes, once for every line.
bool RecordReader::Next(Record& t) {
    if (m_tCapture) return NextOfCapture(t);
    std::string_view sLine;
    const LineReader::Found eFound = m_tLines.Next(sLine);
    if (eFound == LineReader::Found::End) return false;
    if (!std::exchange(m_bBegun, true)) {
        if (eFound == LineReader::Found::Line && app::IsCaptureHead(sLine)) {
            m_tCapture.emplace(m_tName.Port);
            return NextOfCapture(t);
        }
        if (m_tName.Port) throw InputError("tells no inputs apart: only a capture does");
    }
    LineEvent& tLine = t.tLine;
    const auto dt = eFound == LineReader::Found::Line ? m_tStamps.Read(sLine) : std::nullopt;
    if (dt) {
        tLine.eKind = LineKind::Other;
        Stamp(tLine, *dt);
        t.sSentence = app::RecordSentence(sLine);
    } else {
        tLine.eKind = eFound == LineReader::Found::Line ? LineKind::NoStamp : LineKind::TooLong;
        tLine.bSetBack = false;
        t.sSentence = {};
    }
    tLine.dt = m_dtLast;
    tLine.bTimed = m_bTimed;
    return true;
}

void RecordReader::Stamp(LineEvent& tLine, runtime::DateTime dt) {
    tLine.bSetBack = m_bTimed && dt < m_dtLast;
    m_bTimed = true;
    m_dtLast = dt;
}

bool RecordReader::NextOfCapture(Record& t) {
    t.sSentence = {};
    std::optional<std::string_view> sSentence;
    while (!m_tCapture->Next(sSentence)) {
        std::string_view sLine;
        const LineReader::Found eFound = m_tLines.Next(sLine);
        if (eFound == LineReader::Found::End) return false;
        if (eFound == LineReader::Found::Line && m_tCapture->Take(sLine)) continue;
        const LineKind eKind = eFound == LineReader::Found::Line ? LineKind::NoStamp : LineKind::TooLong;
        t.tLine = {eKind, m_dtLast, m_bTimed, false};
        return true;
    }
    t.tLine.eKind = sSentence ? LineKind::Other : LineKind::TooLong;
    Stamp(t.tLine, m_tCapture->Time());
    t.tLine.dt = m_dtLast;
    t.tLine.bTimed = true;
    if (sSentence) t.sSentence = *sSentence;
    return true;
}

}  // namespace report
