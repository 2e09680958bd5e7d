// AIS sentences: assembled per port; complete messages are counted and kept until they can be shown.
#include "app/frmMain.h"
#include "decoders/VdmAssembly.h"

namespace app {

void frmMain::VdmDecode(PortIndex Index) {
    const decoders::VdmTaken t = decoders::VdmTake(m_sCommBuffer(Index), m_tVdmMessage(Index));
    if (!t.sError.empty()) {
        ShowReports();  // their lines stand before this one
        m_sLogLine.assign(t.sError).append(m_sCommBuffer(Index));
        LogAis(m_sLogLine);
        return;
    }
    if (!t.bComplete) return;
    KeepReport(m_tVdmMessage(Index).lData, m_dtCommLast(Index), t.sChannel);
    m_sVdmChannel = t.sChannel;
    m_dtVdm = m_dtCommLast(Index);
    if (!m_bKeepReports) ShowReports();
}

}  // namespace app
