// A file that lives in memory, for what takes names of files: nothing reaches a disk.
#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <string>
#include <string_view>

#include "tests/fuzz/Harness.h"

namespace fuzz {

class MemoryFile {
public:
    explicit MemoryFile(std::string_view sContent = {}) : m_iFile(::memfd_create("fuzz", 0)) {
        Promise(m_iFile >= 0);
        Promise(::write(m_iFile, sContent.data(), sContent.size()) == static_cast<ssize_t>(sContent.size()));
    }
    ~MemoryFile() { ::close(m_iFile); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    std::string Path() const { return "/proc/self/fd/" + std::to_string(m_iFile); }
    int Descriptor() const { return m_iFile; }

    // What has been written; the file is empty afterwards.
    std::string Take() {
        std::string s(static_cast<std::size_t>(::lseek(m_iFile, 0, SEEK_END)), '\0');
        Promise(::pread(m_iFile, s.data(), s.size(), 0) == static_cast<ssize_t>(s.size()));
        Promise(::ftruncate(m_iFile, 0) == 0 && ::lseek(m_iFile, 0, SEEK_SET) == 0);
        return s;
    }

private:
    int m_iFile;
};

}  // namespace fuzz
