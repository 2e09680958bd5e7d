// The grid: view, columns and mouse.
#include "platform/toolkit/Grid.h"

#include <QAccessible>
#include <QCoreApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QStatusTipEvent>
#include <algorithm>
#include <utility>

#include "platform/toolkit/CellDelegate.h"
#include "platform/toolkit/GridModel.h"
#include "platform/toolkit/Latin1.h"
#include "platform/toolkit/PlainHeader.h"
#include "platform/toolkit/RepaintBeat.h"

namespace toolkit {

Grid::Grid(QWidget* pParent)
    : QTableView(pParent),
      m_pModel(new GridModel(Cells, this)),
      m_pDelegate(new CellDelegate(this)),
      m_pBeat(new RepaintBeat(*this, [this] { TakeOver(); })) {
    setModel(m_pModel);
    setItemDelegate(m_pDelegate);
    setAlternatingRowColors(true);
    setWordWrap(false);
    setEditTriggers(NoEditTriggers);
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setTabKeyNavigation(false);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollMode(ScrollPerPixel);
    setHorizontalHeader(new PlainHeader(this));
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setMinimumSectionSize(1);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + CellDelegate::RowPadding);
    horizontalHeader()->setSectionResizeMode(QHeaderView::Interactive);
    horizontalHeader()->setMinimumSectionSize(1);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setSectionsClickable(false);
    setMouseTracking(true);
    viewport()->setMouseTracking(true);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    horizontalHeader()->viewport()->setMouseTracking(true);
    horizontalHeader()->viewport()->installEventFilter(this);
    Cells.Changed.SetListener([this] { m_pBeat->Mark(); });
}

Grid::~Grid() { Cells.Changed.SetListener({}); }

void Grid::SetRedraw(bool bRedraw) {
    m_bRedraw = bRedraw;
    if (bRedraw && Cells.Changed.Marked()) m_pBeat->Mark();
}

void Grid::SetColumn(int iCol, std::string_view sTemplate, bool bShown, int iWidth) {
    if (m_tColumns.size() <= static_cast<std::size_t>(iCol)) m_tColumns.resize(static_cast<std::size_t>(iCol) + 1);
    Column& tColumn = m_tColumns[static_cast<std::size_t>(iCol)];
    if (tColumn.iWidth != iWidth) tColumn.bApply = true;
    if (tColumn.bShown != bShown) {
        for (Column& tAny : m_tColumns) tAny.bApply = true;  // other columns begin with the program's widths
    }
    tColumn.sTemplate = sTemplate;
    tColumn.iWidth = iWidth;
    tColumn.bShown = bShown;
    Cells.Changed.Mark();
    m_pBeat->Mark();
}

int Grid::TextWidth(std::string_view sText) const { return fontMetrics().horizontalAdvance(FromLatin1(sText)); }

void Grid::TakeOver() {
    if (!m_bRedraw) {
        // Nothing is taken over while redraw is off; SetRedraw(true) marks again.
        return;
    }
    Cells.Changed.Clear();
    const QString sHint = EmptyHint();
    TakeOverRows();
    TakeOverColumns();
    for (int iRow = 1; iRow < Cells.Rows(); ++iRow) {
        if (isRowHidden(iRow - 1) != Cells.Hidden(iRow)) setRowHidden(iRow - 1, Cells.Hidden(iRow));
    }
    if (EmptyHint() != sHint) viewport()->update();
    TellPointed();  // another row may have come under the mouse
}

// The keyboard cursor whose row is gone goes to the nearest one; neither scroll position nor selection follow it there.
void Grid::TakeOverRows() {
    const QModelIndex tCursor = currentIndex();
    const int iNearest = tCursor.isValid() ? m_pModel->NearestLiveRow(tCursor.row()) : -1;
    const int iColumn = tCursor.column();
    const QItemSelection tSelected = selectionModel()->selection();
    m_pModel->Publish(std::ranges::any_of(tSelected, [](const auto& tRange) { return tRange.height() > 1; }));
    if (iNearest < 0 || currentIndex().isValid()) return;
    setAutoScroll(false);
    selectionModel()->setCurrentIndex(m_pModel->index(iNearest - 1, iColumn), QItemSelectionModel::NoUpdate);
    setAutoScroll(true);
}

