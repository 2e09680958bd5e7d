// The folder is opened once and all its files are reached through it, so that nobody can put another one in its place
// meanwhile. A file that is recorded into is locked (TextFiles::Create), one that cannot be locked here stays.
#include "app/RecordFolder.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <memory>
#include <utility>

#include "app/CaptureLine.h"
#include "app/RecordFiles.h"
#include "app/RecordLine.h"
#include "app/RunNote.h"

namespace app {
namespace {

constexpr std::int64_t SecondsOfDay = 86400;
constexpr std::size_t BeginningSize = 64;  // holds a stamp and the first letters of a sentence
constexpr std::size_t EndSize = 65536;     // of a file, in which its last line is looked for

class Descriptor {
public:
    explicit Descriptor(int i) : m_i(i) {}
    ~Descriptor() {
        if (m_i >= 0) ::close(m_i);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    operator int() const { return m_i; }

private:
    int m_i;
};

struct OwnFile {
    RecordFileAge tAge;
    std::string sName;
    std::int64_t lBytes;
    bool bCapture;
};

// Until no signal breaks it off; nothing has happened by then.
template <class Function>
auto Uninterrupted(const Function& Call) {
    auto tDone = Call();
    while (tDone < 0 && errno == EINTR) tDone = Call();
    return tDone;
}

int OpenFile(int iFolder, const std::string& sName) {
    constexpr int Flags = O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
    return Uninterrupted([&] { return ::openat(iFolder, sName.c_str(), Flags); });
}

std::string ReadAt(int iFile, std::size_t iBytes, off_t lAt) {
    std::string s(iBytes, '\0');
    std::size_t iRead = 0;
    ssize_t iMore;
    do {
        const off_t lFrom = lAt + static_cast<off_t>(iRead);
        iMore = Uninterrupted([&] { return ::pread(iFile, s.data() + iRead, s.size() - iRead, lFrom); });
        iRead += iMore > 0 ? static_cast<std::size_t>(iMore) : 0;
    } while (iMore > 0 && iRead < s.size());
    s.resize(iRead);
    return s;
}

// By their names, the oldest first.
std::vector<OwnFile> List(int iFolder, const std::string& sProgram) {
    std::vector<OwnFile> tFiles;
    const int iCopy = ::fcntl(iFolder, F_DUPFD_CLOEXEC, 0);  // closed with the list
    const std::unique_ptr<DIR, int (*)(DIR*)> pList(iCopy < 0 ? nullptr : ::fdopendir(iCopy), ::closedir);
    if (!pList) return tFiles;
    while (const dirent* pEntry = ::readdir(pList.get())) {
        const auto tRecordAge = RecordFileAgeOf(sProgram, pEntry->d_name);
        const auto tAge = tRecordAge ? tRecordAge : RecordFileAgeOf(sProgram, pEntry->d_name, CaptureSuffix);
        struct stat tStatus {};
        if (!tAge) continue;
        // GCOVR_EXCL_BR_START: it fails for a file that has gone since it was listed
        if (::fstatat(iFolder, pEntry->d_name, &tStatus, AT_SYMLINK_NOFOLLOW) != 0) continue;
        // GCOVR_EXCL_BR_STOP
        if (S_ISREG(tStatus.st_mode)) tFiles.push_back({*tAge, pEntry->d_name, tStatus.st_size, !tRecordAge});
    }
    std::ranges::sort(tFiles, {}, &OwnFile::tAge);
    return tFiles;
}

bool BeginsAsOurs(int iFile, const OwnFile& t) {
    const std::string sBeginning = ReadAt(iFile, BeginningSize, 0);
    return t.bCapture ? IsCaptureHead(std::string_view(sBeginning).substr(0, sBeginning.find('\r')))
                      : BeginsWithLineOf(sBeginning, t.tAge.dtFirst);
}

bool IsOurs(int iFolder, const OwnFile& t) {
    const Descriptor tFile(OpenFile(iFolder, t.sName));
    return tFile >= 0 && BeginsAsOurs(tFile, t);
}

// The first line's, where the last one cannot be read.
runtime::DateTime LastStamp(int iFolder, const OwnFile& t) {
    const Descriptor tFile(OpenFile(iFolder, t.sName));
    const std::int64_t lAt = std::max<std::int64_t>(t.lBytes - static_cast<std::int64_t>(EndSize), 0);
    return LastRecordStamp(ReadAt(tFile, EndSize, lAt)).value_or(t.tAge.dtFirst);
}

bool IsSameFile(int iFile, int iFolder, const std::string& sName) {
    struct stat tOpened {};
    struct stat tNamed {};
    // GCOVR_EXCL_BR_START: another file has been put there since this one was opened
    return ::fstat(iFile, &tOpened) == 0 && ::fstatat(iFolder, sName.c_str(), &tNamed, AT_SYMLINK_NOFOLLOW) == 0 &&
           tOpened.st_dev == tNamed.st_dev && tOpened.st_ino == tNamed.st_ino;
    // GCOVR_EXCL_BR_STOP
}

// False where it is being recorded into, is not the same file any more, or may not be removed.
bool Remove(int iFolder, const OwnFile& t) {
    const Descriptor tFile(OpenFile(iFolder, t.sName));
    if (::flock(tFile, LOCK_EX | LOCK_NB) != 0) return false;  // nor is there one that was not opened
    if (!BeginsAsOurs(tFile, t)) return false;
    if (!IsSameFile(tFile, iFolder, t.sName)) return false;  // GCOVR_EXCL_BR_LINE: see there
    return ::unlinkat(iFolder, t.sName.c_str(), 0) == 0;
}

class Tending {
public:
    Tending(const FolderTask& t, int iFolder) : m_t(t), m_iFolder(iFolder), m_tFiles(List(iFolder, t.sProgram)) {}

