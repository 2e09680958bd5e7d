// The copy has no name: it is reached through the process's own descriptors.
#include "report/SpooledFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <system_error>
#include <vector>

#include "report/InputFile.h"
#include "report/Uninterrupted.h"

namespace report {

namespace {

constexpr std::size_t BlockSize = 1 << 20;

[[noreturn]] void Raise() {
    throw InputError("could not be put by for reading twice: " + std::generic_category().message(errno));
}

bool IsPipe(const std::string& sFile) {
    if (sFile == InputFile::StandardInput) return true;
    struct stat t {};
    return ::stat(sFile.c_str(), &t) == 0 && !S_ISREG(t.st_mode) && !S_ISDIR(t.st_mode);
}

int OpenTemporary() {
    std::error_code tNone;
    const std::string sFolder = std::filesystem::temp_directory_path(tNone).string();
    const int iFile =
        Uninterrupted([&] { return ::open(sFolder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, S_IRUSR | S_IWUSR); });
    if (iFile >= 0) return iFile;
    std::string sName;  // not every file system knows files without a name
    const int iNamed = Uninterrupted([&] {
        sName = sFolder + "/tidewatch-report-XXXXXX";
        return ::mkostemp(sName.data(), O_CLOEXEC);
    });
    if (iNamed < 0) Raise();
    ::unlink(sName.c_str());
    return iNamed;
}

// How much was moved.
template <class Function>
std::size_t Moved(const Function& Call) {
    const ssize_t lDone = Uninterrupted(Call);
    if (lDone < 0) Raise();
    return static_cast<std::size_t>(lDone);
}

}  // namespace

SpooledFile::SpooledFile(const std::string& sFile) : m_sPath(sFile) {
    if (!IsPipe(sFile)) return;
    m_iCopy = OpenTemporary();
    m_sPath = "/proc/self/fd/" + std::to_string(m_iCopy);
    const bool bOurs = sFile != InputFile::StandardInput;
    const auto Open = [&] { return ::open(sFile.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY); };
    const int iFrom = bOurs ? Uninterrupted(Open) : STDIN_FILENO;
    try {
        if (iFrom < 0) Raise();
        std::vector<char> sBlock(BlockSize);
        while (const std::size_t lRead = Moved([&] { return ::read(iFrom, sBlock.data(), sBlock.size()); })) {
            for (std::size_t l = 0; l < lRead;) {
                l += Moved([&] { return ::write(m_iCopy, sBlock.data() + l, lRead - l); });
            }
        }
    } catch (...) {
        if (bOurs && iFrom >= 0) ::close(iFrom);
        ::close(m_iCopy);
        throw;
    }
    if (bOurs) ::close(iFrom);
}

SpooledFile::~SpooledFile() {
    if (m_iCopy >= 0) ::close(m_iCopy);
}

}  // namespace report
