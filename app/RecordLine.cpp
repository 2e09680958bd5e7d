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

std::optional<runtime::DateTime> RecordStampReader::ReadAnew(std::string_view sLine) {
    const auto dt = runtime::FromRecordStamp(sLine.substr(0, RecordStampLength));
    if (!dt) return dt;
    std::copy_n(sLine.begin(), SecondColumn, m_sMinute.begin());
    m_bMinute = true;
    m_dtMinute = runtime::DateTime{dt->lSeconds - runtime::SecondOfDay(*dt) % 60};
    return dt;
}

}  // namespace app
