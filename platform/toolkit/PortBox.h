// The field for a serial port: a number or a device name. Offers what is plugged in as the user types, and tells in its
// tool tip which device the text leads to now.
#pragma once

#include "platform/toolkit/TextBox.h"

class QStandardItemModel;

namespace toolkit {

class PortBox : public TextBox {
    Q_OBJECT
public:
    explicit PortBox(QWidget* pParent = nullptr);

    // The tip that stands before the device's; a note such as "This adapter reports no line errors." stands behind it.
    void SetTip(const QString& sTip);
    void SetNote(const QString& sNote);

protected:
    bool event(QEvent* pEvent) override;
    void focusInEvent(QFocusEvent* pEvent) override;

private:
    QString DeviceTip() const;
    void RefreshOffers();

    QStandardItemModel* m_pOffers;
    QString m_sTip;
    QString m_sNote;
};

}  // namespace toolkit
