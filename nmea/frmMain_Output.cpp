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
    if (bSent) OutputLine(MSCommOutput.TextsTaken()) = lstOutputData.Lines.Added();
    OutputTellDropped(DropsPerNotice);
}

// Which line of the log tells of a text that the port has taken; as many as the log has lines.
std::uint64_t& frmMain::OutputLine(std::int64_t lText) {
    return m_lOutputLines[static_cast<std::size_t>(lText % runtime::LogLines::Capacity)];
}

// A line that was shown as sent and is not.
void frmMain::OutputDropped(std::int64_t lText) {
    if (MSCommOutput.TextsTaken() - lText >= runtime::LogLines::Capacity) return;  // another one's place by now
    lstOutputData.Lines.Unmark(OutputLine(lText));
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
    const bool bSent = MSCommOutput.Output(m_sLogLine.append("\r\n"));
    if (bSent) OutputLine(MSCommOutput.TextsTaken()) = 0;  // marked in every case
    OutputData(std::string_view(m_sLogLine).substr(0, iSentence), true);
}

}  // namespace app
