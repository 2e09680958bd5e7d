// Messages counted by minutes of the clock, to find the busiest.
#pragma once

#include <array>
#include <cstdint>
#include <cstdlib>

#include "platform/runtime/DateTime.h"

namespace report {

class MinuteCounts {
public:
    struct Minute {
        std::int64_t lMinute = -1;  // since the beginning of time; -1: none
        std::int64_t lCount = 0;
        runtime::DateTime Start() const { return {lMinute * 60}; }
    };

    // Counts a message. Tell gets a minute that is over. A few minutes are open at a time, because the messages of
    // several files are not in order to the second. An hour that comes again, when the clock is set back, is another.
    template <class Done>
    void Add(runtime::DateTime dt, const Done& Tell) {
        const std::int64_t lMinute = dt.lSeconds / 60;
        Minute& t = m_tOpen[static_cast<std::size_t>(lMinute) % m_tOpen.size()];
        if (t.lMinute != lMinute) {
            for (Minute& tOpen : m_tOpen) {
                if (std::llabs(tOpen.lMinute - lMinute) >= static_cast<long long>(m_tOpen.size())) Close(tOpen, Tell);
            }
            t.lMinute = lMinute;
        }
        ++t.lCount;
    }
    template <class Done>
    void Finish(const Done& Tell) {
        for (Minute& t : m_tOpen) Close(t, Tell);
    }

private:
    template <class Done>
    static void Close(Minute& t, const Done& Tell) {
        if (t.lCount > 0) Tell(t);
        t = {};
    }

    std::array<Minute, 4> m_tOpen{};
};

}  // namespace report
