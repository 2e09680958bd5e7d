// The ring of log lines.
#include "platform/runtime/LogLines.h"

#include <utility>

namespace runtime {

namespace {

// Characters, more than a sentence has: a slot takes its memory at its first line and not again when a longer one
// comes.
constexpr std::size_t UsualLine = 100;

}  // namespace

void LogLines::Add(std::string_view sLine, bool bMark) {
    Entry& tEntry = Next(bMark);
    if (tEntry.sText.capacity() < UsualLine) tEntry.sText.reserve(UsualLine);
    tEntry.sText.assign(sLine);
    tEntry.bView = false;
}

void LogLines::KeepViews() {
    for (int i = 0; i < m_iCount; ++i) {
        Entry& tEntry = m_tSlots[Slot(i)];
        if (!std::exchange(tEntry.bView, false)) continue;
        tEntry.sText.assign(tEntry.sView);
    }
}

void LogLines::Clear() {
    m_iNext = 0;
    m_iCount = 0;
    ++m_lCleared;
    Changed.Mark();
}

void LogLines::Unmark(std::uint64_t lLine) {
    const std::uint64_t lNewer = m_lAdded - lLine;
    if (lLine == 0 || lNewer >= static_cast<std::uint64_t>(m_iCount)) return;
    m_tSlots[Slot(m_iCount - 1 - static_cast<int>(lNewer))].bMark = false;
    ++m_lUnmarked;
    Changed.Mark();
}

}  // namespace runtime
