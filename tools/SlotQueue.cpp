// See SlotQueue.h.
#include "tools/SlotQueue.h"

#include <algorithm>

namespace simulator {

void SlotQueue::Add(std::int64_t lSlot, const Event& t) {
    const std::int64_t lDue = std::max(lSlot, m_lSlot);
    if (lDue > m_lSlot + 1) {
        m_tPlanned[lDue].push_back(t);
        return;
    }
    const Since tSince{lDue, true, ++m_lOrder};
    if (lDue > m_lSlot) {
        Join(m_itNext, tSince, t);
        return;
    }
    const Place it = Join(m_tWaiting.end(), tSince, t);
    if (m_itNext == m_tWaiting.end()) m_itNext = it;
}

std::int64_t SlotQueue::Slot() const {
    if (!m_bDone) return m_lSlot;
    return m_tWaiting.empty() ? m_tPlanned.begin()->first : m_lSlot + 1;
}

void SlotQueue::BeginSlot() {
    if (!m_bDone) return;
    m_lSlot = Slot();
    m_itNext = m_tWaiting.begin();
    m_iAsked = 0;
    m_tAsked.clear();
    if (!m_tPlanned.empty() && m_tPlanned.begin()->first == m_lSlot) {
        m_tAsked.swap(m_tPlanned.begin()->second);
        m_tPlanned.erase(m_tPlanned.begin());
    }
    m_bDone = false;
    m_bFull = false;
}

SlotQueue::Place SlotQueue::Join(Place itBefore, const Since& tSince, const Event& t) {
    const Place it = m_tWaiting.insert(itBefore, {t, tSince});
    m_tSince.emplace_hint(m_tSince.end(), tSince, it);
    return it;
}

SlotQueue::Taken SlotQueue::Take(Place it, bool bLate) {
    const Taken tTaken{it->t, bLate};
    m_tSince.erase(it->tSince);
    m_itNext = m_tWaiting.erase(it);
    return tTaken;
}

}  // namespace simulator
