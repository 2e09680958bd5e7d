// Brings what is written to a file to the disk on a thread of its own, so that nobody else waits for a slow medium.
// Knows a descriptor and nothing of what is in the file.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <thread>

namespace runtime {

class DiskSync {
public:
    // Brings what is written to a descriptor to the disk, however long that takes. 0 or the system's error number.
    using Function = std::function<int(int iDescriptor)>;
    static int ToDisk(int iDescriptor);

    // Starts the thread, on a copy of the descriptor. Raises std::system_error.
    DiskSync(int iDescriptor, Function tSynchronize);
    // Does not wait for the medium: what is under way, and what was asked for after it, is left to end by itself.
    ~DiskSync();
    DiskSync(const DiskSync&) = delete;
    DiskSync& operator=(const DiskSync&) = delete;

    // What has been written so far is to be brought to the disk. Returns at once. While the disk is at work, all
    // requests together make one more synchronisation, after the one that is under way.
    void Request();
    // The first failure that has not been taken yet: the system's error number, 0 for none.
    int TakeError();
    // Waits until everything requested has been done. With a patience: false when it took longer than that.
    void Wait();
    bool Wait(std::chrono::milliseconds tPatience);

private:
    struct State;
    std::shared_ptr<State> m_pState;  // the thread's as well, which may live on
    std::thread m_tThread;
};

}  // namespace runtime
