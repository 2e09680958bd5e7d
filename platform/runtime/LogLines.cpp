// The ring of log lines.
#include "platform/runtime/LogLines.h"

namespace runtime {

void LogLines::Add(std::string_view sLine, bool bMark) {
    if (m_iCount > RemovalBound) {
        m_iFirst = m_iFirst + 1 < Capacity ? m_iFirst + 1 : 0;
        --m_iCount;
    }
    Entry& tEntry = m_tSlots[Slot(m_iCount)];
    tEntry.sText.assign(sLine);
    tEntry.bMark = bMark;
    ++m_iCount;
    ++m_lAdded;
    Changed.Mark();
}

void LogLines::Clear() {
    m_iFirst = 0;
    m_iCount = 0;
    ++m_lCleared;
    Changed.Mark();
}

}  // namespace runtime
