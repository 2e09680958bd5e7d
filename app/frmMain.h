// The main window: owns all state and all operations. A section per subject; the operations of a section stand in the
// files named behind its heading. This page is the program's table of contents.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/CaptureLine.h"
#include "app/RecordFolder.h"
#include "app/RecordLine.h"
#include "app/UnattendedKeys.h"
#include "decoders/GpsSentence.h"
#include "decoders/PositionNote.h"
#include "decoders/ReportQueue.h"
#include "decoders/SignalSentence.h"
#include "decoders/VdmFields.h"
#include "decoders/VdmMessage.h"
#include "nav/PositionText.h"
#include "nav/RangeBearing.h"
#include "nav/Trigonometry.h"
#include "nmea/LineBuffer.h"
#include "nmea/NmeaChecksum.h"
#include "nmea/SpeedWatch.h"
#include "platform/runtime/Background.h"
#include "platform/runtime/DateTime.h"
#include "platform/runtime/NameHold.h"
#include "platform/runtime/PortIndex.h"
#include "platform/runtime/Ring.h"
#include "platform/runtime/TextFiles.h"
#include "platform/toolkit/FileText.h"
#include "targets/MessageNames.h"
#include "targets/TargetColumns.h"
#include "targets/TargetOrder.h"
#include "ui/FormDesign.h"
#include "ui/PositionField.h"
#include "ui/TimingModel.h"

namespace app {

using runtime::DateTime;
using runtime::PerPort;
using runtime::PortIndex;

// A value of the profile and its place.
struct ProfileValue {
    std::string_view sSection;
    std::string sKey;
    QString sValue;
    bool operator==(const ProfileValue&) const = default;
};

class frmMain : public ui::FormDesign {
public:
    explicit frmMain(toolkit::Platform tPlatform = toolkit::Platform::Native());

    // Start-up, profile and shutdown (app/frmMain_Start, _Profile)
    void Form_Load();    // before the window is shown; once
    void Form_Unload();  // closes what is open and saves the profile
    void DisplayLost();  // the display has gone and the process is about to end: saves what would be lost
    void ProfileOpen();  // finds the profile and takes its text
    void ProfileLoad();
    void ProfileSave();

    // The manual (app/frmMain_Manual)
    void ShowManual();

    // Run control (app/frmMain_Run)
    void CommStart();
    void CommStop();
    void CommSetControls(bool bRunning);
    void Toolbar_ButtonClick(const QString& sKey);
    void chkCommEnabled_Click(PortIndex Index);
    static std::int16_t ButtonValue(bool b) { return b ? 1 : 0; }

    // Without a hand on it, as the profile says (app/frmMain_Unattended)
    void UnattendedBegin();   // after the window is shown: presses Start, tells of wrong values
    void UnattendedTick();    // once a second
    void UnattendedRecord();  // records into a folder, if one is named: each run, as soon as it has begun

    // Clocks (app/frmMain_Clocks)
    void tmrComm_Timer();
    void tmrTime_Timer();

    // Recording and playback (app/frmMain_Record, _Playback, _Files)
    void RecordStart();
    void RecordWrite(DateTime dt, std::string_view sSentence);
    void RecordFlush();   // hands what is recorded to the system; nothing while not recording
    void RecordFinish();  // waits until it is on the disk
    // sFile: chosen already (dropped onto the window); else a dialog asks for it.
    void PlaybackStart(bool bBurst, std::optional<QString> sFile = {});
    void PlaybackStep(PortIndex Index);
    void PlaybackBurst(PortIndex Index);
    bool PlaybackReadLine(PortIndex Index);
    void ClearDisplays();
    void ShowRunNote();  // what is recorded or played, and how far it is (app/frmMain_RunNote)

    // Serial input and sentence framing (nmea/frmMain_Receive, _Dispatch)
    void MSComm_OnComm(PortIndex Index);
    void SentenceDispatch(PortIndex Index);
    void CommData(PortIndex Index, std::string_view sData, bool bDecoded);
    bool CommSendPaced(PortIndex Index, const std::string& sData);  // false: cut off, the port takes no more
    static std::string NmeaChecksum(std::string_view sBody) { return nmea::NmeaChecksum(sBody); }

    // Output port (nmea/frmMain_Output)
    void MSCommOutput_OnComm();
    void OutputData(std::string_view sData, bool bHighlight);
    void RmcFromGll();

