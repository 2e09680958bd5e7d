// The tabs that show what was heard: AIS, GPS, Targets, Messages, Spec; and About.
#include "platform/toolkit/Icons.h"
#include "platform/toolkit/Twips.h"
#include "targets/TargetColumns.h"
#include "ui/FormDesign.h"

namespace ui {

using toolkit::ToTwips;

namespace {

constexpr double Margin = 120;
constexpr double RowGap = 90;
constexpr double IconSide = 64 * toolkit::TwipsPerPixel;
constexpr double PositionWidth = 1650;  // "000-00.00'W" with room

}  // namespace

void FormDesign::DesignViews() {
    const double dTop = BodyTop();
    lstAisData.setAccessibleName(tr("AIS messages"));
    Put(lstAisData, {Margin, dTop, 9000, 3000});

    lstGpsData.setAccessibleName(tr("GPS positions"));
    auto* pLatLabel = new QLabel(tr("L&atitude"), &PageGps);
    auto* pLonLabel = new QLabel(tr("L&ongitude"), &PageGps);
    pLatLabel->setObjectName(QLatin1String("txtGpsLatLabel"));
    pLonLabel->setObjectName(QLatin1String("txtGpsLonLabel"));
    pLatLabel->setBuddy(&txtGpsLat);
    pLonLabel->setBuddy(&txtGpsLon);
    txtGpsLat.setToolTip(tr("Latitude"));
    txtGpsLon.setToolTip(tr("Longitude"));
    txtGpsLat.setAccessibleName(tr("Own latitude"));
    txtGpsLon.setAccessibleName(tr("Own longitude"));
    txtGpsLat.SetText("00 00.00 N");
    txtGpsLon.SetText("000 00.00 W");
    const double dBody =
        PutRow(Margin, dTop,
               {{pLatLabel, 0}, {&txtGpsLat, PositionWidth}, {pLonLabel, 0}, {&txtGpsLon, PositionWidth}}) +
        RowGap;
    Put(lstGpsData, {Margin, dBody, 9000, 3000});

    cmbTargetDetail.SetItems(targets::DetailModes);
    cmbTargetDetail.SetListIndex(0);
    cmbTargetSort.SetItems(targets::SortCriteria);
    cmbTargetDetail.setToolTip(tr("Detail Data"));
    cmbTargetSort.setToolTip(tr("Sort Targets Criteria"));
    cmbTargetTarget.setToolTip(tr("Selected Target"));
    chkTargetTrack.setText(tr("Trac&k"));
    chkTargetTrack.setToolTip(tr("Track Selected Target"));
    cmbTargetTarget.setAccessibleName(tr("Selected target"));
    auto* pDetailLabel = new QLabel(tr("&Detail"), &PageTargets);
    auto* pSortLabel = new QLabel(tr("Sort b&y"), &PageTargets);
    auto* pTargetLabel = new QLabel(tr("Tar&get"), &PageTargets);
    pDetailLabel->setObjectName(QLatin1String("cmbTargetDetailLabel"));
    pSortLabel->setObjectName(QLatin1String("cmbTargetSortLabel"));
    pTargetLabel->setObjectName(QLatin1String("cmbTargetTargetLabel"));
    pDetailLabel->setBuddy(&cmbTargetDetail);
    pSortLabel->setBuddy(&cmbTargetSort);
    pTargetLabel->setBuddy(&cmbTargetTarget);
    const double dGrid = PutRow(Margin, dTop,
                                {{pDetailLabel, 0},
                                 {&cmbTargetDetail, 1500},
                                 {pSortLabel, 0},
                                 {&cmbTargetSort, 1350},
                                 {pTargetLabel, 0},
                                 {&cmbTargetTarget, 1950},
                                 {&chkTargetTrack, 0}}) +
                         RowGap;

    grdTargetData.setAccessibleName(tr("Targets"));
    grdTargetData.Cells.SetCols(targets::TargetColumnCount);
    grdTargetData.Cells.SetRows(1);
    for (int iCol = 0; iCol < targets::TargetColumnCount; ++iCol) {
        const targets::TargetColumnDesign& tColumn = targets::TargetColumns[static_cast<std::size_t>(iCol)];
        const bool bShown = tColumn.eGroup == targets::ColumnGroup::Always;
        grdTargetData.Cells.SetText(0, iCol, tColumn.sHeader, runtime::AlignCentre);
        grdTargetData.SetColumn(iCol, tColumn.sTemplate, bShown, grdTargetData.TextWidth(tColumn.sTemplate));
    }
    Put(grdTargetData, {Margin, dGrid, 9000, 3000});
    grdMessageData.setAccessibleName(tr("Message counts"));
    Put(grdMessageData, {Margin, dTop, 9000, 3000});
    grdSpecData.setAccessibleName(tr("AIS reporting rates"));
    Put(grdSpecData, {Margin, dTop, 9000, 3000});
}

void FormDesign::DesignAbout() {
    const double dTop = BodyTop() + 2 * Margin;
    const double dLeft = 2 * Margin + IconSide + 2 * Margin;
    picAboutIcon.setPixmap(toolkit::ProgramIcon().pixmap(QSize(64, 64), devicePixelRatioF()));
    picAboutIcon.setAccessibleName(tr("Program icon"));
    QFont tTitle = lblAboutTitle.font();
    tTitle.setPointSizeF(tTitle.pointSizeF() * 1.8);
    tTitle.setBold(true);
    lblAboutTitle.setFont(tTitle);
    lblAboutTitle.setText(tr("Tidewatch"));
    for (QLabel* pLabel : {&lblAboutTitle, &lblAboutDescription, &lblAboutDisclaimer}) {
        pLabel->setTextFormat(Qt::PlainText);
        pLabel->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
        pLabel->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    }
    lblAboutDisclaimer.setWordWrap(true);
    const double dLine = ToTwips(lblAboutDescription.fontMetrics().lineSpacing());
    const double dTitle = ToTwips(lblAboutTitle.sizeHint().height());
    Put(picAboutIcon, {2 * Margin, dTop, IconSide, IconSide});
    Put(lblAboutTitle, {dLeft, dTop, 6000, dTitle});
    Put(lblAboutDescription, {dLeft, dTop + dTitle + RowGap, 6000, 3 * dLine + RowGap});
    Put(lblAboutDisclaimer, {dLeft, dTop + dTitle + 3 * dLine + 4 * RowGap, 7200, 10 * dLine});
}

}  // namespace ui
