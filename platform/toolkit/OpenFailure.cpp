// Finds out why an open failed. The system's own error is asked for once more by a plain open, because the serial
// layer reports a lock, a permission and a busy device all as the same error.
#include "platform/toolkit/OpenFailure.h"

#include <fcntl.h>
#include <grp.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <cerrno>
#include <vector>

namespace toolkit {

namespace {
constexpr int FurtherGroups = 256;  // of a process; more are not looked at

QString GroupName(gid_t iGroup) {
    const group* pGroup = ::getgrgid(iGroup);
    return pGroup ? QString::fromLocal8Bit(pGroup->gr_name) : QString::number(iGroup);
}

QString UserName() {
    const passwd* pUser = ::getpwuid(::geteuid());
    return pUser ? QString::fromLocal8Bit(pUser->pw_name) : QStringLiteral("$USER");
}

bool InGroup(gid_t iGroup) {
    std::vector<gid_t> iGroups(FurtherGroups);
    const int iCount = ::getgroups(FurtherGroups, iGroups.data());
    return iGroup == ::getegid() ||
           (iCount > 0 && std::find(iGroups.begin(), iGroups.begin() + iCount, iGroup) != iGroups.begin() + iCount);
}

// The group that would open the door. None when the user is in it already, or when it is the administrator's own,
// which nobody should be advised to join.
QString HelpfulGroup(const struct stat& tStatus) {
    if (tStatus.st_gid == 0 || InGroup(tStatus.st_gid)) return {};
    return GroupName(tStatus.st_gid);
}

QString ProcessText(qint64 lProcess) {
    QFile tName(QStringLiteral("/proc/%1/comm").arg(lProcess));
    if (!tName.open(QIODevice::ReadOnly)) return {};
    return QStringLiteral("%1 (process %2)").arg(QString::fromLocal8Bit(tName.readAll().trimmed())).arg(lProcess);
}

bool HasOpen(qint64 lProcess, const QString& sCanonical) {
    // The links are followed by hand: a deleted or foreign one must not be resolved any further.
    const QDir tDescriptors(QStringLiteral("/proc/%1/fd").arg(lProcess));
    for (const QString& sName : tDescriptors.entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot))
        if (QFile::symLinkTarget(tDescriptors.filePath(sName)) == sCanonical) return true;
    return false;
}

// Who wrote the lock file of a device that is shared by all programs that keep to the custom; 0 where there is none.
qint64 LockOwner(const QString& sCanonical) {
    QString sName = sCanonical.startsWith(QLatin1String("/dev/")) ? sCanonical.mid(5) : sCanonical;
    sName.replace(QLatin1Char('/'), QLatin1Char('_'));
    QFile tLock(QStringLiteral("/run/lock/LCK..") + sName);
    if (!tLock.open(QIODevice::ReadOnly)) return 0;
    return tLock.readLine(32).trimmed().toLongLong();
}

// The other program that has the device open, as far as this user may see it.
QString Holder(const QString& sDevice) {
    const QString sCanonical = QFileInfo(sDevice).canonicalFilePath();
    if (sCanonical.isEmpty()) return {};
    const qint64 lSelf = ::getpid();
    const qint64 lOwner = LockOwner(sCanonical);
    if (lOwner == lSelf) return QStringLiteral("this program");
    if (lOwner > 0)
        if (const QString sText = ProcessText(lOwner); !sText.isEmpty()) return sText;
    for (const QString& sProcess : QDir(QStringLiteral("/proc")).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        bool bNumber = false;
        const qint64 lProcess = sProcess.toLongLong(&bNumber);
        if (bNumber && lProcess != lSelf && HasOpen(lProcess, sCanonical)) return ProcessText(lProcess);
    }
    return {};
}
}  // namespace

QString NoSuchDevice(const QString& sDevice) { return QStringLiteral("no such device: ") + sDevice; }

QString NotASerialDevice(const QString& sDevice) { return QStringLiteral("not a serial device: ") + sDevice; }

QString PermissionDenied(const QString& sDevice, const QString& sGroup, const QString& sUser) {
    const QString sText = QStringLiteral("permission denied: ") + sDevice;
    if (sGroup.isEmpty()) return sText;
    return sText +
           QStringLiteral(" belongs to group %1; run \"sudo usermod -aG %1 %2\" and log in again").arg(sGroup, sUser);
}

QString DeviceBusy(const QString& sDevice, const QString& sHolder) {
    return QStringLiteral("busy: %1 is in use by %2")
        .arg(sDevice, sHolder.isEmpty() ? QStringLiteral("another program") : sHolder);
}

QString OpenFailure(const QString& sDevice, const QString& sSystemText) {
    const QByteArray sPath = QFile::encodeName(sDevice);
    struct stat tStatus {};
    if (sDevice.isEmpty() || (::stat(sPath.constData(), &tStatus) != 0 && errno != EACCES))
        return NoSuchDevice(sDevice);
    if (tStatus.st_mode != 0 && !S_ISCHR(tStatus.st_mode)) return NotASerialDevice(sDevice);

    const int iDescriptor = ::open(sPath.constData(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    const int iError = iDescriptor < 0 ? errno : 0;
    const bool bTerminal = iDescriptor >= 0 && ::isatty(iDescriptor) == 1;
    if (iDescriptor >= 0) ::close(iDescriptor);

    switch (iError) {
        case 0:
            break;
        case EACCES:
        case EPERM:
            return PermissionDenied(sDevice, HelpfulGroup(tStatus), UserName());
        case EBUSY:
            return DeviceBusy(sDevice, Holder(sDevice));
        case ENOENT:
        case ENODEV:
        case ENXIO:
            return NoSuchDevice(sDevice);
        default:
            return QStringLiteral("%1: %2").arg(sSystemText, sDevice);
    }
    if (!bTerminal) return NotASerialDevice(sDevice);
    // A plain open passes, so it was the lock file of another program, or the device refused its settings.
    const QString sHolder = Holder(sDevice);
    if (!sHolder.isEmpty() || sSystemText.contains(QLatin1String("lock"))) return DeviceBusy(sDevice, sHolder);
    return QStringLiteral("%1: %2").arg(sSystemText, sDevice);
}

}  // namespace toolkit
