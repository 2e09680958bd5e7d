// Everything that the window shows of what was heard, as text, to compare two windows.
#pragma once

#include <QStringList>
#include <algorithm>

#include "tests/support/Bytes.h"
#include "tests/support/TestWindow.h"

namespace support {

// A list's lines, marks and current line.
inline void AppendLog(QStringList& sAll, const char* sName, TestWindow& t, toolkit::LogList& lst) {
    const auto bMarks = t.Marks(lst);
    std::size_t i = 0;
    for (const std::string& sLine : t.Lines(lst)) {
        sAll << QLatin1String(sName) + QLatin1Char(bMarks[i++] ? '+' : '-') + QString::fromLatin1(Bytes(sLine));
    }
    sAll << QLatin1String(sName) + QStringLiteral("current %1").arg(lst.CurrentLine());
}

// A grid's cells with their alignments, its hidden rows and its current cell.
inline void AppendGrid(QStringList& sAll, const char* sName, TestWindow& t, toolkit::Grid& grd) {
    for (int iRow = 0; iRow < grd.Cells.Rows(); ++iRow) {
        QString sRow = QLatin1String(sName) + QLatin1Char(grd.Cells.Hidden(iRow) ? 'h' : 's');
        for (int iCol = 0; iCol < grd.Cells.Cols(); ++iCol) {
            sRow += QStringLiteral("|%1:").arg(grd.Cells.CellAlignment(iRow, iCol));
            sRow += QString::fromLatin1(Bytes(t.Cell(grd, iRow, iCol)));
        }
        sAll << sRow;
    }
    sAll << QLatin1String(sName) +
                QStringLiteral("current %1, %2").arg(grd.CurrentCell().first).arg(grd.CurrentCell().second);
}

// Everything that a run leaves in the window's views, as text.
inline QStringList Views(TestWindow& t) {
    t.Synchronize();
    QStringList sAll;
    AppendLog(sAll, "raw ", t, t.lstCommData(0));
    AppendLog(sAll, "raw of port 2 ", t, t.lstCommData(1));
    AppendLog(sAll, "receiver ", t, t.lstRxData);
    AppendLog(sAll, "ais ", t, t.lstAisData);
    AppendLog(sAll, "gps ", t, t.lstGpsData);
    AppendLog(sAll, "output ", t, t.lstOutputData);
    AppendGrid(sAll, "target ", t, t.grdTargetData);
    AppendGrid(sAll, "count ", t, t.grdMessageData);
    const toolkit::NumberCombo& cmb = t.cmbTargetTarget;
    for (int i = 0; i < cmb.count(); ++i) {
        sAll << QStringLiteral("item %1 %2").arg(cmb.itemText(i)).arg(cmb.itemData(i).toInt());
    }
    sAll << QStringLiteral("chosen ") + cmb.currentText();
    sAll << QStringLiteral("summary ") + QString::fromLatin1(Bytes(t.Panel(2)));
    sAll << QStringLiteral("own %1 %2").arg(t.m_dLatitude, 0, 'g', 17).arg(t.m_dLongitude, 0, 'g', 17);
    return sAll;
}

// The first difference, for the person who reads the failure.
inline QString Difference(const QStringList& sA, const QStringList& sB) {
    for (qsizetype i = 0; i < std::max(sA.size(), sB.size()); ++i) {
        const QString sLeft = sA.value(i, QStringLiteral("nothing"));
        const QString sRight = sB.value(i, QStringLiteral("nothing"));
        if (sLeft != sRight) return sLeft + QLatin1String("  <>  ") + sRight;
    }
    return {};
}

}  // namespace support
