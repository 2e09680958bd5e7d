// A window that runs and records.
#pragma once

#include <QDir>
#include <QFileInfo>

#include "tests/support/Bytes.h"
#include "tests/support/TestWindow.h"

namespace support {

inline constexpr const char* RecordedReport = "!AIVDM,1,1,,A,15M67F@uQqG?w<hK?Mu8iFv00000,0*7B";

// Both inputs are open; what is decoded goes into a file of the world's folder, or into any that begins with "/".
struct Recording {
    explicit Recording(
        const QString& sName = QStringLiteral("record.txt"), runtime::DiskSync::Function tDisk = [](int) { return 0; })
        : tWorld(std::move(tDisk)), sFile(sName.startsWith(QLatin1Char('/')) ? sName : tWorld.Path(sName)), t(tWorld) {
        QDir().mkpath(QFileInfo(sFile).path());
        t.LoadAndShow();
        t.StartBoth();
        tWorld.tFileAnswers = {sFile};
        t.Press("Record");
    }
    QByteArray Content() const { return Bytes(tWorld.ReadFile(sFile)); }

    struct DiskWorld : World {
        explicit DiskWorld(runtime::DiskSync::Function tDisk) { tSynchronize = std::move(tDisk); }
    };
    DiskWorld tWorld;
    QString sFile;
    TestWindow t;
};

}  // namespace support
