// A picture as what it shows, without how it is drawn: lines, steps or a rose, several series over each other, and the
// sentence and the number that stand below it.
#pragma once

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace report {

inline constexpr double NotKnown = std::numeric_limits<double>::quiet_NaN();

struct Point {
    double dX;
    double dY;  // NotKnown: the line has a gap here
    // The 95 % interval, or the quartiles, drawn as a band; NotKnown where there is none.
    double dLow = NotKnown;
    double dHigh = NotKnown;
};

struct Series {
    std::string sName;  // for the legend, which a picture of one series has not
    std::vector<Point> tPoints{};
};

struct Axis {
    std::string sTitle{};     // with the unit: "range, nm"
    bool bTime = false;       // values are seconds as in runtime::DateTime
    double dFrom = NotKnown;  // the ends, where they are known: 0 and 100 for percent
    double dTo = NotKnown;
};

struct Picture {
    enum class Kind {
        Lines,  // through the points, each marked; x rises
        Steps,  // each point is a step that ends where the next point begins, the last as wide as the one before it
        Rose,   // steps around us: x is the bearing at which a sector begins, from 0 on, y the range
    };

    Kind eKind = Kind::Lines;
    std::string sKey{};    // names the picture's file: letters, digits and -
    std::string sTitle{};  // for people
    Axis tX{};             // of a rose: not used
    Axis tY{};
    std::vector<Series> tSeries{};  // drawn over each other, the last on top
    std::string sRule{};            // how the figures were made, in a sentence or two
    std::int64_t lCount = 0;        // n: behind all of it
    std::string sCounted{};         // of what: "reports"
};

}  // namespace report
