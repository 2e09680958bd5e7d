// Why a serial device could not be opened, in words that tell the user what to do about it.
#pragma once

#include <QString>

namespace toolkit {

// Looks at the device after a failed open. sSystemText, what the system said, is used where nothing better is known.
// Also looks at the lock files and at the descriptors of other programs, so it takes a moment.
QString OpenFailure(const QString& sDevice, const QString& sSystemText);

// The text of each cause, apart from the looking. sGroup may be empty (unknown, or of no help).
QString NoSuchDevice(const QString& sDevice);
QString NotASerialDevice(const QString& sDevice);
QString PermissionDenied(const QString& sDevice, const QString& sGroup, const QString& sUser);
// sHolder: "gpsd (process 4711)", empty when not known.
QString DeviceBusy(const QString& sDevice, const QString& sHolder);

// sLock: the lock file that a process has left behind.
QString LockLeft(const QString& sDevice, const QString& sLock, qint64 lProcess);

}  // namespace toolkit
