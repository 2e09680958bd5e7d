// One thread, one flag for what is wanted: requests never queue up.
#include "platform/runtime/DiskSync.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <condition_variable>
#include <mutex>
#include <system_error>
#include <utility>

namespace runtime {

struct DiskSync::State {
    State(int iOriginal, Function t) : iDescriptor(::fcntl(iOriginal, F_DUPFD_CLOEXEC, 0)), tSynchronize(std::move(t)) {
        if (iDescriptor < 0) throw std::system_error(errno, std::generic_category());
    }
    ~State() { ::close(iDescriptor); }
    State(const State&) = delete;
    State& operator=(const State&) = delete;

    bool Idle() const { return !bWanted && !bBusy; }
    void Work();

    const int iDescriptor;
    const Function tSynchronize;
    std::mutex tMutex;  // for all that follows
    std::condition_variable tChanged;
    bool bWanted = false;
    bool bBusy = false;
    bool bEnd = false;
    int iError = 0;
};

void DiskSync::State::Work() {
    std::unique_lock tLock(tMutex);
    while (true) {
        tChanged.wait(tLock, [this] { return bWanted || bEnd; });
        if (!bWanted) return;
        bWanted = false;
        bBusy = true;
        tLock.unlock();
        const int iResult = tSynchronize(iDescriptor);
        tLock.lock();
        bBusy = false;
        if (iError == 0) iError = iResult;
        tChanged.notify_all();
    }
}

// A file system that knows no such order keeps what is written in its own way.
int DiskSync::ToDisk(int iDescriptor) {
    int iResult;
    do {
        iResult = ::fdatasync(iDescriptor);
    } while (iResult != 0 && errno == EINTR);
    return iResult == 0 || errno == EINVAL ? 0 : errno;
}

DiskSync::DiskSync(int iDescriptor, Function tSynchronize)
    : m_pState(std::make_shared<State>(iDescriptor, std::move(tSynchronize))),
      m_tThread([pState = m_pState] { pState->Work(); }) {}

DiskSync::~DiskSync() {
    bool bIdle = false;
    {
        const std::scoped_lock tLock(m_pState->tMutex);
        m_pState->bEnd = true;
        bIdle = m_pState->Idle();
    }
    m_pState->tChanged.notify_all();
    if (bIdle) {
        m_tThread.join();
    } else {
        m_tThread.detach();
    }
}

void DiskSync::Request() {
    {
        const std::scoped_lock tLock(m_pState->tMutex);
        m_pState->bWanted = true;
    }
    m_pState->tChanged.notify_all();
}

int DiskSync::TakeError() {
    const std::scoped_lock tLock(m_pState->tMutex);
    return std::exchange(m_pState->iError, 0);
}

void DiskSync::Wait() {
    std::unique_lock tLock(m_pState->tMutex);
    m_pState->tChanged.wait(tLock, [this] { return m_pState->Idle(); });
}

bool DiskSync::Wait(std::chrono::milliseconds tPatience) {
    std::unique_lock tLock(m_pState->tMutex);
    return m_pState->tChanged.wait_for(tLock, tPatience, [this] { return m_pState->Idle(); });
}

}  // namespace runtime
