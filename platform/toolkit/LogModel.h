// The model between LogLines and its list view. What the view may know changes only in Publish.
#pragma once

#include <QAbstractListModel>
#include <cstdint>
#include <optional>

#include "platform/runtime/LogLines.h"

namespace toolkit {

class LogModel : public QAbstractListModel {
    Q_OBJECT
public:
    static constexpr int MarkRole = Qt::UserRole;

    LogModel(const runtime::LogLines& tLines, QObject* pParent);

    bool bShowsMarks = false;

    int rowCount(const QModelIndex& tParent = {}) const override;
    QVariant data(const QModelIndex& tIndex, int iRole) const override;

    // Characters of the longest line that the view knows.
    int LongestLine() const { return m_iLongest; }

    // Tells the view which lines went and which came, so that its selection stays on the user's lines. Answers how many
    // went at the top; nothing when the log was cleared and all lines are others.
    std::optional<int> Publish();

private:
    std::optional<int> PublishLines();
    // Where a published line stands in the store by now; negative when it is gone.
    int LiveLine(int iPublished) const;

    const runtime::LogLines& m_tLines;
    int m_iPublished = 0;
    int m_iLongest = 0;
    std::uint64_t m_lPublishedAdded = 0;
    std::uint64_t m_lPublishedCleared = 0;
    std::uint64_t m_lPublishedUnmarked = 0;
};

}  // namespace toolkit
