// Drawn by itself: the stock label cuts a text without a sign of it.
#include "platform/toolkit/PanelLabel.h"

#include <QEvent>
#include <QPainter>
#include <algorithm>

#include "platform/toolkit/Icons.h"

namespace toolkit {

namespace {

constexpr int IconGap = 4;  // pixels between icon and text
constexpr int Indent = 2;   // before the text, margin apart

// Red that stands out from the ground and can be read on it, whether that is light or dark.
QColor ErrorColour(const QPalette& tPalette) {
    const bool bDarkGround = tPalette.color(QPalette::Window).lightness() < 128;
    return bDarkGround ? QColor(255, 138, 128) : QColor(176, 0, 32);
}

}  // namespace

PanelLabel::PanelLabel(QWidget* pParent) : QLabel(pParent) {
    setTextFormat(Qt::PlainText);
    setIndent(Indent);
}

void PanelLabel::SetTip(const QString& sTip) {
    if (m_sTip == sTip) return;
    m_sTip = sTip;
    RenewToolTip();
}

void PanelLabel::SetText(const QString& sText) {
    if (text() == sText) return;
    setText(sText);
    RenewDrawn();
}

void PanelLabel::SetError(bool bError) {
    if (m_bError == bError) return;
    m_bError = bError;
    MakeRoom();
    update();
}

void PanelLabel::MakeRoom() {
    setIndent(m_bError ? Indent + IconSide() + IconGap : Indent);
    RenewDrawn();
}

QRect PanelLabel::TextRect() const {
    QRect tRect = contentsRect().adjusted(margin(), margin(), -margin(), -margin());
    tRect.setLeft(tRect.left() + indent());
    return tRect;
}

void PanelLabel::RenewDrawn() {
    m_sDrawn = fontMetrics().elidedText(text(), Qt::ElideRight, TextRect().width());
    RenewToolTip();
}

void PanelLabel::RenewToolTip() { setToolTip(m_sDrawn == text() ? m_sTip : text()); }

QSize PanelLabel::sizeHint() const { return m_bElastic ? minimumSizeHint() : QLabel::sizeHint(); }

QSize PanelLabel::minimumSizeHint() const {
    const QSize tSize = QLabel::minimumSizeHint();
    return m_bElastic ? QSize(1, tSize.height()) : tSize;
}

// For a text that can be marked Qt keeps a document and lays it out anew whenever the text changes, which takes a good
// part of the time that a table's rows take: so only while the mouse is here or something is marked.
void PanelLabel::enterEvent(QEnterEvent* pEvent) {
    setTextInteractionFlags(Qt::TextSelectableByMouse);
    QLabel::enterEvent(pEvent);
}

void PanelLabel::leaveEvent(QEvent* pEvent) {
    if (!hasSelectedText()) setTextInteractionFlags(Qt::NoTextInteraction);
    QLabel::leaveEvent(pEvent);
}

void PanelLabel::paintEvent(QPaintEvent* pEvent) {
    const bool bMarked = hasSelectedText();  // by the user: drawn by whoever knows of it
    if (bMarked) QLabel::paintEvent(pEvent);
    QPainter tPainter(this);
    const QRect tText = TextRect();
    if (m_bError) {
        const int iLeft = tText.left() - IconSide() - IconGap;
        ErrorIcon().paint(&tPainter, QRect(iLeft, tText.center().y() - IconSide() / 2 + 1, IconSide(), IconSide()));
    }
    if (bMarked) return;
    drawFrame(&tPainter);
    tPainter.setPen(m_bError ? ErrorColour(palette()) : palette().color(foregroundRole()));
    // Where the stock label would put it, to the pixel: a text does not move when it is marked.
    const int iAbove = std::max(0, (tText.height() - fontMetrics().height()) / 2);
    tPainter.drawText(tText.left(), tText.top() + iAbove + fontMetrics().ascent(), m_sDrawn);
}

void PanelLabel::resizeEvent(QResizeEvent* pEvent) {
    QLabel::resizeEvent(pEvent);
    RenewDrawn();
}

void PanelLabel::changeEvent(QEvent* pEvent) {
    QLabel::changeEvent(pEvent);
    if (pEvent->type() == QEvent::FontChange || pEvent->type() == QEvent::StyleChange) MakeRoom();
}

}  // namespace toolkit
