// The manual, shown by whatever the desktop shows such files with.
#include "app/ManualPath.h"
#include "app/frmMain.h"

namespace app {

void frmMain::ShowManual() {
    const QString sManual = ManualPath(m_tPlatform.sProgramFile);
    if (sManual.isEmpty()) {
        ShowError("Manual - not found where the program is installed");
    } else if (!m_tPlatform.OpenDocument(sManual)) {
        ShowWholeError(QStringLiteral("Manual - no program opens ") + sManual);
    }
}

}  // namespace app
