// The output port: its log, its events, and the RMC sentence made from GLL.
#include "app/frmMain.h"
#include "nmea/CommNotice.h"
#include "nmea/RmcSentence.h"
#include "platform/runtime/CommEvents.h"

namespace app {

namespace {

// Frequent enough that a notice is in sight while whole screens of lines go by unsent.
constexpr std::int64_t DropsPerNotice = 25;

}  // namespace

void frmMain::MSCommOutput_OnComm() {
    const int iEvent = MSCommOutput.CommEvent();
    OutputData(nmea::CommNotice(iEvent), false);
    if (iEvent == runtime::CommLost) OutputTellLeft("lost");
}

void frmMain::OutputForward(std::string_view sLine) {
    m_sLogLine.assign(sLine).append("\r\n");
    const bool bSent = MSCommOutput.Output(m_sLogLine);
    OutputData(sLine, bSent);
    if (!bSent) OutputTellDropped(DropsPerNotice);
}

void frmMain::OutputTellDropped(std::int64_t lAtLeast) {
    const std::int64_t lDropped = MSCommOutput.TextsDropped();
    if (lDropped - m_lOutputDropsTold < lAtLeast) return;
    m_lOutputDropsTold = lDropped;
    OutputData(nmea::OutputNotice("full", lDropped), false);
}

void frmMain::OutputTellLeft(std::string_view sWhy) {
    const std::size_t iLeft = MSCommOutput.TextsWaiting();
    if (iLeft > 0) OutputData(nmea::OutputNotice(sWhy, static_cast<std::int64_t>(iLeft)), false);
}

void frmMain::OutputClose() {
    OutputTellDropped(1);
    m_lOutputDropsTold = 0;  // the port counts anew from its next open
    MSCommOutput.ClosePort();
    OutputTellLeft("closed");
}

void frmMain::OutputData(std::string_view sData, bool bHighlight) { lstOutputData.Lines.Add(sData, bHighlight); }

void frmMain::RmcFromGll() {
    if (m_sGllLatitude.empty() || m_sGllLongitude.empty() || m_sGllTime.empty()) return;
    nmea::MakeRmc(m_sLogLine, m_sGllTime, m_sGllLatitude, m_sGllLongitude, m_tPlatform.Now());
    const std::size_t iSentence = m_sLogLine.size();
    MSCommOutput.Output(m_sLogLine.append("\r\n"));
    OutputData(std::string_view(m_sLogLine).substr(0, iSentence), true);
}

}  // namespace app
