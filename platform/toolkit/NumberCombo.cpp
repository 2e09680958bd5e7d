// The list of numbers and the text above it.
#include "platform/toolkit/NumberCombo.h"

#include <QAbstractListModel>
#include <QLineEdit>
#include <QSignalBlocker>

#include "platform/toolkit/Latin1.h"
#include "platform/toolkit/RepaintBeat.h"

namespace toolkit {

// Tells the combo box of the items only in Publish.
class NumberModel : public QAbstractListModel {
public:
    NumberModel(const runtime::NumberItems& tItems, QObject* pParent) : QAbstractListModel(pParent), m_tItems(tItems) {}

    int rowCount(const QModelIndex& tParent = {}) const override { return tParent.isValid() ? 0 : m_iPublished; }
    QVariant data(const QModelIndex& tIndex, int iRole) const override {
        if (!tIndex.isValid() || tIndex.row() >= m_tItems.Count()) return {};
        const runtime::NumberItems::Item& tItem = m_tItems.At(tIndex.row());
        if (iRole == Qt::DisplayRole || iRole == Qt::EditRole) return FromLatin1(tItem.sText);
        if (iRole == Qt::UserRole) return tItem.lData;
        return {};
    }
    void Publish() {
        beginResetModel();
        m_iPublished = m_tItems.Count();
        endResetModel();
    }

private:
    const runtime::NumberItems& m_tItems;
    int m_iPublished = 0;
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
    // A reset of the model empties the edit text, and a first item overwrites it: the text must survive both.
    const QSignalBlocker tBlocker(this);
    const QSignalBlocker tEditBlocker(lineEdit());
    const int iCursor = lineEdit()->cursorPosition();
    m_pModel->Publish();
    setCurrentIndex(-1);
    setEditText(FromLatin1(m_sText));
    lineEdit()->setCursorPosition(iCursor);
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
