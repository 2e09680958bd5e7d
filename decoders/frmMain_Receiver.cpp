// The receiver board: its signal sentence into logs and table, and the two commands that it takes.
#include "app/frmMain.h"
#include "decoders/ReceiverCommand.h"
#include "decoders/SignalSentence.h"

namespace app {

namespace {

constexpr PortIndex ReceiverPort = 0;  // the receiver is connected there

}  // namespace

void frmMain::PnmlsDecode(PortIndex Index) {
    const std::string_view sSentence = m_sCommBuffer(Index);
    decoders::SignalSentence t;
    const std::string_view sError = decoders::SignalSplit(sSentence, t);
    if (!sError.empty()) {
        ShowReports();  // their lines stand before this one
        m_sLogLine.assign(sError).append(sSentence);
        LogRx(m_sLogLine);
        return;
    }
    const bool bDbm = chkRxNasaPower.isChecked();
    // Shown together with the report, the newest of all, that the levels belong to.
    if (m_bCommLastVdm(Index) && m_tReports.AttachSignal(sSentence, bDbm)) {
        if (!m_bPlaybackBurst) m_tReports.KeepTexts();
        return;
    }
    ShowReports();
    const decoders::SignalTexts tTexts = decoders::ShownSignal(t, bDbm);
    if (m_bCommLastVdm(Index)) {
        LogLevels(m_dtVdm, m_sVdmChannel, tTexts);
        TargetSetSignal(tTexts.sSignal, tTexts.sThreshold);
    } else {
        LogLevels(m_dtCommLast(Index), std::nullopt, tTexts);
    }
}

// sChannel is that of the message that the levels belong to, nothing where they belong to none.
void frmMain::LogLevels(DateTime dt, std::optional<std::string_view> sChannel, const decoders::SignalTexts& t) {
    std::string& sLine = m_sLogLine;
    sLine = "Time=";
    runtime::AppendTime(sLine, dt);
    if (sChannel) {
        sLine += ", Ch= ";  // Kept on purpose: the blank belongs to the text
        sLine += *sChannel;
    }
    sLine += ", ";
    const std::size_t iLevels = sLine.size();
    sLine += "Sig=";
    sLine += t.sSignal;
    sLine += ", Thr=";
    sLine += t.sThreshold;
    sLine += ", Int=";
    sLine += t.sInterval;
    LogRx(sLine);
    sLine.replace(0, iLevels, "   ");  // indented under the message that it belongs to
    LogAis(sLine);
}

void frmMain::cmdRxNasaChannel_Click() { SendReceiverCommand(decoders::ChannelCommand(txtRxNasaChannel.Text())); }

void frmMain::cmdRxNasaInterval_Click() {
    const auto iInterval = decoders::IntervalCode(txtRxNasaInterval.Text());
    if (!iInterval) {
        ShowError("Receiver - Interval is not a number from 0 to 255");
        return;
    }
    SendReceiverCommand(decoders::IntervalCommand(*iInterval));
}

void frmMain::SendReceiverCommand(const std::string& sSentence) {
    if (!MSComm(ReceiverPort).PortOpen()) {
        ShowError("Receiver - Input #1 is not open");
        return;
    }
    if (m_bSending) {  // pressed again while the window is alive between two characters
        ShowError("Receiver - The command before is still being sent");
        return;
    }
    if (MSComm(ReceiverPort).Away()) {
        ShowError("Receiver - The device of input #1 is away, nothing was sent");
        return;
    }
    m_bSending = true;
    const bool bSent = CommSendPaced(ReceiverPort, sSentence);
    m_bSending = false;
    if (bSent || !MSComm(ReceiverPort).PortOpen()) return;  // who presses Stop knows
    ShowError(MSComm(ReceiverPort).Away() ? "Receiver - The command was cut off, the device of input #1 has gone"
                                          : "Receiver - The command was cut off, input #1 takes no more");
}

}  // namespace app
