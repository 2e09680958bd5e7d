// What the program takes: allocations for sentences and for ticks, memory in use, descriptors.
#pragma once

#include <cstdint>
#include <functional>
#include <string_view>

namespace simulation {

class Meter {
public:
    // Does it, and counts the allocations of this thread meanwhile.
    static std::int64_t Count(const std::function<void()>& Do);
    // So many were taken for so many sentences; or for a tick, while recording.
    void Sentences(std::int64_t lCount, std::int64_t lAllocations);
    void Tick(std::int64_t lAllocations);
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
// But for those of files of this name.
int OpenDescriptors(std::string_view sLeftOut);

}  // namespace simulation
