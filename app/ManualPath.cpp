// The manual's path.
#include "app/ManualPath.h"

#include <QDir>
#include <QFileInfo>

namespace app {

QString ManualPath(const QString& sProgramFile) {
    const QDir tFolder = QFileInfo(sProgramFile).absoluteDir();
    for (const char* sPlace : {"../share/doc/tidewatch/manual.html", "../packaging/manual/manual.html"}) {
        QString sManual = QDir::cleanPath(tFolder.filePath(QLatin1String(sPlace)));
        if (QFileInfo::exists(sManual)) return sManual;
    }
    return {};
}

}  // namespace app
