// The answers to screen readers.
#include "platform/toolkit/ReaderAccess.h"

#include <QAbstractButton>
#include <QAccessibleWidget>
#include <QKeySequence>

#include "platform/toolkit/ButtonBar.h"
#include "platform/toolkit/TabControl.h"

namespace toolkit {

namespace {

QString WithoutMnemonic(QString sCaption) { return sCaption.remove(QLatin1Char('&')); }

// Qt takes a checkable tool button for a check box, and toggles where a click would do more: give a check box the
// focus, by which the window knows the user's hand.
class ButtonAccess : public QAccessibleWidget {
public:
    ButtonAccess(QAbstractButton& tButton, QAccessible::Role eRole)
        : QAccessibleWidget(&tButton, eRole), m_tButton(tButton) {}

    QString text(QAccessible::Text eText) const override {
        if (eText == QAccessible::Name) return WithoutMnemonic(m_tButton.text());
        if (eText == QAccessible::Accelerator) return QKeySequence::mnemonic(m_tButton.text()).toString();
        return QAccessibleWidget::text(eText);
    }

    QAccessible::State state() const override {
        QAccessible::State t = QAccessibleWidget::state();
        t.checkable = m_tButton.isCheckable();
        t.checked = m_tButton.isChecked();
        return t;
    }

    QStringList actionNames() const override {
        if (!m_tButton.isEnabled()) return {};
        return {role() == QAccessible::CheckBox ? toggleAction() : pressAction()};
    }

    void doAction(const QString& sAction) override {
        if (!m_tButton.isEnabled() || (sAction != toggleAction() && sAction != pressAction())) return;
        if ((m_tButton.focusPolicy() & Qt::ClickFocus) != 0) m_tButton.setFocus();
        m_tButton.click();
    }

private:
    QAbstractButton& m_tButton;
};

QAccessibleInterface* MakeAccess(const QString& sClass, QObject* pObject) {
    if (pObject == nullptr || !pObject->isWidgetType()) return nullptr;
    auto* pWidget = static_cast<QWidget*>(pObject);
    if (sClass == QLatin1String("QWidget") && qobject_cast<TabControl*>(pWidget->parentWidget()) != nullptr) {
        return new QAccessibleWidget(pWidget, QAccessible::Pane);
    }
    auto* pButton = qobject_cast<QAbstractButton*>(pWidget);
    if (pButton == nullptr) return nullptr;
    if (sClass == QLatin1String("QCheckBox")) return new ButtonAccess(*pButton, QAccessible::CheckBox);
    // Not what Qt makes of its own for a bar that is too narrow.
    const bool bPlain = sClass == QLatin1String(pObject->metaObject()->className());
    const bool bInBar = qobject_cast<ButtonBar*>(pWidget->parentWidget()) != nullptr;
    if (sClass == QLatin1String("QToolButton") && bPlain && bInBar)
        return new ButtonAccess(*pButton, QAccessible::PushButton);
    return nullptr;
}

}  // namespace

void InstallReaderAccess() { QAccessible::installFactory(MakeAccess); }

}  // namespace toolkit
