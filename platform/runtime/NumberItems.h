// The items of a list of numbers, each with a 32-bit value: found by their number at any size, in ascending order for
// whoever looks at the list. Plain memory; the combo box that shows them takes them over on its own beat.
#pragma once

#include <cstdint>
#include <vector>

#include "platform/runtime/ChangeMark.h"

namespace runtime {

class NumberItems {
public:
    struct Item {
        std::int32_t lNumber;
        std::int32_t lData;
    };

    int Count() const { return static_cast<int>(m_iCount); }
    // i from 0 (lowest number) to Count() - 1. The first look after an insertion sorts.
    Item At(int i) const;
    // The value of that number's item, which is made with lData when it is new. The reference holds until the next
    // insertion.
    std::int32_t& FindOrInsert(std::int32_t lNumber, std::int32_t lData) {
        Slot& tSlot = m_tSlots[Find(lNumber)];
        return tSlot.bUsed ? tSlot.tItem.lData : Insert(lNumber, lData);
    }
    void Clear();

    ChangeMark Changed;  // marked when items come or go; their data shows nowhere

private:
    struct Slot {
        Item tItem;
        bool bUsed = false;
    };

    // The slot of a number, or the free one where it belongs.
    std::size_t Find(std::int32_t lNumber) const {
        constexpr std::uint32_t Spread = 0x9E3779B1;  // odd, 2^32 by the golden ratio: neighbours come to lie apart
        const std::size_t iMask = m_tSlots.size() - 1;
        std::uint32_t lHash = static_cast<std::uint32_t>(lNumber) * Spread;
        lHash ^= lHash >> 16;
        std::size_t i = lHash & iMask;
        while (m_tSlots[i].bUsed && m_tSlots[i].tItem.lNumber != lNumber) i = (i + 1) & iMask;
        return i;
    }
    std::int32_t& Insert(std::int32_t lNumber, std::int32_t lData);
    void Grow();

    std::vector<Slot> m_tSlots = std::vector<Slot>(FirstSlots);  // a power of two, at least twice as many as items
    std::size_t m_iCount = 0;
    mutable std::vector<std::int32_t> m_lSorted;  // empty where a new item is missing in it

    static constexpr std::size_t FirstSlots = 1024;
};

}  // namespace runtime
