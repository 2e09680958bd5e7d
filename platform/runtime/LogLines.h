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
    void Clear();

    int Count() const { return m_iCount; }
    // i from 0 (oldest) to Count() - 1.
    const std::string& Line(int i) const { return m_tSlots[Slot(i)].sText; }
    bool Mark(int i) const { return m_tSlots[Slot(i)].bMark; }
    // Lines added and lists cleared since the start: what a view needs to know by how far the lines have moved.
    std::uint64_t Added() const { return m_lAdded; }
    std::uint64_t Cleared() const { return m_lCleared; }

    ChangeMark Changed;

private:
    struct Entry {
        std::string sText;
        bool bMark = false;
    };
    std::size_t Slot(int i) const {
        const int iSlot = m_iFirst + i;
        return static_cast<std::size_t>(iSlot < Capacity ? iSlot : iSlot - Capacity);
    }

    std::array<Entry, Capacity> m_tSlots;  // a ring: slots are re-used, so a full log allocates nothing
    int m_iFirst = 0;
    int m_iCount = 0;
    std::uint64_t m_lAdded = 0;
    std::uint64_t m_lCleared = 0;
};

}  // namespace runtime
