// The value types of layout and drawing: what the computations answer, the views draw and nobody else owns.
#pragma once

#include <cstdint>

namespace runtime {

struct Rect {  // twips
    double dLeft = 0, dTop = 0, dWidth = 0, dHeight = 0;
    friend bool operator==(const Rect&, const Rect&) = default;
};

struct Size {  // twips
    double dWidth = 0, dHeight = 0;
};

struct Stroke {  // a thin straight line, twips
    std::int32_t lX1, lY1, lX2, lY2;
    friend bool operator==(const Stroke&, const Stroke&) = default;
};

struct Rgb {
    std::uint8_t iRed, iGreen, iBlue;
    friend bool operator==(const Rgb&, const Rgb&) = default;
};

// A filled rectangle or a straight line from (lX1, lY1) to (lX2, lY2) in the drawing units of the picture.
struct Primitive {
    enum class Kind { Rectangle, Line } eKind;
    std::int32_t lX1, lY1, lX2, lY2;
    Rgb tColour;
    friend bool operator==(const Primitive&, const Primitive&) = default;
};

}  // namespace runtime
