// The tabs with serial ports: Input, Receiver and Output.
#include <QGridLayout>
#include <array>

#include "nmea/PortIndex.h"
#include "platform/toolkit/Twips.h"
#include "ui/FormDesign.h"

namespace ui {

using toolkit::ToTwips;

namespace {

constexpr double Margin = 120;          // twips from a tab's left edge to its controls
constexpr double RowGap = 90;           // between rows
constexpr double PortWidth = 2400;      // wide enough for "ttyUSB0" and then some
constexpr double SettingsWidth = 1800;  // "38400,n,8,1"

constexpr char SettingsTip[] = "Baud rate, parity (n, e, o, m, s), data bits, stop bits: 38400,n,8,1";

}  // namespace

void FormDesign::DesignPortRow(QCheckBox& chk, toolkit::PortBox& txtPort, toolkit::TextBox& txtSettings, double dTop,
                               const QString& sPort) {
    auto* pPortLabel = new QLabel(tr("Port"), chk.parentWidget());
    auto* pSettingsLabel = new QLabel(tr("Settings"), chk.parentWidget());
    pPortLabel->setObjectName(txtPort.objectName() + QLatin1String("Label"));
    pSettingsLabel->setObjectName(txtSettings.objectName() + QLatin1String("Label"));
    pPortLabel->setBuddy(&txtPort);
    pSettingsLabel->setBuddy(&txtSettings);
    txtPort.SetTip(tr("Serial port: a number (6 or COM6 is /dev/ttyS5), a name such as ttyUSB0, or a path"));
    txtSettings.setToolTip(tr(SettingsTip));
    txtSettings.SetTypingLimit(79);  // what the profile keeps of a value
    txtPort.setAccessibleName(tr("Port of %1").arg(sPort));
    txtSettings.setAccessibleName(tr("Settings of %1").arg(sPort));
    PutRow(Margin, dTop,
           {{&chk, ToTwips(chk.sizeHint().width()) + 120},
            {pPortLabel, 0},
            {&txtPort, PortWidth},
            {pSettingsLabel, 0},
            {&txtSettings, SettingsWidth}});
}

void FormDesign::DesignPorts() {
    const std::array<const char*, 2> sSettings = {"38400,n,8,1", "4800,n,8,1"};
    const std::array<const char*, 2> sPorts = {"6", "5"};
    double dTop = BodyTop();
    for (nmea::PortIndex i = 0; i < nmea::PortCount; ++i) {
        const QString sPort = tr("input #%1").arg(i + 1);
        chkCommEnabled(i).setText(i == 0 ? tr("Input #&1") : tr("Input #&2"));
        chkCommEnabled(i).setToolTip(tr("Listen on %1").arg(sPort));
        chkCommEnabled(i).setChecked(i == 0);
        txtCommPort(i).SetText(sPorts[static_cast<std::size_t>(i)]);
        txtCommSettings(i).SetText(sSettings[static_cast<std::size_t>(i)]);
        DesignPortRow(chkCommEnabled(i), txtCommPort(i), txtCommSettings(i), dTop, sPort);
        dTop += Design(txtCommPort(i)).dHeight + RowGap;
        lstCommData(i).SetShowsMarks(true);
        lstCommData(i).setToolTip(tr("#%1, NEMA 0183 Data, Highlighted indicates Decoded Data").arg(i + 1));
        lstCommData(i).setAccessibleName(tr("Lines of %1").arg(sPort));
    }
    for (nmea::PortIndex i = 0; i < nmea::PortCount; ++i) Put(lstCommData(i), {Margin, dTop, 9000, 3000});

    chkOutputEnabled.setText(tr("&Output"));
    chkOutputEnabled.setToolTip(tr("Forward every accepted line to the output port"));
    txtOutputPort.SetText("6");
    txtOutputSettings.SetText("38400,n,8,1");
    DesignPortRow(chkOutputEnabled, txtOutputPort, txtOutputSettings, BodyTop(), tr("output"));
    chkOutputRMC.setText(tr("R&MC from GLL"));
    chkOutputRMC.setToolTip(tr("Create RMC Data from GLL Data"));
    const Rect& tSettings = Design(txtOutputSettings);
    PutRow(tSettings.dLeft + tSettings.dWidth + 2 * Margin, tSettings.dTop,
           {{&chkOutputRMC, ToTwips(chkOutputRMC.sizeHint().width()) + 120}});
    lstOutputData.SetShowsMarks(true);
    lstOutputData.setToolTip(tr("NMEA 0183 Output, Highlighted indicates forwarded or created Data"));
    lstOutputData.setAccessibleName(tr("Lines of output"));
    Put(lstOutputData, {Margin, tSettings.dTop + tSettings.dHeight + RowGap, 9000, 3000});
}

void FormDesign::DesignReceiver() {
    lstRxData.setAccessibleName(tr("Receiver signal log"));
    frmRxNasa.setTitle(tr("NASA AIS Engine"));
    txtRxNasaChannel.SetText("S");
    txtRxNasaInterval.SetText("3");
    const QString sChannelTip = tr("A = Ch 1, B = Ch 2, S = Alternate (default)");
    const QString sIntervalTip = tr("Threshold Setting  Interval (Sec), 1-7, 3=Default");
    txtRxNasaChannel.setToolTip(sChannelTip);
    txtRxNasaInterval.setToolTip(sIntervalTip);
    txtRxNasaChannel.setAccessibleName(tr("Receive channel"));
    txtRxNasaInterval.setAccessibleName(tr("Report interval"));
    txtRxNasaChannel.setMaximumWidth(80);
    txtRxNasaInterval.setMaximumWidth(80);
    cmdRxNasaChannel.setText(tr("Set &Channel"));
    cmdRxNasaInterval.setText(tr("Set &Interval"));
    cmdRxNasaChannel.setToolTip(sChannelTip);
    cmdRxNasaInterval.setToolTip(sIntervalTip);
    chkRxNasaPower.setText(tr("Show &dBm"));
    chkRxNasaPower.setToolTip(tr("Show signal and threshold levels in dBm"));

    auto* pGrid = new QGridLayout(&frmRxNasa);
    auto* pChannelLabel = new QLabel(tr("Channel"), &frmRxNasa);
    auto* pIntervalLabel = new QLabel(tr("Interval"), &frmRxNasa);
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
        pGrid->addWidget(new QLabel(tr(sLevel), &frmRxNasa), iRow++, 0, 1, 3);
    }
    pGrid->setRowStretch(iRow, 1);

    frmRxLabel.setTitle(tr("Channels"));
    auto* pLegend = new QGridLayout(&frmRxLabel);
    pLegend->addWidget(new QLabel(tr("A = VHF 87 161.975 MHz"), &frmRxLabel), 0, 0);
    pLegend->addWidget(new QLabel(tr("B = VHF 88 162.025 MHz"), &frmRxLabel), 1, 0);
    pLegend->setRowStretch(2, 1);

    const double dTop = BodyTop();
    const QSize tFrame = frmRxNasa.sizeHint().expandedTo(frmRxLabel.sizeHint());
    const double dFrameHeight = ToTwips(frmRxNasa.sizeHint().height());
    Put(lstRxData, {Margin, dTop, 6000, 3000});
    Put(frmRxNasa, {6000 + 2 * Margin, dTop, ToTwips(tFrame.width()), dFrameHeight});
    Put(frmRxLabel, {6000 + 2 * Margin, dTop + dFrameHeight + RowGap, ToTwips(tFrame.width()),
                     ToTwips(frmRxLabel.sizeHint().height())});
}

}  // namespace ui
