// The reporting-rate reference, built once.
#include "app/frmMain.h"
#include "platform/toolkit/Scopes.h"
#include "targets/ReportingRates.h"

namespace app {

void frmMain::SpecGridSetup() {
    using namespace runtime;
    const toolkit::RedrawOff tRedraw(grdSpecData);
    toolkit::Grid& grd = grdSpecData;
    grd.Cells.SetRows(static_cast<int>(targets::ReportingRates.size()));
    grd.Cells.SetCols(3);
    SpecGridColumns();
    for (int iRow = 0; iRow < grd.Cells.Rows(); ++iRow) {
        const auto& sTexts = targets::ReportingRates[static_cast<std::size_t>(iRow)];
        SpecGridSetRow(iRow, sTexts[0], iRow == 0 ? AlignCentre : AlignLeft, sTexts[1], AlignCentre, sTexts[2],
                       AlignCentre);
    }
}

void frmMain::SpecGridColumns() {
    toolkit::Grid& grd = grdSpecData;
    grd.SetColumn(0, "--Type of Ship--", true, 60 * grd.TextWidth("-") + grd.TextWidth("--Type of Ship--"));
    grd.SetColumn(1, "---Class A Rates---", true, grd.TextWidth("---Class A Rates---"));
    grd.SetColumn(2, "---Class B Rates---", true, grd.TextWidth("---Class B Rates---"));
}

void frmMain::SpecGridSetRow(int iRow, std::string_view sText0, runtime::Alignment eAlign0, std::string_view sText1,
                             runtime::Alignment eAlign1, std::string_view sText2, runtime::Alignment eAlign2) {
    grdSpecData.Cells.SetText(iRow, 0, sText0, eAlign0);
    grdSpecData.Cells.SetText(iRow, 1, sText1, eAlign1);
    grdSpecData.Cells.SetText(iRow, 2, sText2, eAlign2);
}

}  // namespace app
