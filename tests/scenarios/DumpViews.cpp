// Dumping what the views show: texts come out of the views' own models, marks and alignments out of the stores.
#include <QJsonArray>
#include <array>
#include <utility>

#include "tests/scenarios/Dump.h"

namespace scenarios {

namespace {

QJsonObject DumpList(toolkit::LogList& lst, bool bMarks) {
    QJsonArray tLines;
    QJsonArray tMarks;
    for (int i = 0; i < lst.model()->rowCount(); ++i) {
        tLines.append(lst.model()->index(i, 0).data().toString());
        tMarks.append(lst.Lines.Mark(i));
    }
    return {{QStringLiteral("lines"), tLines},
            {QStringLiteral("marks"), bMarks ? QJsonValue(tMarks) : QJsonValue(QJsonValue::Null)},
            {QStringLiteral("current"), lst.CurrentLine()}};
}

// Row 0 of the cells is the view's header.
QString CellText(const toolkit::Grid& grd, int iRow, int iCol) {
    const QVariant t =
        iRow == 0 ? grd.model()->headerData(iCol, Qt::Horizontal) : grd.model()->index(iRow - 1, iCol).data();
    return t.toString();
}

QJsonArray RowTexts(const toolkit::Grid& grd, int iRow) {
    QJsonArray tTexts;
    for (int iCol = 0; iCol < grd.model()->columnCount(); ++iCol) tTexts.append(CellText(grd, iRow, iCol));
    return tTexts;
}

QJsonObject DumpRow(const toolkit::Grid& grd, int iRow) {
    QJsonArray tAlign;
    for (int iCol = 0; iCol < grd.Cells.Cols(); ++iCol) {
        const runtime::Alignment eAlign = grd.Cells.CellAlignment(iRow, iCol);
        tAlign.append(eAlign == runtime::AlignNone ? QJsonValue(QJsonValue::Null) : QJsonValue(eAlign));
    }
    return {{QStringLiteral("cells"), RowTexts(grd, iRow)},
            {QStringLiteral("align"), tAlign},
            {QStringLiteral("hidden"), iRow > 0 && grd.isRowHidden(iRow - 1)}};
}

// What all three grids have in common.
QJsonObject DumpGrid(const toolkit::Grid& grd) {
    const int iRows = grd.model()->rowCount() + 1;
    QJsonArray tRows;
    for (int iRow = 0; iRow < iRows; ++iRow) tRows.append(DumpRow(grd, iRow));
    return {{QStringLiteral("Rows"), iRows},
            {QStringLiteral("Cols"), grd.model()->columnCount()},
            {QStringLiteral("redraw"), grd.Redraw()},
            {QStringLiteral("rows"), tRows}};
}

QJsonObject DumpTargetGrid(const ScenarioWindow& t) {
    const toolkit::Grid& grd = t.grdTargetData;
    QJsonObject tGrid = DumpGrid(grd);
    QJsonArray tColumns;
    for (int iCol = 0; iCol < static_cast<int>(grd.Columns().size()); ++iCol) {
        // A column of width 0 has no text to be as wide as.
        tColumns.append(QJsonObject{
            {QStringLiteral("template"), toolkit::FromLatin1(grd.Columns()[static_cast<std::size_t>(iCol)].sTemplate)},
            {QStringLiteral("shown"), !grd.isColumnHidden(iCol)}});
    }
    const auto [iRow, iCol] = grd.CurrentCell();
    tGrid[QStringLiteral("columns")] = tColumns;
    tGrid[QStringLiteral("laid_out")] = t.m_bTargetGridLaidOut;
    tGrid[QStringLiteral("tooltip")] = grd.toolTip();
    tGrid[QStringLiteral("current")] = iRow < 0 ? QJsonValue(QJsonValue::Null) : QJsonValue(QJsonArray{iRow, iCol});
    return tGrid;
}

QJsonObject DumpMessageGrid(const toolkit::Grid& grd) {
    QJsonObject tGrid = DumpGrid(grd);
    QJsonArray tVisible;
    for (int iRow = 0; iRow <= grd.model()->rowCount(); ++iRow) {
        if (grd.RowHeight(iRow) > 0) tVisible.append(RowTexts(grd, iRow));
    }
    tGrid[QStringLiteral("visible")] = tVisible;
    return tGrid;
}

QJsonObject DumpTargetList(const toolkit::NumberCombo& cmb) {
    QJsonArray tItems;
    for (int i = 0; i < cmb.count(); ++i) {
        tItems.append(
            QJsonObject{{QStringLiteral("text"), cmb.itemText(i)}, {QStringLiteral("data"), cmb.itemData(i).toInt()}});
    }
    return {{QStringLiteral("items"), tItems}, {QStringLiteral("text"), cmb.currentText()}};
}

QJsonObject DumpChoice(const toolkit::ComboBox& cmb) {
    return {{QStringLiteral("text"), toolkit::FromLatin1(cmb.Text())}, {QStringLiteral("index"), cmb.currentIndex()}};
}

QJsonObject DumpBox(const toolkit::MaskedBox& txt) {
    const bool bSelected = txt.hasSelectedText();
    return {{QStringLiteral("text"), txt.text()},
            {QStringLiteral("start"), bSelected ? txt.selectionStart() : txt.cursorPosition()},
            {QStringLiteral("length"), bSelected ? txt.selectionLength() : 0}};
}

}  // namespace

void DumpViews(QJsonObject& tState, ScenarioWindow& t) {
    const std::array<std::pair<toolkit::LogList*, bool>, 6> tLists = {{{&t.lstCommData(0), true},
                                                                       {&t.lstCommData(1), true},
                                                                       {&t.lstRxData, false},
                                                                       {&t.lstAisData, false},
                                                                       {&t.lstGpsData, false},
                                                                       {&t.lstOutputData, true}}};
    QJsonObject tDumped;
    for (const auto& [pList, bMarks] : tLists) tDumped[pList->objectName()] = DumpList(*pList, bMarks);
    tState[QStringLiteral("lists")] = tDumped;
    tState[QStringLiteral("grdTargetData")] = DumpTargetGrid(t);
    tState[QStringLiteral("grdMessageData")] = DumpMessageGrid(t.grdMessageData);
    tState[QStringLiteral("grdSpecData")] = DumpGrid(t.grdSpecData);
    tState[QStringLiteral("cmbTargetTarget")] = DumpTargetList(t.cmbTargetTarget);
    tState[QStringLiteral("cmbTargetDetail")] = DumpChoice(t.cmbTargetDetail);
    tState[QStringLiteral("cmbTargetSort")] = DumpChoice(t.cmbTargetSort);
    tState[QStringLiteral("own_position")] = QJsonObject{{QStringLiteral("txtGpsLat"), DumpBox(t.txtGpsLat)},
                                                         {QStringLiteral("txtGpsLon"), DumpBox(t.txtGpsLon)}};
}

}  // namespace scenarios
