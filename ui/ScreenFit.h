// What a screen allows: the size that a window may have and a place where its title can be reached. Plain arithmetic,
// so that every screen can be tried as a table. Device-independent pixels throughout.
#pragma once

#include <vector>

#include "ui/Layout.h"

namespace ui {

// The room that a window manager's frame is taken to need around the inside of a window: it is known only once the
// window is shown, and then a window that has grown out of its screen would jump.
inline constexpr double FrameAcross = 8;
inline constexpr double FrameDown = 44;  // the title bar most of all

// The area that holds the window's title, or the nearest. tPlace is the frame's left and top and the inside's size, as
// a profile keeps them. tAreas is not empty.
const Rect& AreaOf(const Rect& tPlace, const std::vector<Rect>& tAreas);

// The largest inside of a window on an area.
Size LargestInside(const Rect& tArea);

// The wished place, no larger than its screen allows; moved wholly onto that screen when it was too large or nobody
// could get hold of its title. Without any area, as wished.
Rect FitToScreens(const Rect& tWished, const std::vector<Rect>& tAreas);

}  // namespace ui
