// The toolbar's buttons in one line.
#pragma once

#include <QAction>
#include <string>

#include "tests/support/TestWindow.h"

namespace support {

// "Start+ Stop+! ...": + for enabled, ! for pressed.
inline std::string Buttons(const TestWindow& t) {
    std::string sState;
    for (const char* sKey : {"Start", "Stop", "Record", "Playback", "Playback Burst"}) {
        if (!sState.empty()) sState += ' ';
        sState += sKey;
        if (t.Toolbar.Action(QLatin1String(sKey)).isEnabled()) sState += '+';
        if (t.Toolbar.Action(QLatin1String(sKey)).isChecked()) sState += '!';
    }
    return sState;
}

inline constexpr const char* Stopped = "Start+ Stop! Record Playback+ Playback Burst+";

}  // namespace support
