// tidewatch-report: what recordings say about the receiver and its antenna.
#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <stdexcept>
#include <string>

#include "report/Run.h"
#include "report/Writer.h"

namespace {

// A standard stream that is closed must stay one that cannot be used: the next file would take its number, and be read
// as input or written as result.
void KeepStreams() {
    for (const int i : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (::fcntl(i, F_GETFD) < 0) (void)::open("/dev/null", i == STDIN_FILENO ? O_WRONLY : O_RDONLY);
    }
}

void Nothing(int) {}

// What these would end the program for is a write that fails. Programs that are started are not told to do so: a
// handler does not outlive the start of another program.
void TakeSignalsForErrors() {
    std::signal(SIGPIPE, Nothing);
    std::signal(SIGXFSZ, Nothing);
}

int Say(const std::string& sText, int iExit) {
    report::Sink tNotes(STDERR_FILENO, report::Sink::For::Notes);
    try {
        if (iExit != report::ExitGood) {
            tNotes.Write(sText);
        } else {
            report::Sink tSaid(STDOUT_FILENO);
            tSaid.Write(sText);
            tSaid.Flush();
        }
    } catch (const std::runtime_error& tError) {
        iExit = report::ExitUnsaid;
        tNotes.Write(std::string("tidewatch-report: the text could not be written: ") + tError.what() + "\n");
    }
    tNotes.Flush();
    return iExit;
}

}  // namespace

int main(int argc, char** argv) {
    KeepStreams();
    TakeSignalsForErrors();
    std::string sText;
    int iExit = report::ExitGood;
    const auto tAsked = report::ReadCommandLine(argc, argv, sText, iExit);
    if (tAsked) return report::Run(*tAsked, STDOUT_FILENO, STDERR_FILENO);
    return Say(sText, iExit);
}
