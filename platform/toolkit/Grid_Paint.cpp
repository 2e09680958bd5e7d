// The painting of a grid's rows. The stock view asks the style for the ground of every cell and fills in a whole set of
// options for each: half of the time that a full table takes to paint, ten times a second.
#include <QHeaderView>
#include <QPaintEvent>
#include <QPainter>
#include <QStyleOptionViewItem>
#include <algorithm>

#include "platform/toolkit/CellDelegate.h"
#include "platform/toolkit/EmptyHint.h"
#include "platform/toolkit/Grid.h"
#include "platform/toolkit/GridModel.h"
#include "platform/toolkit/Latin1.h"
#include "platform/toolkit/ViewColours.h"

namespace toolkit {

namespace {

constexpr int GridLine = 1;  // pixels at the right and at the bottom of every cell

}  // namespace

// The ground, too: Qt would fill that of the whole piece before, and the rows again.
void Grid::paintEvent(QPaintEvent* pEvent) {
    m_pDelegate->BeginPainting();
    QPainter tPainter(viewport());
    const int iRows = m_pModel->rowCount();
    const int iBottom = iRows > 0 ? rowViewportPosition(iRows - 1) + rowHeight(iRows - 1) : 0;
    const QRect tCells(-horizontalOffset(), 0, horizontalHeader()->length(), iBottom);
    for (const QRect& t : pEvent->region().subtracted(tCells)) {
        tPainter.fillRect(t, palette().brush(ColourGroup(*this), QPalette::Base));
    }
    QStyleOptionViewItem tOption;
    initViewItemOption(&tOption);
    const auto lLine = static_cast<QRgb>(style()->styleHint(QStyle::SH_Table_GridLineColor, &tOption, this));
    PaintRows(tPainter, pEvent->region(), QColor::fromRgba(lLine));
    tPainter.end();
    PaintEmptyHint(*viewport(), EmptyHint());
}

// Each row once, whatever pieces of it are to be painted: a text that is drawn over itself looks bolder.
void Grid::PaintRows(QPainter& tPainter, const QRegion& tDirty, const QColor& tLine) {
    const QRect tBounds = tDirty.boundingRect();
    int iRow = rowAt(tBounds.top());
    if (iRow < 0) return;
    int iBottom = tBounds.top();
    for (; iRow < m_pModel->rowCount() && iBottom <= tBounds.bottom(); ++iRow) {
        if (isRowHidden(iRow)) continue;
        const QRect tRow(-horizontalOffset(), rowViewportPosition(iRow), horizontalHeader()->length(), rowHeight(iRow));
        iBottom = tRow.bottom() + 1;
        if (!tDirty.intersects(tRow)) continue;
        PaintRow(tPainter, iRow, tRow, tBounds);
        tPainter.fillRect(tRow.left(), tRow.bottom(), tRow.width(), GridLine, tLine);
    }
    for (int iCol = 0; iCol < m_pModel->columnCount(); ++iCol) {
        if (isColumnHidden(iCol)) continue;
        const int iRight = columnViewportPosition(iCol) + columnWidth(iCol);
        tPainter.fillRect(iRight - GridLine, tBounds.top(), GridLine, iBottom - tBounds.top(), tLine);
    }
}

void Grid::PaintRow(QPainter& tPainter, int iRow, const QRect& tRow, const QRect& tDirty) {
    const QPalette::ColorGroup eGroup = ColourGroup(*this);
    const bool bSelected = selectionModel()->hasSelection() && selectionModel()->isSelected(m_pModel->index(iRow, 0));
    const bool bOdd = (tRow.top() + verticalOffset()) / tRow.height() % 2 != 0;  // all rows are equally high
    const auto eGround = bOdd ? QPalette::AlternateBase : QPalette::Base;
    tPainter.fillRect(tRow, palette().brush(eGroup, bSelected ? QPalette::Highlight : eGround));
    const int iLive = m_pModel->LiveRow(iRow);
    if (iLive < 0) return;  // gone since the latest beat
    tPainter.setPen(palette().color(eGroup, bSelected ? QPalette::HighlightedText : QPalette::Text));
    for (int iCol = 0; iCol < std::min(m_pModel->columnCount(), Cells.Cols()); ++iCol) {
        if (isColumnHidden(iCol) || Cells.Text(iLive, iCol).empty()) continue;
        const QRect tCell(columnViewportPosition(iCol), tRow.top(), columnWidth(iCol) - GridLine,
                          tRow.height() - GridLine);
        if (tCell.right() < tDirty.left() || tCell.left() > tDirty.right()) continue;
        const Qt::Alignment eAlignment = ToQt(Cells.CellAlignment(iLive, iCol));
        m_pDelegate->DrawText(tPainter, tCell, eAlignment, FromLatin1(Cells.Text(iLive, iCol)));
    }
}

}  // namespace toolkit
