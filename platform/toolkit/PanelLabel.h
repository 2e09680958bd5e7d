// A line of text that takes what room it is given: cut with an ellipsis where it does not fit, and whole in its tool
// tip then. Can be marked with the mouse, and show itself as an error.
#pragma once

#include <QLabel>

namespace toolkit {

class PanelLabel : public QLabel {
    Q_OBJECT
public:
    explicit PanelLabel(QWidget* pParent = nullptr);

    // What the tip says while the text fits.
    void SetTip(const QString& sTip);
    // Asks for no room of its own, but takes what is left.
    void SetElastic() { m_bElastic = true; }
    // An icon in front, and a colour that can be read on the present ground.
    void SetError(bool bError);
    bool Error() const { return m_bError; }
    void SetText(const QString& sText);
    // What is drawn: the text, or as much of it as fits and an ellipsis.
    const QString& Drawn() const { return m_sDrawn; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void enterEvent(QEnterEvent* pEvent) override;
    void leaveEvent(QEvent* pEvent) override;
    void paintEvent(QPaintEvent* pEvent) override;
    void resizeEvent(QResizeEvent* pEvent) override;
    void changeEvent(QEvent* pEvent) override;

private:
    QRect TextRect() const;
    int IconSide() const { return fontMetrics().height(); }
    void MakeRoom();
    void RenewDrawn();
    void RenewToolTip();

    QString m_sTip;
    QString m_sDrawn;
    bool m_bElastic = false;
    bool m_bError = false;
};

}  // namespace toolkit
