// The own position from GPS sentences: into the log and into the two boxes, whose change handlers take it from there,
// when the lines at hand have been taken in.
#include "app/frmMain.h"
#include "decoders/GpsSentence.h"

namespace app {

void frmMain::GllDecode(PortIndex Index) {
    m_sGllLatitude.clear();
    m_sGllLongitude.clear();
    m_sGllTime.clear();
    const decoders::GpsPosition t = decoders::DecodeGll(m_sCommBuffer(Index));
    m_sGllLatitude = t.sLatitude;
    m_sGllLongitude = t.sLongitude;
    m_sGllTime = t.sTime;
    KeepPosition(Index, t);
}

void frmMain::RmcDecode(PortIndex Index) { KeepPosition(Index, decoders::DecodeRmc(m_sCommBuffer(Index))); }

void frmMain::KeepPosition(PortIndex Index, const decoders::GpsPosition& t) {
    m_tPositionNotes.Add().Keep(t, m_sCommBuffer(Index), m_dtCommLast(Index));
    if (t.sError.empty()) m_tPositionDue = {t.dLatitude, t.dLongitude};
    if (!m_bKeepReports) ShowPositions();
}

void frmMain::ShowPositions() {
    for (; !m_tPositionNotes.Empty(); m_tPositionNotes.DropOldest()) LogPosition(m_tPositionNotes.Oldest());
    if (!m_tPositionDue) return;
    txtGpsLat.SetText(LatitudeToString(m_tPositionDue->dLatitude));
    txtGpsLon.SetText(LongitudeToString(m_tPositionDue->dLongitude));
    m_tPositionDue.reset();
}

void frmMain::LogPosition(const decoders::PositionNote& t) {
    if (!t.sError.empty()) return LogGps(t.sError);
    std::string& sLine = m_sLogLine;
    sLine = "Time=";
    runtime::AppendTime(sLine, t.dt);
    sLine += ", Utc=";
    sLine += t.sUtc;
    sLine += ", Lat=";
    sLine += LatitudeToString(t.dLatitude);
    sLine += ", Lon=";
    sLine += LongitudeToString(t.dLongitude);
    LogGps(sLine);
}

}  // namespace app
