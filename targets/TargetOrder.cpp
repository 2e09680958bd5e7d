// The first sort key of each criterion.
#include "targets/TargetOrder.h"

namespace targets {

std::optional<SortKey> FirstKey(int iSortIndex) {
    switch (iSortIndex) {
        case SortByMmsi:
            return SortKey{ColMmsi, NumericAscending};
        case SortByRange:
            return SortKey{ColRange, NumericDescending};  // farthest first
        case SortBySignal:
            return SortKey{ColSignal, NumericAscending};
        default:
            return std::nullopt;
    }
}

}  // namespace targets
