// A scenario script as read from its file: every step's keys are known to be there and of the right type, so that
// running it never has to ask.
#pragma once

#include <QJsonObject>
#include <QString>
#include <stdexcept>
#include <string>
#include <vector>

namespace scenarios {

// One line that says which file, which step and which key is wrong.
struct ScriptError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

struct Script {
    QString sFile;
    QJsonValue tName;  // as given, repeated in the output
    std::string sClock = "2011-05-15T12:00:00";
    std::vector<QJsonObject> tSteps;
};

// Raises ScriptError.
Script ReadScript(const QString& sFile);

}  // namespace scenarios
