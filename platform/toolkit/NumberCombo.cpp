// The list of numbers and the text above it.
#include "platform/toolkit/NumberCombo.h"

#include <QAbstractListModel>
#include <QLineEdit>
#include <QSignalBlocker>
#include <algorithm>
#include <vector>

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
            if (m_tItems.At(i).lNumber == lNumber) return m_tItems.At(i).lData;
        }
        return {};
    }

    const runtime::NumberItems& m_tItems;
    std::vector<std::int32_t> m_lPublished;
};

NumberCombo::NumberCombo(QWidget* pParent)
    : QComboBox(pParent),
      m_pModel(new NumberModel(Items, this)),
      m_pItemsBeat(new RepaintBeat(*this, [this] { TakeOver(); })),
      m_pTextBeat(new RepaintBeat(*this, [this] {
          const QSignalBlocker tBlocker(this);
          if (currentText() != FromLatin1(m_sText)) setEditText(FromLatin1(m_sText));
      })) {
    setEditable(true);
    setInsertPolicy(NoInsert);
    setCompleter(nullptr);
    setModel(m_pModel);
    Items.Changed.SetListener([this] { m_pItemsBeat->Mark(); });
    connect(this, &QComboBox::editTextChanged, this, [this](const QString& sText) { m_sText = ToLatin1(sText); });
}

NumberCombo::~NumberCombo() { Items.Changed.SetListener({}); }

void NumberCombo::SetText(std::string_view sText) {
    m_sText = sText;
    m_pTextBeat->Mark();
}

void NumberCombo::TakeOver() {
    Items.Changed.Clear();
    // A reset of the model empties the edit text, and a first item overwrites it: the text must survive both. The
    // entry of that text, if there is one, is where the arrow keys and an opened list start.
    const QSignalBlocker tBlocker(this);
    const QSignalBlocker tEditBlocker(lineEdit());
    const int iCursor = lineEdit()->cursorPosition();
    m_pModel->Publish();
    setCurrentIndex(findText(FromLatin1(m_sText), Qt::MatchExactly));
    setEditText(FromLatin1(m_sText));
    lineEdit()->setCursorPosition(iCursor);
}

void NumberCombo::showEvent(QShowEvent* pEvent) {
    Synchronize();  // what came while it was out of sight
    QComboBox::showEvent(pEvent);
}

void NumberCombo::Synchronize() {
    m_pItemsBeat->Synchronize();
    m_pTextBeat->Synchronize();
}

void NumberCombo::showPopup() {
    Synchronize();
    QComboBox::showPopup();
}

}  // namespace toolkit
