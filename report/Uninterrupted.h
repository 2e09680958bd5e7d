// A call of the system that a signal may break off, done until it was not. Nothing has happened by then.
#pragma once

#include <cerrno>

namespace report {

// What it answers at last, -1 with errno where it failed.
template <class Function>
auto Uninterrupted(const Function& Call) {
    auto tDone = Call();
    while (tDone < 0 && errno == EINTR) tDone = Call();
    return tDone;
}

}  // namespace report
