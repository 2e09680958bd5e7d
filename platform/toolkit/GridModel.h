// The model between GridCells and its table view. What the view may know changes only in Publish: in between, cells may
// come, go and move without a signal.
#pragma once

#include <QAbstractTableModel>
#include <cstdint>
#include <vector>

#include "platform/runtime/GridCells.h"

namespace toolkit {

class GridModel : public QAbstractTableModel {
    Q_OBJECT
public:
    GridModel(const runtime::GridCells& tCells, QObject* pParent);

    int rowCount(const QModelIndex& tParent = {}) const override;
    int columnCount(const QModelIndex& tParent = {}) const override;
    QVariant data(const QModelIndex& tIndex, int iRole) const override;
    QVariant headerData(int iSection, Qt::Orientation eOrientation, int iRole) const override;

    // Where a row that the view knows (0 for the first below the header) stands in the cells by now; -1 when it is
    // gone.
    int LiveRow(int iPublished) const;

    // Brings the view's picture up to the cells: row count, rows that moved (selection and cursor follow them), texts.
    void Publish();

private:
    void PublishMoves(const std::vector<std::uint64_t>& lSerials);

    const runtime::GridCells& m_tCells;
    std::vector<std::uint64_t> m_lPublished;  // serial of each row that the view knows, header left out
    int m_iPublishedCols = 0;
};

Qt::Alignment ToQt(runtime::Alignment eAlignment);

}  // namespace toolkit
