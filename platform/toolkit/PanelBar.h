// The status bar's text panels. Texts are kept as plain strings (Latin-1; a QString where one says more) and reach the
// labels on the views' beat: setting a label costs as much as decoding a sentence.
#pragma once

#include <QStatusBar>
#include <string>
#include <vector>

#include "platform/toolkit/PanelLabel.h"

namespace toolkit {

class RepaintBeat;

class PanelBar : public QStatusBar {
    Q_OBJECT
public:
    explicit PanelBar(QWidget* pParent = nullptr);

    // One panel more, with a tool tip, at least as wide as sTemplate; bStretch gives it the room that is left.
    void AddPanel(const QString& sTip, const QString& sTemplate, bool bStretch);

    // Panels count from 1.
    const std::string& PanelText(int iPanel) const { return m_sTexts[static_cast<std::size_t>(iPanel) - 1]; }
    void SetPanelText(int iPanel, std::string_view sText);
    void SetPanelWholeText(int iPanel, const QString& sText);  // with letters beyond Latin-1
    // The text that was set last is an error, until another one is set: it looks like one, and with bAlert a screen
    // reader is told of it, once it shows.
    void SetPanelError(int iPanel, bool bAlert);
    void ClearPanelError(int iPanel);
    // What the panel's tip says below its own text; nothing when empty.
    void SetPanelNote(int iPanel, const QString& sNote);
    // Shows the text once synchronised.
    PanelLabel& Panel(int iPanel) const { return *m_pLabels[static_cast<std::size_t>(iPanel) - 1]; }

    // A status tip beside the panels, which stay in sight; an empty one goes.
    void ShowTip(const QString& sTip);
    const QLabel& Tip() const { return *m_pTip; }

    void Synchronize();

signals:
    // An alert was raised: the panel shows an error that a screen reader is told of.
    void Alert(const QString& sText);

protected:
    bool event(QEvent* pEvent) override;
    void showEvent(QShowEvent* pEvent) override;
    void changeEvent(QEvent* pEvent) override;

private:
    void FitPanels();
    void TakeOver();

    std::vector<std::string> m_sTexts;
    std::vector<QString> m_sWholeTexts;  // empty where m_sTexts says it all
    std::vector<PanelLabel*> m_pLabels;
    std::vector<QString> m_sTips;
    std::vector<bool> m_bErrors;
    std::vector<bool> m_bAlerts;  // not raised yet
    QLabel* m_pTip;
    std::vector<QString> m_sTemplates;
    RepaintBeat* m_pBeat;
    bool m_bTexts = false;  // the layout is asked for again because of new texts
};

}  // namespace toolkit
