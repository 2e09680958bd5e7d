// Start-up and shutdown.
#include "app/frmMain.h"

namespace app {

void frmMain::Form_Load() {
    ProfileOpen();
    ProfileLoad();
    LayOutTargetColumns();
    FitToScreen();
    if (cmbTargetSort.ListIndex() < 0) cmbTargetSort.SetListIndex(targets::SortByMmsi);
    MessageGridSetup();
    lblAboutDescription.setText(
        QStringLiteral("Version " TIDEWATCH_VERSION "\r\rTidewatch Data for NMEA 0183 Interface"));
    lblAboutDisclaimer.setText(
        QStringLiteral("Tidewatch shows what an AIS receiver hears.\r"
                       "It is no aid to navigation: ships may be nearer, faster\r"
                       "or more in number than what is received.\r"
                       "Copyright Tidewatch developers"));
    SpecGridSetup();
    TimingPlan();
    CommStop();
    m_tProfileValues = ProfileValues();
    m_tUnattended = ReadUnattendedKeys(runtime::Profile(m_tProfile.sText.toStdU16String()), m_tWrongValues);
    m_bLayoutReady = true;
    tmrTime.start();
}

void frmMain::Form_Unload() {
    if (m_bUnloaded) return;
    m_bUnloaded = true;
    CommStop();
    ProfileSave();
    m_tProfileHold.Release();
}

// Touches no control: what one asks of a display that is gone may end the process on the spot.
void frmMain::DisplayLost() {
    if (m_bUnloaded) return;
    m_bUnloaded = true;
    m_tPlatform.ShowBusyPointer = [](bool) {};
    RecordFinish();
    ProfileSave();
    MSCommOutput.ClosePort();
}

}  // namespace app
