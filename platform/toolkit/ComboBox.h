// A list of fixed texts to choose from. A text that is none of them can be put in and is kept and shown, with no entry
// chosen. The wheel turns through the list only while the box has the focus.
#pragma once

#include <QComboBox>
#include <span>
#include <string>
#include <string_view>

namespace toolkit {

class ComboBox : public QComboBox {
    Q_OBJECT
public:
    explicit ComboBox(QWidget* pParent = nullptr);

    void SetItems(std::span<const std::string_view> sItems);

    int ListIndex() const { return m_iIndex; }  // -1 when no entry is chosen
    void SetListIndex(int iIndex);              // chooses an entry; Click follows
    const std::string& Text() const { return m_sText; }
    void SetText(std::string_view sText);  // chooses the entry of that text, if there is one; Click follows

signals:
    void Click();  // an entry was chosen, by the user or the program, the same one included

protected:
    void wheelEvent(QWheelEvent* pEvent) override;

private:
    void Chosen();

    int m_iIndex = -1;  // read for every message: a plain number
    std::string m_sText;
};

}  // namespace toolkit
