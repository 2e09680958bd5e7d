// Choosing files: the dialogs of record and playback, and recordings that are dropped onto the window.
#include <QAction>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileInfo>
#include <QMimeData>
#include <QTimer>
#include <QUrl>

#include "app/frmMain.h"
#include "platform/toolkit/Caption.h"

namespace app {

namespace {

// The one file that is dragged; empty for anything else.
QString DraggedFile(const QDropEvent& tEvent) {
    const QList<QUrl> tUrls = tEvent.mimeData()->urls();
    return tUrls.size() == 1 ? tUrls.constFirst().toLocalFile() : QString();
}

// The file stays where it is, though with Shift held a move is proposed. Where nothing but a move is possible it is the
// receiver who would carry it out: it does not.
void Take(QDropEvent& tEvent) {
    tEvent.setDropAction(tEvent.possibleActions() & Qt::CopyAction ? Qt::CopyAction : tEvent.proposedAction());
    tEvent.accept();
}

}  // namespace

std::optional<QString> frmMain::AskFile(toolkit::FileRequest tRequest) {
    tRequest.sTitle =
        toolkit::Caption(*this) + (tRequest.bSave ? QStringLiteral(" - Save As") : QStringLiteral(" - Open"));
    if (!m_sLastFolder.isEmpty()) tRequest.sFolder = m_sLastFolder;
    auto sFile = m_tPlatform.AskFile(this, tRequest);
    if (sFile) m_sLastFolder = QFileInfo(*sFile).absolutePath();
    return sFile;
}

std::optional<QString> frmMain::AskRecording(bool bSave) {
    toolkit::FileRequest tRequest{};
    tRequest.bSave = bSave;
    if (!bSave) tRequest.sFolder = QFileInfo(m_tPlatform.sProgramFile).absolutePath();
    tRequest.sFileName = QStringLiteral("Tidewatch.Txt");
    tRequest.sFilter = QStringLiteral("Text (*.txt)");
    tRequest.sExtension = QStringLiteral("txt");
    return AskFile(tRequest);
}

void frmMain::dragEnterEvent(QDragEnterEvent* pEvent) {
    if (CanPlayBack() && !DraggedFile(*pEvent).isEmpty()) Take(*pEvent);
}

void frmMain::dragMoveEvent(QDragMoveEvent* pEvent) { Take(*pEvent); }  // comes only to who has taken the entry

// Played after the event: who drags waits for its end, and a burst or a message box may take its time.
void frmMain::dropEvent(QDropEvent* pEvent) {
    const QString sFile = DraggedFile(*pEvent);
    const bool bBurst = pEvent->modifiers().testFlag(Qt::ShiftModifier);
    Take(*pEvent);
    QTimer::singleShot(0, this, [this, sFile, bBurst] {
        if (!CanPlayBack() || sFile.isEmpty()) return;
        m_sLastFolder = QFileInfo(sFile).absolutePath();
        PlaybackStart(bBurst, sFile);
    });
}

bool frmMain::CanPlayBack() const { return Toolbar.Action(QLatin1String(ui::KeyPlayback)).isEnabled(); }

}  // namespace app
