// The tab bar and its pages.
#include "platform/toolkit/TabControl.h"

#include <QShortcut>
#include <QStyleOptionTabWidgetFrame>
#include <QStylePainter>

namespace toolkit {

TabControl::TabControl(QWidget* pParent) : QWidget(pParent), m_pBar(new QTabBar(this)) {
    m_pBar->setDrawBase(false);
    m_pBar->setUsesScrollButtons(true);
    m_pBar->setExpanding(false);
    m_pBar->setFocusPolicy(Qt::TabFocus);
    connect(m_pBar, &QTabBar::currentChanged, this, [this](int iTab) {
        for (std::size_t i = 0; i < m_pPages.size(); ++i) m_pPages[i]->setVisible(static_cast<int>(i) == iTab);
        emit Click();
    });
    connect(m_pBar, &QTabBar::tabBarClicked, this, [this](int iTab) {
        if (iTab == Tab()) emit Click();  // the tab bar reports only changes
    });
    const auto tTurn = [this](int iStep) { SetTab((Tab() + iStep + Count()) % Count()); };
    auto* pNext = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_Tab), this);
    connect(pNext, &QShortcut::activated, this, [tTurn] { tTurn(1); });
    auto* pPrevious = new QShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Tab), this);
    connect(pPrevious, &QShortcut::activated, this, [tTurn] { tTurn(-1); });
}

QWidget* TabControl::AddTab(const QString& sCaption) {
    auto* pPage = new QWidget(this);
    pPage->setVisible(m_pPages.empty());
    m_pPages.push_back(pPage);
    m_pBar->addTab(sCaption);
    PlacePages();
    return pPage;
}

void TabControl::SetTab(int iTab) {
    if (iTab == Tab()) {
        emit Click();
    } else {
        m_pBar->setCurrentIndex(iTab);
    }
}

void TabControl::PlacePages() {
    m_pBar->setGeometry(0, 0, width(), m_pBar->sizeHint().height());
    const QPoint tOrigin = PageOrigin();
    const QRect tPage(tOrigin, QSize(width() - 2 * PageMargin, height() - tOrigin.y() - PageMargin));
    for (QWidget* pPage : m_pPages) pPage->setGeometry(tPage);
}

void TabControl::resizeEvent(QResizeEvent*) { PlacePages(); }

void TabControl::paintEvent(QPaintEvent*) {
    QStyleOptionTabWidgetFrame tOption;
    tOption.initFrom(this);
    tOption.rect = rect().adjusted(0, m_pBar->height() - 1, 0, 0);
    tOption.lineWidth = 1;
    tOption.shape = QTabBar::RoundedNorth;
    QStylePainter(this).drawPrimitive(QStyle::PE_FrameTabWidget, tOption);
}

}  // namespace toolkit
