// What must hold after every simulated hour. To add something: a row in Invariants.cpp.
#pragma once

#include <cstdint>

#include "tests/simulation/Scene.h"

namespace simulation {

class Invariants {
public:
    // Raises Failure with the name of what does not hold. The scene is brought to rest before.
    void Check(Scene& t);

    struct Hour {
        double dPerSentence, dPerTick;  // allocations
        std::int64_t lMemory;           // bytes
        int iDescriptors;               // that are open for nothing that is known
    };
    const Hour& First() const { return m_tFirst; }
    const Hour& Last() const { return m_tLast; }
    // Of the hours behind the first; the memory of those behind the first days, and of these.
    const Hour& Most() const { return m_tMost; }
    std::int64_t MostMemoryAtFirst() const { return m_lMostAtFirst; }
    std::uint64_t Digest() const { return m_lDigest; }  // of everything that was seen

private:
    void Measure(Scene& t);
    void CheckMemory();
    int Descriptors(Scene& t) const;
    void Digest(Scene& t);

    int m_iHours = 0;
    Hour m_tFirst{}, m_tLast{}, m_tMost{};
    std::int64_t m_lMostAtFirst = 0;
    std::uint64_t m_lDigest = 14695981039346656037ULL;
};

}  // namespace simulation
