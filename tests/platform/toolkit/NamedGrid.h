// A small grid for tests of the grid.
#pragma once

#include <QCoreApplication>
#include <memory>
#include <string>

#include "platform/toolkit/Grid.h"

namespace support {

using toolkit::Grid;

// Three columns ("Name", "Number", hidden "Key") and rows named a, b, c ...
inline std::unique_ptr<Grid> MakeGrid(int iRows) {
    auto p = std::make_unique<Grid>();
    p->resize(400, 300);
    p->Cells.SetCols(3);
    p->Cells.SetRows(1);
    const char* const sHeaders[] = {"Name", "Number", "Key"};
    for (int i = 0; i < 3; ++i) {
        p->Cells.SetText(0, i, sHeaders[i], runtime::AlignCentre);
        p->SetColumn(i, sHeaders[i], i != 2, 100);
    }
    for (int i = 1; i <= iRows; ++i) {
        p->Cells.SetRows(i + 1);
        p->Cells.SetText(i, 0, std::string(1, static_cast<char>('a' + (i - 1) % 26)), runtime::AlignLeft);
        p->Cells.SetText(i, 1, std::to_string(i), runtime::AlignRight);
        p->Cells.SetText(i, 2, std::to_string(i));
    }
    return p;
}

inline void Show(Grid& t) {
    t.show();
    t.Synchronize();
    QCoreApplication::processEvents();
}

inline void SortByKey(Grid& t) {
    static constexpr runtime::SortKey Keys[] = {{2, 1}};
    t.Cells.Sort(Keys, [&t](int iRow1, int iRow2) {
        const double d = t.Cells.Number(iRow1, 2) - t.Cells.Number(iRow2, 2);
        return d < 0 ? -1 : static_cast<int>(d > 0);
    });
}

}  // namespace support
