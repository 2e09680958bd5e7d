// What a test reads off the window, in forms that Qt Test prints when a comparison fails.
#pragma once

#include <QByteArray>
#include <QStringList>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "platform/toolkit/Latin1.h"
#include "targets/TargetColumns.h"
#include "tests/support/Bytes.h"
#include "tests/support/TestWindow.h"

namespace support {

inline QStringList Texts(const std::vector<std::string>& sTexts) {
    QStringList sList;
    for (const std::string& sText : sTexts) sList << toolkit::FromLatin1(sText);
    return sList;
}

inline QStringList Log(TestWindow& t, toolkit::LogList& lst) { return Texts(t.Lines(lst)); }

// "+" for a marked line, "-" for one without.
inline QByteArray Marks(TestWindow& t, toolkit::LogList& lst) {
    QByteArray sMarks;
    for (const bool bMark : t.Marks(lst)) sMarks += bMark ? '+' : '-';
    return sMarks;
}

inline QByteArray Panel(TestWindow& t, int iPanel) { return Bytes(t.Panel(iPanel)); }

inline QByteArray Cell(TestWindow& t, int iRow, int iCol) { return Bytes(t.Cell(t.grdTargetData, iRow, iCol)); }

// A column of the target table from row 1 on.
inline QStringList Column(TestWindow& t, int iCol) { return Texts(t.Column(iCol)); }

// The rows of the target table that are not hidden, as their cells in a column.
inline QStringList VisibleColumn(TestWindow& t, int iCol) {
    QStringList sCells;
    t.grdTargetData.Synchronize();
    for (int iRow = 1; iRow < t.grdTargetData.Cells.Rows(); ++iRow) {
        if (!t.grdTargetData.isRowHidden(iRow - 1)) sCells << toolkit::FromLatin1(t.Cell(t.grdTargetData, iRow, iCol));
    }
    return sCells;
}

// The same numbers in every run.
class Dice {
public:
    explicit Dice(std::uint32_t lSeed) : m_tEngine(lSeed) {}
    std::uint32_t operator()() { return static_cast<std::uint32_t>(m_tEngine()); }

private:
    std::mt19937 m_tEngine;
};

}  // namespace support
