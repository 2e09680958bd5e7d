// Finds out why an open failed. The system's own error is asked for once more by a plain open, because the serial
// layer reports a lock, a permission and a busy device all as the same error.
#include "platform/toolkit/OpenFailure.h"

#include <fcntl.h>
#include <grp.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <algorithm>
#include <cerrno>
#include <vector>

#include "platform/toolkit/DeviceHolder.h"

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

QString LockLeft(const QString& sDevice, const QString& sLock, qint64 lProcess) {
    return QStringLiteral("locked: %1 is free, but process %2 has ended without removing its lock; run \"sudo rm %3\"")
        .arg(sDevice)
        .arg(lProcess)
        .arg(sLock);
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
            return DeviceBusy(sDevice, DeviceHolder(sDevice));
        case ENOENT:
        case ENODEV:
        case ENXIO:
            return NoSuchDevice(sDevice);
        default:
            return QStringLiteral("%1: %2").arg(sSystemText, sDevice);
    }
    if (!bTerminal) return NotASerialDevice(sDevice);
    // A plain open passes, so it was the lock file of another program, or the device refused its settings.
    const QString sHolder = DeviceHolder(sDevice);
    if (sHolder.isEmpty()) {
        const LeftLock tLock = FindLeftLock(sDevice);
        if (!tLock.sFile.isEmpty()) return LockLeft(sDevice, tLock.sFile, tLock.lProcess);
    }
    if (!sHolder.isEmpty() || sSystemText.contains(QLatin1String("lock"))) return DeviceBusy(sDevice, sHolder);
    return QStringLiteral("%1: %2").arg(sSystemText, sDevice);
}

}  // namespace toolkit
