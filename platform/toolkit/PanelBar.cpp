// The panels of the status bar.
#include "platform/toolkit/PanelBar.h"

#include <QAccessible>
#include <QEvent>
#include <utility>

#include "platform/toolkit/Latin1.h"
#include "platform/toolkit/RepaintBeat.h"

namespace toolkit {

namespace {

constexpr int PanelPadding = 12;  // pixels around a panel's text, frame included

}  // namespace

PanelBar::PanelBar(QWidget* pParent)
    : QStatusBar(pParent), m_pTip(new QLabel(this)), m_pBeat(new RepaintBeat(*this, [this] { TakeOver(); })) {
    setSizeGripEnabled(true);
    m_pTip->setTextFormat(Qt::PlainText);
    m_pTip->setMargin(2);
    m_pTip->setMinimumWidth(1);  // a long tip does not widen the window
    m_pTip->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Preferred);
    m_pTip->hide();
}

void PanelBar::AddPanel(const QString& sTip, const QString& sTemplate, bool bStretch) {
    auto* pLabel = new PanelLabel(this);
    pLabel->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    pLabel->setMargin(2);
    // A long text must not widen the window: it is cut, and whole in the tool tip.
    pLabel->setSizePolicy(bStretch ? QSizePolicy::Ignored : QSizePolicy::Preferred, QSizePolicy::Preferred);
    pLabel->SetTip(sTip);
    addWidget(pLabel, bStretch ? 1 : 0);
    if (bStretch) addWidget(m_pTip);  // takes its room from this panel
    m_pLabels.push_back(pLabel);
    m_sTexts.emplace_back();
    m_sWholeTexts.emplace_back();
    m_sTips.push_back(sTip);
    m_sTemplates.push_back(sTemplate);
    m_bErrors.push_back(false);
    m_bAlerts.push_back(false);
    FitPanels();
}

void PanelBar::FitPanels() {
    for (std::size_t i = 0; i < m_pLabels.size(); ++i) {
        m_pLabels[i]->setMinimumWidth(m_pLabels[i]->fontMetrics().horizontalAdvance(m_sTemplates[i]) + PanelPadding);
    }
}

void PanelBar::changeEvent(QEvent* pEvent) {
    QStatusBar::changeEvent(pEvent);
    if (pEvent->type() == QEvent::FontChange) FitPanels();
}

void PanelBar::SetPanelText(int iPanel, std::string_view sText) {
    const std::size_t i = static_cast<std::size_t>(iPanel) - 1;
    if (m_sTexts[i] == sText && m_sWholeTexts[i].isEmpty() && !m_bErrors[i]) return;
    m_sTexts[i] = sText;
    m_sWholeTexts[i].clear();
    m_bErrors[i] = false;
    m_pBeat->Mark();
}

void PanelBar::SetPanelWholeText(int iPanel, const QString& sText) {
    SetPanelText(iPanel, ToLatin1(sText));
    m_sWholeTexts[static_cast<std::size_t>(iPanel) - 1] = sText;
    m_pBeat->Mark();
}

void PanelBar::SetPanelError(int iPanel, bool bAlert) {
    const auto i = static_cast<std::size_t>(iPanel) - 1;
    m_bErrors[i] = true;
    m_bAlerts[i] = m_bAlerts[i] || bAlert;
    m_pBeat->Mark();
}

void PanelBar::ClearPanelError(int iPanel) {
    const auto i = static_cast<std::size_t>(iPanel) - 1;
    if (!m_bErrors[i]) return;
    m_bErrors[i] = false;
    m_pBeat->Mark();
}

void PanelBar::SetPanelNote(int iPanel, const QString& sNote) {
    const QString& sTip = m_sTips[static_cast<std::size_t>(iPanel) - 1];
    Panel(iPanel).SetTip(sNote.isEmpty() ? sTip : sTip + QLatin1Char('\n') + sNote);
}

void PanelBar::TakeOver() {
    for (std::size_t i = 0; i < m_pLabels.size(); ++i) {
        const QString sText = m_sWholeTexts[i].isEmpty() ? FromLatin1(m_sTexts[i]) : m_sWholeTexts[i];
        m_pLabels[i]->SetError(m_bErrors[i]);
        if (m_pLabels[i]->text() != sText) {
            m_bTexts = true;
            m_pLabels[i]->SetText(sText);
        }
        const bool bAlert = m_bAlerts[i] && m_bErrors[i];
        m_bAlerts[i] = false;
        if (!bAlert) continue;
        QAccessibleEvent tAlert(m_pLabels[i], QAccessible::Alert);
        QAccessible::updateAccessibility(&tAlert);
        emit Alert(sText);
    }
}

void PanelBar::ShowTip(const QString& sTip) {
    m_pTip->setText(sTip);
    m_pTip->setVisible(!sTip.isEmpty());
}

void PanelBar::Synchronize() { m_pBeat->Synchronize(); }

// The stock bar paints itself wholly whenever a label of it has a new text.
bool PanelBar::event(QEvent* pEvent) {
    if (pEvent->type() == QEvent::LayoutRequest && std::exchange(m_bTexts, false)) return QWidget::event(pEvent);
    return QStatusBar::event(pEvent);
}

void PanelBar::showEvent(QShowEvent* pEvent) {
    m_pBeat->Shown();
    QStatusBar::showEvent(pEvent);
}

}  // namespace toolkit
