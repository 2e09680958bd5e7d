// The log list: view, marks and copying.
#include "platform/toolkit/LogList.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <algorithm>

#include "platform/toolkit/LogModel.h"
#include "platform/toolkit/RepaintBeat.h"

namespace toolkit {

namespace {

constexpr int MarkWidth = 4;    // pixels of the bar before a marked line
constexpr int TextIndent = 10;  // pixels from the left edge to the text
constexpr int LineChars = 400;  // characters of a line that are drawn; longer ones can be copied whole

// A marked line has a bar in front and a tinted ground; a notice in brackets is bold: both can be told without colour.
class LineDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* pPainter, const QStyleOptionViewItem& tOption, const QModelIndex& tIndex) const override {
        const bool bSelected = (tOption.state & QStyle::State_Selected) != 0;
        const bool bMarked = tIndex.data(LogModel::MarkRole).toBool();
        const QPalette& tPalette = tOption.palette;
        if (bSelected) {
            pPainter->fillRect(tOption.rect, tPalette.highlight());
        } else if (bMarked) {
            QColor tTint = tPalette.color(QPalette::Highlight);
            tTint.setAlpha(45);
            pPainter->fillRect(tOption.rect, tTint);
        }
        if (bMarked) {
            const QRect tBar(tOption.rect.left(), tOption.rect.top(), MarkWidth, tOption.rect.height());
            pPainter->fillRect(tBar, bSelected ? tPalette.highlightedText() : tPalette.highlight());
        }
        const QString sLine = tIndex.data(Qt::DisplayRole).toString().left(LineChars);
        QFont tFont = tOption.font;
        tFont.setBold(sLine.startsWith(QLatin1String("<<")));
        pPainter->setFont(tFont);
        pPainter->setPen(tPalette.color(bSelected ? QPalette::HighlightedText : QPalette::Text));
        pPainter->drawText(tOption.rect.adjusted(TextIndent, 0, 0, 0),
                           Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, sLine);
    }

    // Every line is as wide as the longest, so that one measure serves them all.
    QSize sizeHint(const QStyleOptionViewItem& tOption, const QModelIndex& tIndex) const override {
        const auto* pModel = static_cast<const LogModel*>(tIndex.model());
        const int iChar = tOption.fontMetrics.horizontalAdvance(QLatin1Char('W'));
        return {TextIndent + std::min(pModel->LongestLine(), LineChars) * iChar, tOption.fontMetrics.height() + 1};
    }
};

}  // namespace

LogList::LogList(QWidget* pParent)
    : QListView(pParent), m_pModel(new LogModel(Lines, this)), m_pBeat(new RepaintBeat(*this, [this] { TakeOver(); })) {
    setModel(m_pModel);
    setItemDelegate(new LineDelegate(this));
    setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    setUniformItemSizes(true);
    setEditTriggers(NoEditTriggers);
    setSelectionMode(ExtendedSelection);
    setVerticalScrollMode(ScrollPerItem);
    setHorizontalScrollMode(ScrollPerPixel);
    Lines.Changed.SetListener([this] { m_pBeat->Mark(); });
}

LogList::~LogList() { Lines.Changed.SetListener({}); }

void LogList::SetShowsMarks(bool bShowsMarks) { m_pModel->bShowsMarks = bShowsMarks; }

void LogList::TakeOver() {
    Lines.Changed.Clear();
    m_pModel->Publish();
    const int iLast = m_pModel->rowCount() - 1;
    if (iLast < 0) return;
    selectionModel()->setCurrentIndex(m_pModel->index(iLast), QItemSelectionModel::NoUpdate);
    scrollToBottom();
}

void LogList::Synchronize() { m_pBeat->Synchronize(); }

void LogList::keyPressEvent(QKeyEvent* pEvent) {
    if (pEvent->matches(QKeySequence::Copy)) {
        CopySelection();
        return;
    }
    QListView::keyPressEvent(pEvent);
}

void LogList::contextMenuEvent(QContextMenuEvent* pEvent) {
    QMenu tMenu(this);
    QAction* pCopy = tMenu.addAction(QStringLiteral("&Copy"), this, &LogList::CopySelection);
    pCopy->setShortcut(QKeySequence::Copy);
    pCopy->setEnabled(selectionModel()->hasSelection());
    tMenu.addAction(QStringLiteral("Select &All"), this, &LogList::selectAll)->setShortcut(QKeySequence::SelectAll);
    tMenu.exec(pEvent->globalPos());
}

void LogList::showEvent(QShowEvent* pEvent) {
    m_pBeat->Shown();
    QListView::showEvent(pEvent);
}

void LogList::resizeEvent(QResizeEvent* pEvent) {
    QListView::resizeEvent(pEvent);
    if (m_pModel->rowCount() > 0) scrollToBottom();
}

QString LogList::SelectedText() const {
    QModelIndexList tRows = selectionModel()->selectedIndexes();
    std::ranges::sort(tRows, {}, [](const QModelIndex& t) { return t.row(); });
    QString sText;
    for (const QModelIndex& tRow : tRows) sText += tRow.data().toString() + QLatin1Char('\n');
    return sText;
}

void LogList::CopySelection() const {
    m_pBeat->Synchronize();  // lines that have gone since are no longer selected
    const QString sText = SelectedText();
    if (!sText.isEmpty()) QGuiApplication::clipboard()->setText(sText);
}

}  // namespace toolkit
