// The log list: view, marks and copying.
#include "platform/toolkit/LogList.h"

#include <QClipboard>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <algorithm>

#include "platform/toolkit/ContextMenu.h"
#include "platform/toolkit/EmptyHint.h"
#include "platform/toolkit/LogModel.h"
#include "platform/toolkit/NewestMark.h"
#include "platform/toolkit/RepaintBeat.h"
#include "platform/toolkit/ViewColours.h"

namespace toolkit {

namespace {

constexpr int MarkWidth = 4;    // pixels of the bar before a marked line
constexpr int NamePadding = 4;  // pixels before and behind the name in its strip
constexpr int TextIndent = 10;  // pixels from the left edge to the text
constexpr int LineChars = 400;  // characters of a line that are drawn; longer ones can be copied whole

// A marked line has a bar in front and a tinted ground; a notice in brackets is bold: both can be told without colour.
class LineDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* pPainter, const QStyleOptionViewItem& tOption, const QModelIndex& tIndex) const override {
        const bool bSelected = (tOption.state & QStyle::State_Selected) != 0;
        const bool bMarked = tIndex.data(LogModel::MarkRole).toBool();
        QPalette tPalette = tOption.palette;
        tPalette.setCurrentColorGroup(ColourGroup(*tOption.widget));
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
    : QListView(pParent),
      m_pModel(new LogModel(Lines, this)),
      m_pBeat(new RepaintBeat(*this, [this] { TakeOver(); })),
      m_pMark(new NewestMark(this)) {
    setModel(m_pModel);
    setItemDelegate(new LineDelegate(this));
    // The desktop's fixed font, in the size of everything else here.
    QFont tFixed;
    tFixed.setFamilies(QFontDatabase::systemFont(QFontDatabase::FixedFont).families());
    tFixed.setStyleHint(QFont::TypeWriter);
    setFont(tFixed);
    setUniformItemSizes(true);
    setEditTriggers(NoEditTriggers);
    setSelectionMode(ExtendedSelection);
    setVerticalScrollMode(ScrollPerItem);
    setHorizontalScrollMode(ScrollPerPixel);
    Lines.Changed.SetListener([this] { m_pBeat->Mark(); });
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, [this] {
        if (m_bOwnMove) return;
        m_bAtNewest = AtEnd();
        ShowMark();
    });
    connect(m_pMark, &NewestMark::clicked, this, &LogList::FollowNewest);
}

LogList::~LogList() { Lines.Changed.SetListener({}); }

void LogList::SetShowsMarks(bool bShowsMarks) { m_pModel->bShowsMarks = bShowsMarks; }

void LogList::SetEmptyHint(const QString& sHint) {
    m_sEmptyHint = sHint;
    viewport()->update();
}

QString LogList::EmptyHint() const { return m_pModel->rowCount() == 0 ? m_sEmptyHint : QString(); }

void LogList::SetName(const QString& sName) {
    if (!m_pName) m_pName = new QLabel(this);
    m_pName->setText(sName);
    m_pName->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    m_pName->setAutoFillBackground(true);
    PlaceName();
}

void LogList::PlaceName() {
    if (m_pName == nullptr) return;
    const int iWidth = m_pName->fontMetrics().horizontalAdvance(m_pName->text()) + 2 * NamePadding;
    setViewportMargins(iWidth, 0, 0, 0);
    const QRect tLines = viewport()->geometry();
    m_pName->setGeometry(tLines.left() - iWidth, tLines.top(), iWidth, tLines.height());
}

void LogList::TakeOver() {
    const bool bFollows = Follows();
    const int iTop = verticalScrollBar()->value();
    const QScopedValueRollback tOwnMove(m_bOwnMove, true);
    Lines.Changed.Clear();
    const auto iGone = m_pModel->Publish();
    executeDelayedItemsLayout();
    if (bFollows || !iGone) {
        GoToNewest();
    } else {
        verticalScrollBar()->setValue(iTop - *iGone);
        m_iGoneSincePress += *iGone;
        m_bAtNewest = m_bAtNewest && AtEnd();
    }
    ShowMark();
}

// A scroll bar that is held at its end is no hindrance: whoever drags it there wants the newest.
bool LogList::Follows() const { return m_bAtNewest && !m_bButtonHeld && !selectionModel()->hasSelection(); }

void LogList::FollowNewest() {
    const QScopedValueRollback tOwnMove(m_bOwnMove, true);
    clearSelection();
    GoToNewest();
    ShowMark();
}

// With the cursor, where the user's next selection by keys begins.
void LogList::GoToNewest() {
    m_bAtNewest = true;
    setCurrentIndex(m_pModel->index(CurrentLine()));
    verticalScrollBar()->setValue(verticalScrollBar()->maximum());
}

bool LogList::AtEnd() const { return verticalScrollBar()->value() == verticalScrollBar()->maximum(); }

void LogList::ShowMark() {
    const bool bShow = !m_bAtNewest && !AtEnd();
    if (bShow) m_pMark->PutInto(viewport()->geometry());
    m_pMark->setVisible(bShow);
}

void LogList::Synchronize() { m_pBeat->Synchronize(); }

int LogList::CurrentLine() const { return m_pModel->rowCount() - 1; }

// The cursor that goes with the newest line selects nothing.
QItemSelectionModel::SelectionFlags LogList::selectionCommand(const QModelIndex& tIndex, const QEvent* pEvent) const {
    return m_bOwnMove ? QItemSelectionModel::NoUpdate : QListView::selectionCommand(tIndex, pEvent);
}

// Dragging selects from a place among all lines, as it was at the press.
void LogList::setSelection(const QRect& tRect, QItemSelectionModel::SelectionFlags eCommand) {
    const int iGone = state() == DragSelectingState ? m_iGoneSincePress * sizeHintForRow(0) : 0;
    QListView::setSelection(QRect(tRect.topLeft() - QPoint(0, iGone), tRect.bottomRight()), eCommand);
}

bool LogList::viewportEvent(QEvent* pEvent) {
    if (pEvent->type() == QEvent::MouseButtonPress) m_iGoneSincePress = 0;
    switch (pEvent->type()) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonDblClick:
        case QEvent::MouseMove:
        case QEvent::MouseButtonRelease:
            m_bButtonHeld = static_cast<QMouseEvent*>(pEvent)->buttons().testFlag(Qt::LeftButton);
            break;
        default:
            break;
    }
    return QListView::viewportEvent(pEvent);
}

