// The rectangles of the window's controls from the sizes of window and tab control. All rules are sums and
// differences of twips; halves stay exact here and are rounded where they become pixels.
#include "ui/Layout.h"

#include <algorithm>

namespace ui {

namespace {
double NotNegative(double dSize) { return std::max(dSize, 0.0); }

// Keeps its place, has equal margins left and right and ends dBottomGap above the tab control's bottom.
Rect Filling(const Rect& tDesign, Size tTabs, double dBottomGap) {
    return {tDesign.dLeft, tDesign.dTop, NotNegative(tTabs.dWidth - 2 * tDesign.dLeft),
            NotNegative(tTabs.dHeight - tDesign.dTop - dBottomGap)};
}
}  // namespace

Rect TabControlRect(double dLeft, double dTop, double dInnerWidth, double dStatusBarTop) {
    return {dLeft, dTop, NotNegative(dInnerWidth - 2 * dLeft), NotNegative(dStatusBarTop - dTop - TabBottomGap)};
}

Rect ListRect(const Rect& tDesign, Size tTabs) { return Filling(tDesign, tTabs, ListBottomGap); }

Rect GridRect(const Rect& tDesign, Size tTabs) { return Filling(tDesign, tTabs, GridBottomGap); }

InputListsLayout InputLists(const Rect& tFirstDesign, Size tTabs, std::array<bool, 2> bEnabled) {
    const Rect tWhole = ListRect(tFirstDesign, tTabs);
    InputListsLayout tLayout{bEnabled, {tWhole, tWhole}};
    if (!bEnabled[0] || !bEnabled[1]) return tLayout;

    const double dHalf = tWhole.dHeight / 2;
    tLayout.tRects[0].dHeight = dHalf;
    tLayout.tRects[1].dTop = tWhole.dTop + dHalf;
    tLayout.tRects[1].dHeight = dHalf;
    return tLayout;
}

ReceiverLayout ReceiverTab(const Rect& tListDesign, const Rect& tFrameDesign, const Rect& tLegendDesign, Size tTabs) {
    ReceiverLayout tLayout{tFrameDesign, tLegendDesign, ListRect(tListDesign, tTabs)};
    tLayout.tFrame.dLeft = tTabs.dWidth - tListDesign.dLeft - tFrameDesign.dWidth;
    tLayout.tLegend.dLeft = tLayout.tFrame.dLeft;
    tLayout.tLegend.dHeight = NotNegative(tTabs.dHeight - LegendBottomGap - tLegendDesign.dTop);
    tLayout.tList.dWidth = NotNegative(tLayout.tFrame.dLeft - FrameGap - tListDesign.dLeft);
    return tLayout;
}

}  // namespace ui
