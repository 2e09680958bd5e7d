// The cells of a grid: texts with alignment, rows that can be hidden, a number beside each row, and a stable sort that
// costs little when only the last row is new. Plain memory; the grid that shows them takes them over on its own beat.
#pragma once

#include <algorithm>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/runtime/ChangeMark.h"

namespace runtime {

// Alignment codes of a cell; 0 where none was ever set.
enum Alignment : std::int8_t { AlignNone = 0, AlignLeft = 1, AlignCentre = 4, AlignRight = 7 };

// A key of an order: the column that it reads, and a code for the way in which it compares.
struct SortKey {
    std::int32_t lCol;
    std::int32_t lType;
    friend bool operator==(const SortKey&, const SortKey&) = default;
};

class GridCells {
public:
    // Rows 0 to Rows() - 1; row 0 is the header and never moves.
    int Rows() const { return static_cast<int>(m_tRows.size()); }
    int Cols() const { return m_iCols; }
    // Adds empty rows at the end, or removes rows from the end.
    void SetRows(int iRows);
    // Rows that exist get or lose cells at the right.
    void SetCols(int iCols);
    void RemoveRow(int iRow);

    const std::string& Text(int iRow, int iCol) const {
        const Cell& tCell = At(iRow, iCol);
        if (tCell.bTextDue) MakeText(tCell);
        return tCell.sText;
    }
    void SetText(int iRow, int iCol, std::string_view sText) {
        Cell& tCell = At(iRow, iCol);
        tCell.sText.assign(sText);
        tCell.bTextDue = false;
        tCell.bNumberKnown = false;
        Written(iRow, iCol);
    }
    void SetText(int iRow, int iCol, std::string_view sText, Alignment eAlignment) {
        SetText(iRow, iCol, sText);
        At(iRow, iCol).eAlignment = eAlignment;
    }
    // A whole number of up to 2^53 in decimal; its text is made when it is asked for.
    void SetInteger(int iRow, int iCol, std::int64_t lValue) {
        Cell& tCell = At(iRow, iCol);
        tCell.dNumber = static_cast<double>(lValue);
        tCell.bNumberKnown = true;
        tCell.bTextDue = true;
        Written(iRow, iCol);
    }
    // The leading numeric part of the text, 0 where there is none; read once after each write.
    double Number(int iRow, int iCol) const {
        const Cell& tCell = At(iRow, iCol);
        return tCell.bNumberKnown ? tCell.dNumber : ReadNumber(tCell);
    }
    Alignment CellAlignment(int iRow, int iCol) const { return At(iRow, iCol).eAlignment; }

    bool Hidden(int iRow) const { return m_tRows[Index(iRow)]->bHidden; }
    void SetHidden(int iRow, bool bHidden);

    // A number beside the row that moves with it; 0 for a new row.
    void SetRowNumber(int iRow, std::int64_t lNumber) { m_lNumbers[Index(iRow)] = lNumber; }
    // The last row with that number among rows 1 to Rows() - 1, or -1.
    int FindRowNumber(std::int64_t lNumber) const;
    // Removes every row from 1 on whose number is at most lNumber.
    void RemoveNumbersUpTo(std::int64_t lNumber);

    // Tells a row apart from every other that ever was.
    std::uint64_t RowSerial(int iRow) const { return m_tRows[Index(iRow)]->lSerial; }
    // Grows with every write to a cell of the row: with the same serial and the same writes it shows the same.
    std::uint64_t RowWrites(int iRow) const { return m_tRows[Index(iRow)]->lWrites; }

    // Stable sort of rows 1 to Rows() - 1. tCompare(row1, row2) answers below, at or above 0 and must read only the
    // columns of tKeys, and do the same for the same keys. Remembers how many rows are in order: rows behind them are
    // inserted by binary search after their equals, which gives what sorting everything would.
    template <class Compare>
    void Sort(std::span<const SortKey> tKeys, const Compare& tCompare) {
        if (!std::ranges::equal(tKeys, m_tSortKeys)) {
            m_tSortKeys.assign(tKeys.begin(), tKeys.end());
            m_iSorted = 1;
        }
        for (int iRow = m_iSorted < 1 ? 1 : m_iSorted; iRow < Rows(); ++iRow) InsertSorted(iRow, tCompare);
        m_iSorted = Rows();
        Changed.Mark();
    }

    ChangeMark Changed;

private:
    struct Cell {
        mutable std::string sText;
        mutable double dNumber = 0;
        mutable bool bTextDue = false;  // the text of dNumber, a whole number, has not been made
        mutable bool bNumberKnown = true;
        Alignment eAlignment = AlignNone;
    };
    struct Row {
        std::vector<Cell> tCells;
        std::uint64_t lSerial = 0;
        std::uint64_t lWrites = 0;
        bool bHidden = false;
    };

    static std::size_t Index(int i) { return static_cast<std::size_t>(i); }
    Cell& At(int iRow, int iCol) { return m_tRows[Index(iRow)]->tCells[Index(iCol)]; }
    const Cell& At(int iRow, int iCol) const { return m_tRows[Index(iRow)]->tCells[Index(iCol)]; }
    Row* NewRow();
    bool IsKey(int iCol) const {
        return std::ranges::any_of(m_tSortKeys, [iCol](const SortKey& t) { return t.lCol == iCol; });
    }
    void Written(int iRow, int iCol) {
        if (iRow < m_iSorted && IsKey(iCol)) m_iSorted = iRow < 1 ? 1 : iRow;
        ++m_tRows[Index(iRow)]->lWrites;
        Changed.Mark();
    }
    static void MakeText(const Cell& tCell);
    static double ReadNumber(const Cell& tCell);
    void MoveRow(int iFrom, int iTo);

    template <class Compare>
    void InsertSorted(int iRow, const Compare& tCompare) {
        if (iRow == 1 || tCompare(iRow - 1, iRow) <= 0) return;
        int iLow = 1;
        int iHigh = iRow - 1;  // the row there is known to stand behind
        while (iLow < iHigh) {
            const int iMiddle = iLow + (iHigh - iLow) / 2;
            if (tCompare(iMiddle, iRow) <= 0) {
                iLow = iMiddle + 1;
            } else {
                iHigh = iMiddle;
            }
        }
        MoveRow(iRow, iLow);
    }

    std::vector<std::unique_ptr<Row>> m_tOwned;  // every row ever made
    std::vector<Row*> m_tRows;                   // the rows of the grid, top to bottom
    std::vector<Row*> m_tSpare;                  // removed rows, used again with their strings
    std::vector<std::int64_t> m_lNumbers;        // beside m_tRows: scanned for every message
    int m_iCols = 0;
    std::uint64_t m_lNextSerial = 1;
    int m_iSorted = 1;  // rows 0 to m_iSorted - 1 are in order under the present keys
    std::vector<SortKey> m_tSortKeys;
};

}  // namespace runtime
