// Which program has a serial device open, as far as it can be told without opening the device: from the lock files that
// programs leave by custom, and from the descriptors that the system shows to this user.
#pragma once

#include <QString>
#include <QStringList>
#include <map>

namespace toolkit {

// "gpsd (process 4711)", "this program" where this one has left the lock file; empty where nobody is known. Takes a
// moment: looks at all processes.
QString DeviceHolder(const QString& sDevice);
// The same for several devices in one go, by the names given; those without a known holder are left out.
std::map<QString, QString> DeviceHolders(const QStringList& sDevices);

// A lock file whose program has ended without removing it. The next program removes one that it may; another user's it
// may not.
struct LeftLock {
    QString sFile;  // empty: there is none
    qint64 lProcess = 0;
};
LeftLock FindLeftLock(const QString& sDevice);

}  // namespace toolkit
