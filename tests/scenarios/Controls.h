// The controls that a script may name, and what each of them is.
#pragma once

#include <QString>
#include <array>

namespace scenarios {

enum class ControlKind { Other, Check, Text, Masked, Combo };

inline constexpr std::array CheckBoxes = {"chkCommEnabled(0)", "chkCommEnabled(1)", "chkRxNasaPower",
                                          "chkTargetTrack",    "chkOutputEnabled",  "chkOutputRMC"};
inline constexpr std::array TextBoxes = {"txtCommPort(0)",     "txtCommPort(1)",    "txtCommSettings(0)",
                                         "txtCommSettings(1)", "txtOutputPort",     "txtOutputSettings",
                                         "txtRxNasaChannel",   "txtRxNasaInterval", "txtTimingRateTx",
                                         "txtTimingRateRc",    "txtTimingTimeSpan"};
inline constexpr std::array MaskedBoxes = {"txtGpsLat", "txtGpsLon"};
inline constexpr std::array ComboBoxes = {"cmbTargetDetail", "cmbTargetSort", "cmbTargetTarget"};

// Other for a control that cannot be set, and for a name that is none.
ControlKind KindOfControl(const QString& sName);

// Whether the window has a control of that name that may hold the keyboard focus.
bool IsControl(const QString& sName);

}  // namespace scenarios
