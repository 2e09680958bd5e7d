// What a person looks for while a recording or a paced playback is under way: beside the buttons, and with the whole
// path in the tip of the run state.
#include <QFileInfo>
#include <algorithm>

#include "app/RunNote.h"
#include "app/frmMain.h"

namespace app {

namespace {

// "0:03:12 of 1:20:00, until 14:35:10"
QString ProgressText(DateTime dtNow, DateTime dtBegan, std::optional<std::int64_t> lWhole) {
    const std::int64_t lPlayed = dtNow.lSeconds - dtBegan.lSeconds;
    if (!lWhole || *lWhole < 0) return toolkit::FromLatin1(SpanText(lPlayed));
    const DateTime dtEnd{dtBegan.lSeconds + *lWhole};
    return QStringLiteral("%1 of %2, until %3")
        .arg(toolkit::FromLatin1(SpanText(std::min(lPlayed, *lWhole))), toolkit::FromLatin1(SpanText(*lWhole)),
             toolkit::FromLatin1(MomentText(dtEnd, dtNow)));
}

}  // namespace

void frmMain::ShowRunNote() {
    const DateTime dtNow = m_tPlatform.Now();
    const QString sName = QFileInfo(m_sRunFile).fileName();
    QString sNote, sTip;
    if (m_bRecording && !m_tFiles.IsOpen(m_iRecordFile)) {
        sNote = QStringLiteral("Recording: waits for the first line");
        sTip = QStringLiteral("Recording into files of %1").arg(m_sRunFile);
    } else if (m_bRecording) {
        const QString sSpan = toolkit::FromLatin1(SpanText(dtNow.lSeconds - m_dtRecordBegan.lSeconds));
        const QString sSize = toolkit::FromLatin1(SizeText(m_tFiles.Written(m_iRecordFile)));
        sNote = QStringLiteral("Recording %1, %2: %3").arg(sSpan, sSize, sName);
        sTip = QStringLiteral("Recording to %1\n%2 in %3").arg(m_sRunFile, sSize, sSpan);
    } else if (m_bPlayback) {
        const bool bBegun = !m_tFiles.AtStart(m_iRecordFile);
        std::optional<std::int64_t> lWhole;
        if (bBegun && m_dtRecordEnd) lWhole = m_dtRecordEnd->lSeconds - m_dtRecordStart.lSeconds;
        const QString sProgress = ProgressText(dtNow, bBegun ? m_dtPlaybackStart : dtNow, lWhole);
        sNote = QStringLiteral("Playing %1: %2").arg(sProgress, sName);
        sTip = QStringLiteral("Playing %1\n%2").arg(m_sRunFile, sProgress);
    }
    Toolbar.SetNote(sNote);
    StatusBar.SetPanelNote(ui::PanelState, sTip);
}

}  // namespace app
