// Line errors of a serial port, read from the counters that its driver keeps since it was loaded. Knows nothing of
// ports and signals: whoever owns the descriptor asks from time to time what has been counted since.
#pragma once

#include <linux/serial.h>
#include <sys/ioctl.h>

#include <vector>

#include "platform/runtime/CommEvents.h"

namespace toolkit {

// Reads a descriptor's counters: 0, or -1 where the driver keeps none. Handed in, so that a test can be the driver.
using LineCounters = int (*)(int iDescriptor, serial_icounter_struct* pCounters);

inline int DriverLineCounters(int iDescriptor, serial_icounter_struct* pCounters) {
    return ::ioctl(iDescriptor, TIOCGICOUNT, pCounters);
}

class LineErrors {
public:
    explicit LineErrors(LineCounters pCounters = DriverLineCounters) : m_pCounters(pCounters) {}

    // Takes the counters as they stand at the open: what was counted before is not this run's. A driver without
    // counters (pseudo-terminals, some adapters) is not asked again.
    void Start(int iDescriptor) {
        m_tLast = {};
        m_bSupported = m_pCounters(iDescriptor, &m_tLast) == 0;
    }
    void Stop() { m_bSupported = false; }
    bool Supported() const { return m_bSupported; }

    // One event for each counter that grew since the last call. Nothing tells the order of arrival among different
    // counters, so it is always break, framing, overrun, receive overflow, parity.
    std::vector<int> Poll(int iDescriptor) {
        serial_icounter_struct tNow{};
        if (!m_bSupported || m_pCounters(iDescriptor, &tNow) != 0) return {};
        std::vector<int> iEvents;
        if (Grew(m_tLast.brk, tNow.brk)) iEvents.push_back(runtime::CommBreak);
        if (Grew(m_tLast.frame, tNow.frame)) iEvents.push_back(runtime::CommFrame);
        if (Grew(m_tLast.overrun, tNow.overrun)) iEvents.push_back(runtime::CommOverrun);
        if (Grew(m_tLast.buf_overrun, tNow.buf_overrun)) iEvents.push_back(runtime::CommRxOver);
        if (Grew(m_tLast.parity, tNow.parity)) iEvents.push_back(runtime::CommRxParity);
        m_tLast = tNow;
        return iEvents;
    }

private:
    // Through unsigned numbers, because a counter that runs for months wraps around.
    static bool Grew(int iWas, int iIs) {
        return static_cast<int>(static_cast<unsigned>(iIs) - static_cast<unsigned>(iWas)) > 0;
    }

    LineCounters m_pCounters;
    serial_icounter_struct m_tLast{};
    bool m_bSupported = false;
};

}  // namespace toolkit
