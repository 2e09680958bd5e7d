// The whole visible state of the window as JSON.
#pragma once

#include <QJsonObject>

#include "tests/scenarios/Stage.h"

namespace scenarios {

QJsonObject DumpState(Stage& tStage);

// Lists, grids and combo boxes, as their views show them; the window has been synchronised.
void DumpViews(QJsonObject& tState, ScenarioWindow& t);

}  // namespace scenarios
