// A temporary file in the same folder, brought to the disk and renamed.
#include "report/WholeFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <system_error>

#include "report/Uninterrupted.h"

namespace report {

namespace {

[[noreturn]] void FailAt(const std::string& sName, int iError) {
    throw std::runtime_error(sName + ": " + std::generic_category().message(iError));
}

bool BeginsWith(const std::string& sName, std::string_view sBegin) {
    const int iFile = Uninterrupted([&] { return open(sName.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY); });
    if (iFile < 0) FailAt(sName, errno);
    std::string s(sBegin.size(), '\0');
    std::size_t iRead = 0;
    ssize_t iMore = 0;
    do {
        iMore = Uninterrupted([&] { return read(iFile, s.data() + iRead, s.size() - iRead); });
        iRead += iMore > 0 ? static_cast<std::size_t>(iMore) : 0;
    } while (iMore > 0 && iRead < s.size());
    const int iError = errno;
    close(iFile);
    if (iMore < 0) FailAt(sName, iError);
    return s == sBegin;
}

}  // namespace

WholeFile::WholeFile(std::string sName, std::string_view sBegin) : m_sName(std::move(sName)) {
    struct stat tStatus;
    const bool bThere = stat(m_sName.c_str(), &tStatus) == 0;
    if (bThere && !(S_ISREG(tStatus.st_mode) && BeginsWith(m_sName, sBegin))) {
        throw std::runtime_error(m_sName + ": is another file, which is not replaced");
    }
    std::string sTemporary;
    m_iDescriptor = Uninterrupted([&] {
        sTemporary = m_sName + ".XXXXXX";
        return mkostemp(sTemporary.data(), O_CLOEXEC);
    });
    if (m_iDescriptor < 0) Fail();
    m_sTemporary = sTemporary;
}

WholeFile::~WholeFile() {
    if (m_iDescriptor >= 0) close(m_iDescriptor);
    if (!m_sTemporary.empty()) unlink(m_sTemporary.c_str());
}

void WholeFile::Fail() const { FailAt(m_sName, errno); }

void WholeFile::Finish() {
    const mode_t iMask = umask(0);
    umask(iMask);
    if (fchmod(m_iDescriptor, 0666 & ~iMask) != 0) Fail();
    if (Uninterrupted([&] { return fsync(m_iDescriptor); }) != 0) Fail();
    if (std::rename(m_sTemporary.c_str(), m_sName.c_str()) != 0) Fail();
    m_sTemporary.clear();
}

void PrepareFolder(const std::string& sFolder) {
    if (mkdir(sFolder.c_str(), 0777) != 0 && errno != EEXIST) FailAt(sFolder, errno);
    struct stat tStatus;
    if (stat(sFolder.c_str(), &tStatus) != 0) FailAt(sFolder, errno);
    if (!S_ISDIR(tStatus.st_mode)) FailAt(sFolder, ENOTDIR);
    if (access(sFolder.c_str(), W_OK | X_OK) != 0) FailAt(sFolder, errno);
}

}  // namespace report