void Grid::TakeOverColumns() {
    const int iCols = std::min(m_pModel->columnCount(), static_cast<int>(m_tColumns.size()));
    for (int iCol = 0; iCol < iCols; ++iCol) {
        Column& tColumn = m_tColumns[static_cast<std::size_t>(iCol)];
        if (isColumnHidden(iCol) == tColumn.bShown) setColumnHidden(iCol, !tColumn.bShown);
        if (tColumn.bShown && std::exchange(tColumn.bApply, false)) setColumnWidth(iCol, tColumn.iWidth);
    }
}

// The stock view paints itself wholly when more than one cell has changed. The ground right of the last column stays.
void Grid::dataChanged(const QModelIndex& tTopLeft, const QModelIndex& tBottomRight, const QList<int>&) {
    const int iTop = rowViewportPosition(tTopLeft.row());
    const int iBottom = rowViewportPosition(tBottomRight.row()) + rowHeight(tBottomRight.row());
    viewport()->update(0, iTop, horizontalHeader()->length() - horizontalOffset(), iBottom - iTop);
    if (!QAccessible::isActive()) return;
    QAccessibleTableModelChangeEvent tEvent(this, QAccessibleTableModelChangeEvent::DataChanged);
    tEvent.setFirstRow(tTopLeft.row());
    tEvent.setFirstColumn(tTopLeft.column());
    tEvent.setLastRow(tBottomRight.row());
    tEvent.setLastColumn(tBottomRight.column());
    QAccessible::updateAccessibility(&tEvent);
}

void Grid::Synchronize() { m_pBeat->Synchronize(); }

int Grid::ColPos(int iCol) const { return frameWidth() + columnViewportPosition(iCol); }

int Grid::ColWidth(int iCol) const { return isColumnHidden(iCol) ? 0 : columnWidth(iCol); }

int Grid::RowPos(int iRow) const {
    if (iRow == 0) return frameWidth();
    return RowPos(0) + RowHeight(0) + rowViewportPosition(iRow - 1);
}

int Grid::RowHeight(int iRow) const {
    if (iRow == 0) return horizontalHeader()->sizeHint().height();
    return isRowHidden(iRow - 1) ? 0 : rowHeight(iRow - 1);
}

int Grid::LiveRow(int iRow) const { return iRow == 0 ? 0 : m_pModel->LiveRow(iRow - 1); }

void Grid::Click(float fX, float fY) {
    const QPoint tPlace =
        viewport()->mapFrom(this, QPointF(static_cast<double>(fX), static_cast<double>(fY)).toPoint());
    Press(tPlace);
    Release(tPlace);
}

void Grid::Press(QPoint tPlace) {
    m_tPressed = indexAt(tPlace);
    const int iRow = m_tPressed.row();
    const int iCol = m_tPressed.column();
    // With its grid lines, which visualRect leaves out.
    m_tPressedPlace = m_tPressed.isValid() ? QRect(columnViewportPosition(iCol), rowViewportPosition(iRow),
                                                   columnWidth(iCol), rowHeight(iRow))
                                           : QRect();
}

void Grid::Release(QPoint tPlace) {
    const bool bClick = std::exchange(m_tPressedPlace, {}).contains(tPlace);
    if (bClick) emit Clicked(m_tPressed.isValid() ? LiveRow(m_tPressed.row() + 1) : -1, m_tPressed.column());
}

bool Grid::viewportEvent(QEvent* pEvent) {
    const auto Mouse = [pEvent] { return static_cast<QMouseEvent*>(pEvent); };
    const auto Spot = [&] { return Mouse()->position().toPoint(); };
    const QEvent::Type eType = pEvent->type();
    if (eType == QEvent::MouseButtonPress && Mouse()->button() == Qt::LeftButton) Press(Spot());
    const bool bHandled = QTableView::viewportEvent(pEvent);
    if (eType == QEvent::MouseButtonRelease && Mouse()->button() == Qt::LeftButton) {
        Release(Spot());
    } else if (eType == QEvent::MouseButtonDblClick && Mouse()->button() == Qt::LeftButton) {
        DblClick();  // its release finds nothing pressed
    } else if (eType == QEvent::MouseMove) {
        TellMove(*viewport(), *Mouse());
        PointAt(Spot());
    } else if (eType == QEvent::Leave) {
        MouseMove(-1, -1);
        PointAt({});
    }
    return bHandled;
}

