// The script goes in by an unnamed file, the picture comes out by a pipe: neither waits for the other.
#include "report/Plotter.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <memory>
#include <stdexcept>
#include <system_error>

#include "report/PlainText.h"
#include "report/Uninterrupted.h"

namespace report {

namespace {

[[noreturn]] void Fail(const std::string& sWhy) {
    throw std::runtime_error("the pictures are drawn by gnuplot (package gnuplot-nox): " + sWhy);
}

[[noreturn]] void Fail(int iError) { Fail(std::generic_category().message(iError)); }

using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

File ScriptFile(const std::string& sScript) {
    File pFile(std::tmpfile(), std::fclose);
    if (!pFile || std::fwrite(sScript.data(), 1, sScript.size(), pFile.get()) != sScript.size()) Fail(errno);
    if (std::fflush(pFile.get()) != 0) Fail(errno);
    std::rewind(pFile.get());
    return pFile;
}

// Starts it and gives the end of the pipe that its picture comes from.
pid_t Start(std::FILE* pScript, int& iPicture) {
    int iPipe[2];
    if (pipe2(iPipe, O_CLOEXEC) != 0) Fail(errno);
    posix_spawn_file_actions_t tActions;
    posix_spawn_file_actions_init(&tActions);
    posix_spawn_file_actions_adddup2(&tActions, fileno(pScript), STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&tActions, iPipe[1], STDOUT_FILENO);
    posix_spawn_file_actions_addopen(&tActions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    // -d: without the settings that the user has made for other plots.
    std::array<std::string, 3> sWords = {"gnuplot", "-d", "-"};
    std::array<char*, 4> pWords = {sWords[0].data(), sWords[1].data(), sWords[2].data(), nullptr};
    pid_t iProcess = 0;
    const int iError = posix_spawnp(&iProcess, "gnuplot", &tActions, nullptr, pWords.data(), environ);
    posix_spawn_file_actions_destroy(&tActions);
    close(iPipe[1]);
    iPicture = iPipe[0];
    if (iError == 0) return iProcess;
    close(iPipe[0]);
    Fail(iError);
}

// Nothing where it could not be read to its end.
std::string ReadAll(int iDescriptor) {
    std::string s;
    std::array<char, 65536> sBlock;
    ssize_t iRead = 0;
    while ((iRead = Uninterrupted([&] { return read(iDescriptor, sBlock.data(), sBlock.size()); })) > 0) {
        s.append(sBlock.data(), static_cast<std::size_t>(iRead));
    }
    close(iDescriptor);
    return iRead < 0 ? std::string() : s;
}

// With the picture's own name where gnuplot's stands, which browsers show at the pointer.
std::string Titled(std::string sSvg, const std::string& sTitle) {
    const std::string sBefore = "<title>";
    const auto lFrom = sSvg.find(sBefore), lTo = sSvg.find("</title>");
    if (lFrom == std::string::npos || lTo == std::string::npos) return sSvg;
    const auto lName = lFrom + sBefore.size();
    return sSvg.replace(lName, lTo - lName, MarkupText(sTitle));
}

}  // namespace

std::string Drawn(const Picture& t, PlotFormat e) {
    const File pScript = ScriptFile(PlotScript(t, e));
    int iPicture = -1;
    const pid_t iProcess = Start(pScript.get(), iPicture);
    const std::string sPicture = ReadAll(iPicture);
    int iStatus = 0;
    while (waitpid(iProcess, &iStatus, 0) < 0 && errno == EINTR) {
    }
    if (!WIFEXITED(iStatus) || WEXITSTATUS(iStatus) != 0 || sPicture.empty())
        Fail("it could not draw \"" + t.sTitle + "\"");
    return e == PlotFormat::Png ? sPicture : Titled(sPicture, t.sTitle);
}

}  // namespace report
