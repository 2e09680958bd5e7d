// What the program takes: allocations for sentences and for ticks, memory in use, descriptors.
#pragma once

#include <cstdint>
#include <functional>

namespace simulation {

class Meter {
public:
    // Does it, and counts the allocations of this thread meanwhile.
    void Sentences(std::int64_t lCount, const std::function<void()>& Do);
    void Tick(bool bRecording, const std::function<void()>& Do);
    void BeginHour() { *this = {}; }

    double PerSentence() const { return m_lSentences == 0 ? 0 : Share(m_lForSentences, m_lSentences); }
    // While recording: what else is done then tells of the file. 0 where there were few.
    double PerTick() const { return m_lTicks < Few ? 0 : Share(m_lForTicks, m_lTicks); }

private:
    static constexpr std::int64_t Few = 600;
    static double Share(std::int64_t l, std::int64_t lOf) { return static_cast<double>(l) / static_cast<double>(lOf); }
    std::int64_t m_lSentences = 0, m_lForSentences = 0, m_lTicks = 0, m_lForTicks = 0;
};

std::int64_t MemoryInUse();  // bytes that were asked for and not given back, by all threads
int OpenDescriptors();

}  // namespace simulation
