// The flow diagram on its tab, and its arrow heads.
#include "app/frmMain.h"
#include "ui/ArrowHead.h"

namespace app {

// The picture keeps its size and is scrolled where the tab has no room for it; only then the keyboard stops there.
void frmMain::LayOutDiagram(ui::Size tTabs) {
    Place(scrDiagram, ui::ListRect(Design(scrDiagram), tTabs));
    const bool bWhole = scrDiagram.width() >= pctDiagram.width() && scrDiagram.height() >= pctDiagram.height();
    scrDiagram.setFocusPolicy(bWhole ? Qt::NoFocus : Qt::TabFocus);
    pctDiagram.ClearDrawing();
    for (const ui::DiagramLine& tLine : LnArrow) DiagramArrowHead(pctDiagram, tLine);
}

void frmMain::DiagramArrowHead(toolkit::LinePicture& pct, const ui::DiagramLine& tLine) {
    for (const runtime::Stroke& t : ui::ArrowHead(tLine.tLine.lX2, tLine.tLine.lY2, tLine.sTag)) pct.DrawLine(t);
}

}  // namespace app
