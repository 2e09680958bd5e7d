// The position sentences GLL and RMC: their fields, checked in the order in which they are reported.
#pragma once

#include <string>
#include <string_view>

namespace decoders {

// What a position sentence says. On a failure the pieces before the failing field are set.
struct GpsPosition {
    std::string_view sError;      // empty, else "Error - Latitude, " and so on
    double dLatitude = 0;         // degrees, north positive
    double dLongitude = 0;        // degrees, east positive
    std::string sUtc;             // "hh:mm:ss"
    std::string_view sLatitude;   // "4916.45,N" as received; empty until field and letter passed
    std::string_view sLongitude;  // "12311.12,W"; the same
    std::string_view sTime;       // "hhmmss"; empty until everything passed
};

// The views point into sSentence, whose first seven characters (address and comma) are not examined.
GpsPosition DecodeGll(std::string_view sSentence);
GpsPosition DecodeRmc(std::string_view sSentence);

}  // namespace decoders
