// A grid of text cells: a table view over GridCells, with row 0 of the cells as its header. Writers change Cells and
// never wait for the view; the view takes over on its beat. Also the mouse position as row and column.
#pragma once

#include <QTableView>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/runtime/GridCells.h"

namespace toolkit {

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

    // A column as wide as a text in the grid's font plus iExtra device-independent pixels; of width 0 (hidden) when
    // bShown is false.
    struct Column {
        std::string sTemplate;
        int iWidth = 0;
        bool bShown = true;
    };
    void SetColumn(int iCol, std::string_view sTemplate, bool bShown, int iWidth);
    const std::vector<Column>& Columns() const { return m_tColumns; }
    int TextWidth(std::string_view sText) const;  // device-independent pixels

    // The cell last made current by the program or a click; (-1, -1) when none ever was. The view's own cursor stays
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
    // The mouse position of the latest mouse event over the grid.
    float MouseX() const { return m_fMouseX; }
    float MouseY() const { return m_fMouseY; }
    // Reports a click, a double-click or a move at a place, as the mouse events do.
    void Click(float fX, float fY);
    void DblClick(float fX, float fY);
    void MouseMove(float fX, float fY);

    void Synchronize();
    // The selected rows, top to bottom, shown columns only, separated by tabs, a line each.
    QString SelectedText() const;
    void CopySelection() const;

signals:
    void Clicked();
    void DblClicked();
    void MouseMoved(float fX, float fY);
    void RowActivated(int iRow);  // Enter on a row of Cells

protected:
    bool viewportEvent(QEvent* pEvent) override;
    bool eventFilter(QObject* pObject, QEvent* pEvent) override;
    void keyPressEvent(QKeyEvent* pEvent) override;
    void contextMenuEvent(QContextMenuEvent* pEvent) override;
    void showEvent(QShowEvent* pEvent) override;
    void changeEvent(QEvent* pEvent) override;

private:
    void TakeOver();
    void Track(QWidget& tSource, QEvent* pEvent);

    GridModel* m_pModel;
    RepaintBeat* m_pBeat;
    std::vector<Column> m_tColumns;
    std::pair<int, int> m_tCurrent{-1, -1};
    bool m_bRedraw = true;
    float m_fMouseX = 0;
    float m_fMouseY = 0;
};

}  // namespace toolkit
