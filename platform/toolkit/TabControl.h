// A tab control whose pages are placed by plain arithmetic the moment a size is known, shown or not, so that a layout
// can be computed and read at any time.
#pragma once

#include <QTabBar>
#include <QWidget>
#include <vector>

namespace toolkit {

class TabControl : public QWidget {
    Q_OBJECT
public:
    explicit TabControl(QWidget* pParent = nullptr);

    // Adds a tab and returns its page. Children of a page are placed relative to the tab control (see PageOrigin).
    QWidget* AddTab(const QString& sCaption);
    int Count() const { return m_pBar->count(); }
    int Tab() const { return m_pBar->currentIndex(); }
    void SetTab(int iTab);  // Click follows, also for the tab that is showing
    // The place of a page inside the tab control, device-independent pixels.
    QPoint PageOrigin() const { return {PageMargin, m_pBar->sizeHint().height()}; }
    // Gives bar and pages their places anew: after a change of font or style the bar has another height.
    void PlacePages();
    QTabBar& Bar() const { return *m_pBar; }

signals:
    void Click();  // a tab was chosen, the same one included

protected:
    void resizeEvent(QResizeEvent* pEvent) override;
    void paintEvent(QPaintEvent* pEvent) override;

private:
    static constexpr int PageMargin = 2;  // room for the frame around a page
    void ShowPage(int iTab);
    void MoveFocusTo(const QWidget& tPage);

    QTabBar* m_pBar;
    std::vector<QWidget*> m_pPages;
};

}  // namespace toolkit
