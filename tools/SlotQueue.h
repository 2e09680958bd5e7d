// Who is to send in which slot, and who waits for a free one. Each slot asks first those for whom it was planned, then
// those that have waited, the latest comers before the earlier ones; who has waited for LongestWait slots gives up. In
// a crowd thousands wait for the two messages of a slot: the asking ends when the slot is full, and those whose time is
// over are found by the slot in which their waiting began.
#pragma once

#include <cstdint>
#include <list>
#include <map>
#include <optional>
#include <tuple>
#include <vector>

namespace simulator {

enum class Say { Position, Static, StaticB, Manage, Ask, Time, Steer };

struct Event {
    int iTarget;
    Say eSay;
    std::uint32_t lPlan;  // a position report is dropped when its target has made another plan since
};

enum class Turn {
    Go,    // now
    Wait,  // for a later slot
    Full,  // wait, and so must everybody who is asked behind this one
};

class SlotQueue {
public:
    static constexpr std::int64_t LongestWait = 75;

    SlotQueue() = default;
    SlotQueue(const SlotQueue&) = delete;  // it points into its own lists
    SlotQueue& operator=(const SlotQueue&) = delete;

    // Plans an event for a slot; for the present one where that is over. An event that must not wait is to be planned
    // two slots ahead at least.
    void Add(std::int64_t lSlot, const Event& t);
    bool Empty() const { return m_tPlanned.empty() && m_tWaiting.empty(); }
    // The slot that Next looks at. Not to be asked of an empty queue.
    std::int64_t Slot() const;

    struct Taken {
        Event t;
        bool bLate;  // it has waited too long
    };
    // Takes the next event of the slot that TellTurn(const Event&) lets go or that has waited too long; nothing when
    // the slot is done. What is added for the slot or the next one before the following call takes its place by this
    // event's: behind those who were asked before it.
    template <class TTellTurn>
    std::optional<Taken> Next(TTellTurn&& TellTurn) {
        BeginSlot();
        while (m_iAsked < m_tAsked.size()) {
            const Event t = m_tAsked[m_iAsked++];
            const Turn eTurn = TellTurn(t);
            if (eTurn == Turn::Go) return Taken{t, false};
            m_bFull = m_bFull || eTurn == Turn::Full;
            Join(m_itNext, {m_lSlot, false, ++m_lOrder}, t);
        }
        while (!m_bFull && m_itNext != m_tWaiting.end()) {
            if (IsLate(m_itNext->tSince)) return Take(m_itNext, true);
            const Turn eTurn = TellTurn(m_itNext->t);
            if (eTurn == Turn::Go) return Take(m_itNext, false);
            m_bFull = eTurn == Turn::Full;
            ++m_itNext;
        }
        if (!m_tSince.empty() && IsLate(m_tSince.begin()->first)) return Take(m_tSince.begin()->second, true);
        m_bDone = true;
        return std::nullopt;
    }

private:
    // The slot in which the waiting began; in one slot those planned long before come first, in the order of adding.
    using Since = std::tuple<std::int64_t, bool, std::uint64_t>;
    struct Waiter {
        Event t;
        Since tSince;
    };
    using Place = std::list<Waiter>::iterator;

    void BeginSlot();
    bool IsLate(const Since& t) const { return std::get<0>(t) + LongestWait == m_lSlot; }
    Place Join(Place itBefore, const Since& tSince, const Event& t);
    Taken Take(Place it, bool bLate);

    std::map<std::int64_t, std::vector<Event>> m_tPlanned;  // by slot, in the order of adding
    std::vector<Event> m_tAsked;                            // of the present slot, m_iAsked of them already
    std::size_t m_iAsked = 0;
    std::list<Waiter> m_tWaiting;     // in the order in which they are asked
    std::map<Since, Place> m_tSince;  // all of them
    Place m_itNext = m_tWaiting.end();
    std::uint64_t m_lOrder = 0;
    std::int64_t m_lSlot = -1;  // before the first
    bool m_bDone = true;        // with that slot
    bool m_bFull = false;
};

}  // namespace simulator
