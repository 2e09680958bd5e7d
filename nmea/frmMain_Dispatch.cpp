// Every line's way: tests, raw log, record line, decoder, forwarding.
#include "app/frmMain.h"
#include "nmea/Sentence.h"

namespace app {

void frmMain::SentenceDispatch(PortIndex Index) {
    const ReportBatch tBatch(*this);
    const std::string& sLine = m_sCommBuffer(Index);
    switch (nmea::TestSentence(sLine)) {
        case nmea::SentenceFault::Size:
            ShowError("Size Error");
            CommData(Index, "<<Size Error>>", false);
            return;
        case nmea::SentenceFault::Checksum:
            ShowError("Checksum Error");
            CommData(Index, sLine, false);
            CommData(Index, "<<Checksum Error>>", false);
            return;
        case nmea::SentenceFault::None:
            break;
    }
    const nmea::SentenceKind eKind = nmea::KindOf(sLine);
    CommData(Index, sLine, eKind != nmea::SentenceKind::Other);
    switch (eKind) {
        case nmea::SentenceKind::Pnmls:
            PnmlsDecode(Index);
            break;  // reads the flag that is cleared below
        case nmea::SentenceKind::Aivdm:
            VdmDecode(Index);
            break;
        case nmea::SentenceKind::Gll:
            GllDecode(Index);
            if (chkOutputEnabled.isChecked() && chkOutputRMC.isChecked()) RmcFromGll();
            break;
        case nmea::SentenceKind::Rmc:
            RmcDecode(Index);
            break;
        case nmea::SentenceKind::Other:
            break;
    }
    m_bCommLastVdm(Index) = eKind == nmea::SentenceKind::Aivdm;
    if (chkOutputEnabled.isChecked()) OutputForward(sLine);
}

void frmMain::CommData(PortIndex Index, std::string_view sData, bool bDecoded) {
    lstCommData(Index).Lines.Add(sData, bDecoded);
    if (bDecoded && m_bRecording) RecordWrite(m_dtCommLast(Index), sData);
}

}  // namespace app
