// The texts of the communication events, the same for input and output ports.
#include "nmea/CommNotice.h"

namespace nmea {

std::string CommNotice(int iEvent) {
    switch (iEvent) {
        case CommBreak:
            return "<<Break Signal Received>>";
        case CommFrame:
            return "<<Framing Error>>";
        case CommOverrun:
            return "<<Port Overrun>>";
        case CommRxOver:
            return "<<Rx Overflow>>";
        case CommRxParity:
            return "<<Parity Error>>";
        default:
            return "<<Event " + std::to_string(iEvent) + ">>";
    }
}

}  // namespace nmea
