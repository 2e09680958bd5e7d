// A window's caption as the user reads it. In titles "[*]" is Qt's place for the mark of a changed document; it stands
// for itself where it is doubled.
#pragma once

#include <QString>
#include <QWidget>

namespace toolkit {

inline void SetCaption(QWidget& tWindow, QString sCaption) {
    tWindow.setWindowTitle(sCaption.replace(QLatin1String("[*]"), QLatin1String("[*][*]")));
}

inline QString Caption(const QWidget& tWindow) {
    return tWindow.windowTitle().replace(QLatin1String("[*][*]"), QLatin1String("[*]"));
}

}  // namespace toolkit
