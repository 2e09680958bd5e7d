// Which messages two receivers both heard: the same payload within a few seconds, one to one.
//
// Static data and the like come again with the same payload after minutes, and some stations repeat a message within
// seconds. So what one hears within reach of what the other heard is put into a group, and when nothing more can come
// to it, the two that are nearest in time are taken as one transmission, then the next nearest, and so on.
#pragma once

#include <array>
#include <deque>
#include <functional>
#include <unordered_map>
#include <vector>

#include "report/Recording.h"

namespace report {

class Matcher {
public:
    static constexpr std::int64_t ToleranceSeconds = 3;

    // Gets a message as the first heard it and as the second did; null for one that did not.
    using Outcome = std::function<void(const Heard* pFirst, const Heard* pSecond)>;

    explicit Matcher(Outcome Tell) : m_Tell(std::move(Tell)) {}

    // In order of time, the two clocks being one. iSide: 0 or 1. What is decided by then is told before.
    void Take(std::size_t iSide, const Heard& t);
    void Finish();

private:
    struct Group {
        std::array<std::vector<Heard>, 2> tHeard;
        runtime::DateTime dtLast;
    };
    struct Due {
        runtime::DateTime dt;
        std::uint64_t lPayload;
    };

    void CloseBefore(runtime::DateTime dt);
    void Close(Group& t);

    Outcome m_Tell;
    std::unordered_map<std::uint64_t, Group> m_tGroups;  // those to which more can come
    std::deque<Due> m_tDue;
};

}  // namespace report
