// Start-up and shutdown.
#include "app/ProfilePath.h"
#include "app/frmMain.h"

namespace app {

namespace {

constexpr char VersionMajor[] = "1";
constexpr char VersionMinor[] = "25";

}  // namespace

void frmMain::Form_Load() {
    m_sProfileFile = ProfilePath(m_tPlatform.sProgramFile).toStdString();
    ReadProfileText();
    ProfileLoad();
    if (cmbTargetSort.ListIndex() < 0) cmbTargetSort.SetListIndex(targets::SortByMmsi);
    MessageGridSetup();
    lblAboutDescription.setText(QStringLiteral("Version %1.%2\r\rTidewatch Data for NMEA 0183 Interface")
                                    .arg(QLatin1String(VersionMajor), QLatin1String(VersionMinor)));
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
