// A hand that plays with the window: tabs, orders, tracking, clicks, sizes. Presses nothing that a sentence depends on,
// but for Record. To add something: a row in Hand.cpp.
#pragma once

#include <cstdint>
#include <string>

#include "tests/simulation/Scene.h"

namespace simulation {

class Hand {
public:
    explicit Hand(std::uint64_t lSeed) : m_tChance(lSeed ^ 0x4A4D) {}
    // Now and then does something; some ten times an hour.
    void Second(Scene& t);
    const std::string& Latest() const { return m_sLatest; }

private:
    simulator::Random m_tChance;
    std::string m_sLatest = "nothing";
};

}  // namespace simulation
