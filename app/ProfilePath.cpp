// The profile's path.
#include "app/ProfilePath.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace app {

namespace {

// Where the system's packages keep programs. Root could write there, but settings are no part of an installation.
bool IsOfSystem(const QString& sFolder) {
    const QString sReal = QFileInfo(sFolder).canonicalFilePath();
    return (sReal.isEmpty() ? sFolder : sReal).startsWith(QLatin1String("/usr/"));
}

}  // namespace

ProfilePlace ProfilePath(const QString& sProgramFile) {
    const QFileInfo tProgram(sProgramFile);
    const QString sName = tProgram.completeBaseName() + QLatin1String(".Ini");
    const QString sFolder = tProgram.absolutePath();
    const QString sBeside = sFolder + QLatin1Char('/') + sName;
    if (!IsOfSystem(sFolder) && QFileInfo(sFolder).isWritable()) return {sBeside, {}};
    const QString sConfig =
        QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + QLatin1String("/tidewatch");
    QDir().mkpath(sConfig);
    return {sConfig + QLatin1Char('/') + sName, sBeside};
}

}  // namespace app
