// The tabs with serial ports: Input, Receiver and Output.
#include <QGridLayout>
#include <array>

#include "platform/runtime/PortIndex.h"
#include "platform/toolkit/FieldWidth.h"
#include "platform/toolkit/Latin1.h"
#include "platform/toolkit/Twips.h"
#include "ui/FormDesign.h"

namespace ui {

using toolkit::FieldWidth;
using toolkit::FromLatin1;
using toolkit::ToTwips;

namespace {

constexpr double Margin = 120;      // twips from a tab's left edge to its controls
constexpr double RowGap = 90;       // between rows
constexpr double ListWidth = 4500;  // of the list beside the frames

// The widest texts that the fields show whole; longer ones scroll.
constexpr char PortTemplate[] = "/dev/serial/ttyUSB0";
constexpr char SettingsTemplate[] = "115200,n,8,1.5";
constexpr char ChannelTemplate[] = "00000";

constexpr char SettingsTip[] = "Baud rate, parity (n, e, o, m, s), data bits, stop bits: 38400,n,8,1";

}  // namespace

void FormDesign::DesignPort(toolkit::PortBox& txtPort, toolkit::TextBox& txtSettings, const QString& sPort) {
    AddLabel(txtPort, QStringLiteral("Port"));
    AddLabel(txtSettings, QStringLiteral("Settings"));
    txtPort.SetTip(
        QStringLiteral("Serial port: a number (6 or COM6 is /dev/ttyS5), a name such as ttyUSB0, or a path"));
    txtSettings.setToolTip(FromLatin1(SettingsTip));
    txtSettings.SetTypingLimit(79);  // what the profile keeps of a value
    txtPort.setAccessibleName(QStringLiteral("Port of %1").arg(sPort));
    txtSettings.setAccessibleName(QStringLiteral("Settings of %1").arg(sPort));
}

void FormDesign::DesignPorts() {
    const std::array<const char*, 2> sSettings = {"38400,n,8,1", "4800,n,8,1"};
    const std::array<const char*, 2> sPorts = {"6", "5"};
    for (runtime::PortIndex i = 0; i < runtime::PortCount; ++i) {
        const QString sPort = QStringLiteral("input #%1").arg(i + 1);
        chkCommEnabled(i).setText(i == 0 ? QStringLiteral("Input #&1") : QStringLiteral("Input #&2"));
        chkCommEnabled(i).setToolTip(QStringLiteral("Listen on %1").arg(sPort));
        chkCommEnabled(i).setChecked(i == 0);
        txtCommPort(i).SetText(sPorts[static_cast<std::size_t>(i)]);
        txtCommSettings(i).SetText(sSettings[static_cast<std::size_t>(i)]);
        DesignPort(txtCommPort(i), txtCommSettings(i), sPort);
        lstCommData(i).SetShowsMarks(true);
        lstCommData(i).SetName(QStringLiteral("#%1").arg(i + 1));
        lstCommData(i).setToolTip(QStringLiteral("#%1, NEMA 0183 Data, Highlighted indicates Decoded Data").arg(i + 1));
        lstCommData(i).setAccessibleName(QStringLiteral("Lines of %1").arg(sPort));
    }
    chkOutputEnabled.setText(QStringLiteral("&Output"));
    chkOutputEnabled.setToolTip(QStringLiteral("Forward every accepted line to the output port"));
    txtOutputPort.SetText("6");
    txtOutputSettings.SetText("38400,n,8,1");
    DesignPort(txtOutputPort, txtOutputSettings, QStringLiteral("output"));
    chkOutputRMC.setText(QStringLiteral("R&MC from GLL"));
    chkOutputRMC.setToolTip(QStringLiteral("Create RMC Data from GLL Data"));
    lstOutputData.SetShowsMarks(true);
    lstOutputData.setToolTip(QStringLiteral("NMEA 0183 Output, Highlighted indicates forwarded or created Data"));
    lstOutputData.setAccessibleName(QStringLiteral("Lines of output"));
}

double FormDesign::PutPortRow(QCheckBox& chk, toolkit::PortBox& txtPort, toolkit::TextBox& txtSettings, double dTop) {
    return PutRow(Margin, dTop,
                  {{&chk, ToTwips(chk.sizeHint().width()) + 120},
                   {LabelOf(txtPort), 0},
                   {&txtPort, ToTwips(FieldWidth(txtPort, PortTemplate))},
                   {LabelOf(txtSettings), 0},
                   {&txtSettings, ToTwips(FieldWidth(txtSettings, SettingsTemplate))}});
}

void FormDesign::PutPorts() {
    double dTop = BodyTop();
    for (runtime::PortIndex i = 0; i < runtime::PortCount; ++i) {
        dTop = PutPortRow(chkCommEnabled(i), txtCommPort(i), txtCommSettings(i), dTop) + RowGap;
    }
    for (runtime::PortIndex i = 0; i < runtime::PortCount; ++i) PutBody(lstCommData(i), dTop);

    const double dBottom = PutPortRow(chkOutputEnabled, txtOutputPort, txtOutputSettings, BodyTop());
    const Rect& tSettings = Design(txtOutputSettings);
    Put(chkOutputRMC, {tSettings.dLeft + tSettings.dWidth + 2 * Margin, tSettings.dTop,
                       ToTwips(chkOutputRMC.sizeHint().width()), tSettings.dHeight});
    PutBody(lstOutputData, dBottom + RowGap);
}

void FormDesign::DesignReceiver() {
    lstRxData.setAccessibleName(QStringLiteral("Receiver signal log"));
    frmRxNasa.setTitle(QStringLiteral("NASA AIS Engine"));
    txtRxNasaChannel.SetText("S");
    txtRxNasaInterval.SetText("3");
    const QString sChannelTip = QStringLiteral("A = Ch 1, B = Ch 2, S = Alternate (default)");
    const QString sIntervalTip = QStringLiteral("Threshold Setting  Interval (Sec), 1-7, 3=Default");
    txtRxNasaChannel.setToolTip(sChannelTip);
    txtRxNasaInterval.setToolTip(sIntervalTip);
    txtRxNasaChannel.setAccessibleName(QStringLiteral("Receive channel"));
    txtRxNasaInterval.setAccessibleName(QStringLiteral("Report interval"));
    cmdRxNasaChannel.setText(QStringLiteral("Set &Channel"));
    cmdRxNasaInterval.setText(QStringLiteral("Set &Interval"));
    cmdRxNasaChannel.setToolTip(sChannelTip);
    cmdRxNasaInterval.setToolTip(sIntervalTip);
    chkRxNasaPower.setText(QStringLiteral("Show &dBm"));
    chkRxNasaPower.setToolTip(QStringLiteral("Show signal and threshold levels in dBm"));

    auto* pGrid = new QGridLayout(&frmRxNasa);
    auto* pChannelLabel = new QLabel(QStringLiteral("Channel"), &frmRxNasa);
    auto* pIntervalLabel = new QLabel(QStringLiteral("Interval"), &frmRxNasa);
    pChannelLabel->setToolTip(sChannelTip);
    pIntervalLabel->setToolTip(sIntervalTip);
    pGrid->addWidget(pChannelLabel, 0, 0);
    pGrid->addWidget(&txtRxNasaChannel, 0, 1);
    pGrid->addWidget(&cmdRxNasaChannel, 0, 2);
    pGrid->addWidget(pIntervalLabel, 1, 0);
    pGrid->addWidget(&txtRxNasaInterval, 1, 1);
    pGrid->addWidget(&cmdRxNasaInterval, 1, 2);
    pGrid->addWidget(&chkRxNasaPower, 2, 0, 1, 3);
    int iRow = 3;
    for (const char* sLevel : {"19=1uV=-107dBm", "29=10 uV=-87dBm", "40=100uV=-67dBm"}) {
        pGrid->addWidget(new QLabel(FromLatin1(sLevel), &frmRxNasa), iRow++, 0, 1, 3);
    }
    pGrid->setRowStretch(iRow, 1);

    frmRxLabel.setTitle(QStringLiteral("Channels"));
    auto* pLegend = new QGridLayout(&frmRxLabel);
    pLegend->addWidget(new QLabel(QStringLiteral("A = VHF 87 161.975 MHz"), &frmRxLabel), 0, 0);
    pLegend->addWidget(new QLabel(QStringLiteral("B = VHF 88 162.025 MHz"), &frmRxLabel), 1, 0);
    pLegend->setRowStretch(2, 1);
}

void FormDesign::PutReceiver() {
    txtRxNasaChannel.setFixedWidth(FieldWidth(txtRxNasaChannel, ChannelTemplate));
    txtRxNasaInterval.setFixedWidth(FieldWidth(txtRxNasaInterval, ChannelTemplate));
    const double dTop = BodyTop();
    const QSize tFrame = frmRxNasa.sizeHint().expandedTo(frmRxLabel.sizeHint());
    const double dFrameHeight = ToTwips(frmRxNasa.sizeHint().height());
    PutBody(lstRxData, dTop, ListWidth);
    Put(frmRxNasa, {ListWidth + 2 * Margin, dTop, ToTwips(tFrame.width()), dFrameHeight});
    Put(frmRxLabel, {ListWidth + 2 * Margin, dTop + dFrameHeight + RowGap, ToTwips(tFrame.width()),
                     ToTwips(frmRxLabel.sizeHint().height())});
}

}  // namespace ui
