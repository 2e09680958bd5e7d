// A window to look at: active, with room for everything, and pictures of it as it stands on the screen.
#pragma once

#include "tests/window/Bench.h"
#include "tests/window/Pixels.h"

namespace support {

struct Look {
    ShownWindow t;
    Look() {
        t.tmrTime.stop();  // the clock stands, so that pictures can be compared
        t.tmrTime_Timer();
        t.activateWindow();
        t.resize(1240, 700);
        t.SSTab.Bar().setFocus();
        Settle();
    }
    void Show(ui::Tab eTab) {
        t.SSTab.SetTab(eTab);
        Settle();
    }
    void Settle() {
        t.Synchronize();
        for (int i = 0; i < 4; ++i) QCoreApplication::processEvents();
    }
    // A place of the window as it stands on the screen, whatever lies over it.
    QImage Seen(const QRect& tPlace) { return PictureOf(t).copy(tPlace); }
    QImage Seen(const QWidget& tWidget) { return Seen(PlaceIn(t, tWidget)); }
};

}  // namespace support
