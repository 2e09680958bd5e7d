// Buffered files over the system's descriptors.
#include "platform/runtime/TextFiles.h"

#include <fcntl.h>
#include <sys/file.h>
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

constexpr std::size_t BlockSize = 128 * 1024;  // of output that waits, and of what is read at once
constexpr std::uint64_t InUse = std::numeric_limits<std::uint64_t>::max();
constexpr mode_t NewFileMode = 0666;  // less what the user's mask takes
// Never wait for the other end of a FIFO, never become some terminal's process.
constexpr int OpenFlags = O_CLOEXEC | O_NONBLOCK | O_NOCTTY;

[[noreturn]] void Raise(int iError) { throw FileError(SystemText(iError)); }

ssize_t ReadSome(int iDescriptor, char* pTo, std::size_t iCount) {
    ssize_t iRead;
    do {
        iRead = ::read(iDescriptor, pTo, iCount);
    } while (iRead < 0 && errno == EINTR);  // GCOVR_EXCL_BR_LINE: a signal in that very moment
    return iRead;
}

ssize_t WriteSome(int iDescriptor, const char* pFrom, std::size_t iCount) {
    ssize_t iWritten;
    do {
        iWritten = ::write(iDescriptor, pFrom, iCount);
    } while (iWritten < 0 && errno == EINTR);  // GCOVR_EXCL_BR_LINE: a signal in that very moment
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
    if (::fstat(iDescriptor, &tOpened) != 0) return false;  // GCOVR_EXCL_BR_LINE: of an open file it succeeds
    if (::stat(tPath.c_str(), &tNamed) != 0) return false;
    return tOpened.st_dev == tNamed.st_dev && tOpened.st_ino == tNamed.st_ino;
}

// -1 where that fails, errno says why.
int TryToOpen(const std::filesystem::path& tPath, int iFlags) {
    int iDescriptor;
    do {
        iDescriptor = ::open(tPath.c_str(), iFlags | OpenFlags, NewFileMode);
    } while (iDescriptor < 0 && errno == EINTR);  // GCOVR_EXCL_BR_LINE: a signal in that very moment
    return iDescriptor;
}

int OpenDescriptor(const std::filesystem::path& tPath, int iFlags) {
    const int iDescriptor = TryToOpen(tPath, iFlags);
    if (iDescriptor < 0) Raise(errno);
    return iDescriptor;
}

mode_t KindOf(int iDescriptor) {
    struct stat tStatus {};
    if (::fstat(iDescriptor, &tStatus) != 0) Raise(errno);  // GCOVR_EXCL_BR_LINE: of an open file it succeeds
    return tStatus.st_mode & S_IFMT;
}

void Empty(int iDescriptor) {
    int iResult;
    do {
        iResult = ::ftruncate(iDescriptor, 0);
    } while (iResult != 0 && errno == EINTR);
    if (iResult != 0) Raise(errno);
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
    void DropBlock() noexcept;
    int WriteOut() noexcept;
    void RaiseDiskError() const;
    void BeginOutput(const std::filesystem::path& tOpened, const DiskSync::Function& tSynchronize);

    const int iDescriptor;
    const bool bOutput;
    // Input.
    LineBlock tBlock;
    std::uint64_t lRetired = InUse;  // the number among the retired files
    // Output.
    std::filesystem::path tPath;
    std::string sWhereabouts;      // at opening
    std::string sPending;          // not yet written
    std::size_t lWritten = 0;      // bytes before those
    bool bUnsynchronized = false;  // written since the disk was asked last
    std::unique_ptr<DiskSync> pDisk;
};

// Reads on behind what is left. False at the end of the file.
bool TextFiles::File::Fill() {
    const std::span<char> tRoom = tBlock.MakeRoom();
    const ssize_t iRead = ReadSome(iDescriptor, tRoom.data(), tRoom.size());
    if (iRead < 0) throw ErrorInLine(tBlock.Lines() + 1, SystemText(errno));
    tBlock.Added(static_cast<std::size_t>(iRead));
    return iRead > 0;
}

