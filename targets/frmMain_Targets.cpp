// The target table as a store: a row per message, the list of targets, lateness, signal levels, the summary.
#include <utility>

#include "app/frmMain.h"
#include "platform/runtime/Convert.h"
#include "platform/runtime/Format.h"
#include "platform/toolkit/Scopes.h"
#include "targets/ReportingInterval.h"
#include "targets/TargetColumns.h"
#include "targets/TargetSummary.h"

namespace app {

using namespace targets;

void frmMain::TargetGridSetup(bool bClear) {
    const toolkit::RedrawOff tRedraw(grdTargetData);
    runtime::GridCells& tCells = grdTargetData.Cells;
    if (bClear) {
        m_lMessageNumber = 0;
        cmbTargetTarget.Items.Clear();
        tCells.SetRows(1);
        tCells.SetCols(TargetColumnCount);
    }
    LayOutTargetColumns();
    m_bTargetGridLaidOut = true;
}

void frmMain::TargetUpdate(DateTime dt, std::int32_t lMmsi, std::string_view sChannel, std::string_view sMessageId) {
    const std::int32_t lLast = TargetHeard(dt, lMmsi);
    runtime::GridCells& tCells = grdTargetData.Cells;
    if (tCells.Rows() >= MessageRowLimit) tCells.RemoveNumbersUpTo(m_lMessageNumber - (MessageRowLimit - 1));
    ++m_lMessageNumber;
    const int iRow = tCells.Rows();
    tCells.SetRows(iRow + 1);
    tCells.SetRowNumber(iRow, m_lMessageNumber);
    tCells.SetInteger(iRow, ColNumber, m_lMessageNumber);
    tCells.SetInteger(iRow, ColMmsi, lMmsi);
    tCells.SetText(iRow, ColChannel, sChannel);
    tCells.SetText(iRow, ColTime, runtime::TimeText(dt));
    tCells.SetText(iRow, ColMessageId, sMessageId, runtime::AlignLeft);
    if (lLast != 0) tCells.SetInteger(iRow, ColLast, lLast);
    m_sLogLine.clear();
    AppendTargetSummary(m_sLogLine, cmbTargetTarget.Items.Count(), tCells.Rows());
    StatusBar.SetPanelText(ui::PanelSummary, m_sLogLine);
}

std::int32_t frmMain::TargetHeard(DateTime dt, std::int32_t lMmsi) {
    const std::int32_t lNow = runtime::SecondOfDay(dt);
    std::int32_t& lHeard = cmbTargetTarget.Items.FindOrInsert(lMmsi, lNow);
    if (cmbTargetTarget.Text().empty()) cmbTargetTarget.SetText(std::to_string(lMmsi));
    // Kept on purpose: no wrap at midnight, so the difference is negative then.
    return lNow - std::exchange(lHeard, lNow);
}

void frmMain::TargetSetPosition(std::string_view sLatitude, std::string_view sLongitude) {
    runtime::GridCells& tCells = grdTargetData.Cells;
    tCells.SetText(tCells.Rows() - 1, ColLatitude, sLatitude, runtime::AlignRight);
    tCells.SetText(tCells.Rows() - 1, ColLongitude, sLongitude, runtime::AlignRight);
}

void frmMain::TargetSetRangeBearing(std::string_view sRange, std::string_view sBearing) {
    runtime::GridCells& tCells = grdTargetData.Cells;
    tCells.SetText(tCells.Rows() - 1, ColRange, sRange, runtime::AlignRight);
    tCells.SetText(tCells.Rows() - 1, ColBearing, sBearing, runtime::AlignRight);
}

void frmMain::TargetSetMotion(std::string_view sRot, std::string_view sSog) {
    runtime::GridCells& tCells = grdTargetData.Cells;
    if (!sRot.empty()) tCells.SetText(tCells.Rows() - 1, ColRateOfTurn, sRot, runtime::AlignRight);
    if (!sSog.empty()) tCells.SetText(tCells.Rows() - 1, ColSpeed, sSog, runtime::AlignRight);
}

void frmMain::TargetCheckInterval(std::int32_t lMessageId, std::string_view, std::string_view sSog) {
    if (sSog == "n/a") return;
    const std::int32_t lSpec = SpecifiedInterval(lMessageId, runtime::LeadingNumber(sSog));
    if (lSpec == 0) return;
    runtime::GridCells& tCells = grdTargetData.Cells;
    const int iRow = tCells.Rows() - 1;
    if (tCells.Text(iRow, ColLast).empty()) return;
    const auto lLast = static_cast<std::int32_t>(tCells.Number(iRow, ColLast));
    if (lLast <= lSpec + IntervalTolerance) return;
    tCells.SetText(iRow, ColSpec, std::to_string(lSpec), runtime::AlignRight);
    tCells.SetText(iRow, ColMiss, std::to_string(lLast / lSpec), runtime::AlignRight);
}

void frmMain::TargetSetSignal(std::string_view sSignal, std::string_view sThreshold) {
    runtime::GridCells& tCells = grdTargetData.Cells;
    // Row 0 before the first message, and a row of before a clear, count as none.
    if (m_lMessageRow < 1 || m_lMessageRow >= tCells.Rows()) return;
    const toolkit::RedrawOff tRedraw(grdTargetData);
    tCells.SetText(m_lMessageRow, ColSignal, sSignal);
    tCells.SetText(m_lMessageRow, ColThreshold, sThreshold);
    const double dSnr = tCells.Number(m_lMessageRow, ColSignal) - tCells.Number(m_lMessageRow, ColThreshold);
    tCells.SetText(m_lMessageRow, ColSnr, runtime::Format(dSnr, runtime::PictureWhole));
    if (cmbTargetSort.ListIndex() == SortBySignal) TargetSort();
}

std::int32_t frmMain::TargetFindRow(std::int32_t lMmsi) {
    const bool bRedraw = grdTargetData.Redraw();
    grdTargetData.SetRedraw(false);
    for (int iRow = 1; iRow < grdTargetData.Cells.Rows(); ++iRow) {
        // Kept on purpose: on a hit redraw stays off.
        if (grdTargetData.Cells.Number(iRow, ColMmsi) == lMmsi) return iRow;
    }
    grdTargetData.SetRedraw(bRedraw);
    return -1;
}

}  // namespace app
