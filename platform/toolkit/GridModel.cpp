// The grid's model.
#include "platform/toolkit/GridModel.h"

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
    return tParent.isValid() ? 0 : static_cast<int>(m_lPublished.size());
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
    const std::uint64_t lSerial = m_lPublished[static_cast<std::size_t>(iPublished)];
    const int iSame = iPublished + 1;
    if (iSame < m_tCells.Rows() && m_tCells.RowSerial(iSame) == lSerial) return iSame;
    for (int iRow = 1; iRow < m_tCells.Rows(); ++iRow) {
        if (m_tCells.RowSerial(iRow) == lSerial) return iRow;
    }
    return -1;
}

QVariant GridModel::headerData(int iSection, Qt::Orientation eOrientation, int iRole) const {
    if (eOrientation != Qt::Horizontal || m_tCells.Rows() == 0 || iSection >= m_tCells.Cols()) return {};
    if (iRole == Qt::DisplayRole) return FromLatin1(m_tCells.Text(0, iSection));
    if (iRole == Qt::TextAlignmentRole) return QVariant(ToQt(m_tCells.CellAlignment(0, iSection)));
    return {};
}

void GridModel::Publish() {
    if (m_iPublishedCols != m_tCells.Cols()) {
        beginResetModel();
        m_iPublishedCols = m_tCells.Cols();
        endResetModel();
    }
    std::vector<std::uint64_t> lSerials;
    for (int iRow = 1; iRow < m_tCells.Rows(); ++iRow) lSerials.push_back(m_tCells.RowSerial(iRow));
    if (lSerials != m_lPublished) PublishMoves(lSerials);
    if (lSerials.empty() || m_iPublishedCols == 0) return;
    emit dataChanged(index(0, 0), index(rowCount() - 1, m_iPublishedCols - 1));
}

void GridModel::PublishMoves(const std::vector<std::uint64_t>& lSerials) {
    emit layoutAboutToBeChanged({}, VerticalSortHint);
    std::unordered_map<std::uint64_t, int> iRowOf;
    for (std::size_t i = 0; i < lSerials.size(); ++i) iRowOf[lSerials[i]] = static_cast<int>(i);
    const QModelIndexList tBefore = persistentIndexList();
    QModelIndexList tAfter;
    for (const QModelIndex& tIndex : tBefore) {
        const auto it = iRowOf.find(m_lPublished[static_cast<std::size_t>(tIndex.row())]);
        tAfter.append(it == iRowOf.end() ? QModelIndex() : createIndex(it->second, tIndex.column()));
    }
    m_lPublished = lSerials;
    changePersistentIndexList(tBefore, tAfter);
    emit layoutChanged({}, VerticalSortHint);
}

}  // namespace toolkit
