// A disk without room, made of the limit on the size of files: everywhere and without rights.
#pragma once

#include <sys/resource.h>

#include <csignal>

namespace support {

// Files of this process cannot grow beyond some bytes while this lives: a write stops there, the next one fails.
class FullDisk {
public:
    explicit FullDisk(rlim_t lBytes) : m_pHandler(std::signal(SIGXFSZ, SIG_IGN)) {
        ::getrlimit(RLIMIT_FSIZE, &m_tBefore);
        rlimit tLimit = m_tBefore;
        tLimit.rlim_cur = lBytes;
        ::setrlimit(RLIMIT_FSIZE, &tLimit);
    }
    ~FullDisk() {
        ::setrlimit(RLIMIT_FSIZE, &m_tBefore);
        std::signal(SIGXFSZ, m_pHandler);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    rlimit m_tBefore{};
    void (*m_pHandler)(int);
};

}  // namespace support