    // AIS messages (decoders/frmMain_Vdm, _Reports)
    void VdmDecode(PortIndex Index);
    static std::int32_t VdmMmsi(decoders::VdmView lData) { return decoders::VdmMmsi(lData); }
    static void VdmLatitude(decoders::VdmView lData, double& dLatitude, std::string& sLatitude) {
        decoders::VdmLatitude(lData, dLatitude, sLatitude);
    }
    static void VdmLongitude(decoders::VdmView lData, double& dLongitude, std::string& sLongitude) {
        decoders::VdmLongitude(lData, dLongitude, sLongitude);
    }
    static std::string VdmRateOfTurn(decoders::VdmView lData) { return decoders::VdmRateOfTurn(lData); }
    static std::string VdmSpeed(decoders::VdmView lData) { return decoders::VdmSpeed(lData); }
    static std::string VdmCourse(decoders::VdmView lData) { return decoders::VdmCourse(lData); }
    static std::string VdmHeading(decoders::VdmView lData) { return decoders::VdmHeading(lData); }

    // Decode logs (decoders/frmMain_DecodeLogs)
    void LogAis(std::string_view sLine);
    void LogGps(std::string_view sLine);
    void LogRx(std::string_view sLine);

    // GPS positions (decoders/frmMain_Gps)
    void GllDecode(PortIndex Index);
    void RmcDecode(PortIndex Index);

    // Receiver board (decoders/frmMain_Receiver)
    void PnmlsDecode(PortIndex Index);
    void cmdRxNasaChannel_Click();
    void cmdRxNasaInterval_Click();

    // Navigation (nav/frmMain_Position)
    static std::string LatitudeToString(double dLatitude) { return nav::LatitudeToString(dLatitude); }
    static std::string LongitudeToString(double dLongitude) { return nav::LongitudeToString(dLongitude); }
    // False, and -999 in the second, when the text does not parse; with bDisplayError a message box says so.
    bool LatitudeFromString(std::string_view sLatitude, double& dLatitude, bool bDisplayError);
    bool LongitudeFromString(std::string_view sLongitude, double& dLongitude, bool bDisplayError);
    static double ArcSin(double X) { return nav::ArcSin(X); }
    static double ArcCos(double X) { return nav::ArcCos(X); }
    static double Atan2(double X, double Y) { return nav::Atan2(X, Y); }
    // From the own position to the target; raises nav::DivisionByZero for coincident positions.
    void RangeBearingText(double dLatitude, double dLongitude, std::string& sRange, std::string& sBearing) const;

    // Target table (targets/frmMain_Targets)
    void TargetGridSetup(bool bClear);
    void TargetUpdate(DateTime dt, std::int32_t lMmsi, std::string_view sChannel, std::string_view sMessageId);
    void TargetSetPosition(std::string_view sLatitude, std::string_view sLongitude);
    void TargetSetRangeBearing(std::string_view sRange, std::string_view sBearing);
    void TargetSetMotion(std::string_view sRot, std::string_view sSog);
    void TargetCheckInterval(std::int32_t lMessageId, std::string_view sRot, std::string_view sSog);
    void TargetSetSignal(std::string_view sSignal, std::string_view sThreshold);
    // The first row of that MMSI, -1 where there is none. On a hit grid redraw stays off.
    std::int32_t TargetFindRow(std::int32_t lMmsi);

    // Target table views (targets/frmMain_TargetView, _TargetMouse)
    void TargetSort();
    void TargetRefresh();
    void SortCompare(const toolkit::Grid& grd, std::int32_t lRow1, std::int32_t lRow2, std::int16_t& iCmp);
    // Row and column at a place in the grid's coordinates, the first that holds it, borders included; -1 where none.
    static void GridGetRowCol(const toolkit::Grid& grd, float fX, float fY, std::int32_t& lRow, std::int32_t& lCol);
    void cmbTargetDetail_Click();
    void cmbTargetSort_Click();
    void chkTargetTrack_Click();
    void grdTargetData_Click(std::int32_t lRow, std::int32_t lCol);
    void grdTargetData_DblClick();
    void grdTargetData_MouseMove(float fX, float fY);
    void grdTargetData_RowActivated(std::int32_t lRow);

    // Tables' menus (targets/frmMain_TableMenus)
    void TableSave(const toolkit::Grid& grd, const QString& sFileName);  // what it shows, as comma-separated values
    void TargetMenu(QMenu& tMenu, std::int32_t lRow);                    // the target table's own entries
    void TargetTrackShip(std::string_view sMmsi);

