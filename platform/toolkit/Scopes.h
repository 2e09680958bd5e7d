// What is switched for the length of an operation and always switched back.
#pragma once

#include <functional>
#include <utility>

#include "platform/toolkit/Grid.h"

namespace toolkit {

// Grid redraw off; on again at the end of the scope, whatever it was before.
class RedrawOff {
public:
    explicit RedrawOff(Grid& grd) : m_grd(grd) { m_grd.SetRedraw(false); }
    ~RedrawOff() { m_grd.SetRedraw(true); }
    RedrawOff(const RedrawOff&) = delete;
    RedrawOff& operator=(const RedrawOff&) = delete;

private:
    Grid& m_grd;
};

// The busy pointer while the scope lasts.
class BusyPointer {
public:
    explicit BusyPointer(std::function<void(bool)> tShowBusy) : m_tShowBusy(std::move(tShowBusy)) { m_tShowBusy(true); }
    ~BusyPointer() { m_tShowBusy(false); }
    BusyPointer(const BusyPointer&) = delete;
    BusyPointer& operator=(const BusyPointer&) = delete;

private:
    std::function<void(bool)> m_tShowBusy;
};

}  // namespace toolkit
