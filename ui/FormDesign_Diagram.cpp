// The flow diagram: from the ports through receiver, mode and decoders to the tables, left to right, with recording,
// playback and output beside it. Captions are labels; the picture draws the boxes around them and the lines between.
#include <algorithm>

#include "platform/toolkit/Latin1.h"
#include "platform/toolkit/Twips.h"
#include "ui/FormDesign.h"

namespace ui {

namespace {

constexpr std::int32_t LeastBoxWidth = 1410;
constexpr std::int32_t LeastBoxHeight = 690;
constexpr std::int32_t ColumnGap = 570;
constexpr std::int32_t RowGap = 540;
constexpr std::int32_t BoxPadding = 120;  // around a caption
constexpr std::int32_t Edge = 180;        // around the whole drawing

struct Box {
    const char* sCaption;
    std::int32_t lColumn, lRow;
};

constexpr Box Boxes[] = {
    {"Input", 0, 1},     {"Comm", 1, 0},        {"Comm", 1, 2},   {"Receiver", 2, 1}, {"Record", 3, 0},
    {"Real Time", 3, 1}, {"Playback", 3, 2},    {"Mode", 4, 1},   {"Decoders", 5, 1}, {"Messages", 6, 0},
    {"Targets", 6, 1},   {"AIS Targets", 6, 2}, {"Output", 4, 2}, {"Comm", 5, 2},
};
constexpr std::int32_t LastColumn = 6;
constexpr std::int32_t LastRow = 2;

// Where the columns and rows of boxes stand, in twips: the boxes are as large as the largest caption asks for.
struct Raster {
    std::int32_t lBoxWidth, lBoxHeight;

