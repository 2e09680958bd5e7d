// The arrow heads of the flow diagram: two strokes each, meeting in the line's end point.
#include "ui/ArrowHead.h"

namespace ui {

namespace {
constexpr std::int32_t HeadLength = 60;
constexpr std::int32_t HeadHalfWidth = 30;

bool Contains(std::string_view sText, std::string_view sWord) { return sText.find(sWord) != std::string_view::npos; }
}  // namespace

std::vector<Stroke> ArrowHead(std::int32_t lX, std::int32_t lY, std::string_view sTag) {
    std::vector<Stroke> tStrokes;
    if (Contains(sTag, "Right")) {
        tStrokes.push_back({lX - HeadLength, lY + HeadHalfWidth, lX, lY});
        tStrokes.push_back({lX - HeadLength, lY - HeadHalfWidth, lX, lY});
    }
    if (Contains(sTag, "Bottom")) {
        tStrokes.push_back({lX - HeadHalfWidth, lY - HeadLength, lX, lY});
        tStrokes.push_back({lX + HeadHalfWidth, lY - HeadLength, lX, lY});
    }
    return tStrokes;
}

}  // namespace ui
