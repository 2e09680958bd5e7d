// Offers and tip of the port field.
#include "platform/toolkit/PortBox.h"

#include <QCompleter>
#include <QEvent>
#include <QFileInfo>
#include <QFocusEvent>
#include <QStandardItemModel>

#include "platform/toolkit/PortNames.h"

namespace toolkit {

PortBox::PortBox(QWidget* pParent) : TextBox(pParent), m_pOffers(new QStandardItemModel(this)) {
    SetTypingLimit(LongestPortName);
    auto* pCompleter = new QCompleter(m_pOffers, this);
    pCompleter->setCompletionRole(Qt::UserRole);
    pCompleter->setFilterMode(Qt::MatchContains);
    pCompleter->setCaseSensitivity(Qt::CaseInsensitive);
    setCompleter(pCompleter);
}

void PortBox::SetTip(const QString& sTip) {
    m_sTip = sTip;
    setToolTip(sTip);
}

void PortBox::SetNote(const QString& sNote) { m_sNote = sNote; }

void PortBox::RefreshOffers() {
    m_pOffers->clear();
    for (const PortOffer& tOffer : OfferPorts(PluggedPorts())) {
        QString sShown = tOffer.sName;
        if (!tOffer.sDescription.isEmpty()) sShown += QStringLiteral("   ") + tOffer.sDescription;
        auto* pItem = new QStandardItem(sShown);
        pItem->setData(tOffer.sName, Qt::UserRole);
        pItem->setToolTip(tOffer.sDevice);
        m_pOffers->appendRow(pItem);
    }
}

QString PortBox::DeviceTip() const {
    QString sTip = m_sTip;
    try {
        const QString sDevice = PortDevice(text());
        const QFileInfo tInfo(sDevice);
        sTip += QLatin1Char('\n') + (tInfo.exists() ? QStringLiteral("Device: %1").arg(tInfo.canonicalFilePath())
                                                    : QStringLiteral("%1 is not there").arg(sDevice));
    } catch (const CommError& tError) {
        sTip += QLatin1Char('\n') + QString::fromUtf8(tError.what());
    }
    return m_sNote.isEmpty() ? sTip : sTip + QLatin1Char('\n') + m_sNote;
}

bool PortBox::event(QEvent* pEvent) {
    if (pEvent->type() == QEvent::ToolTip) setToolTip(DeviceTip());  // looked up when it is asked for
    return TextBox::event(pEvent);
}

void PortBox::focusInEvent(QFocusEvent* pEvent) {
    RefreshOffers();
    TextBox::focusInEvent(pEvent);
}

}  // namespace toolkit
