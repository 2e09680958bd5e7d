// Playing a recording back, at its own pace or as one burst, and emptying the displays before a run.
#include <QFileInfo>
#include <QScopedValueRollback>

#include "app/RunNote.h"
#include "app/frmMain.h"
#include "platform/toolkit/Caption.h"
#include "platform/toolkit/Scopes.h"

namespace app {

namespace {

constexpr std::size_t EndBytes = 65536;  // of a recording, in which its last line is looked for

}  // namespace

void frmMain::PlaybackStart(bool bBurst, std::optional<QString> sFile) {
    m_bStartDue = false;  // somebody is here, and does something else
    if (bBurst && chkOutputEnabled.isChecked()) {
        m_tPlatform.ShowMessage(this, QStringLiteral("Comm Output is not available with Burst Playback"),
                                toolkit::MessageIcon::Plain);
        return;
    }
    if (!sFile) sFile = AskRecording(false);
    if (!sFile) return;
    try {
        m_iRecordFile = m_tFiles.FreeFile();
        m_tFiles.OpenForInput(m_iRecordFile, toolkit::ToPath(*sFile));
    } catch (const runtime::FileError& tError) {
        ShowError(std::string("Playback - ") + tError.what());
        return;
    }
    toolkit::SetCaption(*this, QStringLiteral("Tidewatch - ") + QFileInfo(*sFile).fileName());
    Toolbar.SetEnabled(QLatin1String(ui::KeyStart), false);
    Toolbar.SetEnabled(QLatin1String(ui::KeyStop), true);
    Toolbar.SetPressed(QLatin1String(ui::KeyStop), false);
    ClearDisplays();
    Toolbar.SetEnabled(QLatin1String(ui::KeyPlayback), false);
    Toolbar.SetEnabled(QLatin1String(ui::KeyPlaybackBurst), false);
    if (bBurst) {
        Toolbar.SetPressed(QLatin1String(ui::KeyPlaybackBurst), true);
        m_bPlaybackBurst = true;
        PlaybackBurst(0);
        m_tFiles.Retire(m_iRecordFile);  // kept open on purpose, but no longer than its number is free
    } else {
        Toolbar.SetPressed(QLatin1String(ui::KeyPlayback), true);
        m_bPlayback = true;
        m_sRunFile = *sFile;
        m_dtRecordEnd = LastRecordStamp(m_tFiles.End(m_iRecordFile, EndBytes));
        m_bCommLastVdm(0) = false;
        m_bCommReceived(0) = false;
        m_sCommBuffer(0).clear();
        m_lCommSeconds(0) = 0;
        tmrComm.start();
        ShowRunNote();
    }
    if (chkOutputEnabled.isChecked()) {
        try {
            OpenPort(MSCommOutput, txtOutputPort, txtOutputSettings);
        } catch (const toolkit::CommError&) {
            return;  // the playback goes on, unforwarded
        }
    }
    // Kept on purpose: a burst has ended by now, so the panel reads "Playback" although the program is stopped.
    StatusBar.SetPanelText(ui::PanelState, "Playback");
}

bool frmMain::PlaybackReadLine(PortIndex Index) {
    try {
        std::string_view sLine;
        if (!m_tFiles.AtHand(m_iRecordFile).Next(sLine)) {
            PlaybackKeepLines(Index);
            if (m_tFiles.AtEnd(m_iRecordFile)) {
                CommStop();
                StatusBar.SetPanelText(ui::PanelState, "Done");
                return false;
            }
            sLine = m_tFiles.ReadLine(m_iRecordFile);
        }
        const auto dt = m_tStamps.Read(sLine);
        if (!dt) {
            throw runtime::ErrorInLine(m_tFiles.LinesRead(m_iRecordFile), "does not begin with a date and time");
        }
        m_dtCommLast(Index) = *dt;
        m_sCommBuffer(Index).View(RecordSentence(sLine));
        if (!m_bPlaybackBurst) m_sCommBuffer(Index).Keep();  // it waits until it is due
        return true;
    } catch (const runtime::FileError& tError) {
        PlaybackKeepLines(Index);
        CommStop();
        ShowError(tError.what());
        return false;
    }
}

// What a burst has left as views into the block that was read, before the next block takes its place.
void frmMain::PlaybackKeepLines(PortIndex Index) {
    m_sCommBuffer(Index).Keep();
    lstCommData(Index).Lines.KeepViews();
    m_tReports.KeepTexts();
}

void frmMain::PlaybackStep(PortIndex Index) {
    const DateTime dtNow = m_tPlatform.Now();
    if (m_tFiles.AtStart(m_iRecordFile)) {
        m_dtPlaybackStart = dtNow;
        if (!PlaybackReadLine(Index)) return;
        m_dtRecordStart = m_dtCommLast(Index);
    }
    const std::int64_t lElapsed = dtNow.lSeconds - m_dtPlaybackStart.lSeconds;
    const auto bDue = [&] { return lElapsed >= m_dtCommLast(Index).lSeconds - m_dtRecordStart.lSeconds; };
    {
        const QScopedValueRollback tKeep(m_bKeepReports, true);
        for (bool bLine = true; bLine && bDue(); bLine = PlaybackReadLine(Index)) {
            SentenceDispatch(Index);
            m_bCommReceived(Index) = true;
        }
    }
    ShowKept();
}

void frmMain::PlaybackBurst(PortIndex Index) {
    const toolkit::BusyPointer tBusy(m_tPlatform.ShowBusyPointer);
    {
        const QScopedValueRollback tKeep(m_bKeepReports, true);
        while (PlaybackReadLine(Index)) {
            SentenceDispatch(Index);
            m_bCommReceived(Index) = true;
        }
    }
    ShowKept();
}

// Panel 4 and the AIS and GPS logs are left as they are on purpose.
void frmMain::ClearDisplays() {
    SetHints(true);
    lstCommData(0).Lines.Clear();
    lstCommData(1).Lines.Clear();
    tmrComm.stop();
    lstRxData.Lines.Clear();
    TargetGridSetup(true);
    MessageGridSetup();
    lstOutputData.Lines.Clear();
    ShowError("");
    m_bLineErrorTold = false;
    StatusBar.SetPanelText(ui::PanelSilence0, "");
}

}  // namespace app
