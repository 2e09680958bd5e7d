// Recording what is decoded.
#include <QScopedValueRollback>
#include <chrono>

#include "app/frmMain.h"
#include "platform/toolkit/Scopes.h"

namespace app {

namespace {

constexpr std::chrono::milliseconds PointerPatience{500};  // a wait that is over by then needs no busy pointer

}  // namespace

void frmMain::RecordStart() {
    const QScopedValueRollback tAsking(m_bRecordAsked, true);
    const auto sFile = AskRecording(true);
    if (!sFile) return;
    try {
        m_iRecordFile = m_tFiles.FreeFile();
        m_tFiles.OpenForOutput(m_iRecordFile, toolkit::ToPath(*sFile));
    } catch (const runtime::FileError& tError) {
        ShowError(std::string("Record - ") + tError.what());
        return;
    }
    m_bRecordUnattended = false;
    RecordBegin(*sFile);
}

void frmMain::RecordBegin(const QString& sFile) {
    Toolbar.SetEnabled(QLatin1String(ui::KeyRecord), false);
    Toolbar.SetPressed(QLatin1String(ui::KeyRecord), true);
    m_bRecording = true;
    m_bCaptureFailed = false;
    m_sRunFile = sFile;
    m_dtRecordBegan = m_tPlatform.Now();
    StatusBar.SetPanelText(ui::PanelState, "Record");
    ShowRunNote();
}

void frmMain::RecordWrite(DateTime dt, std::string_view sSentence) {
    WriteRecordLine(m_sRecordLine, dt, sSentence);
    try {
        if (m_bRecordUnattended && IsNextFileDue(dt)) {
            RecordNextFile(dt);
        } else {
            m_tFiles.WriteLine(m_iRecordFile, m_sRecordLine);
        }
    } catch (const runtime::FileError& tError) {
        RecordFailed(tError);
    }
}

void frmMain::RecordFlush() {
    if (!m_bRecording) return;
    CaptureFlush();
    try {
        m_tFiles.Flush(m_iRecordFile);
        m_tFiles.CheckInPlace(m_iRecordFile);
    } catch (const runtime::FileError& tError) {
        RecordFailed(tError);
    }
}

// Before the file is closed: closing tells neither of a full disk nor of one that failed.
void frmMain::RecordFinish() {
    RecordFlush();
    CaptureLeave();
    RecordFinishFiles(true);
    if (!m_bRecording) return;
    try {
        RecordAwait(m_iRecordFile);
    } catch (const runtime::FileError& tError) {
        RecordFailed(tError);
    }
}

void frmMain::RecordAwait(std::int16_t iFile) {
    if (m_tFiles.AwaitDisk(iFile, PointerPatience)) return;
    const toolkit::BusyPointer tBusy(m_tPlatform.ShowBusyPointer);
    m_tFiles.AwaitDisk(iFile);
}

// The recording ends, everything else goes on; it can be started anew. The next message takes the panel, the notice in
// the log stays.
void frmMain::RecordFailed(const runtime::FileError& tError) {
    m_tFiles.Close(m_iRecordFile);
    CaptureLeave();
    m_bRecording = false;
    Toolbar.SetPressed(QLatin1String(ui::KeyRecord), false);
    Toolbar.SetEnabled(QLatin1String(ui::KeyRecord), true);
    StatusBar.SetPanelText(ui::PanelState, "Running");
    ShowRunNote();
    if (m_bRecordUnattended) {
        UnattendedRecordFailed(tError.what());
        return;
    }
    const std::string sReason = std::string("Record - ") + tError.what();
    ShowError(sReason);
    CommData(0, "<<" + sReason + ">>", false);
}

}  // namespace app
