// Names the script that crashes or hangs, whatever state the program is in by then.
#pragma once

#include <QString>

namespace scenarios {

// Once, at the start.
void InstallWatchdog();

// What runs from now on; a step has to end within a minute.
void Watch(const QString& sScript, int iStep);

}  // namespace scenarios
