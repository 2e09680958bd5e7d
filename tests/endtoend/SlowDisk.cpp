// Loaded in front of the system's library: every fdatasync takes SLOW_DISK_SECONDS longer than it would, or with
// SLOW_DISK_EVERY=N each Nth alone. The file
// SLOW_DISK_NOTES gets a line for each, "sync" and when it began and ended, and one for every write to a regular file,
// "write" and when: with a recording that is once at every tick of the wall clock.
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <ctime>

namespace {

double Seconds() {
    timespec t{};
    ::clock_gettime(CLOCK_MONOTONIC, &t);
    return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_nsec) / 1e9;
}

template <class Function>
Function System(const char* sName) {
    return reinterpret_cast<Function>(::dlsym(RTLD_NEXT, sName));
}

void Note(const char* sWhat, double dBegan, double dEnded) {
    static const char* const sFile = std::getenv("SLOW_DISK_NOTES");
    static const int iNotes = sFile == nullptr ? -1 : ::open(sFile, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
    if (iNotes >= 0) ::dprintf(iNotes, "%s %.6f %.6f\n", sWhat, dBegan, dEnded);
}

bool IsSlow() {
    static const char* const sEvery = std::getenv("SLOW_DISK_EVERY");
    static std::atomic<int> iCount = 0;
    const int iEvery = sEvery == nullptr ? 1 : std::atoi(sEvery);
    return iEvery < 2 || ++iCount % iEvery == 0;
}

void Delay() {
    static const char* const sSeconds = std::getenv("SLOW_DISK_SECONDS");
    const double dSeconds = sSeconds == nullptr ? 0 : std::atof(sSeconds);
    timespec t{};
    t.tv_sec = static_cast<time_t>(dSeconds);
    t.tv_nsec = static_cast<long>((dSeconds - static_cast<double>(t.tv_sec)) * 1e9);
    while (::nanosleep(&t, &t) != 0 && errno == EINTR) continue;
}

}  // namespace

extern "C" int fdatasync(int iDescriptor) {
    const double dBegan = Seconds();
    if (IsSlow()) Delay();
    const int iResult = System<int (*)(int)>("fdatasync")(iDescriptor);
    Note("sync", dBegan, Seconds());
    return iResult;
}

extern "C" ssize_t write(int iDescriptor, const void* pData, size_t lSize) {
    static const auto pSystem = System<ssize_t (*)(int, const void*, size_t)>("write");
    struct stat tStatus {};
    if (::fstat(iDescriptor, &tStatus) == 0 && S_ISREG(tStatus.st_mode)) Note("write", Seconds(), Seconds());
    return pSystem(iDescriptor, pData, lSize);
}
