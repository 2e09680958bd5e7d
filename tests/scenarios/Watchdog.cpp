// Signal handlers that write a line prepared beforehand: nothing else may be done in them.
#include "tests/scenarios/Watchdog.h"

#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstring>

namespace scenarios {

namespace {

constexpr unsigned LongestStep = 60;  // seconds

std::array<char, 512> sWatched{};
volatile sig_atomic_t iWatchedLength = 0;
std::array<struct sigaction, NSIG> tFormer;

void Tell(const char* sWhat) {
    [[maybe_unused]] ssize_t i = ::write(STDERR_FILENO, sWhat, std::strlen(sWhat));
    i = ::write(STDERR_FILENO, sWatched.data(), static_cast<std::size_t>(iWatchedLength));
}

// The former handler takes over: a sanitizer's report, or the system's core dump.
void Crashed(int iSignal) {
    Tell("scenario: crash in ");
    ::sigaction(iSignal, &tFormer[static_cast<std::size_t>(iSignal)], nullptr);
    ::raise(iSignal);
}

void Hangs(int) {
    Tell("scenario: hang in ");
    ::_exit(3);
}

}  // namespace

void InstallWatchdog() {
    struct sigaction tAction {};
    tAction.sa_handler = Crashed;
    for (const int iSignal : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT}) {
        ::sigaction(iSignal, &tAction, &tFormer[static_cast<std::size_t>(iSignal)]);
    }
    tAction.sa_handler = Hangs;
    ::sigaction(SIGALRM, &tAction, nullptr);
}

void Watch(const QString& sScript, int iStep) {
    const QByteArray sLine = (sScript + QStringLiteral(", step %1\n").arg(iStep)).toUtf8();
    iWatchedLength = 0;
    const auto lLength = std::min(static_cast<std::size_t>(sLine.size()), sWatched.size());
    std::copy_n(sLine.data(), lLength, sWatched.data());
    iWatchedLength = static_cast<sig_atomic_t>(lLength);
    ::alarm(LongestStep);
}

}  // namespace scenarios
