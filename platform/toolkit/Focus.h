// Which control holds the keyboard focus: the window's own answer, which also holds while the window is not active.
#pragma once

#include <QWidget>

namespace toolkit {

inline bool HasFocus(const QWidget& tControl) { return tControl.window()->focusWidget() == &tControl; }

}  // namespace toolkit
