// The strokes of an arrow head on the flow diagram.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "platform/runtime/Geometry.h"

namespace ui {

using runtime::Stroke;

// Heads at the point (lX, lY), 60 twips long and 60 wide: pointing right where the tag contains "Right", down where it
// contains "Bottom" (case-sensitive); both, one or none.
std::vector<Stroke> ArrowHead(std::int32_t lX, std::int32_t lY, std::string_view sTag);

}  // namespace ui
