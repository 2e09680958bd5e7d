// The ring of log lines.
#include "platform/runtime/LogLines.h"

namespace runtime {

namespace {

// Characters, more than a sentence has: a slot takes its memory at its first line and not again when a longer one
// comes.
constexpr std::size_t UsualLine = 100;

}  // namespace

void LogLines::Add(std::string_view sLine, bool bMark) {
    if (m_iCount > RemovalBound) {
        m_iFirst = m_iFirst + 1 < Capacity ? m_iFirst + 1 : 0;
        --m_iCount;
    }
    Entry& tEntry = m_tSlots[Slot(m_iCount)];
    if (tEntry.sText.capacity() < UsualLine) tEntry.sText.reserve(UsualLine);
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
