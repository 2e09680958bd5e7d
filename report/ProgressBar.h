// How far the reading has come, on a terminal, when it takes longer than a second.
#pragma once

#include <chrono>

namespace report {

class ProgressBar {
public:
    explicit ProgressBar(int iDescriptor);
    ~ProgressBar();  // leaves the line empty
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    // dShare from 0 to 1, less than 0 where it is not known.
    void Show(double dShare);

private:
    using Clock = std::chrono::steady_clock;

    const int m_iDescriptor;
    const bool m_bTerminal;
    const Clock::time_point m_tStart = Clock::now();
    Clock::time_point m_tNext;
    bool m_bShown = false;
};

}  // namespace report