void LogList::paintEvent(QPaintEvent* pEvent) {
    QListView::paintEvent(pEvent);
    PaintEmptyHint(*viewport(), EmptyHint());
}

void LogList::keyPressEvent(QKeyEvent* pEvent) {
    if (pEvent->matches(QKeySequence::Copy)) {
        CopySelection();
        return;
    }
    if (pEvent->key() == Qt::Key_End && (pEvent->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier) {
        FollowNewest();
        return;
    }
    const QPersistentModelIndex tBefore = currentIndex();
    QListView::keyPressEvent(pEvent);
    if (currentIndex() == tBefore) return;
    m_bAtNewest = currentIndex().row() == CurrentLine() && AtEnd();
    ShowMark();
}

void LogList::contextMenuEvent(QContextMenuEvent* pEvent) {
    QMenu& tMenu = NewContextMenu(*this);
    AddEntry(tMenu, QStringLiteral("&Copy"), QKeySequence::Copy, selectionModel()->hasSelection(),
             [this] { CopySelection(); });
    AddEntry(tMenu, QStringLiteral("Select &All"), QKeySequence::SelectAll, CurrentLine() >= 0,
             [this] { selectAll(); });
    tMenu.addSeparator();
    AddEntry(tMenu, QStringLiteral("&Follow the Newest"), Qt::Key_End, !Follows(), [this] { FollowNewest(); });
    OpenContextMenu(tMenu, *pEvent, *viewport(), visualRect(currentIndex()));
}

void LogList::showEvent(QShowEvent* pEvent) {
    m_pBeat->Shown();
    QListView::showEvent(pEvent);
}

void LogList::resizeEvent(QResizeEvent* pEvent) {
    QListView::resizeEvent(pEvent);
    PlaceName();
    m_bAtNewest = m_bAtNewest || AtEnd();
    ShowMark();
}

// Whatever changes the room for the lines, a view that stands at its end stays there.
void LogList::updateGeometries() {
    const QScopedValueRollback tOwnMove(m_bOwnMove, true);
    QListView::updateGeometries();
    if (m_bAtNewest) verticalScrollBar()->setValue(verticalScrollBar()->maximum());
}

void LogList::changeEvent(QEvent* pEvent) {
    QListView::changeEvent(pEvent);
    if (pEvent->type() == QEvent::FontChange) PlaceName();
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
