// The sorted list of numbers.
#include "platform/runtime/NumberItems.h"

#include <algorithm>

namespace runtime {

NumberItems::Item& NumberItems::FindOrInsert(std::int32_t lNumber, std::int32_t lData) {
    const auto it = std::ranges::lower_bound(m_tItems, lNumber, {}, &Item::lNumber);
    if (it != m_tItems.end() && it->lNumber == lNumber) return *it;
    Changed.Mark();
    return *m_tItems.insert(it, Item{lNumber, lData, std::to_string(lNumber)});
}

void NumberItems::Clear() {
    m_tItems.clear();
    Changed.Mark();
}

}  // namespace runtime
