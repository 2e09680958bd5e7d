// Buffered files over the system's descriptors. A line is handed out as a view into the block that was read; only the
// piece of a line at the end of a block is moved, to the front of the buffer, before the next block is read behind it.
#include "platform/runtime/TextFiles.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstring>
#include <limits>
#include <system_error>
#include <utility>
#include <vector>

#include "platform/runtime/SystemText.h"

namespace runtime {
namespace {

constexpr std::size_t BlockSize = 128 * 1024;
constexpr std::size_t LongestLineEnd = 2;
constexpr std::uint64_t InUse = std::numeric_limits<std::uint64_t>::max();
constexpr mode_t NewFileMode = 0666;  // less what the user's mask takes
// Never wait for the other end of a FIFO, never become some terminal's process.
constexpr int OpenFlags = O_CLOEXEC | O_NONBLOCK | O_NOCTTY;

[[noreturn]] void Raise(int iError) { throw FileError(SystemText(iError)); }

ssize_t ReadSome(int iDescriptor, char* pTo, std::size_t iCount) {
    ssize_t iRead;
    do {
        iRead = ::read(iDescriptor, pTo, iCount);
    } while (iRead < 0 && errno == EINTR);
    return iRead;
}

ssize_t WriteSome(int iDescriptor, const char* pFrom, std::size_t iCount) {
    ssize_t iWritten;
    do {
        iWritten = ::write(iDescriptor, pFrom, iCount);
    } while (iWritten < 0 && errno == EINTR);
    return iWritten;
}

// Where the system says that an open file lies, from its memory alone. Empty where it does not say.
std::string Whereabouts(int iDescriptor) {
    char sBuffer[PATH_MAX];
    const std::string sLink = "/proc/self/fd/" + std::to_string(iDescriptor);
    const ssize_t iSize = ::readlink(sLink.c_str(), sBuffer, sizeof sBuffer);
    return {sBuffer, iSize < 0 ? 0 : static_cast<std::size_t>(iSize)};
}

bool IsSameFile(int iDescriptor, const std::filesystem::path& tPath) {
    struct stat tOpened {};
    struct stat tNamed {};
    if (::fstat(iDescriptor, &tOpened) != 0 || ::stat(tPath.c_str(), &tNamed) != 0) return false;
    return tOpened.st_dev == tNamed.st_dev && tOpened.st_ino == tNamed.st_ino;
}

int OpenDescriptor(const std::filesystem::path& tPath, int iFlags) {
    int iDescriptor;
    do {
        iDescriptor = ::open(tPath.c_str(), iFlags | OpenFlags, NewFileMode);
    } while (iDescriptor < 0 && errno == EINTR);
    if (iDescriptor < 0) Raise(errno);
    return iDescriptor;
}

mode_t KindOf(int iDescriptor) {
    struct stat tStatus {};
    if (::fstat(iDescriptor, &tStatus) != 0) Raise(errno);
    return tStatus.st_mode & S_IFMT;
}

void CheckReadable(int iDescriptor) {
    const mode_t iKind = KindOf(iDescriptor);
    if (iKind == S_IFDIR) Raise(EISDIR);
    if (iKind != S_IFREG) throw FileError("Not a regular file");
}

}  // namespace

FileError ErrorInLine(std::uint64_t lLine, std::string_view sReason) {
    return FileError("line " + std::to_string(lLine) + ": " + std::string(sReason));
}

struct TextFiles::File {
    File(int iOpened, bool bForOutput) : iDescriptor(iOpened), bOutput(bForOutput) {}
    ~File() { ::close(iDescriptor); }
    File(const File&) = delete;
    File& operator=(const File&) = delete;

    bool Fill();
    void DropBuffer() noexcept;
    std::size_t Find(char c, std::size_t iFrom, std::size_t iTo) const;
    std::size_t FirstLineEnd();
    int WriteOut() noexcept;
    void RaiseDiskError() const;
    void BeginOutput(const std::filesystem::path& tOpened, const DiskSync::Function& tSynchronize);

