// The capture beside a recording: every byte of both inputs, their events and the receiver commands, when the profile
// asks for it. It follows the recording from file to file; what goes wrong with it leaves the recording alone.
#include <algorithm>
#include <filesystem>
#include <utility>

#include "app/CaptureLine.h"
#include "app/RecordFiles.h"
#include "app/frmMain.h"

namespace app {

namespace {

constexpr std::size_t MostBytes = 1024;  // in a line

// The milliseconds of a second, from a clock that may be a moment ahead of the other.
CaptureMoment MomentOf(const toolkit::Platform& t) {
    const DateTime dtBefore = t.Now();
    const double dSeconds = t.SecondsSinceMidnight();
    const DateTime dtAfter = t.Now();
    if (dtBefore != dtAfter) return {dtAfter, 0};
    return {dtAfter, static_cast<int>((dSeconds - static_cast<double>(static_cast<std::int64_t>(dSeconds))) * 1000)};
}

}  // namespace

void frmMain::Capture(PortIndex Index, char cKind, std::string_view sBytes) {
    if (!m_bRecording || !m_tUnattended.bCapture || m_bCaptureFailed) return;
    const CaptureMoment tMoment = MomentOf(m_tPlatform);
    try {
        CaptureOpen(tMoment);
        while (!sBytes.empty()) {
            const std::size_t iSize = std::min({sBytes.find('\n'), sBytes.size() - 1, MostBytes - 1}) + 1;
            WriteCaptureLine(m_sCaptureLine, tMoment, Index, cKind, sBytes.substr(0, iSize));
            m_tFiles.WriteLine(m_iCaptureFile, m_sCaptureLine);
            sBytes.remove_prefix(iSize);
        }
    } catch (const runtime::FileError& tError) {
        CaptureFailed(tError);
    }
}

// Beside the recording's file; before that has a name, by its own first line. Nothing is written over.
void frmMain::CaptureOpen(const CaptureMoment& tMoment) {
    if (m_tFiles.IsOpen(m_iCaptureFile)) {
        const bool bAlone = m_bRecordUnattended && !m_tFiles.IsOpen(m_iRecordFile);
        if (!bAlone || !app::IsNextFileDue(m_tUnattended.eRotation, m_dtCaptureFirst, tMoment.dt)) return;
        CaptureLeave();
    }
    const bool bBeside = m_tFiles.IsOpen(m_iRecordFile);
    std::filesystem::path tBeside = toolkit::ToPath(m_sRunFile);
    if (!bBeside) tBeside /= RecordFileName(ProgramName(), {tMoment.dt, 1}, CaptureSuffix);
    const std::string sStem = tBeside.stem().native();
    const std::int16_t iFile = m_tFiles.FreeFile();
    int iSame = 1;
    do {
        const std::string sSame = iSame > 1 ? '-' + std::to_string(iSame) : std::string();
        m_tCapturePath = tBeside.parent_path() / (sStem + sSame).append(CaptureSuffix);
        ++iSame;
    } while (!m_tFiles.Create(iFile, m_tCapturePath));
    m_iCaptureFile = iFile;
    m_dtCaptureFirst = tMoment.dt;
    WriteCaptureHead(m_sCaptureLine, tMoment);
    m_tFiles.WriteLine(m_iCaptureFile, m_sCaptureLine);
    m_tFiles.Flush(m_iCaptureFile);
}

// The recording has a new file. What was captured before its first one is the beginning of the capture beside that.
void frmMain::CaptureFollow(bool bFirst) {
    if (!m_tFiles.IsOpen(m_iCaptureFile)) return;
    if (!bFirst) {
        CaptureLeave();
        return;
    }
    std::filesystem::path tBeside = toolkit::ToPath(m_sRunFile);
    tBeside.replace_extension(CaptureSuffix);
    std::error_code tFault;
    if (std::filesystem::exists(tBeside, tFault)) return;
    std::filesystem::rename(m_tCapturePath, tBeside, tFault);
    if (!tFault) m_tCapturePath = tBeside;
}

void frmMain::CaptureFlush() {
    if (m_iCaptureFile == 0) return;
    try {
        m_tFiles.Flush(m_iCaptureFile);
    } catch (const runtime::FileError& tError) {
        CaptureFailed(tError);
    }
}

// It is closed when it is on the disk.
void frmMain::CaptureLeave() {
    CaptureFlush();
    if (m_iCaptureFile != 0) m_iFinishedFiles.push_back(std::exchange(m_iCaptureFile, std::int16_t{0}));
}

// Until the next recording.
void frmMain::CaptureFailed(const runtime::FileError& tError) {
    m_bCaptureFailed = true;
    m_tFiles.Close(std::exchange(m_iCaptureFile, std::int16_t{0}));
    UnattendedTell(QStringLiteral("Capture - ") + toolkit::FromLatin1(tError.what()));
}

}  // namespace app
