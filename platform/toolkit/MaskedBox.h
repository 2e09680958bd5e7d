// A text box that does nothing by itself: keys, typed characters, clicks and what is pasted by its menu go to its owner
// as events, and text and selection are what the owner sets. They are kept here and reach the line edit below on the
// views' beat.
#pragma once

#include <QLineEdit>
#include <string>
#include <string_view>

namespace toolkit {

class RepaintBeat;

class MaskedBox : public QLineEdit {
    Q_OBJECT
public:
    explicit MaskedBox(QWidget* pParent = nullptr);

    const std::string& Text() const { return m_sText; }
    // Puts the selection start to 0 and raises Change, also for the text that is already there.
    void SetText(std::string_view sText);

    // Puts in a text that was typed, with the selection behind it, and raises Change.
    void TypeOver(std::string_view sText, int iStart, int iLength);

    int SelStart() const { return m_iSelStart; }
    int SelLength() const { return m_iSelLength; }
    void SetSelection(int iStart, int iLength);
    // As a mouse click that puts the caret before character iPosition (past the end: at the end).
    void ClickAt(int iPosition);

    void Synchronize();

signals:
    void Change();
    void Click();
    void KeyDown(int iKeyCode);        // the arrow keys: 37 left, 38 up, 39 right, 40 down
    void KeyPress(char cTyped);        // any other character, Latin-1, control characters included
    void Paste(const QString& sText);  // the clipboard's, asked for in the menu

protected:
    bool event(QEvent* pEvent) override;
    void keyPressEvent(QKeyEvent* pEvent) override;
    void contextMenuEvent(QContextMenuEvent* pEvent) override;
    void inputMethodEvent(QInputMethodEvent* pEvent) override;
    void mousePressEvent(QMouseEvent* pEvent) override;
    void mouseMoveEvent(QMouseEvent* pEvent) override;
    void mouseReleaseEvent(QMouseEvent* pEvent) override;
    void mouseDoubleClickEvent(QMouseEvent* pEvent) override;
    void focusInEvent(QFocusEvent* pEvent) override;
    void focusOutEvent(QFocusEvent* pEvent) override;
    void showEvent(QShowEvent* pEvent) override;

private:
    void TakeOver();
    void TypeText(const QString& sText);

    RepaintBeat* m_pBeat;
    std::string m_sText;
    int m_iSelStart = 0;
    int m_iSelLength = 0;
    bool m_bTakingOver = false;
};

}  // namespace toolkit
