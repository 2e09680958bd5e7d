// Writing and reading the line of a record file.
#include "app/RecordLine.h"

namespace app {

void WriteRecordLine(std::string& sLine, runtime::DateTime dt, std::string_view sSentence) {
    sLine.clear();
    runtime::AppendRecordStamp(sLine, dt);
    sLine += ' ';
    sLine += sSentence;
}

std::string_view RecordSentence(std::string_view sLine) {
    return sLine.size() > RecordSentenceColumn ? sLine.substr(RecordSentenceColumn) : std::string_view();
}

const std::optional<runtime::DateTime>& RecordStampReader::Read(std::string_view sLine) {
    const std::string_view sStamp = sLine.substr(0, RecordStampLength);
    if (m_dtLast && sStamp == m_sLast) return m_dtLast;
    m_sLast = sStamp;
    m_dtLast = runtime::FromRecordStamp(sStamp);
    return m_dtLast;
}

}  // namespace app
