// Where the manual is.
#pragma once

#include <QString>

namespace app {

// The manual that was installed with a program, share/doc/tidewatch/manual.md beside its bin folder; else
// docs/manual.md of the source folder in whose build/<preset>/app it lies; empty when there is neither.
QString ManualPath(const QString& sProgramFile);

}  // namespace app
