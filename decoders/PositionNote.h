// What a position sentence leaves in its log, kept as values until the lines at hand have all been taken in.
#pragma once

#include <string>
#include <string_view>

#include "decoders/GpsSentence.h"
#include "platform/runtime/DateTime.h"

namespace decoders {

struct PositionNote {
    runtime::DateTime dt;  // arrival
    std::string sError;    // with the sentence; empty where it is a position
    std::string sUtc;
    double dLatitude = 0;
    double dLongitude = 0;

    void Keep(const GpsPosition& t, std::string_view sSentence, runtime::DateTime dtArrival) {
        dt = dtArrival;
        sError = t.sError;
        if (!sError.empty()) sError += sSentence;
        sUtc = t.sUtc;
        dLatitude = t.dLatitude;
        dLongitude = t.dLongitude;
    }
};

}  // namespace decoders
