// A decoded AIS message as plain values, kept until the lines at hand have all been taken in. Only then are its texts
// made, and only if its row and lines can still be seen by then: a burst of a million reports leaves 256 rows and 101
// log lines, so most reports never become text.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>

#include "decoders/VdmMessage.h"
#include "platform/runtime/DateTime.h"

namespace decoders {

struct AisReport {
    static constexpr std::size_t ValuesKept = 24;  // up to payload character 23, the last that any field reads

    std::array<std::int32_t, ValuesKept> lData{};
    runtime::DateTime dt;  // arrival of the completing sentence
    std::int32_t lMmsi = 0;
    std::int32_t lLast = 0;  // seconds since this MMSI's previous message; 0: none to show
    std::string sChannel;
    double dOwnLatitude = 0;  // the own position when it was heard
    double dOwnLongitude = 0;
    bool bSignal = false;  // the receiver's signal sentence followed
    std::string sSignal, sThreshold, sInterval;

    void KeepValues(VdmView lValues) { std::copy_n(lValues.begin(), ValuesKept, lData.begin()); }
};

}  // namespace decoders
