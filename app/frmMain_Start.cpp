// Start-up and shutdown.
#include "app/ProfilePath.h"
#include "app/frmMain.h"

namespace app {

void frmMain::Form_Load() {
    m_sProfileFile = ProfilePath(m_tPlatform.sProgramFile).toStdString();
    ReadProfileText();
    ProfileLoad();
    LayOutTargetColumns();
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
    m_bLayoutReady = true;
    tmrTime.start();
}

void frmMain::Form_Unload() {
    if (m_bUnloaded) return;
    m_bUnloaded = true;
    CommStop();
    ProfileSave();
}

}  // namespace app
