// The choice among fixed texts.
#include "platform/toolkit/ComboBox.h"

#include <QSignalBlocker>
#include <QWheelEvent>

#include "platform/toolkit/Latin1.h"

namespace toolkit {

ComboBox::ComboBox(QWidget* pParent) : QComboBox(pParent) {
    setFocusPolicy(Qt::StrongFocus);  // the wheel does not give it
    connect(this, &QComboBox::activated, this, &ComboBox::Chosen);
    connect(this, &QComboBox::currentIndexChanged, this, [this](int iIndex) { m_iIndex = iIndex; });
}

void ComboBox::SetItems(std::span<const std::string_view> sItems) {
    const QSignalBlocker tBlocker(this);
    clear();
    for (const std::string_view sItem : sItems) addItem(FromLatin1(sItem));
    setCurrentIndex(-1);
    m_iIndex = -1;
}

void ComboBox::SetListIndex(int iIndex) {
    if (iIndex < 0 || iIndex >= count()) return;
    setCurrentIndex(iIndex);
    Chosen();
}

void ComboBox::SetText(std::string_view sText) {
    const int iIndex = findText(FromLatin1(sText), Qt::MatchExactly | Qt::MatchCaseSensitive);
    setCurrentIndex(iIndex);
    if (iIndex >= 0) {
        Chosen();
        return;
    }
    m_sText = sText;
    setPlaceholderText(FromLatin1(sText));
}

void ComboBox::wheelEvent(QWheelEvent* pEvent) {
    if (hasFocus()) {
        QComboBox::wheelEvent(pEvent);
    } else {
        pEvent->ignore();
    }
}

void ComboBox::Chosen() {
    m_iIndex = currentIndex();
    m_sText = ToLatin1(currentText());
    emit Click();
}

}  // namespace toolkit
