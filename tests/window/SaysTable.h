// Everything that the window says at its first start, written by hand: each control with its kind, caption or text,
// tip, name for screen readers, choices, hints and menu, tab by tab; the window's keys; and the way of the Tab key. A
// text that is changed in the program is to be changed here as well, on purpose; texts of the program's users stay.
//
// [Tab or place], then a paragraph for each control: name, kind, "text", what it is besides; and below it
//   tip         tool tip                        status      status tip, at the right of panel 2
//   name        what a screen reader calls it where that is not its text
//   own name    the name that it was given, where a screen reader says its text
//   grey        what stands greyed in an empty field
//   choices     of a combo box                  leads to    the field of a label
//   columns     of a table, hidden ones too     row         of a table, hidden ones left out
//   hint        over an empty view              running     the same during a run
//   menu        the context menu, (key), off where greyed, "-" between groups
// Left out are the arrows of Qt's tab bar, which say what Qt lets them say, and the menus of plain fields. "A > B" is a
// B without a name of its own inside A; \r and \n are line ends.
#pragma once

namespace support {

inline constexpr char SaysTable[] = R"table(
[Window]

frmMain "Tidewatch"
  keys: Ctrl+Q, Ctrl+Shift+Tab, Ctrl+Tab, F1, Shift+F10

Toolbar ButtonBar
  name: Run control
Toolbar > QToolButton "&Start"
  tip: Open the ports and start listening
Toolbar > QToolButton "S&top" off pressed
  tip: Stop listening, recording or playing
Toolbar > QToolButton "&Record" off
  tip: Record what is decoded to a file
Toolbar > QToolButton "&Playback"
  tip: Play a recording at its own pace
Toolbar > QToolButton "Playback &Burst"
  tip: Play a recording as fast as possible
Toolbar > QToolBarExtension
  name: More buttons

StatusBar PanelBar
StatusBar > PanelLabel "Stopped"
  tip: Run state
StatusBar > PanelLabel
  tip: Targets and messages heard, or the last error
StatusBar > PanelLabel
  tip: Time since the last line on input #1
StatusBar > PanelLabel
  tip: Time since the last line on input #2
StatusBar > PanelLabel
  tip: Clock

SSTab TabControl
SSTab > QTabBar
  name: Input
  choices: Input | Receiver | AIS | GPS | Targets | Messages | Diagram | About | Spec | Timing | Output

[Input]

SSTab > QWidget
  name: Input

chkCommEnabled(0) QCheckBox "Input #&1" ticked
  tip: Listen on input #1
txtCommPort(0)Label QLabel "Port"
  leads to: txtCommPort(0)
txtCommPort(0) PortBox "6"
  tip: Serial port: a number (6 or COM6 is /dev/ttyS5), a name such as ttyUSB0, or a path
  name: Port of input #1
txtCommPort(0) > QToolButton
  tip: Serial ports to choose from
  name: Show serial ports
txtCommSettings(0)Label QLabel "Settings"
  leads to: txtCommSettings(0)
txtCommSettings(0) TextBox "38400,n,8,1"
  tip: Baud rate, parity (n, e, o, m, s), data bits, stop bits: 38400,n,8,1
  name: Settings of input #1
lstCommData(0) LogList
  tip: #1, NEMA 0183 Data, Highlighted indicates Decoded Data
  name: Lines of input #1
  hint: Choose the port above and press Start
  running: No line has come yet\nIs the receiver plugged in and switched on?
  menu: &Copy (Ctrl+C) off, Select &All (Ctrl+A) off, -, &Follow the Newest (End) off
lstCommData(0) > QLabel "#1"
lstCommData(0) > NewestMark "Newer lines"
  tip: Newer lines wait below: click here, or press End in the log, to follow them again
  name: Follow the newest lines

chkCommEnabled(1) QCheckBox "Input #&2"
  tip: Listen on input #2
txtCommPort(1)Label QLabel "Port"
  leads to: txtCommPort(1)
txtCommPort(1) PortBox "5"
  tip: Serial port: a number (6 or COM6 is /dev/ttyS5), a name such as ttyUSB0, or a path
  name: Port of input #2
txtCommPort(1) > QToolButton
  tip: Serial ports to choose from
  name: Show serial ports
txtCommSettings(1)Label QLabel "Settings"
  leads to: txtCommSettings(1)
txtCommSettings(1) TextBox "4800,n,8,1"
  tip: Baud rate, parity (n, e, o, m, s), data bits, stop bits: 38400,n,8,1
  name: Settings of input #2
lstCommData(1) LogList
  tip: #2, NEMA 0183 Data, Highlighted indicates Decoded Data
  name: Lines of input #2
  hint: Choose the port above and press Start
  running: No line has come yet\nIs the receiver plugged in and switched on?
  menu: &Copy (Ctrl+C) off, Select &All (Ctrl+A) off, -, &Follow the Newest (End) off
lstCommData(1) > QLabel "#2"
lstCommData(1) > NewestMark "Newer lines"
  tip: Newer lines wait below: click here, or press End in the log, to follow them again
  name: Follow the newest lines

[Receiver]

SSTab > QWidget
  name: Receiver

frmRxNasa QGroupBox "NASA AIS Engine"
frmRxNasa > QLabel "Channel"
  tip: A = Ch 1, B = Ch 2, S = Alternate (default)
txtRxNasaChannel TextBox "S"
  tip: A = Ch 1, B = Ch 2, S = Alternate (default)
  name: Receive channel
cmdRxNasaChannel QPushButton "Set &Channel"
  tip: A = Ch 1, B = Ch 2, S = Alternate (default)
frmRxNasa > QLabel "Interval"
  tip: Threshold Setting  Interval (Sec), 1-7, 3=Default
txtRxNasaInterval TextBox "3"
  tip: Threshold Setting  Interval (Sec), 1-7, 3=Default
  name: Report interval
cmdRxNasaInterval QPushButton "Set &Interval"
  tip: Threshold Setting  Interval (Sec), 1-7, 3=Default
chkRxNasaPower QCheckBox "Show &dBm"
  tip: Show signal and threshold levels in dBm
frmRxNasa > QLabel "19=1uV=-107dBm"
frmRxNasa > QLabel "29=10 uV=-87dBm"
frmRxNasa > QLabel "40=100uV=-67dBm"

frmRxLabel QGroupBox "Channels"
frmRxLabel > QLabel "A = VHF 87 161.975 MHz"
frmRxLabel > QLabel "B = VHF 88 162.025 MHz"

lstRxData LogList
  name: Receiver signal log
  hint: Signal levels of each AIS message will stand here\nPress Start to listen, or Playback to play a recording
  running: No signal levels yet\nThey come from a NASA AIS Engine
  menu: &Copy (Ctrl+C) off, Select &All (Ctrl+A) off, -, &Follow the Newest (End) off
lstRxData > NewestMark "Newer lines"
  tip: Newer lines wait below: click here, or press End in the log, to follow them again
  name: Follow the newest lines

[AIS]

SSTab > QWidget
  name: AIS

lstAisData LogList
  name: AIS messages
  hint: Decoded AIS messages will stand here\nPress Start to listen, or Playback to play a recording
  running: No AIS message yet
  menu: &Copy (Ctrl+C) off, Select &All (Ctrl+A) off, -, &Follow the Newest (End) off
lstAisData > NewestMark "Newer lines"
  tip: Newer lines wait below: click here, or press End in the log, to follow them again
  name: Follow the newest lines

[GPS]

SSTab > QWidget
  name: GPS

txtGpsLatLabel QLabel "L&atitude"
  leads to: txtGpsLat
txtGpsLat MaskedBox "00 00.00 N"
  tip: Latitude
  status: Type over the digits, N or S at the end; arrow keys move and step, the menu pastes
  name: Own latitude
  menu: &Copy, &Paste
txtGpsLonLabel QLabel "L&ongitude"
  leads to: txtGpsLon
txtGpsLon MaskedBox "000 00.00 W"
  tip: Longitude
  status: Type over the digits, E or W at the end; arrow keys move and step, the menu pastes
  name: Own longitude
  menu: &Copy, &Paste
lstGpsData LogList
  name: GPS positions
  hint: Positions of a GPS will stand here\nPress Start to listen, or Playback to play a recording
  running: No position of a GPS yet\nWithout one, type your own position above
  menu: &Copy (Ctrl+C) off, Select &All (Ctrl+A) off, -, &Follow the Newest (End) off
lstGpsData > NewestMark "Newer lines"
  tip: Newer lines wait below: click here, or press End in the log, to follow them again
  name: Follow the newest lines

[Targets]

SSTab > QWidget
  name: Targets

cmbTargetDetailLabel QLabel "&Detail"
  leads to: cmbTargetDetail
cmbTargetDetail ComboBox "None"
  tip: Detail Data
  choices: None | Lat/Lon | Speed | Missing | All
cmbTargetSortLabel QLabel "Sort b&y"
  leads to: cmbTargetSort
cmbTargetSort ComboBox "MMSI"
  tip: Sort Targets Criteria
  choices: MMSI | Range | Signal
cmbTargetTargetLabel QLabel "Tar&get"
  leads to: cmbTargetTarget
cmbTargetTarget NumberCombo
  tip: Selected Target
  name: Selected target
cmbTargetTarget > QLineEdit
  name: Selected target
  grey: none yet
chkTargetTrack QCheckBox "Trac&k"
  tip: Track Selected Target
grdTargetData Grid
  name: Targets
  columns:  | MMSI | Ch | Signal | Thres | Snr | Time | Message Id | Rng | Brg | Lat | Lon | Rot | Sog | Last | Spec | Miss
  hint: No reports yet\nPress Start to listen, or Playback to play a recording
  running: No reports yet\nA ship under way reports every 2 to 30 seconds
  menu: &Copy (Ctrl+C) off, Copy with Column &Names off, &Save as CSV..., Select &All (Ctrl+A) off, -, &Track This Ship off, &Fit Columns

[Messages]

SSTab > QWidget
  name: Messages

grdMessageData Grid
  name: Message counts
  columns: Message Id | Count
  row:  | 
  row: Total | 0
  hint: No messages yet\nPress Start to listen, or Playback to play a recording
  running: No messages yet
  menu: &Copy (Ctrl+C) off, Copy with Column &Names off, &Save as CSV..., Select &All (Ctrl+A)

[Diagram]

SSTab > QWidget
  name: Diagram

scrDiagram QScrollArea
pctDiagram LinePicture
  name: Flow diagram
pctDiagram > QLabel "Input"
pctDiagram > QLabel "Comm"
pctDiagram > QLabel "Comm"
pctDiagram > QLabel "Receiver"
pctDiagram > QLabel "Record"
pctDiagram > QLabel "Real Time"
pctDiagram > QLabel "Playback"
pctDiagram > QLabel "Mode"
pctDiagram > QLabel "Decoders"
pctDiagram > QLabel "Messages"
pctDiagram > QLabel "Targets"
pctDiagram > QLabel "AIS Targets"
pctDiagram > QLabel "Output"
pctDiagram > QLabel "Comm"

[About]

SSTab > QWidget
  name: About

picAboutIcon QLabel
  name: Program icon
lblAboutTitle QLabel "Tidewatch"
lblAboutDescription QLabel "Version 1.25\r\rTidewatch Data for NMEA 0183 Interface"
lblAboutDisclaimer QLabel "Tidewatch shows what an AIS receiver hears.\rIt is no aid to navigation: ships may be nearer, faster\ror more in number than what is received.\rCopyright Tidewatch developers"

[Spec]

SSTab > QWidget
  name: Spec

grdSpecData Grid
  name: AIS reporting rates
  columns: Type of Ship | Class A Rates | Class B Rates
  row: Ship at Anchor | 180 sec | 180 sec
  row:  |  | 
  row: Ship 0-14 knots | 10 sec | 30 sec
  row: Ship 0-14 knots and Changing Course | 3 sec | 30 sec
  row: Ship 14-23 knots | 6 sec | 15 sec
  row: Ship 14-23 knots and Changing Course | 2 sec | 15 sec
  row: Ship >23 knots | 2 sec | 5 sec
  row: Ship >23 knots and Changing Course | 2 sec | 5 sec
  row:  |  | 
  row: Static Information | 360 sec | 
  row: Voyage Related Information | 360 sec | 
  row:  |  | 
  row: Mssage Type | 1,2,3,4,5,11,21 | 18,19,24
  menu: &Copy (Ctrl+C) off, Copy with Column &Names off, &Save as CSV..., Select &All (Ctrl+A)

[Timing]

SSTab > QWidget
  name: Timing

txtTimingRateTxLabel QLabel "Tx Rate"
  tip: Transmitter Rate (seconds/message)
  leads to: txtTimingRateTx
txtTimingRateTx TextBox "30"
  tip: Transmitter Rate (seconds/message)
  name: Tx Rate
txtTimingRateRcLabel QLabel "Rc Alternating Rate"
  tip: Receiver Alternating Rate (seconds/channel)
  leads to: txtTimingRateRc
txtTimingRateRc TextBox "36"
  tip: Receiver Alternating Rate (seconds/channel)
  name: Rc Alternating Rate
txtTimingTimeSpanLabel QLabel "Time Span"
  tip: Time Span (seconds), should be multiple of Tx Rate and Rc Alternating Rate
  leads to: txtTimingTimeSpan
txtTimingTimeSpan TextBox "360"
  tip: Time Span (seconds), should be multiple of Tx Rate and Rc Alternating Rate
  name: Time Span
cmdTimingApply QPushButton "&Apply"
lblTimingMessage QLabel
pctTiming PictureBox
lblTimingChA(1) QLabel "Ch A"
lblTimingChA(2) QLabel "50%"
  tip: Percentage of  Messages for Channel A
lblTimingChB(1) QLabel "Ch B"
lblTimingChB(2) QLabel "50%"
  tip: Percentage of Messages for Channel B
lblTimingChAlternate(1) QLabel "Ch Alternating"
lblTimingChAlternate(2) QLabel "50%"
  tip: Percentage of Total Messages for Alternating Channel
lblTimingChAlternate(3) QLabel "Dual Channel, Time Between Messages 30 sec\rSingle Ch Fixed, Time Between Messages 60 sec\rSingle Ch Alterating, Time Between Messages, Min 30 sec, Max 210 sec"

[Output]

SSTab > QWidget
  name: Output

chkOutputEnabled QCheckBox "&Output"
  tip: Forward every accepted line to the output port
txtOutputPortLabel QLabel "Port"
  leads to: txtOutputPort
txtOutputPort PortBox "6"
  tip: Serial port: a number (6 or COM6 is /dev/ttyS5), a name such as ttyUSB0, or a path
  name: Port of output
txtOutputPort > QToolButton
  tip: Serial ports to choose from
  name: Show serial ports
txtOutputSettingsLabel QLabel "Settings"
  leads to: txtOutputSettings
txtOutputSettings TextBox "38400,n,8,1"
  tip: Baud rate, parity (n, e, o, m, s), data bits, stop bits: 38400,n,8,1
  name: Settings of output
chkOutputRMC QCheckBox "R&MC from GLL"
  tip: Create RMC Data from GLL Data
lstOutputData LogList
  tip: NMEA 0183 Output, Highlighted indicates forwarded or created Data
  name: Lines of output
  hint: Lines sent to the output will stand here\nTick Output, choose its port and press Start
  running: The output is off\nPress Stop, then tick Output above
  menu: &Copy (Ctrl+C) off, Select &All (Ctrl+A) off, -, &Follow the Newest (End) off
lstOutputData > NewestMark "Newer lines"
  tip: Newer lines wait below: click here, or press End in the log, to follow them again
  name: Follow the newest lines
)table";

// Where the Tab key stops, from the tab bar on, both inputs ticked, the diagram in sight as a whole; then come the
// toolbar's buttons, which are the same on every tab, and the tab bar again.
inline constexpr char TabKeyTable[] = R"table(
Input: chkCommEnabled(0) txtCommPort(0) txtCommSettings(0) chkCommEnabled(1) txtCommPort(1) txtCommSettings(1) lstCommData(0) lstCommData(1)
Receiver: lstRxData txtRxNasaChannel cmdRxNasaChannel txtRxNasaInterval cmdRxNasaInterval chkRxNasaPower
AIS: lstAisData
GPS: txtGpsLat txtGpsLon lstGpsData
Targets: cmbTargetDetail cmbTargetSort cmbTargetTarget chkTargetTrack grdTargetData
Messages: grdMessageData
Diagram:
About:
Spec: grdSpecData
Timing: txtTimingRateTx txtTimingRateRc txtTimingTimeSpan cmdTimingApply
Output: chkOutputEnabled txtOutputPort txtOutputSettings chkOutputRMC lstOutputData
)table";

inline constexpr char ToolbarStops[] = "&Start &Playback Playback &Burst";

}  // namespace support
