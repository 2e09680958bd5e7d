// The receiver board: its signal sentence into logs and table, and the two commands that it takes.
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
    std::string& sLine = m_sLogLine;
    const std::string_view sError = decoders::SignalSplit(m_sCommBuffer(Index), t);
    if (!sError.empty()) {
        sLine = sError;
        sLine += m_sCommBuffer(Index);
        LogRx(sLine);
        return;
    }
    std::string sSignal(t.sSignal);
    std::string sThreshold(t.sThreshold);
    if (chkRxNasaPower.isChecked()) {
        sSignal = runtime::Format(decoders::SignalToDbm(sSignal), runtime::PictureWhole);
        sThreshold = runtime::Format(decoders::SignalToDbm(sThreshold), runtime::PictureWhole);
    }
    const bool bAfterVdm = m_bCommLastVdm(Index);
    sLine = "Time=";
    runtime::AppendTime(sLine, bAfterVdm ? m_dtVdm : m_dtCommLast(Index));
    if (bAfterVdm) {
        sLine += ", Ch= ";  // Kept on purpose: the blank belongs to the text
        sLine += m_sVdmChannel;
    }
    sLine += ", ";
    const std::size_t lLevels = sLine.size();
    sLine += "Sig=";
    sLine += sSignal;
    sLine += ", Thr=";
    sLine += sThreshold;
    sLine += ", Int=";
    sLine += t.sInterval;
    LogRx(sLine);
    sLine.replace(0, lLevels, "   ");  // indented under the message that it belongs to
    LogAis(sLine);
    if (bAfterVdm) TargetSetSignal(sSignal, sThreshold);
}

void frmMain::cmdRxNasaChannel_Click() { SendReceiverCommand(decoders::ChannelCommand(txtRxNasaChannel.Text())); }

void frmMain::cmdRxNasaInterval_Click() {
    const auto iInterval = decoders::IntervalCode(txtRxNasaInterval.Text());
    if (!iInterval) {
        StatusBar.SetPanelText(ui::PanelSummary, "Receiver - Interval is not a number from 0 to 255");
        return;
    }
    SendReceiverCommand(decoders::IntervalCommand(*iInterval));
}

void frmMain::SendReceiverCommand(const std::string& sSentence) {
    if (!MSComm(ReceiverPort).PortOpen()) {
        StatusBar.SetPanelText(ui::PanelSummary, "Receiver - Input #1 is not open");
        return;
    }
    if (m_bSending) {  // pressed again while the window is alive between two characters
        StatusBar.SetPanelText(ui::PanelSummary, "Receiver - The command before is still being sent");
        return;
    }
    m_bSending = true;
    CommSendPaced(ReceiverPort, sSentence);
    m_bSending = false;
}

}  // namespace app
