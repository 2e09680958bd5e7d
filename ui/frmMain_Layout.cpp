// The window's contents follow its size: sizes in, rectangles out (ui/Layout), and the controls put there.
#include "app/frmMain.h"
#include "platform/toolkit/Twips.h"

namespace app {

using toolkit::ToTwips;

void frmMain::FormLayout() {
    if (!m_bLayoutReady || isMinimized()) return;
    const ui::Rect& tDesign = Design(SSTab);
    // The client area ends where the status bar begins.
    const ui::Rect tTabs =
        ui::TabControlRect(tDesign.dLeft, tDesign.dTop, ToTwips(Client.width()), ToTwips(Client.height()));
    Place(SSTab, tTabs);
    LayOutTab({tTabs.dWidth, tTabs.dHeight});
}

void frmMain::LayOutTab(ui::Size tTabs) {
    const auto PlaceList = [&](QWidget& t) { Place(t, ui::ListRect(Design(t), tTabs)); };
    const auto PlaceGrid = [&](QWidget& t) { Place(t, ui::GridRect(Design(t), tTabs)); };
    switch (SSTab.Tab()) {
        case ui::TabInput:
            LayOutInput(tTabs);
            break;
        case ui::TabReceiver:
            LayOutReceiver(tTabs);
            break;
        case ui::TabAis:
            PlaceList(lstAisData);
            break;
        case ui::TabGps:
            PlaceList(lstGpsData);
            break;
        case ui::TabTargets:
            PlaceGrid(grdTargetData);
            break;
        case ui::TabMessages:
            PlaceGrid(grdMessageData);
            break;
        case ui::TabDiagram:
            LayOutDiagram(tTabs);
            break;
        case ui::TabSpec:
            PlaceGrid(grdSpecData);
            break;
        case ui::TabTiming:
            LayOutTiming(tTabs);
            break;
        case ui::TabOutput:
            PlaceList(lstOutputData);
            break;
        default:
            break;  // About: nothing moves
    }
}

void frmMain::LayOutInput(ui::Size tTabs) {
    const ui::InputListsLayout t =
        ui::InputLists(Design(lstCommData(0)), tTabs, {chkCommEnabled(0).isChecked(), chkCommEnabled(1).isChecked()});
    for (PortIndex i = 0; i < runtime::PortCount; ++i) {
        const auto iPort = static_cast<std::size_t>(i);
        lstCommData(i).setVisible(t.bVisible[iPort]);
        if (t.bVisible[iPort]) Place(lstCommData(i), t.tRects[iPort]);
    }
}

void frmMain::LayOutReceiver(ui::Size tTabs) {
    const ui::ReceiverLayout t = ui::ReceiverTab(Design(lstRxData), Design(frmRxNasa), Design(frmRxLabel), tTabs);
    Place(frmRxNasa, t.tFrame);
    Place(frmRxLabel, t.tLegend);
    Place(lstRxData, t.tList);
}

// Picture and rows as wide as the tab allows; the names keep their places, the percentages stand at the right edge.
void frmMain::LayOutTiming(ui::Size tTabs) {
    ui::Rect tPicture = Design(pctTiming);
    tPicture.dWidth = std::max(0.0, tTabs.dWidth - 2 * tPicture.dLeft);
    Place(pctTiming, tPicture);
    for (const ui::TimingLabels& t : {lblTimingChA, lblTimingChB, lblTimingChAlternate}) {
        ui::Rect tPercentage = Design(t.Percentage);
        const ui::Rect& tName = Design(t.Name);
        tPercentage.dLeft = std::max(tName.dLeft + tName.dWidth, tPicture.dWidth - tPercentage.dWidth);
        Place(t.Name, tName);
        Place(t.Percentage, tPercentage);
    }
    ui::Rect tSummary = Design(lblTimingSummary);
    tSummary.dWidth = std::max(0.0, tPicture.dWidth - tSummary.dLeft);
    Place(lblTimingSummary, tSummary);
    TimingRedraw();
}

}  // namespace app
