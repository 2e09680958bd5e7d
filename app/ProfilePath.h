// Where the settings profile lives.
#pragma once

#include <QString>

namespace app {

struct ProfilePlace {
    QString sFile;     // where it is kept
    QString sAtFirst;  // what is read while there is no such file; empty where nothing else comes into question
};

// Beside the program, named after it with the extension ".Ini", when that folder can be written to and is
// none of the system's (below /usr); else the same name
// in the user's configuration folder, which is made if need be, and at first the one beside the program.
ProfilePlace ProfilePath(const QString& sProgramFile);

}  // namespace app
