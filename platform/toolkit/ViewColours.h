// Which of a palette's colours a list or table is drawn in: the active ones whenever its window is active. Qt's views
// take a view for active only while it has the keyboard, and some styles' inactive text looks as if it were disabled.
#pragma once

#include <QPalette>
#include <QWidget>

namespace toolkit {

inline QPalette::ColorGroup ColourGroup(const QWidget& tView) {
    if (!tView.isEnabled()) return QPalette::Disabled;
    return tView.isActiveWindow() ? QPalette::Active : QPalette::Inactive;
}

}  // namespace toolkit
