// Levels of signal and threshold and their difference, in dBm or in the board's own numbers.
#pragma once

#include <array>

#include "report/Distribution.h"
#include "report/Event.h"

namespace report {

// Levels as they are told.
struct ShownLevels {
    double dSignal;
    double dThreshold;
    double dSnr;  // signal less threshold: dB, or steps of the board
};

// In dBm by the receiver's curve, or as they are.
class LevelScale {
public:
    explicit LevelScale(bool bRaw);
    ShownLevels Show(const Levels& t) const;
    const char* Unit() const { return m_bRaw ? "raw" : "dBm"; }
    const char* SnrUnit() const { return m_bRaw ? "raw" : "dB"; }

private:
    double ShowOne(double dLevel) const;

    bool m_bRaw;
    std::array<double, 256> m_dDbm{};  // of the whole numbers, which is all that boards send
};

struct LevelFigures {
    Distribution tSignal;
    Distribution tThreshold;
    Distribution tSnr;

    void Add(const ShownLevels& t) {
        tSignal.Add(t.dSignal);
        tThreshold.Add(t.dThreshold);
        tSnr.Add(t.dSnr);
    }
    void Add(const LevelFigures& t) {
        tSignal.Add(t.tSignal);
        tThreshold.Add(t.tThreshold);
        tSnr.Add(t.tSnr);
    }
};

}  // namespace report
