// What has to be done before a program whose display has gone is ended. The library that speaks with the display ends
// the process by itself: no event comes, no window is closed and nothing returns to the event loop.
#pragma once

#include <functional>

namespace toolkit {

class DisplayEnd {
public:
    // From now on, until this object goes, tSave runs once when the process is about to end for its display; to be made
    // after the QApplication, one at a time. tSave may show nothing and wait for no event.
    explicit DisplayEnd(std::function<void()> tSave);
    ~DisplayEnd();
    DisplayEnd(const DisplayEnd&) = delete;
    DisplayEnd& operator=(const DisplayEnd&) = delete;
};

}  // namespace toolkit
