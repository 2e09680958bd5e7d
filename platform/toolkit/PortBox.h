// The field for a serial port: a number or a device name. Shows what is plugged in, below it (by its arrow, a click,
// the Down key, and when it has been emptied) and while the user types; tells in its tool tip which device the text
// leads to now, and who uses it.
#pragma once

#include <functional>
#include <vector>

#include "platform/toolkit/PortNames.h"
#include "platform/toolkit/TextBox.h"

class QToolButton;

namespace toolkit {

class PortList;

class PortBox : public TextBox {
    Q_OBJECT
public:
    explicit PortBox(QWidget* pParent = nullptr);

    // Where the offers come from, asked whenever the list opens; at first the ports of this computer.
    void SetSource(std::function<std::vector<PortOffer>()> tSource) { m_tSource = std::move(tSource); }

    // The tip that stands before the device's; a note such as "This adapter reports no line errors." stands behind it.
    void SetTip(const QString& sTip);
    void SetNote(const QString& sNote);

    void ShowOffers();
    const PortList& Offers() { return List(); }

protected:
    bool event(QEvent* pEvent) override;
    bool eventFilter(QObject* pObject, QEvent* pEvent) override;
    void focusInEvent(QFocusEvent* pEvent) override;
    void keyPressEvent(QKeyEvent* pEvent) override;
    void mousePressEvent(QMouseEvent* pEvent) override;
    void mouseReleaseEvent(QMouseEvent* pEvent) override;
    void mouseDoubleClickEvent(QMouseEvent* pEvent) override;
    void resizeEvent(QResizeEvent* pEvent) override;
    void changeEvent(QEvent* pEvent) override;

private:
    QString DeviceTip() const;
    PortList& List();
    void PlaceArrow();
    void LookUp();
    void Typed(const QString& sText);

    std::function<std::vector<PortOffer>()> m_tSource;
    PortList* m_pList = nullptr;  // made when it is first looked at
    QToolButton* m_pArrow;
    QString m_sTip;
    QString m_sNote;
    bool m_bLookedUp = false;  // since the field got the focus
    bool m_bPressed = false;   // the list was not open when the button went down here
};

}  // namespace toolkit
