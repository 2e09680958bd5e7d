// The senders heard, numbered in the order of first hearing, so that collectors can keep what they know of each in a
// row of values.
#pragma once

#include <cstdint>

#include "platform/runtime/NumberItems.h"

namespace report {

class Ships {
public:
    int Count() const { return m_tNumbers.Count(); }
    // The number of a sender, from 0.
    int Find(std::int32_t lMmsi, bool& bNew) {
        const int iCount = m_tNumbers.Count();
        const int iShip = m_tNumbers.FindOrInsert(lMmsi, iCount);
        bNew = iShip == iCount;
        return iShip;
    }

private:
    runtime::NumberItems m_tNumbers;
};

}  // namespace report
