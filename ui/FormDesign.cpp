// The frame of the window: names, toolbar, status bar, tabs, placing, the order of the Tab key.
#include "ui/FormDesign.h"

#include <QIcon>
#include <QStyle>
#include <algorithm>

#include "platform/toolkit/Icons.h"
#include "platform/toolkit/Latin1.h"
#include "platform/toolkit/Twips.h"

namespace ui {

using toolkit::ToPixels;
using toolkit::ToTwips;

namespace {

constexpr double ColumnGap = 120;  // between controls of a row
constexpr double BodyGap = 120;    // from the tab bar to the first control
constexpr double Margin = 120;     // left and right on a tab
constexpr double BodyHeight = 3000;
constexpr Size LeastBody{4500, 1800};

}  // namespace

FormDesign::FormDesign(toolkit::Platform tPlatform) : m_tPlatform(std::move(tPlatform)) {
    DesignNames();
    DesignWindow();
    DesignPorts();
    DesignReceiver();
    DesignViews();
    DesignAbout();
    DesignDiagram();
    DesignTiming();
    DesignTabOrder();
    DesignPlaces();
}

void FormDesign::DesignPlaces() {
    SSTab.PlacePages();
    m_tReach = {};
    PutPorts();
    PutReceiver();
    PutViews();
    PutAbout();
    PutDiagram();
    PutTiming();
    const Rect& tTabs = Design(SSTab);
    const Rect tLeast{0, 0, 2 * tTabs.dLeft + m_tReach.dWidth, tTabs.dTop + m_tReach.dHeight + TabBottomGap};
    Client.setMinimumSize(ToPixels(tLeast).size().expandedTo({Toolbar.sizeHint().width(), 0}));
}

std::string FormDesign::Name(const QWidget& tControl) { return toolkit::ToLatin1(tControl.objectName()); }

void FormDesign::DesignNames() {
    const std::vector<std::pair<QObject*, const char*>> tNames = {
        {&Toolbar, "Toolbar"},
        {&StatusBar, "StatusBar"},
        {&SSTab, "SSTab"},
        {&tmrComm, "tmrComm"},
        {&tmrTime, "tmrTime"},
        {&MSComm(0), "MSComm(0)"},
        {&MSComm(1), "MSComm(1)"},
        {&MSCommOutput, "MSCommOutput"},
        {&chkCommEnabled(0), "chkCommEnabled(0)"},
        {&chkCommEnabled(1), "chkCommEnabled(1)"},
        {&txtCommPort(0), "txtCommPort(0)"},
        {&txtCommPort(1), "txtCommPort(1)"},
        {&txtCommSettings(0), "txtCommSettings(0)"},
        {&txtCommSettings(1), "txtCommSettings(1)"},
        {&lstCommData(0), "lstCommData(0)"},
        {&lstCommData(1), "lstCommData(1)"},
        {&lstRxData, "lstRxData"},
        {&frmRxNasa, "frmRxNasa"},
        {&txtRxNasaChannel, "txtRxNasaChannel"},
        {&cmdRxNasaChannel, "cmdRxNasaChannel"},
        {&txtRxNasaInterval, "txtRxNasaInterval"},
        {&cmdRxNasaInterval, "cmdRxNasaInterval"},
        {&chkRxNasaPower, "chkRxNasaPower"},
        {&frmRxLabel, "frmRxLabel"},
        {&lstAisData, "lstAisData"},
        {&txtGpsLat, "txtGpsLat"},
        {&txtGpsLon, "txtGpsLon"},
        {&lstGpsData, "lstGpsData"},
        {&cmbTargetDetail, "cmbTargetDetail"},
        {&cmbTargetSort, "cmbTargetSort"},
        {&chkTargetTrack, "chkTargetTrack"},
        {&cmbTargetTarget, "cmbTargetTarget"},
        {&grdTargetData, "grdTargetData"},
        {&grdMessageData, "grdMessageData"},
        {&scrDiagram, "scrDiagram"},
        {&pctDiagram, "pctDiagram"},
        {&picAboutIcon, "picAboutIcon"},
        {&lblAboutTitle, "lblAboutTitle"},
        {&lblAboutDescription, "lblAboutDescription"},
        {&lblAboutDisclaimer, "lblAboutDisclaimer"},
        {&grdSpecData, "grdSpecData"},
        {&txtTimingRateTx, "txtTimingRateTx"},
        {&txtTimingRateRc, "txtTimingRateRc"},
        {&txtTimingTimeSpan, "txtTimingTimeSpan"},
        {&cmdTimingApply, "cmdTimingApply"},
        {&pctTiming, "pctTiming"},
        {&lblTimingMessage, "lblTimingMessage"},
        {&lblTimingChA.Name, "lblTimingChA(1)"},
        {&lblTimingChA.Percentage, "lblTimingChA(2)"},
        {&lblTimingChB.Name, "lblTimingChB(1)"},
        {&lblTimingChB.Percentage, "lblTimingChB(2)"},
        {&lblTimingChAlternate.Name, "lblTimingChAlternate(1)"},
        {&lblTimingChAlternate.Percentage, "lblTimingChAlternate(2)"},
        {&lblTimingSummary, "lblTimingChAlternate(3)"},
        {&chkOutputEnabled, "chkOutputEnabled"},
        {&txtOutputPort, "txtOutputPort"},
        {&txtOutputSettings, "txtOutputSettings"},
        {&chkOutputRMC, "chkOutputRMC"},
        {&lstOutputData, "lstOutputData"},
    };
    for (const auto& [pControl, sName] : tNames) pControl->setObjectName(QLatin1String(sName));
}

void FormDesign::DesignWindow() {
    setWindowTitle(QStringLiteral("Tidewatch"));
    setWindowIcon(toolkit::ProgramIcon());
    resize(980, 640);

    Toolbar.AddButton(QLatin1String(KeyStart), QStringLiteral("&Start"),
                      QStringLiteral("Open the ports and start listening"), toolkit::StartIcon());
    Toolbar.AddButton(QLatin1String(KeyStop), QStringLiteral("S&top"),
                      QStringLiteral("Stop listening, recording or playing"), toolkit::StopIcon());
    Toolbar.addSeparator();
    Toolbar.AddButton(QLatin1String(KeyRecord), QStringLiteral("&Record"),
                      QStringLiteral("Record what is decoded to a file"), toolkit::RecordIcon());
    Toolbar.AddButton(QLatin1String(KeyPlayback), QStringLiteral("&Playback"),
                      QStringLiteral("Play a recording at its own pace"), toolkit::PlaybackIcon());
    Toolbar.AddButton(QLatin1String(KeyPlaybackBurst), QStringLiteral("Playback &Burst"),
                      QStringLiteral("Play a recording as fast as possible"), toolkit::BurstIcon());
    Toolbar.AddNote();
    Toolbar.setAccessibleName(QStringLiteral("Run control"));
    addToolBar(&Toolbar);

    StatusBar.AddPanel(QStringLiteral("Run state"), QStringLiteral("Recording"), false);
    StatusBar.AddPanel(QStringLiteral("Targets and messages heard, or the last error"), {}, true);
    StatusBar.AddPanel(QStringLiteral("Time since the last line on input #1"), QStringLiteral("000:00"), false);
    StatusBar.AddPanel(QStringLiteral("Time since the last line on input #2"), QStringLiteral("000:00"), false);
    StatusBar.AddPanel(QStringLiteral("Clock"), QStringLiteral("00:00:00"), false);
    setStatusBar(&StatusBar);
    setCentralWidget(&Client);

    m_tDesignRects[Name(SSTab)] = {90, 60, 0, 0};
    for (QTimer* pTimer : {&tmrComm, &tmrTime}) {
        pTimer->setInterval(1000);
        pTimer->setTimerType(Qt::PreciseTimer);  // a coarse one moves its ticks by up to 50 ms
    }
    MSComm(0).SetTitle(QStringLiteral("input #1"));
    MSComm(1).SetTitle(QStringLiteral("input #2"));
    MSCommOutput.SetTitle(QStringLiteral("output"));
    MSCommOutput.SetReceiveEvents(false);  // nothing is expected from that side
    for (toolkit::SerialPort* pPort : {&MSComm(0), &MSComm(1), &MSCommOutput}) pPort->SetAccess(m_tPlatform.Serial);
}

void FormDesign::Place(QWidget& tControl, const Rect& tRect) {
    m_tRects[Name(tControl)] = tRect;
    QRect tPixels = ToPixels(tRect);
    if (tControl.parentWidget()->parentWidget() == &SSTab) tPixels.translate(-SSTab.PageOrigin());
    tControl.setGeometry(tPixels);
}

void FormDesign::Put(QWidget& tControl, const Rect& tRect) {
    m_tDesignRects[Name(tControl)] = tRect;
    Place(tControl, tRect);
    if (tControl.parentWidget()->parentWidget() == &SSTab)
        Reach(tRect.dLeft + tRect.dWidth, tRect.dTop + tRect.dHeight);
}

void FormDesign::PutBody(QWidget& tControl, double dTop, double dWidth) {
    m_tDesignRects[Name(tControl)] = {Margin, dTop, dWidth, BodyHeight};
    Place(tControl, Design(tControl));
    Reach(Margin + LeastBody.dWidth, dTop + LeastBody.dHeight);
}

void FormDesign::Reach(double dRight, double dBottom) {
    m_tReach.dWidth = std::max(m_tReach.dWidth, dRight + Margin);
    m_tReach.dHeight = std::max(m_tReach.dHeight, dBottom + ListBottomGap);
}

void FormDesign::PutInside(QWidget& tControl, const Rect& tRect) {
    m_tDesignRects[Name(tControl)] = tRect;
    m_tRects[Name(tControl)] = tRect;
    tControl.resize(ToPixels(tRect).size());
}

double FormDesign::BodyTop() const { return ToTwips(SSTab.PageOrigin().y()) + BodyGap; }

double FormDesign::PutRow(double dLeft, double dTop, const std::vector<std::pair<QWidget*, double>>& tWidths) {
    double dHeight = 0;
    for (const auto& [pControl, dWidth] : tWidths) {
        dHeight = std::max(dHeight, ToTwips(pControl->sizeHint().height()));
    }
    for (const auto& [pControl, dWidth] : tWidths) {
        const double dOwn = dWidth > 0 ? dWidth : ToTwips(pControl->sizeHint().width());
        Put(*pControl, {dLeft, dTop, dOwn, dHeight});
        dLeft += dOwn + ColumnGap;
    }
    return dTop + dHeight;
}

void FormDesign::AddLabel(QWidget& tField, const QString& sCaption) {
    auto* pLabel = new QLabel(sCaption, tField.parentWidget());
    pLabel->setObjectName(tField.objectName() + QLatin1String("Label"));
    pLabel->setBuddy(&tField);
}

QLabel* FormDesign::LabelOf(const QWidget& tField) {
    return tField.parentWidget()->findChild<QLabel*>(tField.objectName() + QLatin1String("Label"));
}

void FormDesign::DesignTabOrder() {
    const std::vector<QWidget*> pOrder = {
        &SSTab.Bar(),      &chkCommEnabled(0),  &txtCommPort(0),    &txtCommSettings(0), &chkCommEnabled(1),
        &txtCommPort(1),   &txtCommSettings(1), &lstCommData(0),    &lstCommData(1),     &lstRxData,
        &txtRxNasaChannel, &cmdRxNasaChannel,   &txtRxNasaInterval, &cmdRxNasaInterval,  &chkRxNasaPower,
        &lstAisData,       &txtGpsLat,          &txtGpsLon,         &lstGpsData,         &cmbTargetDetail,
        &cmbTargetSort,    &cmbTargetTarget,    &chkTargetTrack,    &grdTargetData,      &grdMessageData,
        &scrDiagram,       &grdSpecData,        &txtTimingRateTx,   &txtTimingRateRc,    &txtTimingTimeSpan,
        &cmdTimingApply,   &chkOutputEnabled,   &txtOutputPort,     &txtOutputSettings,  &chkOutputRMC,
        &lstOutputData};
    for (std::size_t i = 1; i < pOrder.size(); ++i) setTabOrder(pOrder[i - 1], pOrder[i]);
}

}  // namespace ui
