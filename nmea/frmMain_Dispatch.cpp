// Every line's way: tests, raw log, record line, decoder, forwarding.
#include "app/frmMain.h"
#include "nmea/Sentence.h"

namespace app {

void frmMain::SentenceDispatch(PortIndex Index) {
    const std::string_view sLine = m_sCommBuffer(Index);
    switch (nmea::TestSentence(sLine)) {
        case nmea::SentenceFault::Size:
            ShowLineError("Size Error");
            CommData(Index, "<<Size Error>>", false);
            return;
        case nmea::SentenceFault::Checksum:
            ShowLineError("Checksum Error");
            CommData(Index, sLine, false);
            CommData(Index, "<<Checksum Error>>", false);
            return;
        case nmea::SentenceFault::None:
            break;
    }
    const auto pDecode = nmea::FindDecoder<frmMain>(sLine);
    CommData(Index, sLine, pDecode != nullptr);
    if (pDecode) (this->*pDecode)(Index);  // the signal sentence's reads the flag that is set below
    const bool bOutput = chkOutputEnabled.isChecked();
    if (pDecode == &frmMain::GllDecode && bOutput && chkOutputRMC.isChecked()) RmcFromGll();
    m_bCommLastVdm(Index) = pDecode == &frmMain::VdmDecode;
    if (bOutput) OutputForward(sLine);
}

void frmMain::CommData(PortIndex Index, std::string_view sData, bool bDecoded) {
    runtime::LogLines& tLines = lstCommData(Index).Lines;
    if (m_bPlaybackBurst) {
        tLines.AddView(sData, bDecoded);  // PlaybackKeepLines copies what is left of them
    } else {
        tLines.Add(sData, bDecoded);
    }
    if (bDecoded && m_bRecording) RecordWrite(m_dtCommLast(Index), sData);
}

}  // namespace app
