// AIS sentences: assembled per port; complete messages are counted and kept until they can be shown.
#include "app/frmMain.h"
#include "decoders/VdmAssembly.h"

namespace app {

void frmMain::VdmDecode(PortIndex Index) {
    decoders::VdmSentence t;
    const std::string_view sError = decoders::VdmTake(m_sCommBuffer(Index), m_tVdmMessage(Index), t);
    if (!sError.empty()) {
        ShowReports();  // their lines stand before this one
        m_sLogLine.assign(sError).append(m_sCommBuffer(Index));
        LogAis(m_sLogLine);
        return;
    }
    if (!t.CompletesMessage()) return;
    KeepReport(m_tVdmMessage(Index).lData, m_dtCommLast(Index), t.sChannel);
    if (!m_bKeepReports) ShowReports();
}

}  // namespace app
