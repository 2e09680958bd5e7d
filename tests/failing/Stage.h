// The real window on real pseudo-terminals and files, and the book of what was said to it: which lines were shown, and
// which the user may take for recorded.
#pragma once

#include <QDir>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "tests/failing/FailingCalls.h"
#include "tests/support/PtyPort.h"
#include "tests/support/TestWindow.h"

namespace failing {

// What does not hold, in words for the developer.
struct Failure : std::runtime_error {
    using std::runtime_error::runtime_error;
};
void Require(bool bHolds, const std::string& sWhat);
void RequireSame(const std::string& sIs, const std::string& sShouldBe, const std::string& sWhat);

class Window : public support::TestWindow {
public:
    using frmMain::TableSave;
    using TestWindow::TestWindow;
};

class Stage {
public:
    // sUnattended: lines of that section of the profile, "$F" stands for Folder().
    explicit Stage(std::string sUnattended = {});
    ~Stage();
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;

    // The window, loaded and shown; before that there is none.
    void Open();
    Window& w() { return *m_pWindow; }
    bool IsOpen() const { return m_pWindow != nullptr; }
    void Close();  // as its user closes it

    // What the program does in here is counted, and fails as planned.
    template <class Do>
    void Act(const char* sStep, Do tDo) {
        Step(sStep);
        Arm(true);
        tDo();
        Arm(false);
    }

    void Start();  // and it must have
    void Press(const char* sKey) { w().Press(sKey); }
    // A device says so many lines, and they are shown, or the device is away.
    void Hear(int iLines, int iPort = 0);
    void HearMany(int iLines);  // on the first input, more than its log keeps
    void Tick(int iSeconds = 1);
    void Unplug(int iPort);
    void TryDevices();  // as often as it takes until what has gone is open again
    void PlugIn(int iPort);

    std::string Panel(int i) { return w().Panel(i); }
    bool Running() { return Panel(1) == "Running" || Panel(1) == "Record"; }
    // Bracketed lines of the input logs that begin with this behind the brackets.
    int Notices(const std::string& sBeginning);
    // Something about a recording has been told: by a notice, or in panel 2.
    int RecordTold();
    // What the output port's device has got must be the marked lines of its log, once as many have come.
    void CheckForwarded();
    // Both inputs, at the settings of the profile, bring lines, and these go out.
    void CheckRuns();

    // Recordings of a folder: whole lines of what was said, each once, and all that may be taken for recorded. A piece
    // of a line stands at the end of one alone, and only where a failure was told.
    void CheckRecordings(const QString& sFolder, const QStringList& sNames = {QStringLiteral("*.txt")});
    void StopRecording();  // by Stop; what was taken by then is recorded, unless a failure is told
    void ForgetSaid() { m_tSaid.clear(); }
    // The last so many lines that were said may be taken for recorded.
    bool AreRecorded(std::size_t iLines) const;
    // Every line that was said stands in a capture of the folder, unless something was told against that.
    void CheckCaptures(const QString& sFolder);

    // Everything that a user can see and find, without names that change: panels, logs, files.
    std::string Outcome();

    QString Folder() const { return tWorld.Path(QStringLiteral("recordings")); }
    std::string File(const QString& sName) const;
    void WriteFile(const QString& sName, std::string_view sContent) const;
    std::vector<std::string> Names(const QString& sFolder) const;

    support::World tWorld;
    support::PtyPort tInputs[2], tOutput;

private:
    struct Line {
        std::string sSentence;
        bool bShown = false;         // in time; else its device was away
        bool bTaken = false;         // shown while the recording was on
        bool bAcknowledged = false;  // and a second later nothing was told against it
    };
    std::string NextSentence();
    static void Step(const char* sStep);
    static void Arm(bool bArmed);
    void Acknowledge();
    void AwaitDisk();

    std::unique_ptr<Window> m_pWindow;
    std::vector<Line> m_tSaid;
    int m_iToldBefore = 0;
    std::string m_sForwarded;
};

}  // namespace failing
