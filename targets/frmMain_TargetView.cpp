// How the target table is presented: detail, order, tracking.
#include <span>

#include "app/frmMain.h"
#include "platform/toolkit/Scopes.h"
#include "targets/TargetColumns.h"

namespace app {

using namespace targets;

void frmMain::TargetSort() {
    if (const auto tFirst = FirstKey(cmbTargetSort.ListIndex())) {
        m_iSortKeys = 2;
        m_tSortKeys = {*tFirst, SecondKey};
    }
    runtime::GridCells& tCells = grdTargetData.Cells;
    grdTargetData.SetCurrentCell(1, ColMmsi);  // also while there is no row yet
    const std::span tKeys(m_tSortKeys.data(), static_cast<std::size_t>(m_iSortKeys));
    tCells.Sort(tKeys, [this](int iRow1, int iRow2) {
        std::int16_t iCmp = 0;
        SortCompare(grdTargetData, iRow1, iRow2, iCmp);
        return iCmp;
    });
}

void frmMain::SortCompare(const toolkit::Grid& grd, std::int32_t lRow1, std::int32_t lRow2, std::int16_t& iCmp) {
    iCmp = 0;
    const auto ValueOf = [&grd](std::int32_t lRow, const SortKey& tKey) {
        const bool bNumeric = tKey.lType == NumericAscending || tKey.lType == NumericDescending;
        return SortValue{grd.Cells.Text(lRow, tKey.lCol), bNumeric ? grd.Cells.Number(lRow, tKey.lCol) : 0};
    };
    for (int i = 0; i < m_iSortKeys; ++i) {
        const SortKey& tKey = m_tSortKeys[static_cast<std::size_t>(i)];
        const auto iResult = CompareValues(tKey.lType, ValueOf(lRow1, tKey), ValueOf(lRow2, tKey));
        if (!iResult) {
            m_tPlatform.ShowMessage(this, QStringLiteral("SortCompare, Sort Direction Not Supported"),
                                    toolkit::MessageIcon::Exclamation);
            return;
        }
        if (*iResult == 0) continue;
        iCmp = static_cast<std::int16_t>(*iResult);
        return;
    }
}

void frmMain::TargetRefresh() {
    const int iSort = cmbTargetSort.ListIndex();
    if (iSort == SortByMmsi || iSort == SortByRange) TargetSort();
    runtime::GridCells& tCells = grdTargetData.Cells;
    const int iNewest = tCells.FindRowNumber(m_lMessageNumber);
    if (iNewest > 0) m_lMessageRow = iNewest;
    if (!chkTargetTrack.isChecked()) return;
    for (int iRow = 1; iRow < tCells.Rows(); ++iRow) {
        tCells.SetHidden(iRow, tCells.Text(iRow, ColMmsi) != cmbTargetTarget.Text());
    }
}

void frmMain::cmbTargetDetail_Click() {
    if (m_tPlatform.HasFocus(cmbTargetDetail)) TargetGridSetup(false);
}

void frmMain::cmbTargetSort_Click() {
    if (!m_tPlatform.HasFocus(cmbTargetSort)) return;
    const toolkit::RedrawOff tRedraw(grdTargetData);
    TargetSort();
}

void frmMain::chkTargetTrack_Click() {
    const bool bRedraw = grdTargetData.Redraw();
    grdTargetData.SetRedraw(false);
    runtime::GridCells& tCells = grdTargetData.Cells;
    const bool bTrack = chkTargetTrack.isChecked();
    for (int iRow = 1; iRow < tCells.Rows(); ++iRow) {
        if (!bTrack) {
            tCells.SetHidden(iRow, false);
        } else if (tCells.Text(iRow, ColMmsi) != cmbTargetTarget.Text()) {
            tCells.SetHidden(iRow, true);  // matching rows are left as they are
        }
    }
    grdTargetData.SetRedraw(bRedraw);
}

}  // namespace app
