// gnuplot makes scales, grid and legend; here stands what is drawn between them.
#include "report/PlotScript.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "platform/runtime/DateTime.h"
#include "report/Period.h"
#include "report/PlainText.h"

namespace report {

namespace {

// Tones that stand out on white and on black alike.
constexpr std::array Colours = {"#2f7fc1", "#d55e00", "#0e9a6e", "#b463a5", "#8a7f2b", "#5b6b7b"};
constexpr int Width = 500;
constexpr int Height = 330;
constexpr int RoseHeight = 470;
constexpr int LineHeight = 20;  // of the texts below
constexpr std::size_t TextWidth = 60;
constexpr std::size_t MostMarks = 40;  // more points are a line
constexpr double ArcDegrees = 2;       // an arc is drawn as straight pieces of this length
constexpr double Circle = 360;
constexpr double Minute = 60, Hour = 60 * Minute, Day = 24 * Hour;
constexpr std::array TimeSteps = {Minute,  2 * Minute, 5 * Minute, 10 * Minute, 15 * Minute, 30 * Minute,
                                  Hour,    2 * Hour,   3 * Hour,   6 * Hour,    12 * Hour,   Day,
                                  2 * Day, 4 * Day,    7 * Day,    14 * Day,    28 * Day};

bool Known(double d) { return !std::isnan(d); }

// As a text between gnuplot's single quotes, in which nothing but the quote itself is special.
std::string Quoted(std::string_view sText) {
    std::string s = "'";
    for (const char c : PlainText(sText)) s.append(c == '\'' ? 2 : 1, c);
    return s + "'";
}

std::string ColourOf(std::size_t iSeries) { return std::string(" lc rgb '") + Colours[iSeries % Colours.size()] + "'"; }
std::string NameOf(std::size_t iSeries) { return "$s" + std::to_string(iSeries); }
std::string EndText(double d) { return Known(d) ? std::to_string(d) : "*"; }

// The value on an axis as gnuplot counts it: times from 1970 on.
double OnAxis(const Axis& t, double d) {
    static const auto lEpoch = runtime::MakeDateTime({1970, 1, 1}, 0, 0, 0).lSeconds;
    return t.bTime ? d - static_cast<double>(lEpoch) : d;
}

bool HasAny(const Series& t) {
    return std::ranges::any_of(t.tPoints, [](const Point& p) { return Known(p.dY); });
}

struct Span {
    double dFrom = NotKnown;
    double dTo = NotKnown;
};

Span SpanOf(const Picture& t) {
    Span tSpan;
    for (const Series& tSeries : t.tSeries) {
        for (const Point& p : tSeries.tPoints) {
            tSpan.dFrom = std::fmin(tSpan.dFrom, p.dX);
            tSpan.dTo = std::fmax(tSpan.dTo, p.dX);
        }
    }
    return tSpan;
}

void AppendLine(std::string& s, std::initializer_list<double> dValues) {
    for (const double d : dValues) s += std::to_string(d) + " ";
    s += "\n";
}

// Nothing is a step of no height.
double ShownSize(const Point& t) { return Known(t.dY) ? t.dY : 0; }

// Steps as an outline that begins and ends at nothing, so that it can be filled.
std::string StepTable(const Picture& t, const std::vector<Point>& tPoints) {
    std::string s;
    double dEnd = 0;
    for (std::size_t i = 0; i < tPoints.size(); ++i) {
        const double dFrom = OnAxis(t.tX, tPoints[i].dX);
        const bool bLast = i + 1 == tPoints.size();
        const double dWidth = !bLast  ? tPoints[i + 1].dX - tPoints[i].dX
                              : i > 0 ? tPoints[i].dX - tPoints[i - 1].dX
                                      : 1;
        dEnd = dFrom + dWidth;
        if (i == 0) AppendLine(s, {dFrom, 0});
        AppendLine(s, {dFrom, ShownSize(tPoints[i])});
        AppendLine(s, {dEnd, ShownSize(tPoints[i])});
    }
    AppendLine(s, {dEnd, 0});
    return s;
}

// The same around us, back to where it began.
std::string RoseTable(const std::vector<Point>& tPoints) {
    std::string s;
    for (std::size_t i = 0; i < tPoints.size(); ++i) {
        const double dTo = i + 1 < tPoints.size() ? tPoints[i + 1].dX : Circle;
        for (double d = tPoints[i].dX; d < dTo; d += ArcDegrees) AppendLine(s, {d, ShownSize(tPoints[i])});
        AppendLine(s, {dTo, ShownSize(tPoints[i])});
    }
    if (!tPoints.empty()) AppendLine(s, {Circle, ShownSize(tPoints.front())});
    return s;
}

// An empty line breaks a line of the picture.
std::string LineTable(const Picture& t, const Series& tSeries) {
    std::string s;
    for (const Point& p : tSeries.tPoints) {
        if (!Known(p.dY)) {
            s += "\n";
            continue;
        }
        const bool bBand = Known(p.dLow) && Known(p.dHigh);
        AppendLine(s, {OnAxis(t.tX, p.dX), p.dY, bBand ? p.dLow : p.dY, bBand ? p.dHigh : p.dY});
    }
    return s;
}

std::string TableOf(const Picture& t, const Series& tSeries) {
    switch (t.eKind) {
        case Picture::Kind::Lines:
            return LineTable(t, tSeries);
        case Picture::Kind::Steps:
            return StepTable(t, tSeries.tPoints);
        case Picture::Kind::Rose:
            break;
    }
    return RoseTable(tSeries.tPoints);
}

std::string Tables(const Picture& t) {
    std::string s;
    for (std::size_t i = 0; i < t.tSeries.size(); ++i) {
        s += NameOf(i) + " << EOD\n" + TableOf(t, t.tSeries[i]) + "EOD\n";
    }
    return s;
}

std::string Terminal(const Picture& t, PlotFormat e, int iTextLines) {
    const int iHeight = (t.eKind == Picture::Kind::Rose ? RoseHeight : Height) + iTextLines * LineHeight;
    const auto Size = [&](int iTimes) {
        return " size " + std::to_string(Width * iTimes) + "," + std::to_string(iHeight * iTimes);
    };
    const std::string sFont = " noenhanced font 'DejaVu Sans,13'";
    if (e == PlotFormat::Png)
        return "set terminal pngcairo" + Size(2) + sFont + " fontscale 1.5 linewidth 2 dashlength 0.6\n";
    return "set terminal svg" + Size(1) + " dynamic" + sFont +
           (e == PlotFormat::Svg ? " background '#ffffff'\n" : "\n");
}

// Round steps of a time, at most six of them: gnuplot's own are many enough for their texts to meet.
std::string TimeScale(const Picture& t) {
    const Span tSpan = SpanOf(t);
    const double dSpan = tSpan.dTo - tSpan.dFrom;
    const auto Fits = [dSpan](double dStep) { return dSpan <= 6 * dStep; };
    const auto pStep = std::ranges::find_if(TimeSteps, Fits);
    double dStep = pStep != TimeSteps.end() ? *pStep : TimeSteps.back();
    while (!Fits(dStep)) dStep *= 2;
    const char* sFormat = dSpan <= 1.5 * Day  ? "%H:%M"
                          : dStep < Day       ? "%d %b\\n%H:%M"
                          : dSpan < 300 * Day ? "%d %b"
                                              : "%d %b\\n%Y";
    return std::string("set xtics time format \"") + sFormat + "\" " + std::to_string(dStep) + "\n";
}

std::string AxisTitle(const Picture& t) {
    if (!t.tX.bTime || !HasPoints(t)) return t.tX.sTitle;
    return t.tX.sTitle + ", from " + IsoText({std::llround(SpanOf(t).dFrom)}).substr(0, 16);
}

std::string StraightFrame(const Picture& t) {
    std::string s =
        "set border 3 lc rgb '#808080'\n"
        "set tics nomirror out\n"
        "set grid lt 1 lw 1 lc rgb '#c0808080'\n"
        "set xrange [" +
        EndText(t.tX.dFrom) + ":" + EndText(t.tX.dTo) +
        "]\n"
        "set yrange [" +
        EndText(t.tY.dFrom) + ":" + EndText(t.tY.dTo) +
        "]\n"
        "set xlabel " +
        Quoted(AxisTitle(t)) + "\nset ylabel " + Quoted(t.tY.sTitle) + "\n";
    if (t.tX.bTime) s += TimeScale(t);
    return s;
}

// The circles of the grid, and the outermost of them.
std::string RoseScale(const Picture& t) {
    double dMost = 0;
    for (const Series& tSeries : t.tSeries) {
        for (const Point& p : tSeries.tPoints) dMost = std::fmax(dMost, p.dY);
    }
    const double dStep = dMost > 100 ? 50 : dMost > 50 ? 20 : dMost > 20 ? 10 : dMost > 8 ? 5 : 2;
    const double dEnd = std::max(1.0, std::ceil(dMost / dStep)) * dStep;
    return "set rrange [0:" + std::to_string(dEnd) + "]\nset rtics nomirror " + std::to_string(dStep) + "\n";
}

std::string RoseFrame(const Picture& t) {
    return "set polar\n"
           "set angles degrees\n"
           "set theta top clockwise\n"
           "set border 0 lc rgb '#808080'\n"
           "unset xtics\n"
           "unset ytics\n"
           "unset raxis\n"
           "set size square\n"
           "set grid polar 30 lt 1 lw 1 lc rgb '#c0808080'\n"
           "set ttics ('N' 0, '30' 30, '60' 60, 'E' 90, '120' 120, '150' 150, 'S' 180, '210' 210, '240' 240, 'W' 270, "
           "'300' 300, '330' 330)\n" +
           RoseScale(t);
}

// A series as what is behind the lines, and as the lines.
std::string Fill(const Picture& t, std::size_t i) {
    if (t.eKind == Picture::Kind::Lines) {
        return NameOf(i) + " using 1:3:4 with filledcurves" + ColourOf(i) +
               " fs transparent solid 0.2 noborder notitle";
    }
    return NameOf(i) + " using 1:2 with filledcurves closed" + ColourOf(i) +
           " fs transparent solid 0.12 noborder notitle";
}

std::string Line(const Picture& t, std::size_t i) {
    const std::string sTitle = t.tSeries.size() > 1 ? " title " + Quoted(t.tSeries[i].sName) : " notitle";
    const std::string sDash = " dt " + std::to_string(i % 5 + 1);  // on paper without colours
    if (t.eKind != Picture::Kind::Lines) {
        return NameOf(i) + " using 1:2 with lines lw 2" + ColourOf(i) + sDash + sTitle;
    }
    const std::string sColour = " lw 2" + ColourOf(i);
    if (t.tSeries[i].tPoints.size() > MostMarks) return NameOf(i) + " using 1:2 with lines" + sColour + sDash + sTitle;
    // The ends of the band marked too: it has no width where there is one point.
    return NameOf(i) + " using 1:3:(0):($4-$3) with vectors nohead lw 1" + ColourOf(i) + " notitle, " + NameOf(i) +
           " using 1:2 with linespoints pt 7 ps 0.5" + sColour + sDash + sTitle;
}

std::string Plot(const Picture& t) {
    std::string s;
    for (const auto Draw : {Fill, Line}) {
        for (std::size_t i = 0; i < t.tSeries.size(); ++i) {
            if (HasAny(t.tSeries[i])) s += (s.empty() ? "plot " : ", ") + Draw(t, i);
        }
    }
    return s + "\n";
}

}  // namespace

bool HasPoints(const Picture& t) { return std::ranges::any_of(t.tSeries, HasAny); }

std::string CountText(const Picture& t) { return "n = " + std::to_string(t.lCount) + " " + t.sCounted; }

std::string PlotScript(const Picture& t, PlotFormat e) {
    std::vector<std::string> sBelow;
    if (e != PlotFormat::InlineSvg) {
        sBelow = BrokenLines(t.sRule, TextWidth);
        sBelow.push_back(CountText(t));
    }
    const auto iLines = static_cast<int>(sBelow.size());
    std::string s = Terminal(t, e, iLines) + "set encoding utf8\nset locale 'C'\nset tics textcolor rgb '#505050'\n";
    const bool bRose = t.eKind == Picture::Kind::Rose;
    s += bRose ? RoseFrame(t) : StraightFrame(t);
    s += "set key horizontal center top at screen 0.5, screen " + std::string(iLines > 0 ? "0.94" : "0.99") + "\n";
    s +=
        "set tmargin " + std::to_string((t.tSeries.size() > 1 ? 3 : 1) + (iLines > 0 ? 2 : 0) + (bRose ? 1 : 0)) + "\n";
    if (iLines > 0) {
        s += "set label " + Quoted(t.sTitle) + " at screen 0.5, screen 0.97 center font ',16'\nset bmargin " +
             std::to_string(iLines + 5) + "\n";
    }
    for (int i = 0; i < iLines; ++i) {
        s += "set label " + Quoted(sBelow[static_cast<std::size_t>(i)]) + " at character 2, character " +
             std::to_string(iLines - i) + " textcolor rgb '#505050'\n";
    }
    return s + Tables(t) + Plot(t);
}

}  // namespace report