    std::int32_t Left(std::int32_t lColumn) const { return Edge + lColumn * (lBoxWidth + ColumnGap); }
    std::int32_t Right(std::int32_t lColumn) const { return Left(lColumn) + lBoxWidth; }
    std::int32_t Top(std::int32_t lRow) const { return Edge + lRow * (lBoxHeight + RowGap); }
    std::int32_t Bottom(std::int32_t lRow) const { return Top(lRow) + lBoxHeight; }
    std::int32_t Middle(std::int32_t lRow) const { return Top(lRow) + lBoxHeight / 2; }
    std::int32_t Centre(std::int32_t lColumn) const { return Left(lColumn) + lBoxWidth / 2; }
    // The upright line in the gap behind a column, where paths part or meet.
    std::int32_t Bus(std::int32_t lColumn) const { return Right(lColumn) + 240; }
};

Raster RasterFor(const QList<QLabel*>& pBoxes) {
    Raster t{LeastBoxWidth, LeastBoxHeight};
    for (const QLabel* pBox : pBoxes) {
        const ui::Rect tCaption = toolkit::ToTwips(QRect(QPoint(0, 0), pBox->sizeHint()));
        t.lBoxWidth = std::max(t.lBoxWidth, static_cast<std::int32_t>(tCaption.dWidth) + 2 * BoxPadding);
        t.lBoxHeight = std::max(t.lBoxHeight, static_cast<std::int32_t>(tCaption.dHeight) + 2 * BoxPadding);
    }
    return t;
}

// The connections: plain ones belong to the picture, those that end in an arrow head are also kept apart.
void Connect(const Raster& t, toolkit::LinePicture& pct, std::vector<DiagramLine>& tArrows) {
    const auto ArrowRight = [&](std::int32_t lFrom, std::int32_t lTo, std::int32_t lRow) {
        tArrows.push_back({{lFrom, t.Middle(lRow), lTo, t.Middle(lRow)}, "Right"});
    };
    const auto ArrowDown = [&](std::int32_t lColumn, std::int32_t lFromRow, std::int32_t lToRow) {
        tArrows.push_back({{t.Centre(lColumn), t.Bottom(lFromRow), t.Centre(lColumn), t.Top(lToRow)}, "Bottom"});
    };
    const auto Plain = [&](std::int32_t lX1, std::int32_t lY1, std::int32_t lX2, std::int32_t lY2) {
        pct.AddLine({lX1, lY1, lX2, lY2});
    };
    // Input to both ports
    Plain(t.Right(0), t.Middle(1), t.Bus(0), t.Middle(1));
    Plain(t.Bus(0), t.Middle(0), t.Bus(0), t.Middle(2));
    ArrowRight(t.Bus(0), t.Left(1), 0);
    ArrowRight(t.Bus(0), t.Left(1), 2);
    // Both ports to the receiver
    Plain(t.Right(1), t.Middle(0), t.Bus(1), t.Middle(0));
    Plain(t.Right(1), t.Middle(2), t.Bus(1), t.Middle(2));
    Plain(t.Bus(1), t.Middle(0), t.Bus(1), t.Middle(2));
    ArrowRight(t.Bus(1), t.Left(2), 1);
    // What is received: recorded, and on in real time; or played back
    Plain(t.Bus(2), t.Middle(0), t.Bus(2), t.Middle(1));
    ArrowRight(t.Bus(2), t.Left(3), 0);
    ArrowRight(t.Right(2), t.Left(3), 1);
    ArrowRight(t.Right(3), t.Left(4), 1);
    Plain(t.Right(3), t.Middle(2), t.Bus(3), t.Middle(2));
    Plain(t.Bus(3), t.Middle(2), t.Bus(3), t.Middle(1));
    // Decoded into the tables, and forwarded
    ArrowRight(t.Right(4), t.Left(5), 1);
    Plain(t.Bus(5), t.Middle(0), t.Bus(5), t.Middle(1));
    ArrowRight(t.Bus(5), t.Left(6), 0);
    ArrowRight(t.Right(5), t.Left(6), 1);
    ArrowDown(6, 1, 2);
    ArrowDown(4, 1, 2);
    ArrowRight(t.Right(4), t.Left(5), 2);
    for (const DiagramLine& tArrow : tArrows) pct.AddLine(tArrow.tLine);
}

}  // namespace

void FormDesign::DesignDiagram() {
    for (const Box& t : Boxes) {
        auto* pBox = new QLabel(toolkit::FromLatin1(t.sCaption), &pctDiagram);
        pBox->setAlignment(Qt::AlignCenter);
        pBox->setForegroundRole(QPalette::Text);
    }
    pctDiagram.setAccessibleName(QStringLiteral("Flow diagram"));
    scrDiagram.setWidget(&pctDiagram);
    scrDiagram.setFrameShape(QFrame::NoFrame);
    // The tab's own ground, not one that a scroll area brings along.
    scrDiagram.viewport()->setAutoFillBackground(false);
    pctDiagram.setAutoFillBackground(false);
}

void FormDesign::PutDiagram() {
    const QList<QLabel*> pBoxes = pctDiagram.findChildren<QLabel*>();
    const Raster tRaster = RasterFor(pBoxes);
    pctDiagram.Clear();
    for (qsizetype i = 0; i < pBoxes.size(); ++i) {
        const Box& t = Boxes[i];
        const Rect tPlace{static_cast<double>(tRaster.Left(t.lColumn)), static_cast<double>(tRaster.Top(t.lRow)),
                          static_cast<double>(tRaster.lBoxWidth), static_cast<double>(tRaster.lBoxHeight)};
        pBoxes[i]->setGeometry(toolkit::ToPixels(tPlace));
        pctDiagram.AddBox(pBoxes[i]->geometry());
    }
    LnArrow.clear();
    Connect(tRaster, pctDiagram, LnArrow);
    PutBody(scrDiagram, BodyTop());
    const Rect tPicture{120, BodyTop(), static_cast<double>(tRaster.Right(LastColumn) + Edge),
                        static_cast<double>(tRaster.Bottom(LastRow) + Edge)};
    PutInside(pctDiagram, tPicture);
}

}  // namespace ui
