// The grid's model.
#include "platform/toolkit/GridModel.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

#include "platform/toolkit/Latin1.h"

namespace toolkit {

Qt::Alignment ToQt(runtime::Alignment eAlignment) {
    switch (eAlignment) {
        case runtime::AlignCentre:
            return Qt::AlignCenter;
        case runtime::AlignRight:
            return Qt::AlignRight | Qt::AlignVCenter;
        default:
            return Qt::AlignLeft | Qt::AlignVCenter;
    }
}

GridModel::GridModel(const runtime::GridCells& tCells, QObject* pParent)
    : QAbstractTableModel(pParent), m_tCells(tCells) {}

int GridModel::rowCount(const QModelIndex& tParent) const {
    return tParent.isValid() ? 0 : static_cast<int>(m_tPublished.size());
}

int GridModel::columnCount(const QModelIndex& tParent) const { return tParent.isValid() ? 0 : m_iPublishedCols; }

QVariant GridModel::data(const QModelIndex& tIndex, int iRole) const {
    if (!tIndex.isValid() || tIndex.column() >= m_tCells.Cols()) return {};
    if (iRole != Qt::DisplayRole && iRole != Qt::TextAlignmentRole) return {};
    const int iRow = LiveRow(tIndex.row());
    if (iRow < 0) return {};
    if (iRole == Qt::DisplayRole) return FromLatin1(m_tCells.Text(iRow, tIndex.column()));
    return QVariant(ToQt(m_tCells.CellAlignment(iRow, tIndex.column())));
}

int GridModel::LiveRow(int iPublished) const {
    if (iPublished < 0 || iPublished >= rowCount()) return -1;
    const std::uint64_t lSerial = m_tPublished[static_cast<std::size_t>(iPublished)].lSerial;
    const int iSame = iPublished + 1;
    if (iSame < m_tCells.Rows() && m_tCells.RowSerial(iSame) == lSerial) return iSame;
    for (int iRow = 1; iRow < m_tCells.Rows(); ++iRow) {
        if (m_tCells.RowSerial(iRow) == lSerial) return iRow;
    }
    return -1;
}

int GridModel::NearestLiveRow(int iPublished) const {
    const int iRows = rowCount();
    for (int iStep = 0; iStep < iRows; ++iStep) {
        for (const int iNear : {iPublished + iStep, iPublished - iStep}) {
            const int iRow = LiveRow(iNear);
            if (iRow > 0 && !m_tCells.Hidden(iRow)) return iRow;
        }
    }
    return -1;
}

QVariant GridModel::headerData(int iSection, Qt::Orientation eOrientation, int iRole) const {
    if (eOrientation != Qt::Horizontal || m_tCells.Rows() == 0 || iSection >= m_tCells.Cols()) return {};
    if (iRole == Qt::DisplayRole) return FromLatin1(m_tCells.Text(0, iSection));
    if (iRole == Qt::TextAlignmentRole) return QVariant(ToQt(m_tCells.CellAlignment(0, iSection)));
    return {};
}

void GridModel::Publish(bool bRanges) {
    if (m_iPublishedCols != m_tCells.Cols()) {
        beginResetModel();
        m_iPublishedCols = m_tCells.Cols();
        endResetModel();
    }
    std::vector<Row> tRows;
    for (int iRow = 1; iRow < m_tCells.Rows(); ++iRow) {
        tRows.push_back({m_tCells.RowSerial(iRow), m_tCells.RowWrites(iRow)});
    }
    if (tRows.size() == m_tPublished.size() && !bRanges && FollowQuietly(tRows)) {
        PublishRows(std::move(tRows));
    } else {
        PublishLayout(std::move(tRows));
    }
}

// Whoever holds on to a row, such as the cursor, goes with it, without a word to the view. False, and nothing done,
// when such a row is gone.
bool GridModel::FollowQuietly(const std::vector<Row>& tRows) {
    const QModelIndexList tBefore = persistentIndexList();
    if (tBefore.isEmpty()) return true;
    const QModelIndexList tAfter = AfterMoves(tBefore, tRows);
    if (!std::ranges::all_of(tAfter, &QModelIndex::isValid)) return false;
    changePersistentIndexList(tBefore, tAfter);
    return true;
}

void GridModel::PublishRows(std::vector<Row> tRows) {
    m_tPublished.swap(tRows);
    if (m_iPublishedCols == 0) return;
    for (std::size_t i = 0; i < tRows.size(); ++i) {
        const std::size_t iFirst = i;
        while (i < tRows.size() && tRows[i] != m_tPublished[i]) ++i;
        if (i == iFirst) continue;
        emit dataChanged(index(static_cast<int>(iFirst), 0), index(static_cast<int>(i) - 1, m_iPublishedCols - 1));
    }
}

void GridModel::PublishLayout(std::vector<Row> tRows) {
    if (tRows == m_tPublished) return;
    emit layoutAboutToBeChanged({}, VerticalSortHint);
    const QModelIndexList tBefore = persistentIndexList();
    const QModelIndexList tAfter = AfterMoves(tBefore, tRows);
    m_tPublished = std::move(tRows);
    changePersistentIndexList(tBefore, tAfter);
    emit layoutChanged({}, VerticalSortHint);
}

QModelIndexList GridModel::AfterMoves(const QModelIndexList& tBefore, const std::vector<Row>& tRows) const {
    std::unordered_map<std::uint64_t, int> iRowOf;
    for (std::size_t i = 0; i < tRows.size(); ++i) iRowOf[tRows[i].lSerial] = static_cast<int>(i);
    QModelIndexList tAfter;
    for (const QModelIndex& tIndex : tBefore) {
        const auto it = iRowOf.find(m_tPublished[static_cast<std::size_t>(tIndex.row())].lSerial);
        tAfter.append(it == iRowOf.end() ? QModelIndex() : createIndex(it->second, tIndex.column()));
    }
    return tAfter;
}

}  // namespace toolkit
