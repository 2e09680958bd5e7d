// Writing and reading the line of a record file.
#include "app/RecordLine.h"

#include <algorithm>

namespace app {

void WriteRecordLine(std::string& sLine, runtime::DateTime dt, std::string_view sSentence) {
    sLine.clear();
    runtime::AppendRecordStamp(sLine, dt);
    sLine += ' ';
    sLine += sSentence;
}

void RecordStampReader::ReadAnew(std::string_view sLine) {
    m_dtLast = runtime::FromRecordStamp(sLine.substr(0, RecordStampLength));
    if (m_dtLast) std::copy_n(sLine.begin(), RecordStampLength, m_sLast.begin());
}

}  // namespace app
