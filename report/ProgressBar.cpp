// A line of "=" that is drawn over itself.
#include "report/ProgressBar.h"

#include <unistd.h>

#include <algorithm>
#include <string>

namespace report {

namespace {

using namespace std::chrono_literals;
constexpr auto Patience = 1s;
constexpr auto Beat = 200ms;
constexpr int Width = 50;
constexpr const char* EmptyLine = "\r\x1B[K";

}  // namespace

ProgressBar::ProgressBar(int iDescriptor)
    : m_iDescriptor(iDescriptor), m_bTerminal(::isatty(iDescriptor) == 1), m_tNext(m_tStart + Patience) {}

ProgressBar::~ProgressBar() {
    if (m_bShown) (void)!::write(m_iDescriptor, EmptyLine, std::char_traits<char>::length(EmptyLine));
}

void ProgressBar::Show(double dShare) {
    if (!m_bTerminal || Clock::now() < m_tNext) return;
    m_tNext = Clock::now() + Beat;
    m_bShown = true;
    std::string s = EmptyLine;
    if (dShare < 0) {
        const auto tSoFar = std::chrono::duration_cast<std::chrono::seconds>(Clock::now() - m_tStart);
        s += "reading, " + std::to_string(tSoFar.count()) + " s";
    } else {
        const double dFull = std::clamp(dShare, 0.0, 1.0);
        const auto iDone = static_cast<std::size_t>(dFull * Width);
        s += '[' + std::string(iDone, '=') + std::string(Width - iDone, ' ') + "] " +
             std::to_string(static_cast<int>(dFull * 100)) + " %";
    }
    (void)!::write(m_iDescriptor, s.data(), s.size());
}

}  // namespace report
