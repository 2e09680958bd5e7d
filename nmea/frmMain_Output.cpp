// The output port: its log, its events, and the RMC sentence made from GLL.
#include "app/frmMain.h"
#include "nmea/CommNotice.h"
#include "nmea/RmcSentence.h"

namespace app {

void frmMain::MSCommOutput_OnComm() { OutputData(nmea::CommNotice(MSCommOutput.CommEvent()), false); }

void frmMain::OutputData(std::string_view sData, bool bHighlight) { lstOutputData.Lines.Add(sData, bHighlight); }

void frmMain::RmcFromGll() {
    if (m_sGllLatitude.empty() || m_sGllLongitude.empty() || m_sGllTime.empty()) return;
    const std::string sSentence = nmea::MakeRmc(m_sGllTime, m_sGllLatitude, m_sGllLongitude, m_tPlatform.Now());
    MSCommOutput.Output(sSentence + "\r\n");
    OutputData(sSentence, true);
}

}  // namespace app
