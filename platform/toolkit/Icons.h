// The program's icons, drawn by ourselves from a few shapes so that they are sharp at every scale.
#pragma once

#include <QIcon>

namespace toolkit {

QIcon ProgramIcon();
QIcon StartIcon();
QIcon StopIcon();
QIcon RecordIcon();
QIcon PlaybackIcon();
QIcon BurstIcon();
QIcon ErrorIcon();

}  // namespace toolkit