    // Message statistics and reporting rates (targets/frmMain_Messages, _Spec)
    void MessageGridSetup();
    void MessageGridColumns();
    void MessageCount(std::int32_t lMessageId, std::int32_t lMessages = 1);
    static const std::string& MessageName(std::int32_t lMessageId) { return targets::MessageName(lMessageId); }
    void MessageGridSetRow(int iRow, std::string_view sText0, runtime::Alignment eAlign0, std::string_view sText1,
                           runtime::Alignment eAlign1);
    void SpecGridSetup();
    void SpecGridColumns();
    void SpecGridSetRow(int iRow, std::string_view sText0, runtime::Alignment eAlign0, std::string_view sText1,
                        runtime::Alignment eAlign1, std::string_view sText2, runtime::Alignment eAlign2);

    // Layout and flow diagram (ui/frmMain_Layout, _Diagram, _Screen)
    void FormLayout();
    void FitToScreen();  // the place that the profile or the design wishes for, bounded by what the screens allow
    void DesignAnew();   // in another font or style: everything in its new size
    void DiagramArrowHead(toolkit::LinePicture& pct, const ui::DiagramLine& tLine);

    // Own-position fields (ui/frmMain_PositionFields)
    void PositionFieldCaret(toolkit::MaskedBox& txt, int iDirection);
    void PositionFieldChange(toolkit::MaskedBox& txt);
    void PositionFieldClick(toolkit::MaskedBox& txt);
    void PositionFieldKeyDown(toolkit::MaskedBox& txt, int iKeyCode);
    void PositionFieldKeyPress(toolkit::MaskedBox& txt, char cTyped);
    void PositionFieldStep(toolkit::MaskedBox& txt, int iDirection);
    void PositionFieldPaste(toolkit::MaskedBox& txt, const QString& sPasted);

    // Timing planner (ui/frmMain_Timing)
    void TimingPlan();
    void TimingRedraw();  // the latest plan anew, at the rows' present places
    std::int32_t TimingRuns() const { return m_lTimingRuns; }
    const std::vector<ui::Primitive>& TimingPrimitives() const { return m_tTimingPrimitives; }
    ui::TimingRow TimingRowOf(const ui::TimingLabels& t) const;

protected:
    bool event(QEvent* pEvent) override;
    void closeEvent(QCloseEvent* pEvent) override;
    void changeEvent(QEvent* pEvent) override;
    bool eventFilter(QObject* pObject, QEvent* pEvent) override;
    void dragEnterEvent(QDragEnterEvent* pEvent) override;
    void dragMoveEvent(QDragMoveEvent* pEvent) override;
    void dropEvent(QDropEvent* pEvent) override;
    bool focusNextPrevChild(bool bNext) override;

    void ConnectEvents();
    // Opens a port by its field and its settings; raises toolkit::CommError.
    void OpenPort(toolkit::SerialPort& tPort, toolkit::PortBox& txtPort, const toolkit::TextBox& txtSettings);
    QString OpenPorts();  // those that are enabled; empty, or what failed
    void RecordFailed(const runtime::FileError& tError);
    void RecordBegin(const QString& sFile);  // what shows of it
    void RecordAwait(std::int16_t iFile);    // until it is on the disk; raises runtime::FileError
    // app/frmMain_Unattended
    void UnattendedStartFailed(const QString& sCause);
    void UnattendedStartAgain();
    // In panel 2 and, with the addition, in the log of input #1: once until it has gone well again.
    void UnattendedTell(const QString& sCause, const QString& sAddition = {});
    void UnattendedRecordFailed(std::string_view sReason);
    bool UnattendedRecordWanted() const;  // it is recorded so, or would be if it could
    QString UnattendedFolder() const;
    std::string ProgramName() const;
    void UnattendedTend();  // has the folder looked after
    void UnattendedTended(const FolderReport& t);
    bool IsNextFileDue(DateTime dt) const;
    void RecordNextFile(DateTime dt);  // begins with m_sRecordLine, a line of that time; raises runtime::FileError
    void RecordFinishFiles(bool bWait);
    // app/frmMain_Capture; nothing while not recording, or when the profile does not ask for it
    void Capture(PortIndex Index, char cKind, std::string_view sBytes);
    void CaptureOpen(const CaptureMoment& tMoment);  // if another file is due; raises runtime::FileError
    void CaptureFollow(bool bFirst);                 // the recording has a new file
    void CaptureFlush();
    void CaptureLeave();
    void CaptureFailed(const runtime::FileError& tError);
    toolkit::FileText ReadProfile() const;  // raises runtime::FileError
    // Every value to be saved, in the order of the file.
    std::vector<ProfileValue> ProfileValues();
    // Asks for a file, under the window's caption and in the folder last used in this run, tRequest's at first; nothing
    // when cancelled.
    std::optional<QString> AskFile(toolkit::FileRequest tRequest);
    std::optional<QString> AskRecording(bool bSave);  // to record into, or to play
    bool CanPlayBack() const;

