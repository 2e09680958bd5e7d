// The flow diagram: from the ports through receiver, mode and decoders to the tables, left to right, with recording,
// playback and output beside it. Boxes are labels, connections are lines between them.
#include "platform/toolkit/Twips.h"
#include "ui/FormDesign.h"

namespace ui {

namespace {

constexpr std::int32_t BoxWidth = 1410;
constexpr std::int32_t BoxHeight = 690;
constexpr std::int32_t ColumnStep = BoxWidth + 570;
constexpr std::int32_t RowStep = BoxHeight + 540;
constexpr std::int32_t Edge = 180;  // around the whole drawing

struct Box {
    const char* sCaption;
    std::int32_t lColumn, lRow;
};

constexpr Box Boxes[] = {
    {"Input", 0, 1},     {"Comm", 1, 0},        {"Comm", 1, 2},   {"Receiver", 2, 1}, {"Record", 3, 0},
    {"Real Time", 3, 1}, {"Playback", 3, 2},    {"Mode", 4, 1},   {"Decoders", 5, 1}, {"Messages", 6, 0},
    {"Targets", 6, 1},   {"AIS Targets", 6, 2}, {"Output", 4, 2}, {"Comm", 5, 2},
};

std::int32_t Left(std::int32_t lColumn) { return Edge + lColumn * ColumnStep; }
std::int32_t Right(std::int32_t lColumn) { return Left(lColumn) + BoxWidth; }
std::int32_t Top(std::int32_t lRow) { return Edge + lRow * RowStep; }
std::int32_t Bottom(std::int32_t lRow) { return Top(lRow) + BoxHeight; }
std::int32_t Middle(std::int32_t lRow) { return Top(lRow) + BoxHeight / 2; }
std::int32_t Centre(std::int32_t lColumn) { return Left(lColumn) + BoxWidth / 2; }
// The upright line in the gap behind a column, where paths part or meet.
std::int32_t Bus(std::int32_t lColumn) { return Right(lColumn) + 240; }

}  // namespace

void FormDesign::DesignDiagram() {
    const auto tRight = [this](std::int32_t lFrom, std::int32_t lTo, std::int32_t lRow) {
        LnArrow.push_back({{lFrom, Middle(lRow), lTo, Middle(lRow)}, "Right"});
    };
    const auto tDown = [this](std::int32_t lColumn, std::int32_t lFromRow, std::int32_t lToRow) {
        LnArrow.push_back({{Centre(lColumn), Bottom(lFromRow), Centre(lColumn), Top(lToRow)}, "Bottom"});
    };
    const auto tPlain = [this](std::int32_t lX1, std::int32_t lY1, std::int32_t lX2, std::int32_t lY2) {
        pctDiagram.AddLine({lX1, lY1, lX2, lY2});
    };
    // Input to both ports
    tPlain(Right(0), Middle(1), Bus(0), Middle(1));
    tPlain(Bus(0), Middle(0), Bus(0), Middle(2));
    tRight(Bus(0), Left(1), 0);
    tRight(Bus(0), Left(1), 2);
    // Both ports to the receiver
    tPlain(Right(1), Middle(0), Bus(1), Middle(0));
    tPlain(Right(1), Middle(2), Bus(1), Middle(2));
    tPlain(Bus(1), Middle(0), Bus(1), Middle(2));
    tRight(Bus(1), Left(2), 1);
    // What is received: recorded, and on in real time; or played back
    tPlain(Bus(2), Middle(0), Bus(2), Middle(1));
    tRight(Bus(2), Left(3), 0);
    tRight(Right(2), Left(3), 1);
    tRight(Right(3), Left(4), 1);
    tPlain(Right(3), Middle(2), Bus(3), Middle(2));
    tPlain(Bus(3), Middle(2), Bus(3), Middle(1));
    // Decoded into the tables, and forwarded
    tRight(Right(4), Left(5), 1);
    tPlain(Bus(5), Middle(0), Bus(5), Middle(1));
    tRight(Bus(5), Left(6), 0);
    tRight(Right(5), Left(6), 1);
    tDown(6, 1, 2);
    tDown(4, 1, 2);
    tRight(Right(4), Left(5), 2);

    for (const DiagramLine& t : LnArrow) pctDiagram.AddLine(t.tLine);
    for (const Box& t : Boxes) {
        auto* pBox = new QLabel(tr(t.sCaption), &pctDiagram);
        pBox->setAlignment(Qt::AlignCenter);
        pBox->setFrameStyle(QFrame::Box | QFrame::Plain);
        pBox->setAutoFillBackground(true);
        pBox->setBackgroundRole(QPalette::Base);
        pBox->setForegroundRole(QPalette::Text);
        const Rect tPlace{static_cast<double>(Left(t.lColumn)), static_cast<double>(Top(t.lRow)), BoxWidth, BoxHeight};
        pBox->setGeometry(toolkit::ToPixels(tPlace));
    }
    pctDiagram.setAccessibleName(tr("Flow diagram"));
    Put(pctDiagram, {120, BodyTop(), static_cast<double>(Right(6) + Edge), static_cast<double>(Bottom(2) + Edge)});
}

}  // namespace ui
