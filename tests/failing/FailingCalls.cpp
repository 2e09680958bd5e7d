// One rule for all functions: is it about something that is watched, and is it this call's turn?
#undef _FORTIFY_SOURCE  // with it some of these are inline already
#include "tests/failing/FailingCalls.h"

#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <pthread.h>
#include <sched.h>
#include <spawn.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <string>
#include <type_traits>

namespace failing {
namespace {

constexpr std::array<CallKind, CallCount> Kinds = {{
    {"open", EACCES, EMFILE, true, false},
    {"read", EIO, EIO, true, true},
    {"write", ENOSPC, EIO, true, true},
    {"fdatasync", EIO, ENOSPC, true, false},
    {"rename", EACCES, ENOSPC, false, false},
    {"ftruncate", EIO, EIO, true, false},
    {"flock", ENOLCK, ENOLCK, true, false},
    {"fcntl", EMFILE, EMFILE, false, false},
    {"ioctl", EIO, EIO, false, false},
    {"tcgetattr", EIO, EIO, false, false},
    {"tcsetattr", EIO, EIO, false, false},
    {"tcflush", EIO, EIO, false, false},
    {"close", EIO, EIO, true, false},
    {"mkdir", ENOSPC, EACCES, false, false},
    {"unlink", EACCES, EACCES, false, false},
    {"link", EPERM, EPERM, false, false},
    {"lseek", EIO, EIO, false, false},
    {"stat", EIO, EIO, false, false},
    {"readlink", EIO, EIO, false, false},
    {"access", EIO, EACCES, false, false},
    {"opendir", EMFILE, EMFILE, false, false},
    {"readdir", EIO, EIO, false, false},
    {"statvfs", EIO, EIO, true, false},
    {"fchmod", EPERM, EPERM, false, false},
    {"pthread_create", EAGAIN, EAGAIN, false, false},
    {"socket", EMFILE, EMFILE, false, false},
    {"bind", EACCES, EACCES, false, false},
    {"pipe", EMFILE, EMFILE, false, false},
    {"posix_spawn", EAGAIN, ENOMEM, false, false},
    {"tmpfile", EMFILE, ENOSPC, false, false},
    {"fflush", ENOSPC, ENOSPC, false, false},
}};

constexpr std::size_t MostDescriptors = 4096;
constexpr std::size_t MostNames = 32;
constexpr int Elsewhere = -1;  // no descriptor

State g_tOwn;
State* g_pState = &g_tOwn;
std::array<std::atomic<char>, MostDescriptors> g_cWatched;  // by which name, from 1; 0: not at all
std::array<std::array<char, 256>, MostNames> g_sNames;
std::size_t g_iNames = 0;
thread_local int t_iPaused = 0;

template <class Function>
Function System(Function, const char* sName) {
    return reinterpret_cast<Function>(::dlsym(RTLD_NEXT, sName));
}
#define SYSTEM(name) static const auto pSystem = System(&name, #name)

bool IsKnown(int i) { return i >= 0 && static_cast<std::size_t>(i) < MostDescriptors; }

char WatchedBy(int i) { return IsKnown(i) ? g_cWatched[static_cast<std::size_t>(i)].load() : '\0'; }

void SetWatched(int i, char cName) {
    if (IsKnown(i)) g_cWatched[static_cast<std::size_t>(i)] = cName;
}

char WatchedBy(const char* sPath) {
    if (sPath == nullptr) return 0;
    const std::string_view s(sPath);
    constexpr std::string_view OwnDescriptors = "/proc/self/fd/";
    if (s.starts_with(OwnDescriptors)) {
        int i = 0;
        for (const char c : s.substr(OwnDescriptors.size())) i = i * 10 + (c - '0');
        return WatchedBy(i);
    }
    for (std::size_t i = 0; i < g_iNames; ++i) {
        if (s.starts_with(g_sNames[i].data())) return static_cast<char>(i + 1);
    }
    return 0;
}

char WatchedBy(int iFolder, const char* sPath) {
    const bool bByName = sPath != nullptr && (sPath[0] == '/' || iFolder == AT_FDCWD);
    return bByName ? WatchedBy(sPath) : WatchedBy(iFolder);
}

// Files below the first name that were written to and have not been brought to the disk since, by their numbers.
std::array<std::atomic<std::uint64_t>, 16> g_lUnsynced;

void Written(int iDescriptor, bool bSynced) {
    static const auto pStatus = System<int (*)(int, struct stat*)>(nullptr, "fstat");
    struct stat t {};
    if (t_iPaused > 0 || WatchedBy(iDescriptor) != 1 || pStatus(iDescriptor, &t) != 0 || !S_ISREG(t.st_mode)) return;
    for (auto& l : g_lUnsynced) {
        std::uint64_t lThis = t.st_ino, lNone = 0;
        if (bSynced ? l.compare_exchange_strong(lThis, 0) : l == lThis || l.compare_exchange_strong(lNone, lThis))
            return;
    }
}

void Remember(const char* sPath, int iDescriptor) {
    char* const sWhere = g_pState->sWhere;
    constexpr std::size_t iRoom = sizeof g_pState->sWhere;
    if (sPath != nullptr) {
        std::snprintf(sWhere, iRoom, "%s", sPath);
    } else if (iDescriptor >= 0) {
        static const auto pReadLink = System(&readlink, "readlink");
        char sLink[64];
        std::snprintf(sLink, sizeof sLink, "/proc/self/fd/%d", iDescriptor);
        const ssize_t iSize = pReadLink(sLink, sWhere, iRoom - 1);
        sWhere[iSize < 0 ? 0 : iSize] = '\0';
    }
}

// Counts the call. The error that it is to fail with, 0 when it is not its turn; for Mode::Short any other number.
int Judge(Call e, bool bOurs, int iDescriptor = Elsewhere, const char* sPath = nullptr) {
    State& t = *g_pState;
    if (!bOurs || t_iPaused > 0 || !t.bArmed) return 0;
    // Who closes last is left to chance.
    const int iThread = ::gettid() == ::getpid() || e == Call::Close ? 0 : 1;
    const int iNumber = ++t.iCounts[static_cast<int>(e)][iThread];
    const Plan& tPlan = t.tPlan;
    if (tPlan.eMode == Mode::Count || tPlan.eCall != e || tPlan.iThread != iThread) return 0;
    if (iNumber < tPlan.iNumber || (iNumber > tPlan.iNumber && tPlan.eMode != Mode::Stays)) return 0;
    if (t.iFired++ == 0) Remember(sPath, iDescriptor);
    if (tPlan.eMode == Mode::Interrupted) return EINTR;
    return tPlan.eMode == Mode::Stays ? KindOf(e).iStays : KindOf(e).iOnce;
}

template <class Result>
Result Failed(int iError) {
    errno = iError;
    if constexpr (std::is_pointer_v<Result>) {
        return nullptr;
    } else {
        return Result(-1);
    }
}

// By a descriptor.
template <class Do>
auto On(Call e, int iDescriptor, Do tSystem) -> decltype(tSystem()) {
    const int iError = Judge(e, WatchedBy(iDescriptor) != 0, iDescriptor);
    return iError != 0 ? Failed<decltype(tSystem())>(iError) : tSystem();
}

// By a name.
template <class Do>
auto By(Call e, const char* sPath, Do tSystem) -> decltype(tSystem()) {
    const int iError = Judge(e, WatchedBy(sPath) != 0, Elsewhere, sPath);
    return iError != 0 ? Failed<decltype(tSystem())>(iError) : tSystem();
}

template <class Do>
auto In(Call e, int iFolder, const char* sPath, Do tSystem) -> decltype(tSystem()) {
    const int iError = Judge(e, WatchedBy(iFolder, sPath) != 0, Elsewhere, sPath);
    return iError != 0 ? Failed<decltype(tSystem())>(iError) : tSystem();
}

template <class Do>
int Opening(int iFolder, const char* sPath, Do tSystem) {
    const char cName = WatchedBy(iFolder, sPath);
    if (const int iError = Judge(Call::Open, cName != 0, Elsewhere, sPath); iError != 0) return Failed<int>(iError);
    const int iDescriptor = tSystem();
    SetWatched(iDescriptor, cName);
    return iDescriptor;
}

// Takes a part of it where that is the plan.
template <class Do>
ssize_t Moving(Call e, int iDescriptor, std::size_t iSize, Do tSystem) {
    const int iError = Judge(e, WatchedBy(iDescriptor) != 0, iDescriptor);
    if (iError == 0) return tSystem(iSize);
    if (g_pState->tPlan.eMode == Mode::Short) return tSystem(iSize > 1 ? iSize / 2 : iSize);
    return Failed<ssize_t>(iError);
}

// Of nothing that has a name: whatever the first thread does.
template <class Do>
int Unnamed(Call e, Do tSystem) {
    const int iError = Judge(e, ::gettid() == ::getpid());
    return iError != 0 ? Failed<int>(iError) : tSystem();
}

}  // namespace

const CallKind& KindOf(Call e) { return Kinds[static_cast<std::size_t>(e)]; }

bool Happens(Call e, Mode eMode) {
    if (eMode == Mode::Interrupted) return KindOf(e).bInterruptible;
    return eMode != Mode::Short || KindOf(e).bShort;
}

void UseState(State* p) { g_pState = p; }

void Watch(std::string_view sBeginning) {
    if (WatchedBy(std::string(sBeginning).c_str()) != 0) return;
    auto& sName = g_sNames.at(g_iNames++);
    std::snprintf(sName.data(), sName.size(), "%.*s", static_cast<int>(sBeginning.size()), sBeginning.data());
}

void WatchDescriptor(int iDescriptor) { SetWatched(iDescriptor, MostNames); }

int Fired() { return g_pState->iFired; }

void AwaitSync() {
    const auto IsSynced = [](const auto& l) { return l == 0; };
    while (Fired() == 0 && !std::ranges::all_of(g_lUnsynced, IsSynced)) ::sched_yield();
}

Pause::Pause() { ++t_iPaused; }
Pause::~Pause() { --t_iPaused; }

}  // namespace failing

