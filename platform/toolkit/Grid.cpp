// The grid: view, columns, mouse and copying.
#include "platform/toolkit/Grid.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QHash>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStaticText>
#include <QStyledItemDelegate>
#include <algorithm>
#include <array>
#include <cmath>

#include "platform/toolkit/GridModel.h"
#include "platform/toolkit/Latin1.h"
#include "platform/toolkit/RepaintBeat.h"

namespace toolkit {

namespace {

constexpr int CellPadding = 2;    // pixels left and right of a cell's text
constexpr int NarrowColumn = 16;  // pixels; up to here text gets all there is
constexpr int RowPadding = 4;     // pixels that a row is higher than its font

// Draws the text of a cell itself, from texts that were laid out before: a small part of the cost of the stock
// delegate, which lays out every text anew.
class CellDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    void paint(QPainter* pPainter, const QStyleOptionViewItem& tOption, const QModelIndex& tIndex) const override {
        const bool bSelected = (tOption.state & QStyle::State_Selected) != 0;
        const QPalette& tPalette = tOption.palette;
        const auto eGroup = (tOption.state & QStyle::State_Active) != 0 ? QPalette::Active : QPalette::Inactive;
        if (bSelected) {
            pPainter->fillRect(tOption.rect, tPalette.brush(eGroup, QPalette::Highlight));
        } else if ((tOption.features & QStyleOptionViewItem::Alternate) != 0) {
            pPainter->fillRect(tOption.rect, tPalette.brush(eGroup, QPalette::AlternateBase));
        }
        pPainter->setPen(tPalette.color(eGroup, bSelected ? QPalette::HighlightedText : QPalette::Text));
        const int iPadding = tOption.rect.width() > NarrowColumn ? CellPadding : 0;
        const QRect tText = tOption.rect.adjusted(iPadding, 0, -iPadding, 0);
        DrawText(*pPainter, tText, tIndex.data(Qt::TextAlignmentRole).toInt(), tIndex.data().toString());
    }

private:
    void DrawText(QPainter& tPainter, const QRect& tRect, int iAlignment, const QString& sText) const {
        if (sText.isEmpty()) return;
        const QStaticText& tShaped = Shaped(tPainter.font(), sText);
        const QSizeF tSize = tShaped.size();
        double dLeft = tRect.left();
        if ((iAlignment & Qt::AlignRight) != 0) dLeft = tRect.left() + tRect.width() - tSize.width();
        if ((iAlignment & Qt::AlignHCenter) != 0) dLeft = tRect.left() + (tRect.width() - tSize.width()) / 2;
        const QPointF tPlace(std::round(dLeft), std::round(tRect.top() + (tRect.height() - tSize.height()) / 2));
        if (tSize.width() <= tRect.width()) {
            tPainter.drawStaticText(tPlace, tShaped);
            return;
        }
        tPainter.save();
        tPainter.setClipRect(tRect, Qt::IntersectClip);
        tPainter.drawStaticText(tPlace, tShaped);
        tPainter.restore();
    }

    // Laying a text out is the dear part of drawing it, and from one beat to the next nearly all texts stay.
    const QStaticText& Shaped(const QFont& tFont, const QString& sText) const {
        if (m_tShaped.size() >= MostShaped || tFont != m_tFont) {
            m_tShaped.clear();
            m_tFont = tFont;
        }
        auto it = m_tShaped.find(sText);
        if (it == m_tShaped.end()) {
            it = m_tShaped.insert(sText, QStaticText(sText));
            it->setTextFormat(Qt::PlainText);
            it->prepare({}, tFont);
        }
        return *it;
    }

    static constexpr qsizetype MostShaped = 4096;  // a full table has some 2,000 different texts
    mutable QHash<QString, QStaticText> m_tShaped;
    mutable QFont m_tFont;
};

}  // namespace

