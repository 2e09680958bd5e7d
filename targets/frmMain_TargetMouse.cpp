// Mouse and keyboard on the target table: which cell, selecting a target, tool-tips.
#include "app/frmMain.h"
#include "targets/TargetColumns.h"

namespace app {

using namespace targets;

void frmMain::GridGetRowCol(const toolkit::Grid& grd, float fX, float fY, std::int32_t& lRow, std::int32_t& lCol) {
    lRow = -1;
    lCol = -1;
    for (std::int32_t i = 0; i < grd.Cells.Cols() && lCol < 0; ++i) {
        const auto fLeft = static_cast<float>(grd.ColPos(i));
        if (fLeft <= fX && fX <= fLeft + static_cast<float>(grd.ColWidth(i))) lCol = i;
    }
    for (std::int32_t j = 0; j < grd.Cells.Rows() && lRow < 0; ++j) {
        const auto fTop = static_cast<float>(grd.RowPos(j));
        if (fTop <= fY && fY <= fTop + static_cast<float>(grd.RowHeight(j))) lRow = j;
    }
}

void frmMain::grdTargetData_Click(std::int32_t lRow, std::int32_t lCol) {
    if (lCol == ColMmsi && lRow > 0) grdTargetData_RowActivated(lRow);
}

void frmMain::grdTargetData_RowActivated(std::int32_t lRow) {
    grdTargetData.SetCurrentCell(lRow, ColMmsi);
    cmbTargetTarget.SetText(grdTargetData.Cells.Text(lRow, ColMmsi));
}

void frmMain::grdTargetData_DblClick() {
    if (!chkTargetTrack.isChecked()) chkTargetTrack.setChecked(true);
}

void frmMain::grdTargetData_MouseMove(float fX, float fY) {
    if (fX == m_fLastMouseX && fY == m_fLastMouseY) return;
    m_fLastMouseX = fX;
    m_fLastMouseY = fY;
    std::int32_t lRow = -1;
    std::int32_t lCol = -1;
    GridGetRowCol(grdTargetData, fX, fY, lRow, lCol);
    grdTargetData.setToolTip({});  // so that a changed tip shows at once
    grdTargetData.setToolTip(toolkit::FromLatin1(TargetTip(lRow, lCol, chkRxNasaPower.isChecked())));
}

}  // namespace app
