// What goes wrong outside the program: pulled plugs, line errors, disks, clocks. To add one: a row in Causes.cpp.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "tests/simulation/Scene.h"

namespace simulation {

struct Cause {
    std::string_view sName;
    double dPerDay;                    // how often, in the mean
    int iShortest, iLongest;           // seconds; 0: over at once
    bool bUnattended;                  // makes sense in an unattended recording alone
    void (*Begin)(Scene&, int iPort);  // iPort: any input
    void (*End)(Scene&, int iPort);    // null where nothing ends
};

// Plants causes by chance, never one twice at a time.
class Planner {
public:
    explicit Planner(std::uint64_t lSeed) : m_tChance(lSeed ^ 0xCA05E) {}

    // Begins what is due in this second and ends what is over.
    void Second(Scene& t);
    void EndAll(Scene& t);
    std::int64_t Planted() const { return m_lPlanted; }
    // The last ones, for whoever reads a failure.
    std::string Latest() const;

private:
    struct UnderWay {
        const Cause* pCause;
        int iPort;
        std::int64_t lEnd;
    };
    void Begin(Scene& t, const Cause& tCause);

    simulator::Random m_tChance;
    std::vector<UnderWay> m_tUnderWay;
    std::vector<std::string> m_sLatest;
    std::int64_t m_lPlanted = 0;
};

}  // namespace simulation