// What was read and not handed out will be read again.
void TextFiles::File::DropBlock() noexcept {
    if (tBlock.Size() > 0) ::lseek(iDescriptor, -static_cast<off_t>(tBlock.Size()), SEEK_CUR);
    tBlock.Free();
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
    lWritten += iDone;
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
    auto tFile = std::make_unique<File>(OpenDescriptor(tPath, O_WRONLY | O_CREAT), true);
    const mode_t iKind = KindOf(tFile->iDescriptor);
    if (iKind != S_IFREG && iKind != S_IFCHR) throw FileError("Not a regular file");
    tFile->BeginOutput(tPath, m_tSynchronize);
    // Last: what was in it stays where nothing new will come.
    if (iKind == S_IFREG) Empty(tFile->iDescriptor);
    tSlot = std::move(tFile);
}

// Where the file system knows no locks nobody can tell: the file is as good.
bool TextFiles::Create(std::int16_t iFile, const std::filesystem::path& tPath) {
    std::unique_ptr<File>& tSlot = Unused(iFile);
    const int iDescriptor = TryToOpen(tPath, O_WRONLY | O_CREAT | O_EXCL);
    if (iDescriptor < 0 && errno == EEXIST) return false;
    if (iDescriptor < 0) Raise(errno);
    auto tFile = std::make_unique<File>(iDescriptor, true);
    ::flock(iDescriptor, LOCK_EX | LOCK_NB);
    tFile->BeginOutput(tPath, m_tSynchronize);
    tSlot = std::move(tFile);
    return true;
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
    tFile.DropBlock();
    tFile.lRetired = m_lRetired++;
}

TextFiles::File& TextFiles::Opened(std::int16_t iFile) const {
    if (!IsOpen(iFile)) Raise(EBADF);
    return *m_tFiles[static_cast<std::size_t>(iFile)];
}

std::uint64_t TextFiles::LinesRead(std::int16_t iFile) const { return Opened(iFile).tBlock.Lines(); }

bool TextFiles::AtEnd(std::int16_t iFile) {
    File& tFile = Opened(iFile);
    return tFile.tBlock.Size() == 0 && !tFile.Fill();
}

LineBlock& TextFiles::AtHand(std::int16_t iFile) { return Opened(iFile).tBlock; }

std::string_view TextFiles::ReadLine(std::int16_t iFile) {
    File& tFile = Opened(iFile);
    std::string_view sLine;
    while (!tFile.tBlock.Next(sLine)) {
        const bool bMore = tFile.tBlock.Size() <= LongestLine + 1 && tFile.Fill();
        if (bMore) continue;
        if (tFile.tBlock.Size() == 0) throw FileError("Input past end of file");
        if (!tFile.tBlock.TakeRest(sLine)) throw ErrorInLine(tFile.tBlock.Lines() + 1, "too long");
        break;
    }
    return sLine;
}

std::string TextFiles::End(std::int16_t iFile, std::size_t iBytes) const {
    const int iDescriptor = Opened(iFile).iDescriptor;
    struct stat tStatus {};
    if (::fstat(iDescriptor, &tStatus) != 0) return {};  // GCOVR_EXCL_BR_LINE: of an open file it succeeds
    std::string sEnd(std::min(iBytes, static_cast<std::size_t>(tStatus.st_size)), '\0');
    const off_t lFrom = tStatus.st_size - static_cast<off_t>(sEnd.size());
    for (std::size_t iDone = 0; iDone < sEnd.size();) {
        const ssize_t iRead =
            ::pread(iDescriptor, sEnd.data() + iDone, sEnd.size() - iDone, lFrom + static_cast<off_t>(iDone));
        if (iRead < 0 && errno == EINTR) continue;
        if (iRead <= 0) return {};
        iDone += static_cast<std::size_t>(iRead);
    }
    return sEnd;
}

void TextFiles::WriteLine(std::int16_t iFile, std::string_view sLine) {
    File& tFile = Opened(iFile);
    if (!tFile.bOutput) Raise(EBADF);
    if (tFile.sPending.size() >= BlockSize) {  // raises before the line is taken: the buffer cannot grow on
        if (const int iError = tFile.WriteOut(); iError != 0) Raise(iError);
    }
    tFile.sPending.append(sLine).append("\r\n");
}

std::int64_t TextFiles::Written(std::int16_t iFile) const {
    const File& tFile = Opened(iFile);
    return static_cast<std::int64_t>(tFile.lWritten + tFile.sPending.size());
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
    if (!tFile.bOutput) return;
    if (Whereabouts(tFile.iDescriptor) == tFile.sWhereabouts) return;
    // Some file systems forget a name that still leads to the file, and links may have been changed.
    if (!IsSameFile(tFile.iDescriptor, tFile.tPath)) throw FileError("The file is no longer there");
}

}  // namespace runtime