Grid::Grid(QWidget* pParent)
    : QTableView(pParent),
      m_pModel(new GridModel(Cells, this)),
      m_pBeat(new RepaintBeat(*this, [this] { TakeOver(); })) {
    setModel(m_pModel);
    setItemDelegate(new CellDelegate(this));
    setAlternatingRowColors(true);
    setWordWrap(false);
    setEditTriggers(NoEditTriggers);
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setTabKeyNavigation(false);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollMode(ScrollPerPixel);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setMinimumSectionSize(1);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + RowPadding);
    horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    horizontalHeader()->setMinimumSectionSize(1);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setSectionsClickable(false);
    setMouseTracking(true);
    viewport()->setMouseTracking(true);
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
    m_tColumns[static_cast<std::size_t>(iCol)] = {std::string(sTemplate), iWidth, bShown};
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
    m_pModel->Publish();
    const int iCols = std::min(m_pModel->columnCount(), static_cast<int>(m_tColumns.size()));
    for (int iCol = 0; iCol < iCols; ++iCol) {
        const Column& tColumn = m_tColumns[static_cast<std::size_t>(iCol)];
        if (isColumnHidden(iCol) == tColumn.bShown) setColumnHidden(iCol, !tColumn.bShown);
        if (tColumn.bShown && columnWidth(iCol) != tColumn.iWidth) setColumnWidth(iCol, tColumn.iWidth);
    }
    for (int iRow = 1; iRow < Cells.Rows(); ++iRow) {
        if (isRowHidden(iRow - 1) != Cells.Hidden(iRow)) setRowHidden(iRow - 1, Cells.Hidden(iRow));
    }
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
    m_fMouseX = fX;
    m_fMouseY = fY;
    emit Clicked();
}

void Grid::DblClick(float fX, float fY) {
    m_fMouseX = fX;
    m_fMouseY = fY;
    emit DblClicked();
}

void Grid::MouseMove(float fX, float fY) {
    m_fMouseX = fX;
    m_fMouseY = fY;
    emit MouseMoved(fX, fY);
}

// Mouse events of the viewport and of the header, in the grid's own coordinates.
void Grid::Track(QWidget& tSource, QEvent* pEvent) {
    const QPoint tOffset = tSource.mapTo(this, QPoint(0, 0));
    const auto tPlace = [&] { return static_cast<QMouseEvent*>(pEvent)->position() + tOffset; };
    const auto bLeft = [&] { return static_cast<QMouseEvent*>(pEvent)->button() == Qt::LeftButton; };
    if (pEvent->type() == QEvent::MouseMove) {
        MouseMove(static_cast<float>(tPlace().x()), static_cast<float>(tPlace().y()));
    } else if (pEvent->type() == QEvent::MouseButtonRelease && bLeft()) {
        Click(static_cast<float>(tPlace().x()), static_cast<float>(tPlace().y()));
    } else if (pEvent->type() == QEvent::MouseButtonDblClick && bLeft()) {
        DblClick(static_cast<float>(tPlace().x()), static_cast<float>(tPlace().y()));
    } else if (pEvent->type() == QEvent::Leave) {
        MouseMove(-1, -1);
    }
}

bool Grid::viewportEvent(QEvent* pEvent) {
    const bool bHandled = QTableView::viewportEvent(pEvent);
    Track(*viewport(), pEvent);
    return bHandled;
}

bool Grid::eventFilter(QObject* pObject, QEvent* pEvent) {
    if (pObject == horizontalHeader()->viewport() && pEvent->type() != QEvent::Leave) {
        Track(*horizontalHeader()->viewport(), pEvent);
    }
    return QTableView::eventFilter(pObject, pEvent);
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

void Grid::contextMenuEvent(QContextMenuEvent* pEvent) {
    QMenu tMenu(this);
    QAction* pCopy = tMenu.addAction(tr("&Copy"), this, &Grid::CopySelection);
    pCopy->setShortcut(QKeySequence::Copy);
    pCopy->setEnabled(selectionModel()->hasSelection());
    tMenu.addAction(tr("Select &All"), this, &Grid::selectAll)->setShortcut(QKeySequence::SelectAll);
    tMenu.exec(pEvent->globalPos());
}

void Grid::showEvent(QShowEvent* pEvent) {
    m_pBeat->Shown();
    QTableView::showEvent(pEvent);
}

void Grid::changeEvent(QEvent* pEvent) {
    QTableView::changeEvent(pEvent);
    if (pEvent->type() == QEvent::FontChange) {
        verticalHeader()->setDefaultSectionSize(fontMetrics().height() + RowPadding);
    }
}

QString Grid::SelectedText() const {
    QModelIndexList tRows = selectionModel()->selectedRows(0);
    std::ranges::sort(tRows, {}, [](const QModelIndex& t) { return t.row(); });
    QString sText;
    for (const QModelIndex& tRow : tRows) {
        if (isRowHidden(tRow.row())) continue;
        QStringList sCells;
        for (int iCol = 0; iCol < m_pModel->columnCount(); ++iCol) {
            if (!isColumnHidden(iCol)) sCells << tRow.siblingAtColumn(iCol).data().toString();
        }
        sText += sCells.join(QLatin1Char('\t')) + QLatin1Char('\n');
    }
    return sText;
}

void Grid::CopySelection() const {
    m_pBeat->Synchronize();  // rows that have gone since are no longer selected
    const QString sText = SelectedText();
    if (!sText.isEmpty()) QGuiApplication::clipboard()->setText(sText);
}

}  // namespace toolkit
