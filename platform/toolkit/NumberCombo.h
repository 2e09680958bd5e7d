// An editable box with a list of numbers below it, over NumberItems. Its text is the user's or the program's and is
// left alone by the list, whatever items come and go: what is typed, marked or chosen from an open list stays as it is.
// The wheel turns through the list only while the box has the focus.
#pragma once

#include <QComboBox>
#include <string>
#include <string_view>

#include "platform/runtime/NumberItems.h"

namespace toolkit {

class NumberModel;
class RepaintBeat;

class NumberCombo : public QComboBox {
    Q_OBJECT
public:
    explicit NumberCombo(QWidget* pParent = nullptr);
    ~NumberCombo() override;

    runtime::NumberItems Items;

    const std::string& Text() const { return m_sText; }
    void SetText(std::string_view sText);

    // Shows what has come since; not while the list is open, and no text of the program's in the middle of typing.
    void Synchronize();
    void showPopup() override;

protected:
    void showEvent(QShowEvent* pEvent) override;
    void wheelEvent(QWheelEvent* pEvent) override;

private:
    void TakeOver();

    NumberModel* m_pModel;
    RepaintBeat* m_pBeat;
    bool m_bHasOpened = false;  // the list was shown once; before that there is none
    std::string m_sText;        // compared for every row of every message while tracking
};

}  // namespace toolkit
