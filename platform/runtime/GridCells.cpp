// Rows and cells of a grid, and what keeps the sorted part of it known.
#include "platform/runtime/GridCells.h"

#include <algorithm>

#include "platform/runtime/Convert.h"

namespace runtime {

void GridCells::SetRows(int iRows) {
    while (Rows() > iRows) {
        m_tSpare.push_back(std::move(m_tRows.back()));
        m_tRows.pop_back();
        m_lNumbers.pop_back();
    }
    while (Rows() < iRows) {
        m_tRows.push_back(NewRow());
        m_lNumbers.push_back(0);
    }
    m_iSorted = std::min(m_iSorted, Rows());
    Changed.Mark();
}

void GridCells::SetCols(int iCols) {
    m_iCols = iCols;
    m_tSpare.clear();
    for (auto& pRow : m_tRows) pRow->tCells.resize(Index(iCols));
    m_iSorted = 1;
    Changed.Mark();
}

void GridCells::RemoveRow(int iRow) {
    m_tSpare.push_back(std::move(m_tRows[Index(iRow)]));
    m_tRows.erase(m_tRows.begin() + iRow);
    m_lNumbers.erase(m_lNumbers.begin() + iRow);
    if (iRow < m_iSorted) --m_iSorted;
    Changed.Mark();
}

void GridCells::SetText(int iRow, int iCol, std::string_view sText) {
    Cell& tCell = At(iRow, iCol);
    tCell.sText.assign(sText);
    tCell.bNumberKnown = false;
    if (iRow < m_iSorted && (m_lKeyColumns >> iCol & 1U) != 0) m_iSorted = std::max(iRow, 1);
    Changed.Mark();
}

double GridCells::Number(int iRow, int iCol) const {
    const Cell& tCell = At(iRow, iCol);
    if (!tCell.bNumberKnown) {
        tCell.dNumber = LeadingNumber(tCell.sText);
        tCell.bNumberKnown = true;
    }
    return tCell.dNumber;
}

void GridCells::SetAlignment(int iRow, int iCol, Alignment eAlignment) {
    At(iRow, iCol).eAlignment = eAlignment;
    Changed.Mark();
}

void GridCells::SetHidden(int iRow, bool bHidden) {
    m_tRows[Index(iRow)]->bHidden = bHidden;
    Changed.Mark();
}

int GridCells::FindRowNumber(std::int32_t lNumber) const {
    for (int iRow = Rows() - 1; iRow > 0; --iRow) {
        if (m_lNumbers[Index(iRow)] == lNumber) return iRow;
    }
    return -1;
}

void GridCells::RemoveNumbersUpTo(std::int32_t lNumber) {
    for (int iRow = Rows() - 1; iRow > 0; --iRow) {
        if (m_lNumbers[Index(iRow)] <= lNumber) RemoveRow(iRow);
    }
}

std::unique_ptr<GridCells::Row> GridCells::NewRow() {
    std::unique_ptr<Row> pRow;
    if (m_tSpare.empty()) {
        pRow = std::make_unique<Row>();
        pRow->tCells.resize(Index(m_iCols));
    } else {
        pRow = std::move(m_tSpare.back());
        m_tSpare.pop_back();
        for (Cell& tCell : pRow->tCells) {
            tCell.sText.clear();
            tCell.dNumber = 0;
            tCell.bNumberKnown = true;
            tCell.eAlignment = AlignNone;
        }
        pRow->bHidden = false;
    }
    pRow->lSerial = m_lNextSerial++;
    return pRow;
}

void GridCells::MoveRow(int iFrom, int iTo) {
    std::rotate(m_tRows.begin() + iTo, m_tRows.begin() + iFrom, m_tRows.begin() + iFrom + 1);
    std::rotate(m_lNumbers.begin() + iTo, m_lNumbers.begin() + iFrom, m_lNumbers.begin() + iFrom + 1);
}

}  // namespace runtime
