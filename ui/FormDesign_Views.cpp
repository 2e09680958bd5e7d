// The tabs that show what was heard: AIS, GPS, Targets, Messages, Spec; and About.
#include <QLineEdit>

#include "platform/toolkit/FieldWidth.h"
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

constexpr char PositionTemplate[] =
    "000\xB0"
    "00.00'W";
constexpr int MmsiDigits = 9;
constexpr int AboutChars = 64;  // of the disclaimer's lines
constexpr int AboutLines = 6;

}  // namespace

void FormDesign::DesignViews() {
    lstAisData.setAccessibleName(QStringLiteral("AIS messages"));
    lstGpsData.setAccessibleName(QStringLiteral("GPS positions"));
    AddLabel(txtGpsLat, QStringLiteral("L&atitude"));
    AddLabel(txtGpsLon, QStringLiteral("L&ongitude"));
    txtGpsLat.setToolTip(QStringLiteral("Latitude"));
    txtGpsLon.setToolTip(QStringLiteral("Longitude"));
    txtGpsLat.setAccessibleName(QStringLiteral("Own latitude"));
    txtGpsLon.setAccessibleName(QStringLiteral("Own longitude"));
    const QString sTyping =
        QStringLiteral("Type over the digits, %1 at the end; arrow keys move and step, the menu pastes");
    txtGpsLat.setStatusTip(sTyping.arg(QLatin1String("N or S")));
    txtGpsLon.setStatusTip(sTyping.arg(QLatin1String("E or W")));
    txtGpsLat.SetText("00 00.00 N");
    txtGpsLon.SetText("000 00.00 W");

    cmbTargetDetail.SetItems(targets::DetailModes);
    cmbTargetDetail.SetListIndex(0);
    cmbTargetSort.SetItems(targets::SortCriteria);
    cmbTargetDetail.setToolTip(QStringLiteral("Detail Data"));
    cmbTargetSort.setToolTip(QStringLiteral("Sort Targets Criteria"));
    cmbTargetTarget.lineEdit()->setPlaceholderText(QStringLiteral("none yet"));
    cmbTargetTarget.setToolTip(QStringLiteral("Selected Target"));
    cmbTargetTarget.setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    cmbTargetTarget.setMinimumContentsLength(MmsiDigits);
    chkTargetTrack.setText(QStringLiteral("Trac&k"));
    chkTargetTrack.setToolTip(QStringLiteral("Track Selected Target"));
    cmbTargetTarget.setAccessibleName(QStringLiteral("Selected target"));
    cmbTargetTarget.lineEdit()->setAccessibleName(QStringLiteral("Selected target"));
    AddLabel(cmbTargetDetail, QStringLiteral("&Detail"));
    AddLabel(cmbTargetSort, QStringLiteral("Sort b&y"));
    AddLabel(cmbTargetTarget, QStringLiteral("Tar&get"));

    grdTargetData.setAccessibleName(QStringLiteral("Targets"));
    grdTargetData.Cells.SetCols(targets::TargetColumnCount);
    grdTargetData.Cells.SetRows(1);
    LayOutTargetColumns();
    grdMessageData.setAccessibleName(QStringLiteral("Message counts"));
    grdSpecData.setAccessibleName(QStringLiteral("AIS reporting rates"));
}

void FormDesign::LayOutTargetColumns() {
    for (const targets::TargetColumnDesign& t : targets::TargetColumns) {
        grdTargetData.Cells.SetText(0, t.eColumn, t.sHeader, runtime::AlignCentre);
        grdTargetData.SetColumn(t.eColumn, t.sTemplate, targets::ColumnShown(t, cmbTargetDetail.Text()),
                                grdTargetData.TextWidth(t.sTemplate));
    }
}

void FormDesign::PutViews() {
    const double dTop = BodyTop();
    PutBody(lstAisData, dTop);
    const double dPosition = ToTwips(toolkit::FieldWidth(txtGpsLon, PositionTemplate));
    const double dPositions =
        PutRow(Margin, dTop,
               {{LabelOf(txtGpsLat), 0}, {&txtGpsLat, dPosition}, {LabelOf(txtGpsLon), 0}, {&txtGpsLon, dPosition}});
    PutBody(lstGpsData, dPositions + RowGap);
    const double dChoices = PutRow(Margin, dTop,
                                   {{LabelOf(cmbTargetDetail), 0},
                                    {&cmbTargetDetail, 0},
                                    {LabelOf(cmbTargetSort), 0},
                                    {&cmbTargetSort, 0},
                                    {LabelOf(cmbTargetTarget), 0},
                                    {&cmbTargetTarget, 0},
                                    {&chkTargetTrack, 0}});
    PutBody(grdTargetData, dChoices + RowGap);
    PutBody(grdMessageData, dTop);
    PutBody(grdSpecData, dTop);
}

void FormDesign::DesignAbout() {
    picAboutIcon.setPixmap(toolkit::ProgramIcon().pixmap(QSize(64, 64), devicePixelRatioF()));
    picAboutIcon.setAccessibleName(QStringLiteral("Program icon"));
    lblAboutTitle.setText(QStringLiteral("Tidewatch"));
    for (QLabel* pLabel : {&lblAboutTitle, &lblAboutDescription, &lblAboutDisclaimer}) {
        pLabel->setTextFormat(Qt::PlainText);
        pLabel->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
        pLabel->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    }
    lblAboutDisclaimer.setWordWrap(true);
}

void FormDesign::PutAbout() {
    const double dTop = BodyTop() + 2 * Margin;
    const double dLeft = 2 * Margin + IconSide + 2 * Margin;
    QFont tTitle = font();
    tTitle.setPointSizeF(tTitle.pointSizeF() * 1.8);
    tTitle.setBold(true);
    lblAboutTitle.setFont(tTitle);
    const QFontMetrics tMetrics = lblAboutDescription.fontMetrics();
    const double dLine = ToTwips(tMetrics.lineSpacing());
    const double dTitle = ToTwips(lblAboutTitle.sizeHint().height());
    const double dWidth = ToTwips(AboutChars * tMetrics.averageCharWidth());
    Put(picAboutIcon, {2 * Margin, dTop, IconSide, IconSide});
    Put(lblAboutTitle, {dLeft, dTop, dWidth, dTitle});
    Put(lblAboutDescription, {dLeft, dTop + dTitle + RowGap, dWidth, 3 * dLine + RowGap});
    Put(lblAboutDisclaimer, {dLeft, dTop + dTitle + 3 * dLine + 4 * RowGap, dWidth, AboutLines * dLine});
}

}  // namespace ui
