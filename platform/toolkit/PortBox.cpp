// List, arrow and tip of the port field.
#include "platform/toolkit/PortBox.h"

#include <QAbstractItemView>
#include <QEvent>
#include <QFileInfo>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QStyle>
#include <QToolButton>

#include "platform/toolkit/DeviceHolder.h"
#include "platform/toolkit/PortList.h"

namespace toolkit {

namespace {

// Lets in what the profile keeps. Of a path that is too long it leaves the name, which leads to the same device.
class PortValidator : public QValidator {
public:
    using QValidator::QValidator;

    State validate(QString& sText, int& iCursor) const override {
        const auto sKept = KeptPortName(sText);
        if (!sKept) return Invalid;
        if (*sKept != sText) {
            sText = *sKept;
            iCursor = static_cast<int>(sText.size());
        }
        return Acceptable;
    }
};

// The lines about a device that is there.
QString DeviceLines(const QString& sDevice) {
    const QString sCanonical = QFileInfo(sDevice).canonicalFilePath();
    QString sLines = QStringLiteral("Device: ") + sCanonical;
    if (sDevice != sCanonical) sLines.prepend(QFileInfo(sDevice).fileName() + QLatin1Char('\n'));
    const QString sHolder = DeviceHolder(sDevice);
    return sHolder.isEmpty() ? sLines : sLines + QStringLiteral("\nIn use by ") + sHolder;
}

}  // namespace

PortBox::PortBox(QWidget* pParent)
    : TextBox(pParent), m_tSource([] { return OfferPorts(PluggedPorts()); }), m_pArrow(new QToolButton(this)) {
    setValidator(new PortValidator(this));
    m_pArrow->setArrowType(Qt::DownArrow);
    m_pArrow->setAutoRaise(true);
    m_pArrow->setFocusPolicy(Qt::NoFocus);
    m_pArrow->setCursor(Qt::ArrowCursor);
    m_pArrow->setToolTip(QStringLiteral("Serial ports to choose from"));
    m_pArrow->setAccessibleName(QStringLiteral("Show serial ports"));
    connect(m_pArrow, &QToolButton::clicked, this, [this] {
        setFocus();
        ShowOffers();
    });
    connect(this, &QLineEdit::textEdited, this, &PortBox::Typed);
    PlaceArrow();  // its room counts in the field's own size
}

PortList& PortBox::List() {
    if (m_pList != nullptr) return *m_pList;
    m_pList = new PortList(this);
    m_pList->popup()->installEventFilter(this);
    connect(m_pList, qOverload<const QString&>(&QCompleter::activated), this, [this](const QString& sName) {
        setText(sName);
        home(false);  // the end of a long name is the same for many
    });
    return *m_pList;
}

void PortBox::SetTip(const QString& sTip) {
    m_sTip = sTip;
    setToolTip(sTip);
}

void PortBox::SetNote(const QString& sNote) { m_sNote = sNote; }

void PortBox::ShowOffers() {
    LookUp();
    List().Open({}, text());
}

void PortBox::LookUp() {
    List().SetOffers(m_tSource());
    m_bLookedUp = true;
}

// With the first letter; a look at what is plugged in for every one would be felt.
void PortBox::Typed(const QString& sText) {
    if (sText.isEmpty() || !m_bLookedUp) LookUp();
    List().Open(sText);
}

void PortBox::focusInEvent(QFocusEvent* pEvent) {
    m_bLookedUp = false;
    TextBox::focusInEvent(pEvent);
}

QString PortBox::DeviceTip() const {
    QString sTip = m_sTip;
    try {
        const QString sDevice = PortDevice(text());
        sTip += QLatin1Char('\n') +
                (QFileInfo::exists(sDevice) ? DeviceLines(sDevice) : QStringLiteral("%1 is not there").arg(sDevice));
    } catch (const CommError& tError) {
        sTip += QLatin1Char('\n') + tError.Text();
    }
    return m_sNote.isEmpty() ? sTip : sTip + QLatin1Char('\n') + m_sNote;
}

bool PortBox::event(QEvent* pEvent) {
    if (pEvent->type() == QEvent::ToolTip) setToolTip(DeviceTip());  // looked up when it is asked for
    return TextBox::event(pEvent);
}

void PortBox::keyPressEvent(QKeyEvent* pEvent) {
    if (pEvent->key() == Qt::Key_Down || pEvent->key() == Qt::Key_F4) {
        ShowOffers();
        return;
    }
    TextBox::keyPressEvent(pEvent);
}

void PortBox::mousePressEvent(QMouseEvent* pEvent) {
    m_bPressed = pEvent->button() == Qt::LeftButton && !List().IsOpen();
    TextBox::mousePressEvent(pEvent);
}

// At the release, and not while a part of the text is being marked.
void PortBox::mouseReleaseEvent(QMouseEvent* pEvent) {
    TextBox::mouseReleaseEvent(pEvent);
    if (std::exchange(m_bPressed, false) && !hasSelectedText()) ShowOffers();
}

// Marks all, to be typed over: a name has no words.
void PortBox::mouseDoubleClickEvent(QMouseEvent* pEvent) {
    TextBox::mouseDoubleClickEvent(pEvent);
    m_bPressed = false;
    selectAll();
}

// An open list has the mouse: a press on the field closes it, and the second one of a double-click is the field's
// still.
bool PortBox::eventFilter(QObject* pObject, QEvent* pEvent) {
    const bool bDouble = pEvent->type() == QEvent::MouseButtonDblClick;
    if (!bDouble && pEvent->type() != QEvent::MouseButtonPress) return TextBox::eventFilter(pObject, pEvent);
    const QPoint tPlace = mapFromGlobal(static_cast<QMouseEvent*>(pEvent)->globalPosition()).toPoint();
    if (!rect().contains(tPlace) || m_pList->popup()->underMouse()) return TextBox::eventFilter(pObject, pEvent);
    m_pList->popup()->hide();
    if (bDouble && !m_pArrow->geometry().contains(tPlace)) selectAll();
    return true;
}

void PortBox::PlaceArrow() {
    const int iFrame = style()->pixelMetric(QStyle::PM_DefaultFrameWidth, nullptr, this);
    const int iWidth = fontMetrics().height() + 2;
    setTextMargins(0, 0, iWidth, 0);
    m_pArrow->setGeometry(width() - iFrame - iWidth, iFrame, iWidth, height() - 2 * iFrame);
}

void PortBox::resizeEvent(QResizeEvent* pEvent) {
    TextBox::resizeEvent(pEvent);
    PlaceArrow();
}

void PortBox::changeEvent(QEvent* pEvent) {
    TextBox::changeEvent(pEvent);
    if (pEvent->type() == QEvent::FontChange || pEvent->type() == QEvent::StyleChange) PlaceArrow();
}

}  // namespace toolkit
