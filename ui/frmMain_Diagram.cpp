// The arrow heads of the flow diagram.
#include "app/frmMain.h"
#include "ui/ArrowHead.h"

namespace app {

void frmMain::LayOutDiagram() {
    pctDiagram.ClearDrawing();
    for (const ui::DiagramLine& tLine : LnArrow) DiagramArrowHead(pctDiagram, tLine);
}

void frmMain::DiagramArrowHead(toolkit::LinePicture& pct, const ui::DiagramLine& tLine) {
    for (const runtime::Stroke& t : ui::ArrowHead(tLine.tLine.lX2, tLine.tLine.lY2, tLine.sTag)) pct.DrawLine(t);
}

}  // namespace app
