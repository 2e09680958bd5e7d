// What the program does without a hand on it, as the profile's section "Unattended" says: Start, tried again until the
// ports can be opened, and a recording into a folder that is tended meanwhile. Nothing here asks or waits for anybody.
#include <QDir>
#include <QFileInfo>
#include <algorithm>
#include <chrono>
#include <filesystem>
#include <utility>

#include "app/RecordFiles.h"
#include "app/frmMain.h"
#include "platform/runtime/SystemText.h"

namespace app {

namespace {

constexpr std::int32_t Minute = 60;  // ticks of the wall clock: the clock itself may be set

}  // namespace

void frmMain::UnattendedBegin() {
    if (m_tUnattended.bStart) Toolbar_ButtonClick(QLatin1String(ui::KeyStart));
    // After Start, which empties the log. What Start says in the panel counts for more.
    const bool bPanelFree = StatusBar.PanelText(ui::PanelSummary).empty();
    for (const WrongValue& t : m_tWrongValues) {
        const QString sNotice =
            QStringLiteral("Unattended - %1 \"%2\" %3")
                .arg(toolkit::FromLatin1(t.sKey), QString::fromStdU16String(t.sValue), toolkit::FromLatin1(t.sWanted));
        if (bPanelFree) ShowWholeError(sNotice);
        CommData(0, "<<" + toolkit::ToLatin1(sNotice) + ">>", false);
    }
}

void frmMain::UnattendedTell(const QString& sCause, const QString& sAddition) {
    if (std::ranges::find(m_sCausesTold, sCause) != m_sCausesTold.end()) return;
    m_sCausesTold.push_back(sCause);
    ShowWholeError(sCause);
    CommData(0, "<<" + toolkit::ToLatin1(sCause + sAddition) + ">>", false);
}

// By a hand on Start as well. The log has just been emptied: what was told there is told again.
void frmMain::UnattendedStartFailed(const QString& sCause) {
    if (!m_tUnattended.bStart) return;
    m_bStartDue = true;
    m_lStartSeconds = 0;
    m_sCausesTold.clear();
    UnattendedTell(sCause, QStringLiteral("; tried again every minute"));
}

// The displays stay as they are until it goes well.
void frmMain::UnattendedStartAgain() {
    m_lStartSeconds = 0;
    if (const QString sFailure = OpenPorts(); !sFailure.isEmpty()) {
        CommStop();
        UnattendedTell(sFailure, QStringLiteral("; tried again every minute"));
        return;
    }
    m_bStartDue = false;
    m_sCausesTold.clear();
    ClearDisplays();
    CommSetControls(true);
    UnattendedRecord();
}

void frmMain::UnattendedTick() {
    if (m_bStartDue && ++m_lStartSeconds >= Minute) UnattendedStartAgain();
    RecordFinishFiles(false);
    if (m_tUnattended.sFolder.empty()) return;
    if (const auto tReport = m_tFolderWork.Take()) UnattendedTended(*tReport);
    if (!UnattendedRecordWanted()) return;
    if (m_bRecording && ++m_lRecordSeconds == Minute) m_sCausesTold.clear();
    if (++m_lFolderSeconds >= Minute) UnattendedTend();
}

// The first line opens the first file. Whether the folder is fit for it is known a little later.
void frmMain::UnattendedRecord() {
    m_bStartDue = false;
    if (m_tUnattended.sFolder.empty()) return;
    m_iRecordFile = 0;
    m_bRecordUnattended = true;
    m_lRecordSeconds = 0;
    RecordBegin(UnattendedFolder());
    UnattendedTend();
}

// Begins again as soon as the folder is found fit: at once, but no sooner than a minute after it began last.
void frmMain::UnattendedRecordFailed(std::string_view sReason) {
    m_lFolderSeconds = std::exchange(m_lRecordSeconds, 0);
    UnattendedTell(QStringLiteral("Record - %1: %2").arg(toolkit::FromLatin1(sReason), UnattendedFolder()));
}

bool frmMain::UnattendedRecordWanted() const {
    const bool bRunning = tmrComm.isActive() && !m_bPlayback;
    const bool bByHand = m_bRecordAsked || (m_bRecording && !m_bRecordUnattended);
    return bRunning && !bByHand;
}

QString frmMain::UnattendedFolder() const {
    const QString sFolder = QString::fromStdU16String(m_tUnattended.sFolder);
    return sFolder.startsWith(QLatin1Char('~')) ? QDir::homePath() + sFolder.mid(1) : sFolder;
}

void frmMain::UnattendedTend() {
    FolderTask t;
    t.tFolder = toolkit::ToPath(UnattendedFolder());
    t.sProgram = ProgramName();
    t.lKeepDays = m_tUnattended.lKeepDays;
    t.lKeepBytes = m_tUnattended.lKeepBytes;
    t.dtNow = m_tPlatform.Now();
    t.tRoom = m_tPlatform.DiskRoom;
    if (!m_tFolderWork.Start([tTask = std::move(t)] { return TendFolder(tTask); })) return;
    m_lFolderSeconds = 0;
    m_bTendedToRecord = !m_bRecording;
}

void frmMain::UnattendedTended(const FolderReport& t) {
    if (!UnattendedRecordWanted()) return;
    if (t.iError == 0 && !t.bNearlyFull) {
        // Not where a recording that failed meanwhile had asked: it would begin and fail again every second.
        if (!m_bRecording && m_bTendedToRecord) UnattendedRecord();
        return;
    }
    const std::string sReason = t.iError != 0 ? runtime::SystemText(t.iError) : "The disk is nearly full";
    if (m_bRecording) {
        RecordFailed(runtime::FileError(sReason));
    } else {
        UnattendedRecordFailed(sReason);
    }
}

// The name that profile and files begin with.
std::string frmMain::ProgramName() const {
    return toolkit::ToPath(QFileInfo(m_sProfileFile).completeBaseName()).native();
}

bool frmMain::IsNextFileDue(DateTime dt) const {
    return !m_tFiles.IsOpen(m_iRecordFile) || app::IsNextFileDue(m_tUnattended.eRotation, m_dtRecordFirst, dt);
}

void frmMain::RecordNextFile(DateTime dt) {
    m_tFiles.Flush(m_iRecordFile);
    const std::int16_t iFile = m_tFiles.FreeFile();
    RecordFileAge tAge{dt, 1};
    std::filesystem::path tPath;
    do {
        tPath = toolkit::ToPath(UnattendedFolder()) / RecordFileName(ProgramName(), tAge);
        ++tAge.iSame;
    } while (!m_tFiles.Create(iFile, tPath));
    const bool bFirst = !m_tFiles.IsOpen(m_iRecordFile);
    if (!bFirst) m_iFinishedFiles.push_back(m_iRecordFile);
    m_iRecordFile = iFile;
    m_dtRecordFirst = dt;
    m_dtRecordBegan = m_tPlatform.Now();
    m_sRunFile = QFile::decodeName(tPath.c_str());
    CaptureFollow(bFirst);
    try {
        m_tFiles.WriteLine(iFile, m_sRecordLine);
        m_tFiles.Flush(iFile);  // at once: by its first line the file is known as ours
    } catch (const runtime::FileError&) {
        std::error_code tIgnored;
        if (std::filesystem::is_empty(tPath, tIgnored)) std::filesystem::remove(tPath, tIgnored);
        throw;
    }
    UnattendedTend();
}

// Files that another one has followed: each is closed when it is on the disk.
void frmMain::RecordFinishFiles(bool bWait) {
    const auto IsFinished = [this, bWait](std::int16_t iFile) {
        try {
            if (bWait) RecordAwait(iFile);
            if (!m_tFiles.AwaitDisk(iFile, std::chrono::milliseconds(0))) return false;
        } catch (const runtime::FileError& tError) {
            UnattendedTell(
                QStringLiteral("Record - %1: %2").arg(toolkit::FromLatin1(tError.what()), UnattendedFolder()));
        }
        m_tFiles.Close(iFile);
        return true;
    };
    std::erase_if(m_iFinishedFiles, IsFinished);
}

}  // namespace app
