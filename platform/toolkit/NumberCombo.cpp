// The list of numbers and the text above it: neither moves while the user is at it.
#include "platform/toolkit/NumberCombo.h"

#include <QAbstractItemView>
#include <QAbstractListModel>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QWheelEvent>
#include <algorithm>
#include <vector>

#include "platform/toolkit/Focus.h"
#include "platform/toolkit/Latin1.h"
#include "platform/toolkit/RepaintBeat.h"

namespace toolkit {

// Tells the combo box of the items only in Publish, one new item at a time: an open list keeps its place and the entry
// that the user is on.
class NumberModel : public QAbstractListModel {
public:
    NumberModel(const runtime::NumberItems& tItems, QObject* pParent) : QAbstractListModel(pParent), m_tItems(tItems) {}

    int rowCount(const QModelIndex& tParent = {}) const override {
        return tParent.isValid() ? 0 : static_cast<int>(m_lPublished.size());
    }
    QVariant data(const QModelIndex& tIndex, int iRole) const override {
        if (!tIndex.isValid()) return {};
        const std::int32_t lNumber = m_lPublished[static_cast<std::size_t>(tIndex.row())];
        if (iRole == Qt::DisplayRole || iRole == Qt::EditRole) return QString::number(lNumber);
        if (iRole == Qt::UserRole) return DataOf(lNumber);
        return {};
    }
    void Publish() {
        std::vector<std::int32_t> lNumbers;
        for (int i = 0; i < m_tItems.Count(); ++i) lNumbers.push_back(m_tItems.At(i).lNumber);
        const bool bCleared = !std::ranges::includes(lNumbers, m_lPublished);
        if (bCleared || lNumbers.size() > m_lPublished.size() + MostSingly) {
            beginResetModel();
            m_lPublished = lNumbers;
            endResetModel();
            return;
        }
        for (std::size_t i = 0; i < lNumbers.size(); ++i) {
            if (i < m_lPublished.size() && m_lPublished[i] == lNumbers[i]) continue;
            beginInsertRows({}, static_cast<int>(i), static_cast<int>(i));
            m_lPublished.insert(m_lPublished.begin() + static_cast<std::ptrdiff_t>(i), lNumbers[i]);
            endInsertRows();
        }
    }

private:
    static constexpr std::size_t MostSingly = 100;  // more new items than these come all at once

    QVariant DataOf(std::int32_t lNumber) const {
        for (int i = 0; i < m_tItems.Count(); ++i) {
            const runtime::NumberItems::Item t = m_tItems.At(i);
            if (t.lNumber == lNumber) return t.lData;
        }
        return {};
    }

    const runtime::NumberItems& m_tItems;
    std::vector<std::int32_t> m_lPublished;
};

namespace {

// What the user sees and has marked in a line.
struct LineState {
    QString sText;
    int iCursor = 0;
    int iSelectionStart = -1;
    int iSelectionLength = 0;
    bool bModified = false;
    bool operator==(const LineState&) const = default;

    static LineState Of(const QLineEdit& t) {
        return {t.text(), t.cursorPosition(), t.selectionStart(), t.selectionLength(), t.isModified()};
    }
    // The list's model writes into the line when its first item comes, when it is emptied and when its current entry
    // goes: only then is there anything to put back, and the user's undo is lost.
    void PutBack(QLineEdit& t) const {
        if (Of(t) == *this) return;
        if (t.text() != sText) t.setText(sText);
        t.setModified(bModified);
        if (iSelectionStart < 0) {
            t.setCursorPosition(iCursor);
        } else if (iCursor == iSelectionStart) {
            t.setSelection(iSelectionStart + iSelectionLength, -iSelectionLength);
        } else {
            t.setSelection(iSelectionStart, iSelectionLength);
        }
    }
};

}  // namespace

NumberCombo::NumberCombo(QWidget* pParent)
    : QComboBox(pParent),
      m_pModel(new NumberModel(Items, this)),
      m_pBeat(new RepaintBeat(*this, [this] { TakeOver(); })) {
    setFocusPolicy(Qt::StrongFocus);  // the wheel does not give it
    setEditable(true);
    setInsertPolicy(NoInsert);
    setCompleter(nullptr);
    setModel(m_pModel);
    Items.Changed.SetListener([this] { m_pBeat->Mark(); });
    connect(this, &QComboBox::editTextChanged, this, [this](const QString& sText) { m_sText = ToLatin1(sText); });
}

NumberCombo::~NumberCombo() { Items.Changed.SetListener({}); }

void NumberCombo::SetText(std::string_view sText) {
    m_sText = sText;
    m_pBeat->Mark();
}

void NumberCombo::TakeOver() {
    if (m_bHasOpened && view()->isVisible()) {
        m_pBeat->Mark();  // an open list does not slide under the pointer
        return;
    }
    const QSignalBlocker tBlocker(this);
    const QSignalBlocker tEditBlocker(lineEdit());
    const LineState tBefore = LineState::Of(*lineEdit());
    // What the user is typing is not typed on to a text of the program's. An emptied line is nothing typed yet: what
    // the program has put there shows, marked, so that typing replaces it.
    const bool bTyping = HasFocus(*this) && tBefore.bModified && !tBefore.sText.isEmpty();
    const QString sText = bTyping ? tBefore.sText : FromLatin1(m_sText);
    if (Items.Changed.Marked()) {
        Items.Changed.Clear();
        m_pModel->Publish();
    }
    // The entry of the text, if there is one, is where the arrow keys and an opened list start.
    const int iEntry = findText(sText, Qt::MatchExactly);
    if (iEntry != currentIndex()) setCurrentIndex(iEntry);
    if (sText == tBefore.sText) {
        tBefore.PutBack(*lineEdit());
    } else {
        setEditText(sText);
        if (HasFocus(*this)) lineEdit()->selectAll();  // so that typing replaces it
    }
    if (sText != FromLatin1(m_sText)) m_pBeat->Mark();
}

void NumberCombo::showEvent(QShowEvent* pEvent) {
    Synchronize();  // what came while it was out of sight
    QComboBox::showEvent(pEvent);
}

void NumberCombo::wheelEvent(QWheelEvent* pEvent) {
    if (hasFocus()) {
        QComboBox::wheelEvent(pEvent);
    } else {
        pEvent->ignore();
    }
}

void NumberCombo::Synchronize() { m_pBeat->Synchronize(); }

void NumberCombo::showPopup() {
    Synchronize();
    m_bHasOpened = true;
    QComboBox::showPopup();
}

}  // namespace toolkit
