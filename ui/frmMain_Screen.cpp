// The window on its screen: sizes and places bounded by what is there, the least size, and everything laid out anew in
// another font or style.
#include <QCoreApplication>
#include <QLayout>

#include "app/frmMain.h"
#include "platform/toolkit/Twips.h"
#include "ui/ScreenFit.h"

namespace app {

namespace {

ui::Rect InPixels(const QRect& t) {
    return {static_cast<double>(t.left()), static_cast<double>(t.top()), static_cast<double>(t.width()),
            static_cast<double>(t.height())};
}

QSize WholePixels(const ui::Size& t) { return {static_cast<int>(t.dWidth), static_cast<int>(t.dHeight)}; }

}  // namespace

std::vector<ui::Rect> frmMain::ScreenAreas() const {
    std::vector<ui::Rect> tAreas;
    for (const QRect& t : m_tPlatform.ScreenAreas()) tAreas.push_back(InPixels(t));
    return tAreas;
}

// The least size gives way to a smaller screen: a status bar below the screen's edge is out of reach.
void frmMain::BoundLeastSize() {
    const std::vector<ui::Rect> tAreas = ScreenAreas();
    if (tAreas.empty()) return;
    const ui::Size tLargest = ui::LargestInside(ui::AreaOf(InPixels({pos(), size()}), tAreas));
    const QSize tExcess = layout()->totalMinimumSize() - WholePixels(tLargest);
    Client.setMinimumSize(Client.minimumSize() - tExcess.expandedTo({0, 0}));
}

// A window that was placed by nobody is placed by the window manager, and only its size is ours.
void frmMain::FitToScreen() {
    BoundLeastSize();
    m_tWishedPlace = {pos(), size()};
    std::vector<ui::Rect> tAreas = ScreenAreas();
    const bool bPlaced = testAttribute(Qt::WA_Moved);
    if (!bPlaced && !tAreas.empty()) tAreas.resize(1);
    const ui::Rect t = ui::FitToScreens(InPixels(m_tWishedPlace), tAreas);
    resize(WholePixels({t.dWidth, t.dHeight}));
    if (bPlaced) move(static_cast<int>(t.dLeft), static_cast<int>(t.dTop));
    m_tGivenPlace = {pos(), size()};
}

QRect frmMain::PlaceToKeep() const {
    return {pos() == m_tGivenPlace.topLeft() ? m_tWishedPlace.topLeft() : pos(),
            size() == m_tGivenPlace.size() ? m_tWishedPlace.size() : size()};
}

void frmMain::DesignAnew() {
    // First what the new sizes of the controls mean to the layouts that they are in.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    DesignPlaces();
    BoundLeastSize();
    layout()->activate();
    for (int iCol = 0; iCol < targets::TargetColumnCount; ++iCol) {
        const toolkit::Grid::Column tColumn = grdTargetData.Columns()[static_cast<std::size_t>(iCol)];
        grdTargetData.SetColumn(iCol, tColumn.sTemplate, tColumn.bShown, grdTargetData.TextWidth(tColumn.sTemplate));
    }
    MessageGridColumns();
    SpecGridColumns();
    FormLayout();
}

}  // namespace app
