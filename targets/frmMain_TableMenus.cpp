// What the tables' menus do beyond copying: saving a table, tracking a ship, fitting columns.
#include <QMenu>

#include "app/frmMain.h"
#include "platform/runtime/CsvText.h"
#include "platform/toolkit/ContextMenu.h"
#include "platform/toolkit/SafeFile.h"
#include "targets/TargetColumns.h"

namespace app {

using namespace targets;

void frmMain::TableSave(const toolkit::Grid& grd, const QString& sFileName) {
    toolkit::FileRequest tRequest{};
    tRequest.bSave = true;
    tRequest.sFileName = sFileName;
    tRequest.sFilter = QStringLiteral("Comma-separated values (*.csv)");
    tRequest.sExtension = QStringLiteral("csv");
    const auto sFile = AskFile(tRequest);
    if (!sFile) return;
    std::string sText;
    for (const std::vector<std::string>& sCells : grd.ShownCells()) runtime::AppendCsvRecord(sText, sCells);
    QString sReason;
    if (toolkit::ReplaceFile(*sFile, toolkit::FromLatin1(sText).toUtf8().toStdString(), &sReason)) return;
    ShowWholeError(QStringLiteral("Save - ") + sReason);
}

// Entries of the row that was under the mouse, or the cursor, when the menu opened: rows go on moving below it.
void frmMain::TargetMenu(QMenu& tMenu, std::int32_t lRow) {
    const std::string sMmsi = lRow > 0 ? grdTargetData.Cells.Text(lRow, ColMmsi) : std::string();
    tMenu.addSeparator();
    toolkit::AddEntry(tMenu, QStringLiteral("&Track This Ship"), {}, !sMmsi.empty(),
                      [this, sMmsi] { TargetTrackShip(sMmsi); });
    toolkit::AddEntry(tMenu, QStringLiteral("&Fit Columns"), {}, true, [this] { grdTargetData.FitColumns(); });
}

// Off and on again: switching on hides other ships' rows and leaves those that are hidden already.
void frmMain::TargetTrackShip(std::string_view sMmsi) {
    chkTargetTrack.setChecked(false);
    cmbTargetTarget.SetText(sMmsi);
    chkTargetTrack.setChecked(true);
}

}  // namespace app
