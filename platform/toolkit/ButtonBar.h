// The toolbar: buttons by key, each enabled or not and shown pressed or not. A click changes nothing by itself; what a
// button shows is what the program has set.
#pragma once

#include <QIcon>
#include <QString>
#include <QToolBar>
#include <map>

class QAction;

namespace toolkit {

class PanelLabel;

class ButtonBar : public QToolBar {
    Q_OBJECT
public:
    explicit ButtonBar(QWidget* pParent = nullptr);

    // sCaption may carry a mnemonic ("&Start").
    void AddButton(const QString& sKey, const QString& sCaption, const QString& sTip, const QIcon& tIcon);

    // A line of text behind the buttons, in the room that is left there.
    void AddNote();
    void SetNote(const QString& sText);
    PanelLabel& Note() const { return *m_pNote; }

    void SetEnabled(const QString& sKey, bool bEnabled);
    void SetPressed(const QString& sKey, bool bPressed);
    QAction& Action(const QString& sKey) const { return *m_pActions.at(sKey); }

signals:
    void ButtonClick(const QString& sKey);

private:
    void Triggered(const QString& sKey);

    std::map<QString, QAction*> m_pActions;
    std::map<QString, bool> m_bPressed;
    PanelLabel* m_pNote = nullptr;
};

}  // namespace toolkit
