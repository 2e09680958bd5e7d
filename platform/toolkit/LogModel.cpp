// The log list's model.
#include "platform/toolkit/LogModel.h"

#include <algorithm>

#include "platform/toolkit/Latin1.h"

namespace toolkit {

LogModel::LogModel(const runtime::LogLines& tLines, QObject* pParent) : QAbstractListModel(pParent), m_tLines(tLines) {}

int LogModel::rowCount(const QModelIndex& tParent) const { return tParent.isValid() ? 0 : m_iPublished; }

QVariant LogModel::data(const QModelIndex& tIndex, int iRole) const {
    if (!tIndex.isValid()) return {};
    const int iLine = LiveLine(tIndex.row());
    if (iLine < 0 || iLine >= m_tLines.Count()) return {};
    switch (iRole) {
        case Qt::DisplayRole:
            return FromLatin1(m_tLines.Line(iLine));
        case MarkRole:
            return bShowsMarks && m_tLines.Mark(iLine);
        case Qt::AccessibleDescriptionRole:
            if (!bShowsMarks) return {};
            return m_tLines.Mark(iLine) ? QStringLiteral("highlighted") : QStringLiteral("not highlighted");
        default:
            return {};
    }
}

// Lines keep their number among all that were ever added, and only old ones go.
int LogModel::LiveLine(int iPublished) const {
    const auto lNumber = static_cast<std::int64_t>(m_lPublishedAdded) - m_iPublished + iPublished;
    const auto lOldest = static_cast<std::int64_t>(m_tLines.Added()) - m_tLines.Count();
    return lNumber < lOldest ? -1 : static_cast<int>(lNumber - lOldest);
}

std::optional<int> LogModel::Publish() {
    std::size_t iLongest = 0;
    for (int i = 0; i < m_tLines.Count(); ++i) iLongest = std::max(iLongest, m_tLines.Line(i).size());
    m_iLongest = static_cast<int>(iLongest);
    return PublishLines();
}

std::optional<int> LogModel::PublishLines() {
    if (m_lPublishedCleared != m_tLines.Cleared()) {
        beginResetModel();
        m_lPublishedCleared = m_tLines.Cleared();
        m_lPublishedAdded = m_tLines.Added();
        m_iPublished = m_tLines.Count();
        endResetModel();
        return std::nullopt;
    }
    const std::uint64_t lNew = m_tLines.Added() - m_lPublishedAdded;
    const int iKept = m_tLines.Count() - static_cast<int>(std::min<std::uint64_t>(lNew, m_tLines.Count()));
    const int iGone = std::max(0, m_iPublished - iKept);
    if (iGone > 0) {
        beginRemoveRows({}, 0, iGone - 1);
        m_iPublished = iKept;
        endRemoveRows();
    }
    if (m_tLines.Count() > m_iPublished) {
        beginInsertRows({}, m_iPublished, m_tLines.Count() - 1);
        m_iPublished = m_tLines.Count();
        m_lPublishedAdded = m_tLines.Added();
        endInsertRows();
    }
    if (m_lPublishedUnmarked != m_tLines.Unmarked() && m_iPublished > 0) {
        emit dataChanged(index(0), index(m_iPublished - 1), {MarkRole});
    }
    m_lPublishedUnmarked = m_tLines.Unmarked();
    return iGone;
}

}  // namespace toolkit
