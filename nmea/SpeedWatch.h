// Notices an input that brings characters but no sentence, as one at a wrong speed does. Asked once a second, it looks
// at what the log has taken meanwhile: a sentence itself costs nothing.
#pragma once

#include <cstdint>

#include "platform/runtime/LogLines.h"

namespace nmea {

class SpeedWatch {
public:
    static constexpr int Patience =
        10;  // seconds with characters and without a sentence, others between them not counted

    // The port is opened; what the log holds by now is nothing of its.
    void Start(const runtime::LogLines& tLog);
    void Received() { m_bReceived = true; }  // characters have come
    // A second has gone by. True when patience has come to its end: once, until a sentence has come.
    bool Tick(const runtime::LogLines& tLog);
    // Still no sentence since then.
    bool Doubts() const { return m_iSeconds == Patience; }

private:
    std::uint64_t m_lAdded = 0;  // lines of the log at the last tick
    int m_iSeconds = 0;
    bool m_bReceived = false;
};

}  // namespace nmea
