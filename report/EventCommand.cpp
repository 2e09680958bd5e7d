// Starting and reaping.
#include "report/EventCommand.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <system_error>

namespace report {

void EventCommand::Run(const std::vector<std::string>& sVariables) {
    std::vector<std::string> sOwn = sVariables, sWords = {"/bin/sh", "-c", m_sCommand};
    std::vector<char*> pEnvironment, pWords;
    for (std::string& s : sOwn) pEnvironment.push_back(s.data());
    for (char** p = environ; *p; ++p) pEnvironment.push_back(*p);
    for (std::string& s : sWords) pWords.push_back(s.data());
    pEnvironment.push_back(nullptr);
    pWords.push_back(nullptr);

    posix_spawn_file_actions_t tFiles;
    ::posix_spawn_file_actions_init(&tFiles);
    ::posix_spawn_file_actions_addopen(&tFiles, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawnattr_t tAttributes;
    ::posix_spawnattr_init(&tAttributes);
    sigset_t tNone;
    ::sigemptyset(&tNone);
    ::posix_spawnattr_setsigmask(&tAttributes, &tNone);  // ours keeps the signals back that shall end it
    ::posix_spawnattr_setflags(&tAttributes, POSIX_SPAWN_SETSIGMASK);
    pid_t iChild = 0;
    const int iError = ::posix_spawn(&iChild, "/bin/sh", &tFiles, &tAttributes, pWords.data(), pEnvironment.data());
    ::posix_spawnattr_destroy(&tAttributes);
    ::posix_spawn_file_actions_destroy(&tFiles);
    if (iError != 0) return Note("could not be started: " + std::generic_category().message(iError));
    m_iRunning.push_back(iChild);
}

void EventCommand::Reap() {
    std::erase_if(m_iRunning, [this](pid_t iChild) {
        int iStatus = 0;
        if (::waitpid(iChild, &iStatus, WNOHANG) == 0) return false;
        if (WIFSIGNALED(iStatus)) Note("was ended by signal " + std::to_string(WTERMSIG(iStatus)));
        if (WIFEXITED(iStatus) && WEXITSTATUS(iStatus) != 0) {
            Note("ended with exit code " + std::to_string(WEXITSTATUS(iStatus)));
        }
        return true;
    });
}

void EventCommand::Note(const std::string& sText) {
    m_tNotes.Write("tidewatch-report: the command " + sText + "\n");
    m_tNotes.Flush();
}

}  // namespace report