    const int iDescriptor;
    const bool bOutput;
    std::uint64_t lLines = 0;  // handed out
    // Input: the bytes iBegin to iEnd of the buffer are read and not yet handed out.
    std::vector<char> sBuffer;
    std::size_t iBegin = 0;
    std::size_t iEnd = 0;
    std::size_t iLineFeed = 0;  // the first one at or behind iBegin, iEnd where there is none; stale when below iBegin
    std::uint64_t lRetired = InUse;  // the number among the retired files
    // Output.
    std::filesystem::path tPath;
    std::string sWhereabouts;      // at opening
    std::string sPending;          // not yet written
    bool bUnsynchronized = false;  // written since the disk was asked last
    std::unique_ptr<DiskSync> pDisk;
};

// Reads on behind what is left. False at the end of the file. Only called when no line feed is left.
bool TextFiles::File::Fill() {
    const std::size_t iLeft = iEnd - iBegin;
    if (iBegin > 0 && iLeft > 0) std::memmove(sBuffer.data(), sBuffer.data() + iBegin, iLeft);
    iBegin = 0;
    iEnd = iLeft;
    iLineFeed = iLeft;
    if (iEnd == sBuffer.size()) {
        sBuffer.resize(std::clamp(sBuffer.size() * 2, BlockSize, LongestLine + LongestLineEnd));
    }
    const ssize_t iRead = ReadSome(iDescriptor, sBuffer.data() + iEnd, sBuffer.size() - iEnd);
    if (iRead < 0) throw ErrorInLine(lLines + 1, SystemText(errno));
    iEnd += static_cast<std::size_t>(iRead);
    iLineFeed = Find('\n', iLeft, iEnd);
    return iRead > 0;
}

// What was read and not handed out will be read again.
void TextFiles::File::DropBuffer() noexcept {
    if (iBegin < iEnd) ::lseek(iDescriptor, -static_cast<off_t>(iEnd - iBegin), SEEK_CUR);
    std::vector<char>().swap(sBuffer);
    iBegin = iEnd = iLineFeed = 0;
}

// The first c from iFrom on, iTo where there is none.
std::size_t TextFiles::File::Find(char c, std::size_t iFrom, std::size_t iTo) const {
    if (iFrom >= iTo) return iTo;
    const char* pBegin = sBuffer.data();
    const void* pFound = std::memchr(pBegin + iFrom, c, iTo - iFrom);
    return pFound == nullptr ? iTo : static_cast<std::size_t>(static_cast<const char*>(pFound) - pBegin);
}

// The first CR or LF that is not handed out, iEnd where there is none. The line feed is remembered: in a file of lines
// that end in CR alone the search for it would go through the whole buffer again for every line.
std::size_t TextFiles::File::FirstLineEnd() {
    if (iLineFeed < iBegin) iLineFeed = Find('\n', iBegin, iEnd);
    return Find('\r', iBegin, iLineFeed);
}

// Returns 0 or the system's error number; what could not be written stays.
int TextFiles::File::WriteOut() noexcept {
    std::size_t iDone = 0;
    int iError = 0;
    bUnsynchronized = bUnsynchronized || !sPending.empty();
    while (iDone < sPending.size() && iError == 0) {
        const ssize_t iWritten = WriteSome(iDescriptor, sPending.data() + iDone, sPending.size() - iDone);
        if (iWritten < 0) {
            iError = errno;
        } else {
            iDone += static_cast<std::size_t>(iWritten);
        }
    }
    sPending.erase(0, iDone);
    return iError;
}

void TextFiles::File::RaiseDiskError() const {
    if (const int iError = pDisk->TakeError(); iError != 0) Raise(iError);
}

// Raises FileError.
void TextFiles::File::BeginOutput(const std::filesystem::path& tOpened, const DiskSync::Function& tSynchronize) {
    tPath = tOpened;
    sWhereabouts = Whereabouts(iDescriptor);
    try {
        pDisk = std::make_unique<DiskSync>(iDescriptor, tSynchronize);
    } catch (const std::system_error& tError) {
        Raise(tError.code().value());
    }
}

std::optional<std::string> TextFiles::ReadWhole(const std::filesystem::path& tPath) {
    struct stat tStatus {};
    if (::stat(tPath.c_str(), &tStatus) != 0 && (errno == ENOENT || errno == ENOTDIR)) return std::nullopt;
    const File tFile(OpenDescriptor(tPath, O_RDONLY), false);
    CheckReadable(tFile.iDescriptor);
    std::string sBytes;
    std::vector<char> sBlock(BlockSize);
    ssize_t iRead;
    while ((iRead = ReadSome(tFile.iDescriptor, sBlock.data(), sBlock.size())) > 0) {
        sBytes.append(sBlock.data(), static_cast<std::size_t>(iRead));
    }
    if (iRead < 0) Raise(errno);
    return sBytes;
}

TextFiles::TextFiles(DiskSync::Function tSynchronize) : m_tSynchronize(std::move(tSynchronize)) {}

TextFiles::~TextFiles() {
    for (std::size_t i = 1; i < m_tFiles.size(); ++i) Close(static_cast<std::int16_t>(i));
}

std::int16_t TextFiles::FreeFile() {
    auto pFree = std::find(m_tFiles.begin() + 1, m_tFiles.end(), nullptr);
    if (pFree == m_tFiles.end()) {
        pFree = std::min_element(m_tFiles.begin() + 1, m_tFiles.end(),
                                 [](const auto& t1, const auto& t2) { return t1->lRetired < t2->lRetired; });
        if ((*pFree)->lRetired == InUse) Raise(EMFILE);
        pFree->reset();  // the file that was retired first
    }
    return static_cast<std::int16_t>(pFree - m_tFiles.begin());
}

bool TextFiles::IsOpen(std::int16_t iFile) const noexcept {
    return iFile > 0 && static_cast<std::size_t>(iFile) < m_tFiles.size() && m_tFiles[static_cast<std::size_t>(iFile)];
}

std::unique_ptr<TextFiles::File>& TextFiles::Unused(std::int16_t iFile) {
    if (iFile < 1 || static_cast<std::size_t>(iFile) >= m_tFiles.size()) Raise(EBADF);
    if (IsOpen(iFile)) Raise(EBUSY);
    return m_tFiles[static_cast<std::size_t>(iFile)];
}

void TextFiles::OpenForInput(std::int16_t iFile, const std::filesystem::path& tPath) {
    std::unique_ptr<File>& tSlot = Unused(iFile);
    auto tFile = std::make_unique<File>(OpenDescriptor(tPath, O_RDONLY), false);
    CheckReadable(tFile->iDescriptor);
    tSlot = std::move(tFile);
}

void TextFiles::OpenForOutput(std::int16_t iFile, const std::filesystem::path& tPath) {
    std::unique_ptr<File>& tSlot = Unused(iFile);
    auto tFile = std::make_unique<File>(OpenDescriptor(tPath, O_WRONLY | O_CREAT | O_TRUNC), true);
    const mode_t iKind = KindOf(tFile->iDescriptor);
    if (iKind != S_IFREG && iKind != S_IFCHR) throw FileError("Not a regular file");
    tFile->BeginOutput(tPath, m_tSynchronize);
    tSlot = std::move(tFile);
}

void TextFiles::Close(std::int16_t iFile) noexcept {
    if (!IsOpen(iFile)) return;
    std::unique_ptr<File>& tFile = m_tFiles[static_cast<std::size_t>(iFile)];
    if (tFile->bOutput) tFile->WriteOut();
    tFile.reset();
}

void TextFiles::Retire(std::int16_t iFile) noexcept {
    if (!IsOpen(iFile)) return;
    File& tFile = *m_tFiles[static_cast<std::size_t>(iFile)];
    if (tFile.bOutput) return;
    tFile.DropBuffer();
    tFile.lRetired = m_lRetired++;
}

TextFiles::File& TextFiles::Opened(std::int16_t iFile) const {
    if (!IsOpen(iFile)) Raise(EBADF);
    return *m_tFiles[static_cast<std::size_t>(iFile)];
}

std::uint64_t TextFiles::LinesRead(std::int16_t iFile) const { return Opened(iFile).lLines; }

bool TextFiles::AtEnd(std::int16_t iFile) {
    File& tFile = Opened(iFile);
    return tFile.iBegin == tFile.iEnd && !tFile.Fill();
}

std::string_view TextFiles::ReadLine(std::int16_t iFile) {
    File& tFile = Opened(iFile);
    std::size_t iLineEnd = tFile.FirstLineEnd();
    // A CR that is the last byte read waits for the next one, which may be its LF.
    while (iLineEnd == tFile.iEnd || (tFile.sBuffer[iLineEnd] == '\r' && iLineEnd + 1 == tFile.iEnd)) {
        if (tFile.iEnd - tFile.iBegin > LongestLine + 1) break;
        const bool bMore = tFile.Fill();
        iLineEnd = tFile.FirstLineEnd();
        if (!bMore) break;
    }
    if (tFile.iBegin == tFile.iEnd) throw FileError("Input past end of file");
    if (iLineEnd - tFile.iBegin > LongestLine) throw ErrorInLine(tFile.lLines + 1, "too long");

    const std::string_view sLine(tFile.sBuffer.data() + tFile.iBegin, iLineEnd - tFile.iBegin);
    const std::size_t iNext = std::min(iLineEnd + 1, tFile.iEnd);
    const bool bPair = iNext < tFile.iEnd && tFile.sBuffer[iLineEnd] == '\r' && tFile.sBuffer[iNext] == '\n';
    tFile.iBegin = bPair ? iNext + 1 : iNext;
    ++tFile.lLines;
    return sLine;
}

void TextFiles::WriteLine(std::int16_t iFile, std::string_view sLine) {
    File& tFile = Opened(iFile);
    if (!tFile.bOutput) Raise(EBADF);
    if (tFile.sPending.size() >= BlockSize) {  // raises before the line is taken: the buffer cannot grow on
        if (const int iError = tFile.WriteOut(); iError != 0) Raise(iError);
    }
    tFile.sPending.append(sLine).append("\r\n");
}

void TextFiles::Flush(std::int16_t iFile) {
    if (!IsOpen(iFile)) return;
    File& tFile = Opened(iFile);
    if (!tFile.bOutput) return;
    if (const int iError = tFile.WriteOut(); iError != 0) Raise(iError);
    tFile.RaiseDiskError();
    if (!std::exchange(tFile.bUnsynchronized, false)) return;
    tFile.pDisk->Request();
}

void TextFiles::AwaitDisk(std::int16_t iFile) {
    if (!IsOpen(iFile) || !Opened(iFile).bOutput) return;
    Opened(iFile).pDisk->Wait();
    Opened(iFile).RaiseDiskError();
}

bool TextFiles::AwaitDisk(std::int16_t iFile, std::chrono::milliseconds tPatience) {
    if (!IsOpen(iFile) || !Opened(iFile).bOutput) return true;
    if (!Opened(iFile).pDisk->Wait(tPatience)) return false;
    Opened(iFile).RaiseDiskError();
    return true;
}

void TextFiles::CheckInPlace(std::int16_t iFile) const {
    if (!IsOpen(iFile)) return;
    const File& tFile = Opened(iFile);
    if (!tFile.bOutput || Whereabouts(tFile.iDescriptor) == tFile.sWhereabouts) return;
    // Some file systems forget a name that still leads to the file, and links may have been changed.
    if (!IsSameFile(tFile.iDescriptor, tFile.tPath)) throw FileError("The file is no longer there");
}

}  // namespace runtime
