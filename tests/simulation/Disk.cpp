// A synchronisation that is asked for while one is held follows it. So when the second one has begun the first one's
// failure is where the program will find it.
#include "tests/simulation/Disk.h"

#include <sys/stat.h>

#include <cerrno>
#include <chrono>
#include <utility>

#include "tests/simulation/Failure.h"

namespace simulation {

namespace {

constexpr std::chrono::seconds Patience{120};  // with a thread that has only to be woken

}  // namespace

int Disk::State::Synchronize(int iDescriptor) {
    std::unique_lock tLock(tMutex);
    if (!bHeld) return 0;
    struct stat t {};
    ::fstat(iDescriptor, &t);
    ++iBegun[t.st_ino];
    ++iWaiting;
    tChanged.notify_all();
    tChanged.wait(tLock, [&] { return !bHeld || lFailing == t.st_ino; });
    --iWaiting;
    tChanged.notify_all();
    if (!bHeld) return 0;
    lFailing = 0;
    return EIO;
}

void Disk::Hold() {
    const std::scoped_lock tLock(m_p->tMutex);
    if (std::exchange(m_p->bHeld, true)) return;
    m_p->iBegun.clear();
}

void Disk::FailOne() {
    m_bFails = true;
    m_lFile = 0;
}

void Disk::Release() {
    m_bFails = false;
    std::unique_lock tLock(m_p->tMutex);
    m_p->bHeld = false;
    m_p->lFailing = 0;
    m_p->tChanged.notify_all();
    m_p->tChanged.wait(tLock, [this] { return m_p->iWaiting == 0; });
}

void Disk::AwaitBegun(std::unique_lock<std::mutex>& tLock, int iCount) {
    const auto Begun = [&] { return m_p->iBegun[m_lFile] >= iCount; };
    if (!m_p->tChanged.wait_for(tLock, Patience, Begun)) throw Failure("what was recorded is not brought to the disk");
}

void Disk::Second(std::uint64_t lFile, std::int64_t lWritten) {
    if (lFile != m_lFile) {
        m_lFile = lFile;
        m_lWritten = lWritten;
        m_iGrown = 0;
        return;
    }
    if (lWritten == m_lWritten) return;
    m_lWritten = lWritten;
    std::unique_lock tLock(m_p->tMutex);
    AwaitBegun(tLock, 1);  // and what is asked for from now on follows it
    if (++m_iGrown < 2) return;
    m_bFails = false;
    const int iBegun = m_p->iBegun[lFile];
    m_p->lFailing = lFile;
    m_p->tChanged.notify_all();
    AwaitBegun(tLock, iBegun + 1);
}

}  // namespace simulation
