// What arrives on an input port: characters are framed into lines, events become notices. Also the paced sending.
#include <string_view>

#include "app/frmMain.h"
#include "nmea/CommNotice.h"

namespace app {

namespace {

constexpr std::string_view LineEnds = "\r\n";
constexpr std::size_t LongestLine = 65536;  // far beyond any sentence; a port that ends no line shall not fill memory
constexpr double CharacterPause = 0.01;     // seconds after each character sent to the receiver
constexpr double SecondsOfDay = 86400;

}  // namespace

void frmMain::MSComm_OnComm(PortIndex Index) {
    const int iEvent = MSComm(Index).CommEvent();
    if (iEvent != nmea::CommReceive) {
        CommData(Index, nmea::CommNotice(iEvent), false);
        if (iEvent == nmea::CommRestored) CommDropHalfLine(Index);
        return;
    }
    const ReportBatch tBatch(*this);
    const std::string sInput = MSComm(Index).Input();
    std::string_view sRest = sInput;
    while (!sRest.empty()) {
        const std::size_t lEnd = sRest.find_first_of(LineEnds);
        CommAppend(Index, sRest.substr(0, lEnd));
        if (lEnd == std::string_view::npos) return;
        if (sRest[lEnd] == '\r') {  // a line feed is dropped wherever it stands
            m_dtCommLast(Index) = m_tPlatform.Now();
            if (m_sCommBuffer(Index).size() <= LongestLine) SentenceDispatch(Index);
            m_bCommReceived(Index) = true;
            m_sCommBuffer(Index).clear();
        }
        sRest.remove_prefix(lEnd + 1);
    }
}

// A line that grows beyond the bound is told of once. One character more than the bound is kept of it: by that it is
// known until its end, where it is thrown away.
void frmMain::CommAppend(PortIndex Index, std::string_view sPiece) {
    std::string& sLine = m_sCommBuffer(Index);
    if (sLine.size() > LongestLine) return;
    sLine.append(sPiece.substr(0, LongestLine + 1 - sLine.size()));
    if (sLine.size() > LongestLine) CommData(Index, nmea::LongLineNotice(LongestLine), false);
}

// The rest of the line was sent while the device was away; what comes now begins another one.
void frmMain::CommDropHalfLine(PortIndex Index) {
    std::string& sLine = m_sCommBuffer(Index);
    if (!sLine.empty() && sLine.size() <= LongestLine) CommData(Index, nmea::HalfLineNotice(sLine.size()), false);
    sLine.clear();
}

// The receiver board misses characters that come at full speed.
bool frmMain::CommSendPaced(PortIndex Index, const std::string& sData) {
    for (const char c : sData) {
        if (!MSComm(Index).Output({&c, 1})) return false;  // stopped in the middle, or the device has gone
        const double dStart = m_tPlatform.SecondsSinceMidnight();
        double dElapsed = 0;
        while (dElapsed < CharacterPause) {
            m_tPlatform.Yield();
            dElapsed = m_tPlatform.SecondsSinceMidnight() - dStart;
            if (dElapsed < 0) dElapsed += SecondsOfDay;  // the clock has wrapped at midnight
        }
    }
    return true;
}

}  // namespace app
