// The orders of the target table: the two keys of each sort criterion and the comparison of two texts under a key.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "platform/runtime/GridCells.h"
#include "targets/TargetColumns.h"

namespace targets {

enum SortType : std::int32_t {  // the grid's own sort codes
    NumericAscending = 3,
    NumericDescending = 4,
    StringAscending = 7,
    StringDescending = 8,
};

using runtime::SortKey;  // of a TargetColumn and a SortType

enum SortIndex : int { SortByMmsi = 0, SortByRange = 1, SortBySignal = 2 };

// The first key of a criterion (index of SortCriteria); nothing for any other index. The second is always the time
// text ascending.
std::optional<SortKey> FirstKey(int iSortIndex);
inline constexpr SortKey SecondKey{ColTime, StringAscending};

// One text under a key: the text itself and its leading number, read once when the cell was written. Not-a-number
// counts as 0.
struct SortValue {
    std::string_view sText;
    double dNumber;
};

// -1, 0 or 1; nothing for a key type that does not exist. Numbers compare as numbers, texts byte by byte (so case
// counts). Inline: it runs several times per message.
inline std::optional<int> CompareValues(std::int32_t lType, const SortValue& a, const SortValue& b) {
    const auto Number = [](double d) { return d == d ? d : 0.0; };  // not-a-number differs from itself
    const auto Order = [](const auto& x, const auto& y) { return static_cast<int>(x > y) - static_cast<int>(x < y); };
    switch (lType) {
        case NumericAscending:
            return Order(Number(a.dNumber), Number(b.dNumber));
        case NumericDescending:
            return Order(Number(b.dNumber), Number(a.dNumber));
        case StringAscending:
            return Order(a.sText.compare(b.sText), 0);
        case StringDescending:
            return Order(b.sText.compare(a.sText), 0);
        default:
            return std::nullopt;
    }
}

}  // namespace targets
