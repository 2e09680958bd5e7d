// What a script plays on: its world and files, and the real window as long as one is loaded.
#pragma once

#include <QString>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "tests/scenarios/PtyBench.h"
#include "tests/scenarios/ScriptFiles.h"
#include "tests/support/TestWindow.h"

namespace scenarios {

class ScenarioWindow : public support::TestWindow {
public:
    using TestWindow::TestWindow;

    // May be asked for again: the program itself unloads once.
    void Unload() {
        m_bUnloaded = false;
        Form_Unload();
    }
    // So that files are read as the program has written them.
    void FlushFiles() { m_tFiles.Flush(m_iRecordFile); }
};

class Stage {
public:
    // With bPty the ports are real pseudo-terminals.
    Stage(std::string_view sClock, bool bPty);
    ~Stage();

    support::World tWorld;
    ScriptFiles tFiles;

    // The window; loaded with an empty profile if none is.
    ScenarioWindow& Window();
    // A new window with this profile, or with what a window has saved last.
    void Load(const std::optional<std::string>& sProfile);
    void Unload();

    // The control that holds the keyboard focus, by name; empty: none.
    void SetFocus(const QString& sControl) { m_sFocus = sControl; }

    // Bytes wait at an input port and one reception is reported; lost while it is closed.
    void Feed(app::PortIndex i, std::string_view sData);
    // Everything that a port has written since the window was loaded.
    std::string Written(const toolkit::SerialPort& tPort) const;
    // Bytes on their way are waited for.
    void Settle();

private:
    void Adjust(toolkit::Platform& t);

    std::unique_ptr<PtyBench> m_pPtys;
    std::unique_ptr<ScenarioWindow> m_pWindow;
    std::optional<std::string> m_sSaved;
    QString m_sFocus;
};

}  // namespace scenarios
