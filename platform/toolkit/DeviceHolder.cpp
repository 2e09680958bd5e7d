// Looks at lock files first, because they can be read whoever the other program belongs to; then at the descriptors of
// all processes, once for all devices.
#include "platform/toolkit/DeviceHolder.h"

#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <cerrno>
#include <csignal>

namespace toolkit {

namespace {
QString ProcessText(qint64 lProcess) {
    QFile tName(QStringLiteral("/proc/%1/comm").arg(lProcess));
    if (!tName.open(QIODevice::ReadOnly)) return {};
    return QStringLiteral("%1 (process %2)").arg(QString::fromLocal8Bit(tName.readAll().trimmed())).arg(lProcess);
}

// What a process has open. The links are followed by hand: a deleted or foreign one must not be resolved any further.
QStringList OpenFiles(const QString& sProcess) {
    const QDir tDescriptors(QStringLiteral("/proc/%1/fd").arg(sProcess));
    QStringList sFiles;
    for (const QString& sName : tDescriptors.entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot))
        sFiles << QFile::symLinkTarget(tDescriptors.filePath(sName));
    return sFiles;
}

// The lock file of a device that is shared by all programs that keep to the custom.
QString LockFile(const QString& sCanonical) {
    QString sName = sCanonical.startsWith(QLatin1String("/dev/")) ? sCanonical.mid(5) : sCanonical;
    sName.replace(QLatin1Char('/'), QLatin1Char('_'));
    return QStringLiteral("/run/lock/LCK..") + sName;
}

// Who wrote it; 0 where there is none.
qint64 LockOwner(const QString& sCanonical) {
    QFile tLock(LockFile(sCanonical));
    if (!tLock.open(QIODevice::ReadOnly)) return 0;
    return tLock.readLine(32).trimmed().toLongLong();
}

QString LockHolder(const QString& sCanonical) {
    const qint64 lOwner = LockOwner(sCanonical);
    if (lOwner == ::getpid()) return QStringLiteral("this program");
    return lOwner > 0 ? ProcessText(lOwner) : QString();  // no text: its owner has ended without removing it
}
}  // namespace

std::map<QString, QString> DeviceHolders(const QStringList& sDevices) {
    std::map<QString, QString> sHolders;
    std::map<QString, QStringList> sOpenQuestions;  // names by canonical path
    for (const QString& sDevice : sDevices) {
        const QString sCanonical = QFileInfo(sDevice).canonicalFilePath();
        if (sCanonical.isEmpty()) continue;
        if (const QString sHolder = LockHolder(sCanonical); !sHolder.isEmpty()) {
            sHolders[sDevice] = sHolder;
        } else {
            sOpenQuestions[sCanonical] << sDevice;
        }
    }
    for (const QString& sProcess : QDir(QStringLiteral("/proc")).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        if (sOpenQuestions.empty()) break;
        bool bNumber = false;
        const qint64 lProcess = sProcess.toLongLong(&bNumber);
        if (!bNumber || lProcess == ::getpid()) continue;
        for (const QString& sFile : OpenFiles(sProcess)) {
            const auto it = sOpenQuestions.find(sFile);
            if (it == sOpenQuestions.end()) continue;
            for (const QString& sDevice : it->second) sHolders[sDevice] = ProcessText(lProcess);
            sOpenQuestions.erase(it);
        }
    }
    return sHolders;
}

LeftLock FindLeftLock(const QString& sDevice) {
    const QString sCanonical = QFileInfo(sDevice).canonicalFilePath();
    const qint64 lOwner = LockOwner(sCanonical);
    // Asked of the system, because it may hide other users' processes from its list.
    const bool bEnded = lOwner > 0 && ::kill(static_cast<pid_t>(lOwner), 0) != 0 && errno == ESRCH;
    return bEnded ? LeftLock{LockFile(sCanonical), lOwner} : LeftLock{};
}

QString DeviceHolder(const QString& sDevice) {
    const auto sHolders = DeviceHolders({sDevice});
    return sHolders.empty() ? QString() : sHolders.begin()->second;
}

}  // namespace toolkit
