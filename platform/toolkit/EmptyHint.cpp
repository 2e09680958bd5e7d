// Painting the hint of an empty view.
#include "platform/toolkit/EmptyHint.h"

#include <QPainter>

namespace toolkit {

namespace {

constexpr int Margin = 12;  // pixels that are left free at each side

}  // namespace

void PaintEmptyHint(QWidget& tViewport, const QString& sHint) {
    if (sHint.isEmpty()) return;
    QPainter tPainter(&tViewport);
    QFont tFont = tViewport.window()->font();  // a sentence of the window, not a line of the log
    tFont.setResolveMask(QFont::AllPropertiesResolved);
    tPainter.setFont(tFont);
    tPainter.setPen(tViewport.palette().color(QPalette::PlaceholderText));
    tPainter.drawText(tViewport.rect().adjusted(Margin, Margin, -Margin, -Margin), Qt::AlignCenter | Qt::TextWordWrap,
                      sHint);
}

}  // namespace toolkit