using namespace failing;

#define MODE_OF(iFlags)                                                                       \
    va_list tMore;                                                                            \
    va_start(tMore, iFlags);                                                                  \
    const mode_t iMode = ((iFlags) & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(tMore, mode_t) : 0; \
    va_end(tMore)

extern "C" {

int open(const char* sPath, int iFlags, ...) {
    SYSTEM(open);
    MODE_OF(iFlags);
    return Opening(AT_FDCWD, sPath, [&] { return pSystem(sPath, iFlags, iMode); });
}

int open64(const char* sPath, int iFlags, ...) {
    SYSTEM(open64);
    MODE_OF(iFlags);
    return Opening(AT_FDCWD, sPath, [&] { return pSystem(sPath, iFlags, iMode); });
}

int openat(int iFolder, const char* sPath, int iFlags, ...) {
    SYSTEM(openat);
    MODE_OF(iFlags);
    return Opening(iFolder, sPath, [&] { return pSystem(iFolder, sPath, iFlags, iMode); });
}

int openat64(int iFolder, const char* sPath, int iFlags, ...) {
    SYSTEM(openat64);
    MODE_OF(iFlags);
    return Opening(iFolder, sPath, [&] { return pSystem(iFolder, sPath, iFlags, iMode); });
}

// As programs call them that are built with checks of their buffers.
int __open_2(const char* sPath, int iFlags) { return open(sPath, iFlags); }
int __open64_2(const char* sPath, int iFlags) { return open64(sPath, iFlags); }
int __openat_2(int iFolder, const char* sPath, int iFlags) { return openat(iFolder, sPath, iFlags); }
int __openat64_2(int iFolder, const char* sPath, int iFlags) { return openat64(iFolder, sPath, iFlags); }

std::FILE* fopen64(const char* sPath, const char* sMode) {
    SYSTEM(fopen64);
    return By(Call::Open, sPath, [&] { return pSystem(sPath, sMode); });
}

int mkostemp(char* sName, int iFlags) {
    SYSTEM(mkostemp);
    return Opening(AT_FDCWD, sName, [&] { return pSystem(sName, iFlags); });
}

ssize_t read(int iDescriptor, void* pTo, size_t iSize) {
    SYSTEM(read);
    return Moving(Call::Read, iDescriptor, iSize, [&](std::size_t i) { return pSystem(iDescriptor, pTo, i); });
}

ssize_t __read_chk(int iDescriptor, void* pTo, size_t iSize, size_t) { return read(iDescriptor, pTo, iSize); }

ssize_t pread(int iDescriptor, void* pTo, size_t iSize, off_t lAt) {
    SYSTEM(pread);
    return Moving(Call::Read, iDescriptor, iSize, [&](std::size_t i) { return pSystem(iDescriptor, pTo, i, lAt); });
}

ssize_t __pread_chk(int iDescriptor, void* pTo, size_t iSize, off_t lAt, size_t) {
    return pread(iDescriptor, pTo, iSize, lAt);
}

ssize_t write(int iDescriptor, const void* pFrom, size_t iSize) {
    SYSTEM(write);
    const ssize_t iWritten =
        Moving(Call::Write, iDescriptor, iSize, [&](std::size_t i) { return pSystem(iDescriptor, pFrom, i); });
    if (iWritten > 0) Written(iDescriptor, false);
    return iWritten;
}

int fdatasync(int iDescriptor) {
    SYSTEM(fdatasync);
    const int iResult = On(Call::Sync, iDescriptor, [&] { return pSystem(iDescriptor); });
    Written(iDescriptor, true);
    return iResult;
}

int fsync(int iDescriptor) {
    SYSTEM(fsync);
    const int iResult = On(Call::Sync, iDescriptor, [&] { return pSystem(iDescriptor); });
    Written(iDescriptor, true);
    return iResult;
}

int rename(const char* sFrom, const char* sTo) noexcept {
    SYSTEM(rename);
    return By(Call::Rename, sTo, [&] { return pSystem(sFrom, sTo); });
}

int renameat2(int iFrom, const char* sFrom, int iTo, const char* sTo, unsigned iFlags) noexcept {
    SYSTEM(renameat2);
    return In(Call::Rename, iTo, sTo, [&] { return pSystem(iFrom, sFrom, iTo, sTo, iFlags); });
}

int ftruncate(int iDescriptor, off_t lSize) noexcept {
    SYSTEM(ftruncate);
    return On(Call::Truncate, iDescriptor, [&] { return pSystem(iDescriptor, lSize); });
}

int ftruncate64(int iDescriptor, off64_t lSize) noexcept {
    SYSTEM(ftruncate64);
    return On(Call::Truncate, iDescriptor, [&] { return pSystem(iDescriptor, lSize); });
}

int flock(int iDescriptor, int iOperation) noexcept {
    SYSTEM(flock);
    return On(Call::Lock, iDescriptor, [&] { return pSystem(iDescriptor, iOperation); });
}

int fcntl(int iDescriptor, int iOrder, ...) {
    SYSTEM(fcntl);
    va_list tMore;
    va_start(tMore, iOrder);
    void* const pMore = va_arg(tMore, void*);
    va_end(tMore);
    const int iResult = On(Call::Control, iDescriptor, [&] { return pSystem(iDescriptor, iOrder, pMore); });
    const bool bCopy = iOrder == F_DUPFD || iOrder == F_DUPFD_CLOEXEC;
    if (bCopy && iResult >= 0) SetWatched(iResult, WatchedBy(iDescriptor));
    return iResult;
}

int ioctl(int iDescriptor, unsigned long lOrder, ...) noexcept {
    SYSTEM(ioctl);
    va_list tMore;
    va_start(tMore, lOrder);
    void* const pMore = va_arg(tMore, void*);
    va_end(tMore);
    return On(Call::Ioctl, iDescriptor, [&] { return pSystem(iDescriptor, lOrder, pMore); });
}

int tcgetattr(int iDescriptor, termios* p) noexcept {
    SYSTEM(tcgetattr);
    return On(Call::GetTerminal, iDescriptor, [&] { return pSystem(iDescriptor, p); });
}

int tcsetattr(int iDescriptor, int iWhen, const termios* p) noexcept {
    SYSTEM(tcsetattr);
    return On(Call::SetTerminal, iDescriptor, [&] { return pSystem(iDescriptor, iWhen, p); });
}

int tcflush(int iDescriptor, int iQueue) noexcept {
    SYSTEM(tcflush);
    return On(Call::FlushTerminal, iDescriptor, [&] { return pSystem(iDescriptor, iQueue); });
}

// The descriptor is gone whatever close answers.
int close(int iDescriptor) {
    SYSTEM(close);
    const int iError = Judge(Call::Close, WatchedBy(iDescriptor) != 0, iDescriptor);
    SetWatched(iDescriptor, 0);
    const int iResult = pSystem(iDescriptor);
    return iError != 0 ? Failed<int>(iError) : iResult;
}

int closedir(DIR* p) {
    SYSTEM(closedir);
    SetWatched(::dirfd(p), 0);
    return pSystem(p);
}

int mkdir(const char* sPath, mode_t iMode) noexcept {
    SYSTEM(mkdir);
    return By(Call::MakeFolder, sPath, [&] { return pSystem(sPath, iMode); });
}

int unlink(const char* sPath) noexcept {
    SYSTEM(unlink);
    return By(Call::Unlink, sPath, [&] { return pSystem(sPath); });
}

int unlinkat(int iFolder, const char* sPath, int iFlags) noexcept {
    SYSTEM(unlinkat);
    return In(Call::Unlink, iFolder, sPath, [&] { return pSystem(iFolder, sPath, iFlags); });
}

int remove(const char* sPath) noexcept {
    SYSTEM(remove);
    return By(Call::Unlink, sPath, [&] { return pSystem(sPath); });
}

int link(const char* sFrom, const char* sTo) noexcept {
    SYSTEM(link);
    return By(Call::Link, sTo, [&] { return pSystem(sFrom, sTo); });
}

int linkat(int iFrom, const char* sFrom, int iTo, const char* sTo, int iFlags) noexcept {
    SYSTEM(linkat);
    return In(Call::Link, iTo, sTo, [&] { return pSystem(iFrom, sFrom, iTo, sTo, iFlags); });
}

off_t lseek(int iDescriptor, off_t lBy, int iFrom) noexcept {
    SYSTEM(lseek);
    return On(Call::Seek, iDescriptor, [&] { return pSystem(iDescriptor, lBy, iFrom); });
}

off64_t lseek64(int iDescriptor, off64_t lBy, int iFrom) noexcept {
    SYSTEM(lseek64);
    return On(Call::Seek, iDescriptor, [&] { return pSystem(iDescriptor, lBy, iFrom); });
}

int stat(const char* sPath, struct stat* p) noexcept {
    static const auto pSystem = System<int (*)(const char*, struct stat*)>(nullptr, "stat");
    return By(Call::Status, sPath, [&] { return pSystem(sPath, p); });
}

int stat64(const char* sPath, struct stat64* p) noexcept {
    static const auto pSystem = System<int (*)(const char*, struct stat64*)>(nullptr, "stat64");
    return By(Call::Status, sPath, [&] { return pSystem(sPath, p); });
}

int lstat(const char* sPath, struct stat* p) noexcept {
    SYSTEM(lstat);
    return By(Call::Status, sPath, [&] { return pSystem(sPath, p); });
}

int lstat64(const char* sPath, struct stat64* p) noexcept {
    SYSTEM(lstat64);
    return By(Call::Status, sPath, [&] { return pSystem(sPath, p); });
}

int fstat(int iDescriptor, struct stat* p) noexcept {
    SYSTEM(fstat);
    return On(Call::Status, iDescriptor, [&] { return pSystem(iDescriptor, p); });
}

int fstat64(int iDescriptor, struct stat64* p) noexcept {
    SYSTEM(fstat64);
    return On(Call::Status, iDescriptor, [&] { return pSystem(iDescriptor, p); });
}

int fstatat(int iFolder, const char* sPath, struct stat* p, int iFlags) noexcept {
    SYSTEM(fstatat);
    return In(Call::Status, iFolder, sPath, [&] { return pSystem(iFolder, sPath, p, iFlags); });
}

int statx(int iFolder, const char* sPath, int iFlags, unsigned iMask, struct statx* p) noexcept {
    static const auto pSystem = System<int (*)(int, const char*, int, unsigned, struct statx*)>(nullptr, "statx");
    const bool bByDescriptor = (iFlags & AT_EMPTY_PATH) != 0 && sPath != nullptr && *sPath == '\0';
    if (bByDescriptor) return On(Call::Status, iFolder, [&] { return pSystem(iFolder, sPath, iFlags, iMask, p); });
    return In(Call::Status, iFolder, sPath, [&] { return pSystem(iFolder, sPath, iFlags, iMask, p); });
}

ssize_t readlink(const char* sPath, char* sTo, size_t iSize) noexcept {
    SYSTEM(readlink);
    return By(Call::ReadLink, sPath, [&] { return pSystem(sPath, sTo, iSize); });
}

ssize_t __readlink_chk(const char* sPath, char* sTo, size_t iSize, size_t) noexcept {
    return readlink(sPath, sTo, iSize);
}

int faccessat(int iFolder, const char* sPath, int iMode, int iFlags) noexcept {
    SYSTEM(faccessat);
    return In(Call::Access, iFolder, sPath, [&] { return pSystem(iFolder, sPath, iMode, iFlags); });
}

DIR* opendir(const char* sPath) {
    SYSTEM(opendir);
    return By(Call::OpenFolder, sPath, [&] { return pSystem(sPath); });
}

DIR* fdopendir(int iDescriptor) {
    SYSTEM(fdopendir);
    return On(Call::OpenFolder, iDescriptor, [&] { return pSystem(iDescriptor); });
}

dirent* readdir(DIR* p) {
    SYSTEM(readdir);
    return On(Call::ReadFolder, ::dirfd(p), [&] { return pSystem(p); });
}

dirent64* readdir64(DIR* p) {
    SYSTEM(readdir64);
    return On(Call::ReadFolder, ::dirfd(p), [&] { return pSystem(p); });
}

int statvfs(const char* sPath, struct statvfs* p) noexcept {
    static const auto pSystem = System<int (*)(const char*, struct statvfs*)>(nullptr, "statvfs");
    return By(Call::Room, sPath, [&] { return pSystem(sPath, p); });
}

int fchmod(int iDescriptor, mode_t iMode) noexcept {
    SYSTEM(fchmod);
    return On(Call::ChangeMode, iDescriptor, [&] { return pSystem(iDescriptor, iMode); });
}

int pthread_create(pthread_t* p, const pthread_attr_t* pAttributes, void* (*pRun)(void*), void* pData) noexcept {
    SYSTEM(pthread_create);
    const bool bOurs = pAttributes == nullptr;  // Qt's have some
    const int iError = Judge(Call::Thread, bOurs && ::gettid() == ::getpid());
    return iError != 0 ? iError : pSystem(p, pAttributes, pRun, pData);
}

int socket(int iDomain, int iType, int iProtocol) noexcept {
    SYSTEM(socket);
    return Unnamed(Call::Socket, [&] { return pSystem(iDomain, iType, iProtocol); });
}

int bind(int iSocket, const sockaddr* pAddress, socklen_t iSize) noexcept {
    SYSTEM(bind);
    return Unnamed(Call::Bind, [&] { return pSystem(iSocket, pAddress, iSize); });
}

int pipe2(int* iEnds, int iFlags) noexcept {
    SYSTEM(pipe2);
    const int iResult = Unnamed(Call::Pipe, [&] { return pSystem(iEnds, iFlags); });
    if (iResult == 0 && g_pState->bArmed) SetWatched(iEnds[0], MostNames);
    return iResult;
}

int posix_spawn(pid_t* p, const char* sPath, const posix_spawn_file_actions_t* pActions,
                const posix_spawnattr_t* pAttributes, char* const* pWords, char* const* pEnvironment) {
    SYSTEM(posix_spawn);
    const int iError = Judge(Call::Spawn, true);
    return iError != 0 ? iError : pSystem(p, sPath, pActions, pAttributes, pWords, pEnvironment);
}

int posix_spawnp(pid_t* p, const char* sFile, const posix_spawn_file_actions_t* pActions,
                 const posix_spawnattr_t* pAttributes, char* const* pWords, char* const* pEnvironment) {
    SYSTEM(posix_spawnp);
    const int iError = Judge(Call::Spawn, true);
    return iError != 0 ? iError : pSystem(p, sFile, pActions, pAttributes, pWords, pEnvironment);
}

std::FILE* tmpfile() {
    SYSTEM(tmpfile);
    const int iError = Judge(Call::Temporary, true);
    return iError != 0 ? Failed<std::FILE*>(iError) : pSystem();
}

// Of the files of one's own making alone: the standard streams are the loader's and everybody's.
int fflush(std::FILE* p) {
    SYSTEM(fflush);
    const int iError = Judge(Call::Put, p != nullptr && p != stdout && p != stderr);
    return iError != 0 ? Failed<int>(iError) : pSystem(p);
}

}  // extern "C"
