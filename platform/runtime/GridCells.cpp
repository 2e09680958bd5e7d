// Rows and cells of a grid, and what keeps the sorted part of it known.
#include "platform/runtime/GridCells.h"

#include <algorithm>

#include "platform/runtime/Convert.h"
#include "platform/runtime/Format.h"

namespace runtime {

void GridCells::SetRows(int iRows) {
    while (Rows() > iRows) {
        m_tSpare.push_back(m_tRows.back());
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
    for (const auto& pRow : m_tOwned) pRow->tCells.resize(Index(iCols));
    m_iSorted = 1;
    Changed.Mark();
}

void GridCells::RemoveRow(int iRow) {
    m_tSpare.push_back(m_tRows[Index(iRow)]);
    m_tRows.erase(m_tRows.begin() + iRow);
    m_lNumbers.erase(m_lNumbers.begin() + iRow);
    if (iRow < m_iSorted) --m_iSorted;
    Changed.Mark();
}

void GridCells::MakeText(const Cell& tCell) {
    tCell.sText.clear();
    AppendInteger(tCell.sText, static_cast<std::int64_t>(tCell.dNumber));
    tCell.bTextDue = false;
}

double GridCells::ReadNumber(const Cell& tCell) {
    tCell.dNumber = LeadingNumber(tCell.sText);
    tCell.bNumberKnown = true;
    return tCell.dNumber;
}

void GridCells::SetHidden(int iRow, bool bHidden) {
    m_tRows[Index(iRow)]->bHidden = bHidden;
    Changed.Mark();
}

int GridCells::FindRowNumber(std::int64_t lNumber) const {
    for (int iRow = Rows() - 1; iRow > 0; --iRow) {
        if (m_lNumbers[Index(iRow)] == lNumber) return iRow;
    }
    return -1;
}

void GridCells::RemoveNumbersUpTo(std::int64_t lNumber) {
    const auto IsUpTo = [lNumber](std::int64_t l) { return l <= lNumber; };
    // Counted first, without a way out of the loop: nearly always there is one to remove, anywhere.
    auto lLeft = std::count_if(m_lNumbers.begin() + 1, m_lNumbers.end(), IsUpTo);
    for (int iRow = Rows() - 1; lLeft > 0; --iRow) {
        if (!IsUpTo(m_lNumbers[Index(iRow)])) continue;
        RemoveRow(iRow);
        --lLeft;
    }
}

GridCells::Row* GridCells::NewRow() {
    if (m_tSpare.empty()) {
        m_tOwned.push_back(std::make_unique<Row>());
        m_tOwned.back()->tCells.resize(Index(m_iCols));
        m_tSpare.push_back(m_tOwned.back().get());
    }
    Row* pRow = m_tSpare.back();
    m_tSpare.pop_back();
    for (Cell& tCell : pRow->tCells) {
        if (tCell.sText.empty() && !tCell.bTextDue && tCell.eAlignment == AlignNone) continue;
        tCell.sText.clear();
        tCell.bTextDue = false;
        tCell.dNumber = 0;
        tCell.bNumberKnown = true;
        tCell.eAlignment = AlignNone;
    }
    pRow->bHidden = false;
    pRow->lSerial = m_lNextSerial++;
    return pRow;
}

void GridCells::MoveRow(int iFrom, int iTo) {
    Row* pRow = m_tRows[Index(iFrom)];
    const std::int64_t lNumber = m_lNumbers[Index(iFrom)];
    std::copy_backward(m_tRows.begin() + iTo, m_tRows.begin() + iFrom, m_tRows.begin() + iFrom + 1);
    std::copy_backward(m_lNumbers.begin() + iTo, m_lNumbers.begin() + iFrom, m_lNumbers.begin() + iFrom + 1);
    m_tRows[Index(iTo)] = pRow;
    m_lNumbers[Index(iTo)] = lNumber;
}

}  // namespace runtime
