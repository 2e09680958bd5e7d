// The tab bar and its pages.
#include "platform/toolkit/TabControl.h"

#include <QShortcut>
#include <QStyleOptionTabWidgetFrame>
#include <QStylePainter>

#include "platform/toolkit/ReaderAccess.h"

namespace toolkit {

TabControl::TabControl(QWidget* pParent) : QWidget(pParent), m_pBar(new QTabBar(this)) {
    InstallReaderAccess();  // before any page is there to be asked about
    m_pBar->setDrawBase(false);
    m_pBar->setUsesScrollButtons(true);
    m_pBar->setExpanding(false);
    m_pBar->setFocusPolicy(Qt::TabFocus);
    connect(m_pBar, &QTabBar::currentChanged, this, [this](int iTab) {
        ShowPage(iTab);
        emit Click();
    });
    connect(m_pBar, &QTabBar::tabBarClicked, this, [this](int iTab) {
        if (iTab == Tab()) emit Click();  // the tab bar reports only changes
    });
    const auto Turn = [this](int iStep) { SetTab((Tab() + iStep + Count()) % Count()); };
    auto* pNext = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_Tab), this);
    connect(pNext, &QShortcut::activated, this, [Turn] { Turn(1); });
    auto* pPrevious = new QShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Tab), this);
    connect(pPrevious, &QShortcut::activated, this, [Turn] { Turn(-1); });
}

QWidget* TabControl::AddTab(const QString& sCaption) {
    auto* pPage = new QWidget(this);
    pPage->setAccessibleName(sCaption);
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

// The new page is shown, and given the focus, before the old one goes: Qt would move the focus on to the next control
// in the window, whichever that is.
void TabControl::ShowPage(int iTab) {
    QWidget* pNew = m_pPages[static_cast<std::size_t>(iTab)];
    pNew->show();
    QWidget* pHolder = window()->focusWidget();
    for (QWidget* pPage : m_pPages) {
        if (pPage == pNew) continue;
        if (pPage->isAncestorOf(pHolder)) MoveFocusTo(*pNew);
        pPage->hide();
    }
}

// A page's focusWidget is what last had the focus on it.
void TabControl::MoveFocusTo(const QWidget& tPage) {
    QWidget* pLast = tPage.focusWidget();
    if (pLast == nullptr || !pLast->isEnabled() || !pLast->isVisibleTo(&tPage)) pLast = m_pBar;
    pLast->setFocus();
}

void TabControl::PlacePages() {
    m_pBar->setGeometry(0, 0, width(), m_pBar->sizeHint().height());
    const QPoint tOrigin = PageOrigin();
    // Down to the bottom: what stands on a page may end a pixel above that.
    const QRect tPage(tOrigin, QSize(width() - 2 * PageMargin, height() - tOrigin.y()));
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
