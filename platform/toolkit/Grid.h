// A grid of text cells: a table view over GridCells, with row 0 of the cells as its header. Writers change Cells and
// never wait for the view; the view takes over on its beat. Also what the mouse does on it. Columns are dragged wider
// and narrower at their header borders and fitted by a double-click there.
#pragma once

#include <QPersistentModelIndex>
#include <QTableView>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/runtime/GridCells.h"

class QMenu;

namespace toolkit {

class CellDelegate;
class GridModel;
class RepaintBeat;

class Grid : public QTableView {
    Q_OBJECT
public:
    explicit Grid(QWidget* pParent = nullptr);
    ~Grid() override;

    runtime::GridCells Cells;

    // While redraw is off the view does not take over.
    bool Redraw() const { return m_bRedraw; }
    void SetRedraw(bool bRedraw);

    // A column that starts as wide as a text in the grid's font, in device-independent pixels; hidden when
    // bShown is false. A width that the user has set by hand stays until the program asks for another one or
    // shows other columns.
    struct Column {
        std::string sTemplate;
        int iWidth = 0;
        bool bShown = true;
        bool bApply = true;  // the view has not taken the width over yet
    };
    void SetColumn(int iCol, std::string_view sTemplate, bool bShown, int iWidth);
    const std::vector<Column>& Columns() const { return m_tColumns; }
    int TextWidth(std::string_view sText) const;  // device-independent pixels

    // The cell last made current by the program; (-1, -1) when none ever was. The view's own cursor stays
    // the user's: a sort for every message must not move it.
    std::pair<int, int> CurrentCell() const { return m_tCurrent; }
    void SetCurrentCell(int iRow, int iCol) { m_tCurrent = {iRow, iCol}; }

    // Places in the grid's own coordinates, device-independent pixels; row 0 is the header. Hidden ones have size 0.
    int ColPos(int iCol) const;
    int ColWidth(int iCol) const;
    int RowPos(int iRow) const;
    int RowHeight(int iRow) const;
    // The row of Cells that the view shows at a row by now: rows may have moved since it took over. -1 when it is gone.
    int LiveRow(int iRow) const;
    // As the left button pressed and released, pressed twice, or the mouse moved there.
    void Click(float fX, float fY);
    void DblClick() { emit DblClicked(); }
    void MouseMove(float fX, float fY) { emit MouseMoved(fX, fY); }

    // What stands in the middle of the view while it shows no row but those that always stand there: one text for a
    // table without rows, one for rows that are all hidden.
    void SetEmptyHints(const QString& sNoRows, const QString& sAllHidden, int iAlwaysShown = 0);
    QString EmptyHint() const;  // as it stands there now; empty over rows

    void Synchronize();
    // The selected rows, top to bottom, shown columns only, separated by tabs, a line each; the columns' names in front
    // if bNames.
    QString SelectedText(bool bNames = false) const;
    void CopySelection(bool bNames = false) const;
    // The columns' names and every shown row, shown columns only, as by now.
    std::vector<std::vector<std::string>> ShownCells() const;
    // Shown columns as wide as what they hold.
    void FitColumns();

signals:
    // The context menu is about to open on a row of Cells, -1 for none: the owner may add to it.
    void MenuAsked(QMenu& tMenu, int iRow);
    void SaveAsked();  // chosen in the menu
    // On the cell that was under the mouse at the press, wherever its row of Cells stands by now; -1 when it is gone.
    void Clicked(int iRow, int iCol);
    void DblClicked();
    void MouseMoved(float fX, float fY);
    void RowActivated(int iRow);  // Enter on a row of Cells

protected:
    void dataChanged(const QModelIndex& tTopLeft, const QModelIndex& tBottomRight, const QList<int>& iRoles) override;
    void paintEvent(QPaintEvent* pEvent) override;
    bool viewportEvent(QEvent* pEvent) override;
    bool eventFilter(QObject* pObject, QEvent* pEvent) override;
    void keyPressEvent(QKeyEvent* pEvent) override;
    void contextMenuEvent(QContextMenuEvent* pEvent) override;
    void scrollContentsBy(int iX, int iY) override;
    void showEvent(QShowEvent* pEvent) override;
    void hideEvent(QHideEvent* pEvent) override;
    void changeEvent(QEvent* pEvent) override;

private:
    void TakeOver();
    void TakeOverColumns();
    void TakeOverRows();
    void PaintRows(QPainter& tPainter, const QRegion& tDirty, const QColor& tLine);
    void PaintRow(QPainter& tPainter, int iRow, const QRect& tRow, const QRect& tDirty);
    void Press(QPoint tPlace);
    void Release(QPoint tPlace);
    void TellMove(const QWidget& tSource, const QMouseEvent& tEvent);
    void PointAt(std::optional<QPoint> tPlace);
    void TellPointed();

    GridModel* m_pModel;
    CellDelegate* m_pDelegate;
    RepaintBeat* m_pBeat;
    std::vector<Column> m_tColumns;
    std::pair<int, int> m_tCurrent{-1, -1};
    bool m_bRedraw = true;
    QPersistentModelIndex m_tPressed;  // the cell of the press: follows its row
    QRect m_tPressedPlace;             // where that cell was, in the viewport; a release elsewhere is no click
    std::optional<QPoint> m_tPointed;  // the mouse in the viewport
    QString m_sNoRowsHint;
    QString m_sAllHiddenHint;
    int m_iAlwaysShown = 0;
    QString m_sTold;  // the window's latest status tip from here
};

}  // namespace toolkit
