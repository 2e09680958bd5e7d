// AIS sentences: split, assembled per port; complete messages are counted, registered and kept to be shown.
#include "app/frmMain.h"
#include "decoders/VdmSentence.h"

namespace app {

void frmMain::VdmDecode(PortIndex Index) {
    const ReportBatch tBatch(*this);
    const std::string& sSentence = m_sCommBuffer(Index);
    decoders::VdmSentence t;
    std::string_view sError = decoders::VdmSplit(sSentence, t);
    decoders::VdmMessage& tMessage = m_tVdmMessage(Index);
    const std::int32_t lHeld = t.lSentence == 1 ? 0 : tMessage.lLength;
    const auto lNew = static_cast<std::int64_t>(t.sPayload.size());
    if (sError.empty() && lHeld + lNew > decoders::VdmCapacity) sError = "Error, ";
    if (!sError.empty()) {
        ShowReports();  // their lines stand before this one
        LogAis(std::string(sError) + sSentence);
        return;
    }
    decoders::VdmUnarmor(t.sPayload, tMessage.lData, lHeld);
    tMessage.lLength = lHeld + static_cast<std::int32_t>(lNew);
    if (t.lSentences != t.lSentence) return;
    KeepReport(tMessage.lData, m_dtCommLast(Index), t.sChannel);
    m_sVdmChannel = t.sChannel;
    m_dtVdm = m_dtCommLast(Index);
}

}  // namespace app
