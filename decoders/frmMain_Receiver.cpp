// The receiver board: its signal sentence into logs and table, and the two commands that it takes.
#include <utility>

#include "app/frmMain.h"
#include "decoders/ReceiverCommand.h"
#include "decoders/SignalSentence.h"
#include "platform/runtime/Format.h"

namespace app {

namespace {

constexpr PortIndex ReceiverPort = 0;  // the receiver is connected there

}  // namespace

void frmMain::PnmlsDecode(PortIndex Index) {
    decoders::SignalSentence t;
    const std::string_view sError = decoders::SignalSplit(m_sCommBuffer(Index), t);
    if (!sError.empty()) {
        ShowReports();  // their lines stand before this one
        LogRx(std::string(sError) + m_sCommBuffer(Index));
        return;
    }
    std::string sSignal(t.sSignal);
    std::string sThreshold(t.sThreshold);
    if (chkRxNasaPower.isChecked()) {
        sSignal = runtime::Format(decoders::SignalToDbm(sSignal), runtime::PictureWhole);
        sThreshold = runtime::Format(decoders::SignalToDbm(sThreshold), runtime::PictureWhole);
    }
    if (m_bCommLastVdm(Index) && m_lReports > 0) {
        decoders::AisReport& tNewest = m_tReports[(m_lFirstReport + m_lReports - 1) % m_tReports.size()];
        if (!tNewest.bSignal) {  // shown together with the report, the newest of all, that it belongs to
            tNewest.bSignal = true;
            ++m_lSignals;
            tNewest.sSignal = std::move(sSignal);
            tNewest.sThreshold = std::move(sThreshold);
            tNewest.sInterval = t.sInterval;
            return;
        }
    }
    ShowReports();
    if (!m_bCommLastVdm(Index)) {
        ShowSignal(m_dtCommLast(Index), nullptr, sSignal, sThreshold, t.sInterval);
        return;
    }
    ShowSignal(m_dtVdm, &m_sVdmChannel, sSignal, sThreshold, t.sInterval);
    TargetSetSignal(sSignal, sThreshold);
}

// With the time and channel of the message that the levels belong to, or without a channel.
void frmMain::ShowSignal(DateTime dt, const std::string* pChannel, std::string_view sSignal,
                         std::string_view sThreshold, std::string_view sInterval) {
    std::string& sLine = m_sLogLine;
    sLine = "Time=";
    runtime::AppendTime(sLine, dt);
    if (pChannel) {
        sLine += ", Ch= ";  // Kept on purpose: the blank belongs to the text
        sLine += *pChannel;
    }
    sLine += ", ";
    const std::size_t lLevels = sLine.size();
    sLine += "Sig=";
    sLine += sSignal;
    sLine += ", Thr=";
    sLine += sThreshold;
    sLine += ", Int=";
    sLine += sInterval;
    LogRx(sLine);
    sLine.replace(0, lLevels, "   ");  // indented under the message that it belongs to
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
