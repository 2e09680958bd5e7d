// The items of a list of numbers, kept in ascending order, each with its decimal text and a 32-bit value. Plain memory;
// the combo box that shows them takes them over on its own beat.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/runtime/ChangeMark.h"

namespace runtime {

class NumberItems {
public:
    struct Item {
        std::int32_t lNumber;
        std::int32_t lData;
        std::string sText;  // lNumber in decimal
    };

    int Count() const { return static_cast<int>(m_tItems.size()); }
    const Item& At(int i) const { return m_tItems[static_cast<std::size_t>(i)]; }
    // The item of that number, inserted in its place with lData when it is new. The reference holds until the next
    // insertion.
    Item& FindOrInsert(std::int32_t lNumber, std::int32_t lData);
    void Clear();

    ChangeMark Changed;  // marked when items come or go; their data shows nowhere

private:
    std::vector<Item> m_tItems;
};

}  // namespace runtime
