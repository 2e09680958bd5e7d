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

    // The row of Cells nearest to one that the view knows, of those that it knows and that are shown still, the one
    // below first; -1 when there is none.
    int NearestLiveRow(int iPublished) const;

    // Brings the view's picture up to the cells: row count, rows that moved (selection and cursor follow them), texts.
    // Names only the rows that are to be painted anew, unless the whole layout may have changed: the number of rows, a
    // selected row that is gone, or, with bRanges, rows that are selected as ranges and may have been torn apart.
    void Publish(bool bRanges);

private:
    struct Row {
        std::uint64_t lSerial;
        std::uint64_t lWrites;
        friend bool operator==(const Row&, const Row&) = default;
    };

    bool FollowQuietly(const std::vector<Row>& tRows);
    void PublishLayout(std::vector<Row> tRows);
    void PublishRows(std::vector<Row> tRows);
    QModelIndexList AfterMoves(const QModelIndexList& tBefore, const std::vector<Row>& tRows) const;

    const runtime::GridCells& m_tCells;
    std::vector<Row> m_tPublished;  // what the view knows, header left out
    int m_iPublishedCols = 0;
};

Qt::Alignment ToQt(runtime::Alignment eAlignment);

}  // namespace toolkit
