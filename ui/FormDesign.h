// The window as designed: which controls there are, their captions, tips, items and first texts, and where they stand
// before any layout. No behaviour: that is frmMain. Controls are references to children that Qt owns.
#pragma once

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QMainWindow>
#include <QPushButton>
#include <QScrollArea>
#include <QTimer>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "platform/toolkit/ButtonBar.h"
#include "platform/toolkit/ComboBox.h"
#include "platform/toolkit/ControlArray.h"
#include "platform/toolkit/Grid.h"
#include "platform/toolkit/LinePicture.h"
#include "platform/toolkit/LogList.h"
#include "platform/toolkit/MaskedBox.h"
#include "platform/toolkit/NumberCombo.h"
#include "platform/toolkit/PanelBar.h"
#include "platform/toolkit/PictureBox.h"
#include "platform/toolkit/Platform.h"
#include "platform/toolkit/PortBox.h"
#include "platform/toolkit/SerialPort.h"
#include "platform/toolkit/TabControl.h"
#include "platform/toolkit/TextBox.h"
#include "ui/Layout.h"

namespace ui {

enum Tab : int {
    TabInput,
    TabReceiver,
    TabAis,
    TabGps,
    TabTargets,
    TabMessages,
    TabDiagram,
    TabAbout,
    TabSpec,
    TabTiming,
    TabOutput
};

// The five panels of the status bar.
enum Panel : int { PanelState = 1, PanelSummary, PanelSilence0, PanelSilence1, PanelClock };

// The keys of the toolbar.
inline constexpr char KeyStart[] = "Start";
inline constexpr char KeyStop[] = "Stop";
inline constexpr char KeyRecord[] = "Record";
inline constexpr char KeyPlayback[] = "Playback";
inline constexpr char KeyPlaybackBurst[] = "Playback Burst";

// A row of the timing plan: its name, its percentage and, in the last row, the summary (index 3).
struct TimingLabels {
    QLabel& Name;
    QLabel& Percentage;
};

// A connection of the flow diagram that ends in an arrow head; the tag says where the head goes.
struct DiagramLine {
    runtime::Stroke tLine;
    std::string sTag;
};

class FormDesign : public QMainWindow {
public:
    explicit FormDesign(toolkit::Platform tPlatform);

    toolkit::Platform m_tPlatform;

    QWidget& Client = *new QWidget(this);  // between toolbar and status bar
    toolkit::ButtonBar& Toolbar = *new toolkit::ButtonBar(this);
    toolkit::PanelBar& StatusBar = *new toolkit::PanelBar(this);
    toolkit::TabControl& SSTab = *new toolkit::TabControl(&Client);
    QTimer& tmrComm = *new QTimer(this);
    QTimer& tmrTime = *new QTimer(this);
    toolkit::ControlArray<toolkit::SerialPort> MSComm{this};
    toolkit::SerialPort& MSCommOutput = *new toolkit::SerialPort(this);

    // "Input"
    QWidget& PageInput = *SSTab.AddTab(QStringLiteral("Input"));
    toolkit::ControlArray<QCheckBox> chkCommEnabled{&PageInput};
    toolkit::ControlArray<toolkit::PortBox> txtCommPort{&PageInput};
    toolkit::ControlArray<toolkit::TextBox> txtCommSettings{&PageInput};
    toolkit::ControlArray<toolkit::LogList> lstCommData{&PageInput};

    // "Receiver"
    QWidget& PageReceiver = *SSTab.AddTab(QStringLiteral("Receiver"));
    toolkit::LogList& lstRxData = *new toolkit::LogList(&PageReceiver);
    QGroupBox& frmRxNasa = *new QGroupBox(&PageReceiver);
    toolkit::TextBox& txtRxNasaChannel = *new toolkit::TextBox(&frmRxNasa);
    QPushButton& cmdRxNasaChannel = *new QPushButton(&frmRxNasa);
    toolkit::TextBox& txtRxNasaInterval = *new toolkit::TextBox(&frmRxNasa);
    QPushButton& cmdRxNasaInterval = *new QPushButton(&frmRxNasa);
    QCheckBox& chkRxNasaPower = *new QCheckBox(&frmRxNasa);
    QGroupBox& frmRxLabel = *new QGroupBox(&PageReceiver);

    // "AIS", "GPS"
    QWidget& PageAis = *SSTab.AddTab(QStringLiteral("AIS"));
    toolkit::LogList& lstAisData = *new toolkit::LogList(&PageAis);
    QWidget& PageGps = *SSTab.AddTab(QStringLiteral("GPS"));
    toolkit::MaskedBox& txtGpsLat = *new toolkit::MaskedBox(&PageGps);
    toolkit::MaskedBox& txtGpsLon = *new toolkit::MaskedBox(&PageGps);
    toolkit::LogList& lstGpsData = *new toolkit::LogList(&PageGps);

    // "Targets", "Messages"
    QWidget& PageTargets = *SSTab.AddTab(QStringLiteral("Targets"));
    toolkit::ComboBox& cmbTargetDetail = *new toolkit::ComboBox(&PageTargets);
    toolkit::ComboBox& cmbTargetSort = *new toolkit::ComboBox(&PageTargets);
    QCheckBox& chkTargetTrack = *new QCheckBox(&PageTargets);
    toolkit::NumberCombo& cmbTargetTarget = *new toolkit::NumberCombo(&PageTargets);
    toolkit::Grid& grdTargetData = *new toolkit::Grid(&PageTargets);
    QWidget& PageMessages = *SSTab.AddTab(QStringLiteral("Messages"));
    toolkit::Grid& grdMessageData = *new toolkit::Grid(&PageMessages);

