// What the tool-tip of each column says.
#include "targets/TargetTips.h"

#include "targets/TargetColumns.h"

namespace targets {

std::string TargetTip(int iRow, int iColumn, bool bPower) {
    if (iRow == -1) return {};
    switch (iColumn) {
        case ColMmsi:
            return "Martime Mobile Service Identifier";  // Kept on purpose: the spelling users know
        case ColChannel:
            return "Channel Id";
        case ColSignal:
            return bPower ? "Signal Level (dBm)" : "Signal Level";
        case ColThreshold:
            return bPower ? "Threshold Level (dBm), default=-107" : "Threshold Level";
        case ColSnr:
            return bPower ? "Signal to Noise Ratio (dB), bigger is better" : "Signal to Noise Ratio, bigger is better";
        case ColTime:
            return "Time (hh:mm:ss)";
        case ColMessageId:
            return "Message Id";
        case ColRange:
            return "Range (nm)";
        case ColBearing:
            return "Bearing (T)";
        case ColLatitude:
            return "Latitude";
        case ColLongitude:
            return "Longitude";
        case ColRateOfTurn:
            return "Rate of Turn (deg/min)";
        case ColSpeed:
            return "Speed Over Ground (kts)";
        case ColLast:
            return "Time Since Last Message (sec)";
        case ColSpec:
            return "Specified Message Interval (sec)";
        case ColMiss:
            return "Missing Messages";
        default:
            return {};
    }
}

}  // namespace targets
