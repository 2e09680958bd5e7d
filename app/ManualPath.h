// Where the manual is.
#pragma once

#include <QString>

namespace app {

// The manual that was installed with a program, share/doc/tidewatch/manual.html beside its bin folder; else
// packaging/manual/manual.html of the build folder in whose app/ it lies; empty when there is neither.
QString ManualPath(const QString& sProgramFile);

}  // namespace app
