// The message counts.
#include "app/frmMain.h"
#include "platform/toolkit/Scopes.h"

namespace app {

namespace {

struct MessageColumn {
    std::string_view sHeader;
    std::string_view sTemplate;
    int iMore;  // so many "0" wider than the template
};
constexpr MessageColumn MessageColumns[] = {
    {"Message Id", "---Message Id---", 14},
    {"Count", "---Count---", 0},
};

constexpr int MessageRows = 35;
constexpr int TotalRow = 34;  // row 33 stays empty: a spacer above the total

void CountCell(runtime::GridCells& tCells, int iRow, std::int64_t lMessages) {
    tCells.SetInteger(iRow, 1, static_cast<std::int64_t>(tCells.Number(iRow, 1)) + lMessages);
}

}  // namespace

void frmMain::MessageGridSetup() {
    using namespace runtime;
    const toolkit::RedrawOff tRedraw(grdMessageData);
    toolkit::Grid& grd = grdMessageData;
    grd.Cells.SetRows(MessageRows);
    grd.Cells.SetCols(static_cast<int>(std::size(MessageColumns)));
    MessageGridColumns();
    MessageGridSetRow(0, MessageColumns[0].sHeader, AlignCentre, MessageColumns[1].sHeader, AlignCentre);
    for (int iRow = targets::FirstCountedId; iRow <= targets::LastCountedId; ++iRow) {
        MessageGridSetRow(iRow, MessageName(iRow), AlignLeft, "0", AlignRight);
        grd.Cells.SetHidden(iRow, true);
    }
    MessageGridSetRow(TotalRow, "Total", AlignCentre, "0", AlignRight);
}

void frmMain::MessageGridColumns() {
    toolkit::Grid& grd = grdMessageData;
    int iCol = 0;
    for (const MessageColumn& t : MessageColumns) {
        grd.SetColumn(iCol++, t.sTemplate, true, t.iMore * grd.TextWidth("0") + grd.TextWidth(t.sTemplate));
    }
}

void frmMain::MessageGridSetRow(int iRow, std::string_view sText0, runtime::Alignment eAlign0, std::string_view sText1,
                                runtime::Alignment eAlign1) {
    grdMessageData.Cells.SetText(iRow, 0, sText0, eAlign0);
    grdMessageData.Cells.SetText(iRow, 1, sText1, eAlign1);
}

void frmMain::MessageCount(std::int32_t lMessageId, std::int32_t lMessages) {
    // The others have no row: what stands at their place is the header, the spacer, the total, or nothing.
    if (lMessageId < targets::FirstCountedId || lMessageId > targets::LastCountedId) return;
    const toolkit::RedrawOff tRedraw(grdMessageData);
    CountCell(grdMessageData.Cells, lMessageId, lMessages);
    CountCell(grdMessageData.Cells, TotalRow, lMessages);
    if (grdMessageData.Cells.Hidden(lMessageId)) grdMessageData.Cells.SetHidden(lMessageId, false);
}

}  // namespace app
