// What arrives on an input port: characters are framed into lines, events become notices. Also the paced sending.
#include <QScopedValueRollback>
#include <string_view>

#include "app/frmMain.h"
#include "nmea/CommNotice.h"
#include "platform/runtime/CommEvents.h"

namespace app {

namespace {

constexpr double CharacterPause = 0.01;  // seconds after each character sent to the receiver
constexpr double SecondsOfDay = 86400;

}  // namespace

void frmMain::MSComm_OnComm(PortIndex Index) {
    const int iEvent = MSComm(Index).CommEvent();
    if (iEvent != runtime::CommReceive) {
        CommData(Index, nmea::CommNotice(iEvent), false);
        Capture(Index, CaptureEvent, std::to_string(iEvent));
        if (iEvent == runtime::CommRestored) CommDropHalfLine(Index);
        if (iEvent == runtime::CommRestored || iEvent == runtime::CommLost) CommShowState(Index);
        return;
    }
    const std::string_view sCame = MSComm(Index).Input();
    std::string_view sRest = sCame;
    if (!sRest.empty()) m_tSpeedWatch(Index).Received();
    {
        const QScopedValueRollback tKeep(m_bKeepReports, true);
        while (CommTake(Index, sRest)) {
            m_dtCommLast(Index) = m_tPlatform.Now();
            if (!m_sCommBuffer(Index).Overlong()) SentenceDispatch(Index);
            m_bCommReceived(Index) = true;
            m_sCommBuffer(Index).clear();
        }
    }
    Capture(Index, CaptureReceived, sCame);  // behind the lines: the first of them may have begun a new file
    ShowKept();
}

// True when the line is complete. One that grows beyond the bound is told of once, and thrown away at its end.
bool frmMain::CommTake(PortIndex Index, std::string_view& sRest) {
    nmea::LineBuffer& tLine = m_sCommBuffer(Index);
    const bool bTold = tLine.Overlong();
    const bool bComplete = tLine.Take(sRest);
    if (tLine.Overlong() && !bTold) CommData(Index, nmea::LongLineNotice(nmea::LineBuffer::Longest), false);
    return bComplete;
}

void frmMain::CommCheckSpeed(PortIndex Index) {
    if (m_tSpeedWatch(Index).Tick(lstCommData(Index).Lines)) CommData(Index, nmea::SpeedNotice, false);
    CommShowState(Index);
}

// In colour and tip of the port's clock, whose text is given.
void frmMain::CommShowState(PortIndex Index) {
    const int iPanel = ui::PanelSilence0 + Index;
    QString sNote;
    if (MSComm(Index).Away()) {
        const QString sRefusal = MSComm(Index).Refusal();
        sNote = sRefusal.isEmpty() ? QStringLiteral("The device has gone: it is opened again as soon as it is back.")
                                   : QStringLiteral("The device is back and cannot be opened: ") + sRefusal;
        StatusBar.SetPanelError(iPanel, false);
    } else {
        if (m_tSpeedWatch(Index).Doubts()) sNote = QStringLiteral("Bytes arrive but no sentence: is the speed right?");
        StatusBar.ClearPanelError(iPanel);
    }
    StatusBar.SetPanelNote(iPanel, sNote);
}

void frmMain::CommNotReopened(PortIndex Index, const QString& sReason) {
    CommData(Index, nmea::NotOpenedNotice(toolkit::ToLatin1(sReason)), false);
    CommShowState(Index);
}

// The rest of the line was sent while the device was away; what comes now begins another one.
void frmMain::CommDropHalfLine(PortIndex Index) {
    nmea::LineBuffer& tLine = m_sCommBuffer(Index);
    if (!tLine.empty() && !tLine.Overlong()) CommData(Index, nmea::HalfLineNotice(tLine.size()), false);
    tLine.clear();
}

// The receiver board misses characters that come at full speed.
bool frmMain::CommSendPaced(PortIndex Index, const std::string& sData) {
    for (const char c : sData) {
        if (!MSComm(Index).Output({&c, 1})) return false;  // stopped in the middle, or the device has gone
        Capture(Index, CaptureSent, {&c, 1});
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
