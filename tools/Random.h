// The simulator's source of chance: a small generator whose sequence depends on the seed alone, whatever the standard
// library, so that the same seed makes the same harbour everywhere.
#pragma once

#include <cstdint>

namespace simulator {

// SplitMix64: a counter stepped by the golden ratio, its bits mixed.
class Random {
public:
    explicit Random(std::uint64_t lSeed) : m_lState(lSeed) {}

    std::uint64_t Next() {
        m_lState += 0x9E3779B97F4A7C15ULL;
        std::uint64_t l = m_lState;
        l = (l ^ (l >> 30)) * 0xBF58476D1CE4E5B9ULL;
        l = (l ^ (l >> 27)) * 0x94D049BB133111EBULL;
        return l ^ (l >> 31);
    }
    // 0 up to (not including) 1.
    double Unit() { return static_cast<double>(Next() >> 11) * 0x1.0p-53; }
    double Between(double dLow, double dHigh) { return dLow + (dHigh - dLow) * Unit(); }
    // A whole number from iLow to iHigh, both included.
    int Whole(int iLow, int iHigh) {
        return iLow + static_cast<int>(Next() % static_cast<std::uint64_t>(iHigh - iLow + 1));
    }
    bool Percent(double dPercent) { return Unit() * 100.0 < dPercent; }

private:
    std::uint64_t m_lState;
};

}  // namespace simulator
