// Puts the RMC sentence together, field by field.
#include "nmea/RmcSentence.h"

#include "nmea/NmeaChecksum.h"

namespace nmea {

void MakeRmc(std::string& sSentence, std::string_view sTime, std::string_view sLatitude, std::string_view sLongitude,
             runtime::DateTime dtToday) {
    sSentence = "$ECRMC,";  // EC: the talker is an electronic chart system
    sSentence += sTime;
    sSentence += ",A,";
    sSentence += sLatitude;  // field, comma and letter are two fields of the RMC
    sSentence += ',';
    sSentence += sLongitude;
    sSentence += ',';
    // Kept on purpose: a GLL tells neither speed nor course nor variation, so all three are sent as zero. The time is
    // the GPS's and the date the computer's, so near midnight the two may disagree.
    sSentence += "0.0,";
    sSentence += "000.0,";
    sSentence += runtime::RmcDateText(dtToday);
    sSentence += ",0.0,E";
    const std::string sChecksum = NmeaChecksum(sSentence);
    sSentence += '*';
    sSentence += sChecksum;
}

}  // namespace nmea
