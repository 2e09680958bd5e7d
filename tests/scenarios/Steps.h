// What each step of a script does to the stage.
#pragma once

#include <QJsonObject>

#include "tests/scenarios/Stage.h"

namespace scenarios {

// tStep has been checked by ReadScript.
void RunStep(Stage& tStage, const QJsonObject& tStep);

}  // namespace scenarios