    // decoders/frmMain_Gps: position sentences wait the same way (below).
    void KeepPosition(PortIndex Index, const decoders::GpsPosition& t);
    void ShowPositions();
    void LogPosition(const decoders::PositionNote& t);

    // decoders/frmMain_Reports: complete messages wait in m_tReports while m_bKeepReports holds, that is while lines at
    // hand are taken in (one reception, the due lines of a playback, a whole burst), and are shown after the last one.
    void KeepReport(decoders::VdmView lData, DateTime dt, std::string_view sChannel);
    void DropReport();
    void ShowReports();
    void ShowKept() {  // whatever waits
        ShowReports();
        ShowPositions();
    }
    void ShowReport(const decoders::AisReport& t);
    void ShowReportPosition(const decoders::AisReport& t);
    void ShowReportMotion(const decoders::AisReport& t, bool bRateOfTurn);
    void ShowReportLevels(const decoders::AisReport& t, bool bInTable);
    void LogLevels(DateTime dt, std::optional<std::string_view> sChannel, const decoders::SignalTexts& t);
    // Into the list of targets, and the selected one if there is none yet; answers the seconds since the target's
    // previous message, negative across midnight.
    std::int32_t TargetHeard(DateTime dt, std::int32_t lMmsi);
    void OpenMenuOfFocus();
    // An error of the run, in panel 2.
    // Looks like one, unless it is empty, and is told to a screen reader with bAlert.
    void ShowError(std::string_view sText, bool bAlert = true);
    void ShowWholeError(const QString& sText);  // one with letters beyond Latin-1
    // Of a line that came; told to a screen reader when the second before brought none.
    void ShowLineError(std::string_view sText);

    void PlaybackKeepLines(PortIndex Index);
    bool CommTake(PortIndex Index, std::string_view& sRest);
    void CommDropHalfLine(PortIndex Index);
    void CommCheckSpeed(PortIndex Index);  // once a second
    void CommShowState(PortIndex Index);   // what is to be said of the port beside its clock
    void CommNotReopened(PortIndex Index, const QString& sReason);
    void OutputForward(std::string_view sLine);  // sends an accepted line and logs it, marked if it left
    std::uint64_t& OutputLine(std::int64_t lText);
    void OutputDropped(std::int64_t lText);
    void OutputTellDropped(std::int64_t lAtLeast);  // how many a full output has dropped, if so many are untold
    void OutputTellLeft(std::string_view sWhy);     // how many waited in vain
    void OutputClose();
    void SendReceiverCommand(const std::string& sSentence);
    void LayOutTab(ui::Size tTabs);
    void LayOutInput(ui::Size tTabs);
    void LayOutReceiver(ui::Size tTabs);
    void LayOutDiagram(ui::Size tTabs);
    void LayOutTiming(ui::Size tTabs);
    void TimingDraw();
    std::vector<ui::Rect> ScreenAreas() const;
    void BoundLeastSize();
    QRect PlaceToKeep() const;  // for the profile: the frame's left and top, the inside's size
    const ui::PositionMask& MaskOf(const toolkit::MaskedBox& txt) const;

    // Profile
    QString m_sProfileFile;
    QString m_sProfileAtFirst;  // read while the other is not there
    bool m_bProfileReadable = true;
    toolkit::FileText m_tProfile;                // as last loaded or saved
    std::vector<ProfileValue> m_tProfileValues;  // of the controls, once all was loaded
    runtime::NameHold m_tProfileHold;
    bool m_bUnloaded = false;

    // Serial input, per port
    PerPort<nmea::LineBuffer> m_sCommBuffer;  // the line being received; the decoders read the sentence from here
    PerPort<DateTime> m_dtCommLast;           // arrival of the last complete line
    PerPort<bool> m_bCommReceived;            // a line has come since the last tick of the message clock
    PerPort<bool> m_bCommLastVdm;             // the last accepted line was !AIVDM
    PerPort<std::int32_t> m_lCommSeconds;     // seconds since the last line
    PerPort<nmea::SpeedWatch> m_tSpeedWatch;
    bool m_bSending = false;  // a receiver command is on its way

