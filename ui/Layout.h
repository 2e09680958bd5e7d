// The window's layout as arithmetic: from the sizes of the window and the design-time places of its controls to the
// rectangle of each control, all in twips. Needs no window, so every rule is tested as a table.
#pragma once

#include <array>

#include "platform/runtime/Geometry.h"

namespace ui {

using runtime::Rect;  // left and top relative to the tab control, except for the tab control itself
using runtime::Size;

inline constexpr double TabBottomGap = 90;     // tab control to status bar
inline constexpr double ListBottomGap = 60;    // list to the tab control's bottom
inline constexpr double GridBottomGap = 90;    // grid to the tab control's bottom
inline constexpr double LegendBottomGap = 15;  // legend frame to the tab control's bottom
inline constexpr double FrameGap = 60;         // receiver list to the frames at its right

// No size ever comes out negative: a window too small for a control gives it 0.

// The tab control: keeps left and top; equal margins left and right, ends TabBottomGap above the status bar.
Rect TabControlRect(double dLeft, double dTop, double dInnerWidth, double dStatusBarTop);

// A tab whose body is one list, or one grid: keeps left and top.
Rect ListRect(const Rect& tDesign, Size tTabs);
Rect GridRect(const Rect& tDesign, Size tTabs);

struct InputListsLayout {
    std::array<bool, 2> bVisible;
    std::array<Rect, 2> tRects;  // only what is visible is meaningful
};
// The raw logs of the enabled ports: none, one at the first list's place, or two stacked.
InputListsLayout InputLists(const Rect& tFirstDesign, Size tTabs, std::array<bool, 2> bEnabled);

struct ReceiverLayout {
    Rect tFrame;   // frmRxNasa: at the right, its right margin equal to the list's left
    Rect tLegend;  // frmRxLabel: under it, down to the tab control's bottom
    Rect tList;    // lstRxData: to the left of the frames
};
ReceiverLayout ReceiverTab(const Rect& tListDesign, const Rect& tFrameDesign, const Rect& tLegendDesign, Size tTabs);

}  // namespace ui
