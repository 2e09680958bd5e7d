// Looking up a control by its name.
#include "tests/scenarios/Controls.h"

#include <algorithm>

namespace scenarios {

namespace {

constexpr std::array OtherControls = {
    "cmdRxNasaChannel", "cmdRxNasaInterval", "cmdTimingApply", "lstCommData(0)", "lstCommData(1)", "lstRxData",
    "lstAisData",       "lstGpsData",        "lstOutputData",  "grdTargetData",  "grdMessageData", "grdSpecData",
    "Toolbar",          "StatusBar",         "SSTab",          "pctDiagram",     "pctTiming"};

template <std::size_t N>
bool Holds(const std::array<const char*, N>& sNames, const QString& sName) {
    return std::ranges::any_of(sNames, [&](const char* s) { return sName == QLatin1String(s); });
}

}  // namespace

ControlKind KindOfControl(const QString& sName) {
    if (Holds(CheckBoxes, sName)) return ControlKind::Check;
    if (Holds(TextBoxes, sName)) return ControlKind::Text;
    if (Holds(MaskedBoxes, sName)) return ControlKind::Masked;
    if (Holds(ComboBoxes, sName)) return ControlKind::Combo;
    return ControlKind::Other;
}

bool IsControl(const QString& sName) {
    return KindOfControl(sName) != ControlKind::Other || Holds(OtherControls, sName);
}

}  // namespace scenarios