    // Output port
    std::int64_t m_lOutputDropsTold = 0;  // of the sentences that it has dropped since it was opened
    std::array<std::uint64_t, runtime::LogLines::Capacity> m_lOutputLines{};  // numbers of log lines, by text; 0: none

    // Recording and playback
    bool m_bRecording = false;
    bool m_bPlayback = false;
    bool m_bPlaybackBurst = false;
    std::int16_t m_iRecordFile = 0;  // one number serves both
    DateTime m_dtPlaybackStart;
    DateTime m_dtRecordStart;
    QString m_sRunFile;                     // path of what is recorded or played
    DateTime m_dtRecordBegan;               // the clock when a recording began
    std::optional<DateTime> m_dtRecordEnd;  // stamp of a played file's last line, where it has one
    runtime::TextFiles m_tFiles{m_tPlatform.Synchronize};
    RecordStampReader m_tStamps;
    QString m_sLastFolder;  // of the file chosen last in this run
    std::string m_sRecordLine;

    // Without a hand on it
    UnattendedKeys m_tUnattended;
    std::vector<WrongValue> m_tWrongValues;
    std::vector<QString> m_sCausesTold;
    bool m_bStartDue = false;                    // Start has failed and is tried again
    std::int32_t m_lStartSeconds = 0;            // since it was tried
    bool m_bRecordUnattended = false;            // what is recorded now
    bool m_bRecordAsked = false;                 // the dialog of a recording by hand is open
    std::int32_t m_lRecordSeconds = 0;           // of that recording
    std::int32_t m_lFolderSeconds = 0;           // since its folder was looked after
    bool m_bTendedToRecord = false;              // and whether that was asked for to begin again
    DateTime m_dtRecordFirst;                    // stamp of the first line of its file
    std::vector<std::int16_t> m_iFinishedFiles;  // not on the disk yet
    runtime::Background<FolderReport> m_tFolderWork;
    std::int16_t m_iCaptureFile = 0;
    bool m_bCaptureFailed = false;
    std::filesystem::path m_tCapturePath;
    DateTime m_dtCaptureFirst;
    std::string m_sCaptureLine;

    // Decoders
    PerPort<decoders::VdmMessage> m_tVdmMessage;
    std::string m_sVdmChannel;  // of the last decoded AIS message
    DateTime m_dtVdm;           // its arrival
    std::string m_sGllLatitude, m_sGllLongitude, m_sGllTime;
    runtime::Ring<decoders::PositionNote, runtime::LogLines::Capacity> m_tPositionNotes;  // not shown yet
    struct Fix {
        double dLatitude, dLongitude;
    };
    std::optional<Fix> m_tPositionDue;  // the newest of them, not in the boxes yet
    decoders::ReportQueue m_tReports;   // not shown yet
    bool m_bKeepReports = false;
    std::array<std::int32_t, targets::LastCountedId + 1> m_lCounts{};  // by message id, not shown yet
    bool m_bSortDue = false;                                           // levels that sort the table were dropped
    bool m_bErrorLast = false;  // an error was the last to claim panel 2, not a message
    bool m_bLineError = false;  // of a line since the last tick of the message clock
    bool m_bLineErrorTold = false;
    std::string m_sLogLine;  // the line being put together, kept for its memory

    // Own position, degrees, north and east positive; written only by the change handlers of its two boxes
    double m_dLatitude = nav::PositionUnknown;
    double m_dLongitude = nav::PositionUnknown;

    // Target table
    std::int64_t m_lMessageNumber = 0;  // sequence number of the last row added; months go beyond 32 bits
    std::int32_t m_lMessageRow = 0;     // row of that message after the last sort
    std::int32_t m_iSortKeys = 0;
    std::array<targets::SortKey, 2> m_tSortKeys{};
    float m_fLastMouseX = 0;
    float m_fLastMouseY = 0;
    bool m_bTargetGridLaidOut = false;  // TargetGridSetup has run: told by the scenario runner

    // Layout and timing
    bool m_bLayoutReady = false;                      // a layout may run: the window has been loaded
    bool m_bDesignDue = false;                        // the font or the style has changed
    QRect m_tWishedPlace, m_tGivenPlace;              // at the start: before and after it was bounded by the screen
    std::optional<ui::TimingInputs> m_tTimingInputs;  // of the latest plan
    std::vector<ui::Primitive> m_tTimingPrimitives;
    std::int32_t m_lTimingRuns = 0;
};

}  // namespace app
