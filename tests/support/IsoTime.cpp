// Turns the parts of a record stamp, "mm/dd/yyyy hh:nn:ss", into their other order and back.
#include "tests/support/IsoTime.h"

namespace support {

std::string IsoText(runtime::DateTime dt) {
    std::string sStamp;
    runtime::AppendRecordStamp(sStamp, dt);
    return sStamp.substr(6, 4) + '-' + sStamp.substr(0, 2) + '-' + sStamp.substr(3, 2) + 'T' + sStamp.substr(11);
}

std::optional<runtime::DateTime> FromIso(std::string_view sText) {
    const std::string sIso(sText);
    if (sIso.size() != 19 || sIso[4] != '-' || sIso[7] != '-' || sIso[10] != 'T') return std::nullopt;
    return runtime::FromRecordStamp(sIso.substr(5, 2) + '/' + sIso.substr(8, 2) + '/' + sIso.substr(0, 4) + ' ' +
                                    sIso.substr(11));
}

}  // namespace support
