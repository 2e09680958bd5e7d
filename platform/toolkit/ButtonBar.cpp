// The buttons of the toolbar.
#include "platform/toolkit/ButtonBar.h"

#include <QAction>
#include <QToolButton>

#include "platform/toolkit/PanelLabel.h"
#include "platform/toolkit/ReaderAccess.h"

namespace toolkit {

ButtonBar::ButtonBar(QWidget* pParent) : QToolBar(pParent) {
    InstallReaderAccess();
    setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    setMovable(false);
    setFloatable(false);
    setContextMenuPolicy(Qt::PreventContextMenu);  // the bar cannot be hidden: there is no menu to bring it back
    // Shown when the window is too narrow for all the buttons.
    if (auto* pMore = findChild<QToolButton*>(QStringLiteral("qt_toolbar_ext_button"))) {
        pMore->setAccessibleName(QStringLiteral("More buttons"));
    }
}

void ButtonBar::AddButton(const QString& sKey, const QString& sCaption, const QString& sTip, const QIcon& tIcon) {
    auto* pAction = new QAction(tIcon, sCaption, this);
    pAction->setIconText(sCaption);  // a button takes its caption from here; else it would lose its mnemonic
    pAction->setCheckable(true);
    pAction->setToolTip(sTip);
    m_pActions[sKey] = pAction;
    m_bPressed[sKey] = false;
    addAction(pAction);
    widgetForAction(pAction)->setFocusPolicy(Qt::TabFocus);
    // A screen reader presses a checkable button by toggling it, which triggers nothing. What the program or a click
    // has toggled is in order again by the time that this is looked at.
    const auto Toggled = [this, sKey, pAction] {
        if (pAction->isChecked() != m_bPressed.at(sKey)) Triggered(sKey);
    };
    connect(pAction, &QAction::toggled, this, Toggled, Qt::QueuedConnection);
    connect(pAction, &QAction::triggered, this, [this, sKey] { Triggered(sKey); });
}

void ButtonBar::Triggered(const QString& sKey) {
    Action(sKey).setChecked(m_bPressed.at(sKey));  // the click itself has toggled it
    emit ButtonClick(sKey);
}

void ButtonBar::AddNote() {
    m_pNote = new PanelLabel(this);
    m_pNote->SetElastic();
    m_pNote->setMargin(6);
    m_pNote->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    addWidget(m_pNote);
}

void ButtonBar::SetNote(const QString& sText) { m_pNote->SetText(sText); }

void ButtonBar::SetEnabled(const QString& sKey, bool bEnabled) { Action(sKey).setEnabled(bEnabled); }

void ButtonBar::SetPressed(const QString& sKey, bool bPressed) {
    m_bPressed.at(sKey) = bPressed;
    Action(sKey).setChecked(bPressed);
}

}  // namespace toolkit