// Over the header the mouse explains columns, too. Its buttons drag and fit columns and mean no cell.
bool Grid::eventFilter(QObject* pObject, QEvent* pEvent) {
    // The header is asked for at a move only: other events come while it is being taken down, too.
    if (pEvent->type() == QEvent::MouseMove && pObject == horizontalHeader()->viewport()) {
        TellMove(*horizontalHeader()->viewport(), *static_cast<QMouseEvent*>(pEvent));
    }
    return QTableView::eventFilter(pObject, pEvent);
}

void Grid::TellMove(const QWidget& tSource, const QMouseEvent& tEvent) {
    const QPointF tPlace = tEvent.position() + tSource.mapTo(this, QPoint(0, 0));
    MouseMove(static_cast<float>(tPlace.x()), static_cast<float>(tPlace.y()));
}

void Grid::PointAt(std::optional<QPoint> tPlace) {
    m_tPointed = tPlace && viewport()->rect().contains(*tPlace) ? tPlace : std::nullopt;
    TellPointed();
}

// The whole text of a cell that is cut is the window's status tip while the mouse points at the cell.
void Grid::TellPointed() {
    QString sWhole;
    const QModelIndex tIndex = m_tPointed ? indexAt(*m_tPointed) : QModelIndex();
    if (tIndex.isValid()) {
        sWhole = tIndex.data().toString();
        if (!m_pDelegate->IsCut(font(), sWhole, visualRect(tIndex).width())) sWhole.clear();
    }
    if (sWhole == m_sTold) return;
    m_sTold = sWhole;
    QStatusTipEvent tEvent(sWhole);
    QCoreApplication::sendEvent(this, &tEvent);
}

void Grid::keyPressEvent(QKeyEvent* pEvent) {
    if (pEvent->matches(QKeySequence::Copy)) {
        CopySelection();
        return;
    }
    const bool bEnter = pEvent->key() == Qt::Key_Return || pEvent->key() == Qt::Key_Enter;
    if (bEnter && currentIndex().isValid()) {
        const int iRow = LiveRow(currentIndex().row() + 1);
        if (iRow > 0) emit RowActivated(iRow);
        return;
    }
    QTableView::keyPressEvent(pEvent);
}

void Grid::SetEmptyHints(const QString& sNoRows, const QString& sAllHidden, int iAlwaysShown) {
    m_sNoRowsHint = sNoRows;
    m_sAllHiddenHint = sAllHidden;
    m_iAlwaysShown = iAlwaysShown;
    viewport()->update();
}

QString Grid::EmptyHint() const {
    const int iShown = verticalHeader()->count() - verticalHeader()->hiddenSectionCount();
    if (iShown > m_iAlwaysShown) return {};
    return m_pModel->rowCount() == 0 ? m_sNoRowsHint : m_sAllHiddenHint;
}

void Grid::scrollContentsBy(int iX, int iY) {
    QTableView::scrollContentsBy(iX, iY);
    TellPointed();
}

void Grid::showEvent(QShowEvent* pEvent) {
    m_pBeat->Shown();
    QTableView::showEvent(pEvent);
}

void Grid::hideEvent(QHideEvent* pEvent) {
    PointAt({});
    QTableView::hideEvent(pEvent);
}

void Grid::changeEvent(QEvent* pEvent) {
    QTableView::changeEvent(pEvent);
    if (pEvent->type() == QEvent::FontChange) {
        verticalHeader()->setDefaultSectionSize(fontMetrics().height() + CellDelegate::RowPadding);
    }
}

void Grid::FitColumns() {
    for (int iCol = 0; iCol < m_pModel->columnCount(); ++iCol) {
        if (!isColumnHidden(iCol)) resizeColumnToContents(iCol);
    }
}

}  // namespace toolkit
