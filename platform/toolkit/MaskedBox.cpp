// Events of the masked box, and how its text reaches the screen.
#include "platform/toolkit/MaskedBox.h"

#include <QClipboard>
#include <QFocusEvent>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <algorithm>
#include <optional>

#include "platform/toolkit/ContextMenu.h"
#include "platform/toolkit/Latin1.h"
#include "platform/toolkit/RepaintBeat.h"

namespace toolkit {

namespace {

std::optional<int> ArrowCode(int iKey) {
    switch (iKey) {
        case Qt::Key_Left:
            return 37;
        case Qt::Key_Up:
            return 38;
        case Qt::Key_Right:
            return 39;
        case Qt::Key_Down:
            return 40;
        default:
            return std::nullopt;
    }
}

}  // namespace

MaskedBox::MaskedBox(QWidget* pParent) : QLineEdit(pParent), m_pBeat(new RepaintBeat(*this, [this] { TakeOver(); })) {
    setDragEnabled(false);
    setAcceptDrops(false);
    // An assistive tool may set the text of the line edit below: that is a change like any other.
    connect(this, &QLineEdit::textChanged, this, [this](const QString& sText) {
        if (!m_bTakingOver) SetText(ToLatin1(sText));
    });
}

void MaskedBox::SetText(std::string_view sText) {
    m_sText = sText;
    m_iSelStart = 0;
    m_iSelLength = 0;
    m_pBeat->Mark();
    emit Change();
}

void MaskedBox::TypeOver(std::string_view sText, int iStart, int iLength) {
    m_sText = sText;
    SetSelection(iStart, iLength);
    emit Change();
}

void MaskedBox::SetSelection(int iStart, int iLength) {
    const int iSize = static_cast<int>(m_sText.size());
    m_iSelStart = std::clamp(iStart, 0, iSize);
    m_iSelLength = std::clamp(iLength, 0, iSize - m_iSelStart);
    m_pBeat->Mark();
}

void MaskedBox::ClickAt(int iPosition) {
    SetSelection(iPosition, 0);
    emit Click();
    Synchronize();
}

void MaskedBox::TakeOver() {
    m_bTakingOver = true;
    const QString sText = FromLatin1(m_sText);
    if (text() != sText) setText(sText);
    setSelection(m_iSelStart, m_iSelLength);
    m_bTakingOver = false;
}

void MaskedBox::Synchronize() { m_pBeat->Synchronize(); }

bool MaskedBox::event(QEvent* pEvent) {
    // A line edit claims Ctrl+V, Delete and the like as its own shortcuts; here they mean nothing.
    if (pEvent->type() == QEvent::ShortcutOverride) return QWidget::event(pEvent);
    // It also drops its selection when the window becomes active again; here one character always stays selected.
    if (pEvent->type() == QEvent::WindowActivate) return QWidget::event(pEvent);
    return QLineEdit::event(pEvent);
}

void MaskedBox::keyPressEvent(QKeyEvent* pEvent) {
    if (pEvent->key() == Qt::Key_Tab || pEvent->key() == Qt::Key_Backtab) {
        pEvent->ignore();  // leaves the field
        return;
    }
    if (const auto iCode = ArrowCode(pEvent->key())) {
        emit KeyDown(*iCode);
        Synchronize();
        return;
    }
    TypeText(pEvent->text());
}

// The text as a whole: the one selected character is the mask's, not the user's.
void MaskedBox::contextMenuEvent(QContextMenuEvent* pEvent) {
    QMenu& tMenu = NewContextMenu(*this);
    AddEntry(tMenu, QStringLiteral("&Copy"), {}, true,
             [this] { QGuiApplication::clipboard()->setText(FromLatin1(m_sText)); });
    AddEntry(tMenu, QStringLiteral("&Paste"), {}, !QGuiApplication::clipboard()->text().isEmpty(), [this] {
        emit Paste(QGuiApplication::clipboard()->text());
        Synchronize();
    });
    OpenContextMenu(tMenu, *pEvent, *this, cursorRect());
}

void MaskedBox::inputMethodEvent(QInputMethodEvent* pEvent) { TypeText(pEvent->commitString()); }

void MaskedBox::TypeText(const QString& sText) {
    for (const char c : ToLatin1(sText)) emit KeyPress(c);
    Synchronize();
}

void MaskedBox::mousePressEvent(QMouseEvent* pEvent) {
    setFocus(Qt::MouseFocusReason);
    pEvent->accept();
}

void MaskedBox::mouseMoveEvent(QMouseEvent* pEvent) { pEvent->accept(); }  // a drag selects nothing

void MaskedBox::mouseReleaseEvent(QMouseEvent* pEvent) {
    if (pEvent->button() != Qt::LeftButton) return;
    Synchronize();
    ClickAt(cursorPositionAt(pEvent->position().toPoint()));
}

void MaskedBox::mouseDoubleClickEvent(QMouseEvent* pEvent) { pEvent->accept(); }

void MaskedBox::focusInEvent(QFocusEvent* pEvent) {
    QLineEdit::focusInEvent(pEvent);  // selects all when the focus came by Tab
    if (pEvent->reason() != Qt::OtherFocusReason) SetSelection(m_iSelStart, std::max(m_iSelLength, 1));
    m_pBeat->Mark();
    Synchronize();
}

void MaskedBox::focusOutEvent(QFocusEvent* pEvent) {
    QLineEdit::focusOutEvent(pEvent);  // selects nothing any more
    m_pBeat->Mark();
    Synchronize();
}

void MaskedBox::showEvent(QShowEvent* pEvent) {
    m_pBeat->Shown();
    QLineEdit::showEvent(pEvent);
}

}  // namespace toolkit
