// The titles, and the table that keeps them ready.
#include "targets/MessageNames.h"

#include <array>

namespace targets {

namespace {

constexpr std::int32_t TableSize = 64;  // the ids that six bits can say

std::string MakeName(std::int32_t lMessageId) {
    switch (lMessageId) {
        case 1:
            return "1=Position Scheduled";
        case 2:
            return "2=Position Assigned";
        case 3:
            return "3=Position Response";
        case 4:
            return "4=Base Station Report";
        case 5:
            return "5=Ship Static and Voyage";
        case 11:
            return "11=UTC/Date Response";
        case 15:
            return "15=Interrogation";
        case 18:
            return "18=Class B Standard Position";
        case 19:
            return "19=Class B Extended Position";
        case 20:
            return "20=Data Link Management";
        case 21:
            return "21=Aids-to-Navigation";
        case 24:
            return "24=Class B Static Data";
        default:
            return std::to_string(lMessageId);
    }
}

std::array<std::string, TableSize> MakeTable() {
    std::array<std::string, TableSize> sNames;
    for (std::int32_t lId = 0; lId < TableSize; ++lId) sNames[static_cast<std::size_t>(lId)] = MakeName(lId);
    return sNames;
}

}  // namespace

const std::string& MessageName(std::int32_t lMessageId) {
    static const std::array<std::string, TableSize> sNames = MakeTable();
    if (lMessageId >= 0 && lMessageId < TableSize) return sNames[static_cast<std::size_t>(lMessageId)];
    static std::string sOther;  // ids that only characters outside the alphabet make
    sOther = MakeName(lMessageId);
    return sOther;
}

}  // namespace targets
