// Where the settings profile lives.
#pragma once

#include <QString>

namespace app {

// Beside the program, named after it with the extension ".Ini", when that folder can be written to; else the same name
// in the user's configuration folder, which is made if need be.
QString ProfilePath(const QString& sProgramFile);

}  // namespace app
