// A picture as a script of gnuplot, which draws it.
#pragma once

#include <string>
#include <string_view>

#include "report/Picture.h"

namespace report {

enum class PlotFormat {
    Svg,        // a file of its own, with title, rule and n
    Png,        // the same
    InlineSvg,  // for a page, which has the texts beside it and the background behind it
};

// True when there is a point to draw.
bool HasPoints(const Picture& t);
std::string PlotScript(const Picture& t, PlotFormat e);
// "1234 reports".
std::string CountText(const Picture& t);

}  // namespace report
