// Sizes and places bounded by the screens.
#include "ui/ScreenFit.h"

#include <algorithm>

namespace ui {

namespace {

constexpr double TitleHeight = 24;
constexpr double LeastTitleWidth = 80;  // of the title that must be on a screen, to be caught with the mouse
constexpr double LeastTitleHeight = 12;

Rect TitleOf(const Rect& tPlace) { return {tPlace.dLeft, tPlace.dTop, tPlace.dWidth + FrameAcross, TitleHeight}; }

// What two lines have in common; negative when they are apart, by their distance.
double Common(double dFrom1, double dLength1, double dFrom2, double dLength2) {
    return std::min(dFrom1 + dLength1, dFrom2 + dLength2) - std::max(dFrom1, dFrom2);
}

Size Common(const Rect& t1, const Rect& t2) {
    return {Common(t1.dLeft, t1.dWidth, t2.dLeft, t2.dWidth), Common(t1.dTop, t1.dHeight, t2.dTop, t2.dHeight)};
}

bool InReach(const Rect& tTitle, const std::vector<Rect>& tAreas) {
    const double dWidth = std::min(LeastTitleWidth, tTitle.dWidth);
    return std::ranges::any_of(tAreas, [&](const Rect& tArea) {
        const Size tCommon = Common(tTitle, tArea);
        return tCommon.dWidth >= dWidth && tCommon.dHeight >= LeastTitleHeight;
    });
}

// A place along one direction that is inside, from its beginning on when it is longer than that.
double Inside(double dFrom, double dLength, double dAreaFrom, double dAreaLength) {
    return std::max(std::min(dFrom, dAreaFrom + dAreaLength - dLength), dAreaFrom);
}

}  // namespace

const Rect& AreaOf(const Rect& tPlace, const std::vector<Rect>& tAreas) {
    const Rect tTitle = TitleOf(tPlace);
    // An overlap counts by its size, else the gaps by their sum.
    const auto dNear = [&tTitle](const Rect& tArea) {
        const Size t = Common(tTitle, tArea);
        return t.dWidth > 0 && t.dHeight > 0 ? t.dWidth * t.dHeight
                                             : std::min(t.dWidth, 0.0) + std::min(t.dHeight, 0.0);
    };
    return *std::ranges::max_element(tAreas, {}, dNear);
}

Size LargestInside(const Rect& tArea) { return {tArea.dWidth - FrameAcross, tArea.dHeight - FrameDown}; }

Rect FitToScreens(const Rect& tWished, const std::vector<Rect>& tAreas) {
    if (tAreas.empty()) return tWished;
    const Rect& tArea = AreaOf(tWished, tAreas);
    const Size tLargest = LargestInside(tArea);
    Rect t = tWished;
    t.dWidth = std::min(t.dWidth, tLargest.dWidth);
    t.dHeight = std::min(t.dHeight, tLargest.dHeight);
    if (t == tWished && InReach(TitleOf(t), tAreas)) return t;

    t.dLeft = Inside(t.dLeft, t.dWidth + FrameAcross, tArea.dLeft, tArea.dWidth);
    t.dTop = Inside(t.dTop, t.dHeight + FrameDown, tArea.dTop, tArea.dHeight);
    return t;
}

}  // namespace ui
