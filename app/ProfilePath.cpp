// The profile's path.
#include "app/ProfilePath.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace app {

ProfilePlace ProfilePath(const QString& sProgramFile) {
    const QFileInfo tProgram(sProgramFile);
    const QString sName = tProgram.completeBaseName() + QLatin1String(".Ini");
    const QString sFolder = tProgram.absolutePath();
    const QString sBeside = sFolder + QLatin1Char('/') + sName;
    if (QFileInfo(sFolder).isWritable()) return {sBeside, {}};
    const QString sConfig =
        QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + QLatin1String("/tidewatch");
    QDir().mkpath(sConfig);
    return {sConfig + QLatin1Char('/') + sName, sBeside};
}

}  // namespace app