    FolderReport Run() {
        if (AnythingToDo()) {
            std::erase_if(m_tFiles, [this](const OwnFile& t) { return !IsOurs(m_iFolder, t); });
            const auto LinesAreOld = [this](const OwnFile& t) { return IsOld(LastStamp(m_iFolder, t)); };
            const auto Any = [](const OwnFile&) { return true; };
            RemoveWhile([this](const OwnFile& t) { return IsOld(t.tAge.dtFirst); }, LinesAreOld);
            RemoveWhile([this](const OwnFile&) { return IsBeyondBytes(); }, Any);
            RemoveWhile([this](const OwnFile&) { return IsFull(); }, Any);
            m_tReport.bNearlyFull = IsFull();
        }
        return std::move(m_tReport);
    }

private:
    bool AnythingToDo() const {
        return (!m_tFiles.empty() && IsOld(m_tFiles.front().tAge.dtFirst)) || IsBeyondBytes() || IsFull();
    }
    bool IsOld(runtime::DateTime dt) const {
        return m_t.lKeepDays && m_t.dtNow.lSeconds - dt.lSeconds > *m_t.lKeepDays * SecondsOfDay;
    }
    bool IsBeyondBytes() const {
        if (!m_t.lKeepBytes) return false;
        std::int64_t lBytes = 0;
        for (const OwnFile& t : m_tFiles) lBytes += t.lBytes;
        return lBytes > *m_t.lKeepBytes;
    }
    bool IsFull() const {
        const auto tRoom = m_t.tRoom(m_t.tFolder);
        return tRoom && IsNearlyFull(*tRoom);
    }
    // The newest recording and the newest capture stay, and what is as new.
    bool IsNewest(const OwnFile& t) const {
        const auto Newer = [&t](const OwnFile& tOther) {
            return tOther.bCapture == t.bCapture && t.tAge < tOther.tAge;
        };
        return std::ranges::none_of(m_tFiles, Newer);
    }
    // From the oldest on as long as the first condition holds, never the newest.
    template <class GoOn, class Goes>
    void RemoveWhile(GoOn tGoOn, Goes tGoes) {
        for (std::size_t i = 0; i < m_tFiles.size() && tGoOn(m_tFiles[i]);) {
            if (!IsNewest(m_tFiles[i]) && tGoes(m_tFiles[i]) && Remove(m_iFolder, m_tFiles[i])) {
                m_tReport.sRemoved.push_back(m_tFiles[i].sName);
                m_tFiles.erase(m_tFiles.begin() + static_cast<std::ptrdiff_t>(i));
            } else {
                ++i;
            }
        }
    }

    const FolderTask& m_t;
    const int m_iFolder;
    std::vector<OwnFile> m_tFiles;
    FolderReport m_tReport;
};

}  // namespace

FolderReport TendFolder(const FolderTask& t) {
    const auto Open = [&] { return ::open(t.tFolder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); };
    const Descriptor tFolder(Uninterrupted(Open));
    if (tFolder < 0) return {errno, false, {}};
    if (::faccessat(tFolder, ".", W_OK | X_OK, AT_EACCESS) != 0) return {errno, false, {}};
    return Tending(t, tFolder).Run();
}

}  // namespace app
