// Starting and stopping, and what the controls show of it.
#include <utility>

#include "app/frmMain.h"
#include "platform/toolkit/PortNames.h"

namespace app {

void frmMain::OpenPort(toolkit::SerialPort& tPort, toolkit::PortBox& txtPort, const toolkit::TextBox& txtSettings) {
    // A text that names no port fails before anything is set; a number is set first, whether it exists or not.
    if (!toolkit::PortNumber(txtPort.text())) m_tPlatform.Serial.Resolve(txtPort.text());
    tPort.SetCommPort(txtPort.text());
    try {
        tPort.SetSettings(txtSettings.Text());
    } catch (const runtime::SettingsError& tError) {
        throw toolkit::CommError(tError.what());
    }
    tPort.OpenPort();
    txtPort.SetNote(tPort.ReportsLineErrors() ? QString() : QStringLiteral("This adapter reports no line errors."));
}

void frmMain::ShowError(std::string_view sText, bool bAlert) {
    m_bErrorLast = true;
    StatusBar.SetPanelText(ui::PanelSummary, sText);
    if (!sText.empty()) StatusBar.SetPanelError(ui::PanelSummary, bAlert);
}

void frmMain::ShowLineError(std::string_view sText) {
    m_bLineError = true;
    ShowError(sText, !std::exchange(m_bLineErrorTold, true));
}

void frmMain::ShowWholeError(const QString& sText) {
    ShowError(toolkit::ToLatin1(sText));
    StatusBar.SetPanelWholeText(ui::PanelSummary, sText);
    StatusBar.SetPanelError(ui::PanelSummary, true);
}

QString frmMain::OpenPorts() {
    try {
        for (PortIndex i = 0; i < runtime::PortCount; ++i) {
            if (chkCommEnabled(i).isChecked()) {
                OpenPort(MSComm(i), txtCommPort(i), txtCommSettings(i));
                m_bCommLastVdm(i) = false;
                m_bCommReceived(i) = false;
                m_sCommBuffer(i).clear();
            }
            m_lCommSeconds(i) = 0;  // not when the port could not be opened
        }
    } catch (const toolkit::CommError& tError) {
        return QStringLiteral("Input Comm - ") + tError.Text();
    }
    try {
        if (chkOutputEnabled.isChecked()) OpenPort(MSCommOutput, txtOutputPort, txtOutputSettings);
    } catch (const toolkit::CommError& tError) {
        return QStringLiteral("Output Comm - ") + tError.Text();
    }
    return {};
}

void frmMain::CommStart() {
    ClearDisplays();
    if (const QString sFailure = OpenPorts(); !sFailure.isEmpty()) {
        ShowWholeError(sFailure);
        CommStop();
        UnattendedStartFailed(sFailure);
        return;
    }
    CommSetControls(true);
    UnattendedRecord();
}

void frmMain::CommStop() {
    for (PortIndex i = 0; i < runtime::PortCount; ++i) {
        if (MSComm(i).PortOpen()) MSComm(i).ClosePort();
    }
    RecordFinish();
    // Kept on purpose: m_bPlaybackBurst is not asked, so the file of a burst stays open after its end.
    if (m_bRecording || m_bPlayback) m_tFiles.Close(m_iRecordFile);
    if (MSCommOutput.PortOpen()) OutputClose();
    CommSetControls(false);
}

void frmMain::CommSetControls(bool bRunning) {
    StatusBar.SetPanelText(ui::PanelState, bRunning ? "Running" : "Stopped");
    for (PortIndex i = 0; i < runtime::PortCount; ++i) {
        chkCommEnabled(i).setEnabled(!bRunning);
        txtCommPort(i).setEnabled(!bRunning);
        txtCommSettings(i).setEnabled(!bRunning);
        m_tSpeedWatch(i).Start(lstCommData(i).Lines);
        CommShowState(i);
    }
    chkOutputEnabled.setEnabled(!bRunning);
    txtOutputPort.setEnabled(!bRunning);
    txtOutputSettings.setEnabled(!bRunning);
    chkOutputRMC.setEnabled(!bRunning);

    const auto SetButton = [this](const char* sKey, bool bEnabled, bool bPressed) {
        Toolbar.SetEnabled(QLatin1String(sKey), bEnabled);
        Toolbar.SetPressed(QLatin1String(sKey), bPressed);
    };
    SetButton(ui::KeyStart, !bRunning, bRunning);
    SetButton(ui::KeyStop, bRunning, !bRunning);
    SetButton(ui::KeyRecord, bRunning, false);
    m_bRecording = false;
    SetButton(ui::KeyPlayback, !bRunning, false);
    m_bPlayback = false;
    SetButton(ui::KeyPlaybackBurst, !bRunning, false);
    m_bPlaybackBurst = false;
    ShowRunNote();

    SetHints(bRunning);
    if (bRunning) {
        tmrComm.start();
    } else {
        tmrComm.stop();
    }
}

void frmMain::Toolbar_ButtonClick(const QString& sKey) {
    if (sKey == QLatin1String(ui::KeyStart)) {
        setWindowTitle(QStringLiteral("Tidewatch"));
        CommStart();
    } else if (sKey == QLatin1String(ui::KeyStop)) {
        setWindowTitle(QStringLiteral("Tidewatch"));
        CommStop();
    } else if (sKey == QLatin1String(ui::KeyRecord)) {
        RecordStart();
    } else if (sKey == QLatin1String(ui::KeyPlayback)) {
        PlaybackStart(false);
    } else if (sKey == QLatin1String(ui::KeyPlaybackBurst)) {
        PlaybackStart(true);
    }
}

void frmMain::chkCommEnabled_Click(PortIndex Index) {
    if (m_tPlatform.HasFocus(chkCommEnabled(Index))) FormLayout();
}

}  // namespace app
