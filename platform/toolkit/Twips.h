// The window's logical units: twips, 1440 to the inch, 15 to a device-independent pixel.
#pragma once

#include <QRect>
#include <cmath>

#include "platform/runtime/Geometry.h"

namespace toolkit {

inline constexpr double TwipsPerPixel = 15;

inline double ToTwips(int iPixels) { return iPixels * TwipsPerPixel; }
inline int ToPixels(double dTwips) { return static_cast<int>(std::lround(dTwips / TwipsPerPixel)); }

inline runtime::Rect ToTwips(const QRect& tRect) {
    return {ToTwips(tRect.left()), ToTwips(tRect.top()), ToTwips(tRect.width()), ToTwips(tRect.height())};
}
// Edges are rounded, not sizes, so that neighbours in twips are neighbours in pixels.
inline QRect ToPixels(const runtime::Rect& tRect) {
    const int iLeft = ToPixels(tRect.dLeft);
    const int iTop = ToPixels(tRect.dTop);
    return {iLeft, iTop, ToPixels(tRect.dLeft + tRect.dWidth) - iLeft, ToPixels(tRect.dTop + tRect.dHeight) - iTop};
}

}  // namespace toolkit
