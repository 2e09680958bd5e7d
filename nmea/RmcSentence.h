// The RMC sentence that is made from the pieces of a GLL sentence for the output port.
#pragma once

#include <string>
#include <string_view>

#include "platform/runtime/DateTime.h"

namespace nmea {

// "$ECRMC,hhmmss,A,<latitude>,<longitude>,0.0,000.0,ddmmyy,0.0,E*hh" without line end, in place of what sSentence
// holds. sTime is "hhmmss"; sLatitude and
// sLongitude carry their comma and hemisphere letter ("4916.45,N"). The date is that of dtToday.
void MakeRmc(std::string& sSentence, std::string_view sTime, std::string_view sLatitude, std::string_view sLongitude,
             runtime::DateTime dtToday);

}  // namespace nmea
