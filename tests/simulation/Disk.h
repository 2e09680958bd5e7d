// The medium under the recordings. Brings files to the disk at once, until it is told to be slow: then every
// synchronisation waits. It can fail one, in a way that a seed repeats: when the program can tell is certain.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>

#include "platform/runtime/DiskSync.h"

namespace simulation {

class Disk {
public:
    ~Disk() { Release(); }
    // Outlives this object, as a synchronisation may outlive who asked for it.
    runtime::DiskSync::Function Function() const {
        return [p = m_p](int iDescriptor) { return p->Synchronize(iDescriptor); };
    }

    void Hold();
    // One synchronisation of the present recording shall fail while it is held.
    void FailOne();
    void Release();  // everything that waits is done, and nothing fails
    bool Fails() const { return m_bFails; }
    // A second is over, in which the recording's file was handed to the system if it has grown: this many bytes by now.
    // Raises Failure where it was not brought to the disk.
    void Second(std::uint64_t lFile, std::int64_t lWritten);

private:
    void AwaitBegun(std::unique_lock<std::mutex>& tLock, int iCount);
    struct State {
        int Synchronize(int iDescriptor);

        std::mutex tMutex;
        std::condition_variable tChanged;
        bool bHeld = false;
        int iWaiting = 0;
        std::uint64_t lFailing = 0;           // the file whose next one fails
        std::map<std::uint64_t, int> iBegun;  // by the file's number, while held
    };
    std::shared_ptr<State> m_p = std::make_shared<State>();
    bool m_bFails = false;
    std::uint64_t m_lFile = 0;
    std::int64_t m_lWritten = 0;
    int m_iGrown = 0;
};

}  // namespace simulation
