// A disk that takes as long as a test wants, to be handed to whoever brings files to the disk.
#pragma once

#include <algorithm>
#include <condition_variable>
#include <limits>
#include <memory>
#include <mutex>

#include "platform/runtime/DiskSync.h"

namespace support {

class SlowDisk {
public:
    // Outlives this object, as a synchronisation may outlive who asked for it.
    runtime::DiskSync::Function Function() const {
        return [p = m_p](int) { return p->Synchronize(); };
    }

    // Lets so many more synchronisations end; nothing ends without.
    void Release(int iCount) const {
        const std::scoped_lock tLock(m_p->tMutex);
        m_p->iAllowed += iCount;
        m_p->tChanged.notify_all();
    }
    void ReleaseAll() const {
        const std::scoped_lock tLock(m_p->tMutex);
        m_p->iAllowed = std::numeric_limits<int>::max();
        m_p->tChanged.notify_all();
    }
    // The answer of all that end from now on: 0 or an error number.
    void Answer(int iError) const {
        const std::scoped_lock tLock(m_p->tMutex);
        m_p->iError = iError;
    }
    void AwaitBegun(int iCount) const {
        std::unique_lock tLock(m_p->tMutex);
        m_p->tChanged.wait(tLock, [this, iCount] { return m_p->iBegun >= iCount; });
    }
    int Begun() const { return Read(&State::iBegun); }
    int Ended() const { return Read(&State::iEnded); }
    // The most that were ever under way together.
    int MostAtOnce() const { return Read(&State::iMost); }

private:
    struct State {
        int Synchronize() {
            std::unique_lock tLock(tMutex);
            ++iBegun;
            iMost = std::max(iMost, iBegun - iEnded);
            tChanged.notify_all();
            tChanged.wait(tLock, [this] { return iEnded < iAllowed; });
            ++iEnded;
            return iError;
        }

        std::mutex tMutex;
        std::condition_variable tChanged;
        int iAllowed = 0;
        int iBegun = 0;
        int iEnded = 0;
        int iMost = 0;
        int iError = 0;
    };
    int Read(int State::*p) const {
        const std::scoped_lock tLock(m_p->tMutex);
        return (*m_p).*p;
    }

    std::shared_ptr<State> m_p = std::make_shared<State>();
};

}  // namespace support
