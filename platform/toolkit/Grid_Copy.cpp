// What a grid gives away: its menu, selected rows for the clipboard, all that it shows.
#include <QClipboard>
#include <QGuiApplication>
#include <algorithm>

#include "platform/toolkit/ContextMenu.h"
#include "platform/toolkit/Grid.h"
#include "platform/toolkit/GridModel.h"
#include "platform/toolkit/RepaintBeat.h"

namespace toolkit {

void Grid::contextMenuEvent(QContextMenuEvent* pEvent) {
    QMenu& tMenu = NewContextMenu(*this);
    const bool bSelected = selectionModel()->hasSelection();
    AddEntry(tMenu, QStringLiteral("&Copy"), QKeySequence::Copy, bSelected, [this] { CopySelection(); });
    AddEntry(tMenu, QStringLiteral("Copy with Column &Names"), {}, bSelected, [this] { CopySelection(true); });
    AddEntry(tMenu, QStringLiteral("&Save as CSV..."), {}, true, [this] { emit SaveAsked(); });
    AddEntry(tMenu, QStringLiteral("Select &All"), QKeySequence::SelectAll, m_pModel->rowCount() > 0,
             [this] { selectAll(); });
    const bool bKeyboard = pEvent->reason() == QContextMenuEvent::Keyboard;
    const QModelIndex tIndex = bKeyboard ? currentIndex() : indexAt(pEvent->pos());
    emit MenuAsked(tMenu, tIndex.isValid() ? LiveRow(tIndex.row() + 1) : -1);
    OpenContextMenu(tMenu, *pEvent, *viewport(), visualRect(currentIndex()));
}

QString Grid::SelectedText(bool bNames) const {
    QModelIndexList tRows = selectionModel()->selectedRows(0);
    std::ranges::sort(tRows, {}, [](const QModelIndex& t) { return t.row(); });
    const auto LineOf = [this](const auto& TextOf) {
        QStringList sCells;
        for (int iCol = 0; iCol < m_pModel->columnCount(); ++iCol) {
            if (!isColumnHidden(iCol)) sCells << TextOf(iCol);
        }
        return sCells.join(QLatin1Char('\t')) + QLatin1Char('\n');
    };
    QString sText;
    for (const QModelIndex& tRow : tRows) {
        if (isRowHidden(tRow.row())) continue;
        sText += LineOf([&](int iCol) { return tRow.siblingAtColumn(iCol).data().toString(); });
    }
    if (!bNames || sText.isEmpty()) return sText;
    return LineOf([&](int iCol) { return m_pModel->headerData(iCol, Qt::Horizontal, Qt::DisplayRole).toString(); }) +
           sText;
}

void Grid::CopySelection(bool bNames) const {
    m_pBeat->Synchronize();  // rows that have gone since are no longer selected
    const QString sText = SelectedText(bNames);
    if (!sText.isEmpty()) QGuiApplication::clipboard()->setText(sText);
}

std::vector<std::vector<std::string>> Grid::ShownCells() const {
    std::vector<std::vector<std::string>> sRows;
    for (int iRow = 0; iRow < Cells.Rows(); ++iRow) {
        if (Cells.Hidden(iRow)) continue;
        std::vector<std::string>& sCells = sRows.emplace_back();
        for (int iCol = 0; iCol < Cells.Cols(); ++iCol) {
            if (!isColumnHidden(iCol)) sCells.push_back(Cells.Text(iRow, iCol));
        }
    }
    return sRows;
}

}  // namespace toolkit
