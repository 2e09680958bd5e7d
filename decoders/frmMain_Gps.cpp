// The own position from GPS sentences: into the log and into the two boxes, whose change handlers take it from there.
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
    ShowPosition(Index, t);
}

void frmMain::RmcDecode(PortIndex Index) { ShowPosition(Index, decoders::DecodeRmc(m_sCommBuffer(Index))); }

void frmMain::ShowPosition(PortIndex Index, const decoders::GpsPosition& t) {
    std::string& sLine = m_sLogLine;
    if (!t.sError.empty()) {
        sLine = t.sError;
        sLine += m_sCommBuffer(Index);
        LogGps(sLine);
        return;
    }
    const std::string sLatitude = LatitudeToString(t.dLatitude);
    const std::string sLongitude = LongitudeToString(t.dLongitude);
    sLine = "Time=";
    runtime::AppendTime(sLine, m_dtCommLast(Index));
    sLine += ", Utc=";
    sLine += t.sUtc;
    sLine += ", Lat=";
    sLine += sLatitude;
    sLine += ", Lon=";
    sLine += sLongitude;
    LogGps(sLine);
    txtGpsLat.SetText(sLatitude);
    txtGpsLon.SetText(sLongitude);
}

}  // namespace app
