// The lines of a bounded log: the newest 101, each with a mark. Plain memory; the list that shows them takes them over
// on its own beat.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/runtime/ChangeMark.h"

namespace runtime {

class LogLines {
public:
    // Kept on purpose: a line is removed when more than 100 are held, before the new one is added, so 101 remain.
    static constexpr int RemovalBound = 100;
    static constexpr int Capacity = RemovalBound + 1;

    void Add(std::string_view sLine, bool bMark = false);
    // A line that is left where it lies for now: no line may be looked at between this and KeepViews.
    void AddView(std::string_view sLine, bool bMark) {
        Entry& tEntry = Next(bMark);
        tEntry.sView = sLine;
        tEntry.bView = true;
    }
    // Copies the views that are still among the lines; call it before what they look at goes.
    void KeepViews();
    void Clear();
    // Takes the mark from the line that was the lLine-th ever added (Added() right after it); nothing when it is not
    // among the lines any more.
    void Unmark(std::uint64_t lLine);

    int Count() const { return m_iCount; }
    // i from 0 (oldest) to Count() - 1.
    const std::string& Line(int i) const { return m_tSlots[Slot(i)].sText; }
    bool Mark(int i) const { return m_tSlots[Slot(i)].bMark; }
    // Lines added and lists cleared since the start: what a view needs to know by how far the lines have moved.
    std::uint64_t Added() const { return m_lAdded; }
    std::uint64_t Cleared() const { return m_lCleared; }
    std::uint64_t Unmarked() const { return m_lUnmarked; }  // marks taken since the start

    ChangeMark Changed;

private:
    struct Entry {
        std::string sText;
        std::string_view sView;  // instead of sText where bView says so
        bool bView = false;
        bool bMark = false;
    };
    // The place of one line more, which is the oldest's when all are taken.
    Entry& Next(bool bMark) {
        Entry& tEntry = m_tSlots[static_cast<std::size_t>(m_iNext)];
        if (++m_iNext == Capacity) m_iNext = 0;
        if (m_iCount < Capacity) ++m_iCount;
        ++m_lAdded;
        tEntry.bMark = bMark;
        Changed.Mark();
        return tEntry;
    }
    std::size_t Slot(int i) const {
        const int iSlot = m_iNext - m_iCount + i;
        return static_cast<std::size_t>(iSlot < 0 ? iSlot + Capacity : iSlot);
    }

    std::array<Entry, Capacity> m_tSlots;  // a ring: slots are re-used, so a full log allocates nothing
    int m_iNext = 0;
    int m_iCount = 0;
    std::uint64_t m_lAdded = 0;
    std::uint64_t m_lCleared = 0;
    std::uint64_t m_lUnmarked = 0;
};

}  // namespace runtime
