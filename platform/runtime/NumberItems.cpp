// A table of slots: a number stands at the place that its bits say, or in the next free one behind. One look at memory
// finds it, which counts when there are many: a tree or the standard's map of nodes takes several.
#include "platform/runtime/NumberItems.h"

#include <algorithm>
#include <utility>

namespace runtime {

std::int32_t& NumberItems::Insert(std::int32_t lNumber, std::int32_t lData) {
    if ((m_iCount + 1) * 2 > m_tSlots.size()) Grow();
    const std::size_t i = Find(lNumber);
    m_tSlots[i] = {{lNumber, lData}, true};
    ++m_iCount;
    m_lSorted.clear();
    Changed.Mark();
    return m_tSlots[i].tItem.lData;
}

void NumberItems::Grow() {
    const std::vector<Slot> tBefore = std::exchange(m_tSlots, std::vector<Slot>(m_tSlots.size() * 2));
    for (const Slot& tSlot : tBefore) {
        if (tSlot.bUsed) m_tSlots[Find(tSlot.tItem.lNumber)] = tSlot;
    }
}

NumberItems::Item NumberItems::At(int i) const {
    if (m_lSorted.empty()) {
        for (const Slot& tSlot : m_tSlots) {
            if (tSlot.bUsed) m_lSorted.push_back(tSlot.tItem.lNumber);
        }
        std::ranges::sort(m_lSorted);
    }
    return m_tSlots[Find(m_lSorted[static_cast<std::size_t>(i)])].tItem;
}

void NumberItems::Clear() {
    m_tSlots.assign(FirstSlots, {});
    m_iCount = 0;
    m_lSorted.clear();
    Changed.Mark();
}

}  // namespace runtime