    // "Diagram", "About", "Spec"
    QWidget& PageDiagram = *SSTab.AddTab(QStringLiteral("Diagram"));
    QScrollArea& scrDiagram = *new QScrollArea(&PageDiagram);
    toolkit::LinePicture& pctDiagram = *new toolkit::LinePicture(&scrDiagram);
    std::vector<DiagramLine> LnArrow;
    QWidget& PageAbout = *SSTab.AddTab(QStringLiteral("About"));
    QLabel& picAboutIcon = *new QLabel(&PageAbout);
    QLabel& lblAboutTitle = *new QLabel(&PageAbout);
    QLabel& lblAboutDescription = *new QLabel(&PageAbout);
    QLabel& lblAboutDisclaimer = *new QLabel(&PageAbout);
    QWidget& PageSpec = *SSTab.AddTab(QStringLiteral("Spec"));
    toolkit::Grid& grdSpecData = *new toolkit::Grid(&PageSpec);

    // "Timing"
    QWidget& PageTiming = *SSTab.AddTab(QStringLiteral("Timing"));
    toolkit::TextBox& txtTimingRateTx = *new toolkit::TextBox(&PageTiming);
    toolkit::TextBox& txtTimingRateRc = *new toolkit::TextBox(&PageTiming);
    toolkit::TextBox& txtTimingTimeSpan = *new toolkit::TextBox(&PageTiming);
    QPushButton& cmdTimingApply = *new QPushButton(&PageTiming);
    QLabel& lblTimingMessage = *new QLabel(&PageTiming);  // why inputs were refused
    toolkit::PictureBox& pctTiming = *new toolkit::PictureBox(&PageTiming);
    TimingLabels lblTimingChA = MakeTimingLabels();
    TimingLabels lblTimingChB = MakeTimingLabels();
    TimingLabels lblTimingChAlternate = MakeTimingLabels();
    QLabel& lblTimingSummary = *new QLabel(&pctTiming);  // lblTimingChAlternate, index 3

    // "Output"
    QWidget& PageOutput = *SSTab.AddTab(QStringLiteral("Output"));
    QCheckBox& chkOutputEnabled = *new QCheckBox(&PageOutput);
    toolkit::PortBox& txtOutputPort = *new toolkit::PortBox(&PageOutput);
    toolkit::TextBox& txtOutputSettings = *new toolkit::TextBox(&PageOutput);
    QCheckBox& chkOutputRMC = *new QCheckBox(&PageOutput);
    toolkit::LogList& lstOutputData = *new toolkit::LogList(&PageOutput);

    // Where controls stand before any layout, and where they were last put; twips, by control name. Places on a tab are
    // relative to the tab control.
    const std::map<std::string, Rect>& DesignRects() const { return m_tDesignRects; }
    const std::map<std::string, Rect>& Rects() const { return m_tRects; }

protected:
    // What the empty views say, by whether they wait for Start or for the first line.
    void SetHints(bool bRunning);
    // Works out where everything stands in the present font and style, and the least size of the window: it shows all
    // the controls of every tab, and some lines of what fills the rest.
    void DesignPlaces();
    // Puts a control somewhere; what the latest layout gave it is kept in Rects.
    void Place(QWidget& tControl, const Rect& tRect);
    const Rect& Design(const QWidget& tControl) const { return m_tDesignRects.at(Name(tControl)); }
    static std::string Name(const QWidget& tControl);
    // Headers and widths of the target table, as the detail choice wants them.
    void LayOutTargetColumns();

private:
    TimingLabels MakeTimingLabels() { return {*new QLabel(&pctTiming), *new QLabel(&pctTiming)}; }
    void Put(QWidget& tControl, const Rect& tRect);  // a design-time place
    // One at the left that fills what its tab has left; the window's least size leaves it some lines.
    void PutBody(QWidget& tControl, double dTop, double dWidth = 9000);
    // The window's least size shows this much of a tab, margins not counted.
    void Reach(double dRight, double dBottom);
    // A control that is placed by what it scrolls in: only its size is ours.
    void PutInside(QWidget& tControl, const Rect& tRect);
    // Puts controls side by side from a place on, each in its own width and the height of the tallest; the bottom of
    // the row in twips. A width of 0 is what the control itself would like.
    double PutRow(double dLeft, double dTop, const std::vector<std::pair<QWidget*, double>>& tWidths);
    double BodyTop() const;  // top of the first control on a tab
    // The label before a field, named after it, and where to find it again.
    void AddLabel(QWidget& tField, const QString& sCaption);
    static QLabel* LabelOf(const QWidget& tField);

    void DesignNames();
    void DesignWindow();
    void DesignPorts();  // Input, Output
    void DesignPort(toolkit::PortBox& txtPort, toolkit::TextBox& txtSettings, const QString& sPort);
    void DesignReceiver();
    void DesignViews();  // AIS, GPS, Targets, Messages, Spec
    void DesignAbout();
    void DesignDiagram();
    void DesignTiming();
    void DesignTabOrder();

    void PutPorts();
    double PutPortRow(QCheckBox& chk, toolkit::PortBox& txtPort, toolkit::TextBox& txtSettings, double dTop);
    void PutReceiver();
    void PutViews();
    void PutAbout();
    void PutDiagram();
    void PutTiming();

    std::map<std::string, Rect> m_tDesignRects;
    Size m_tReach;  // how far the controls of all the tabs reach at the least
    std::map<std::string, Rect> m_tRects;
};

}  // namespace ui
