// The speed bands of class A and class B.
#include "targets/ReportingInterval.h"

namespace targets {

namespace {

bool IsClassB(std::int32_t lMessageId) { return lMessageId == 18 || lMessageId == 19 || lMessageId == 24; }

}  // namespace

std::int32_t SpecifiedInterval(std::int32_t lMessageId, double dSpeed) {
    const bool bClassB = IsClassB(lMessageId);
    if (dSpeed > 23) return bClassB ? 5 : 2;
    if (dSpeed > 14) return bClassB ? 15 : 6;
    if (dSpeed > 2) return bClassB ? 30 : 10;
    if (dSpeed > 0) return bClassB ? 180 : 10;
    // Kept on purpose: a class B station at rest is not checked, a class A station is held to three minutes.
    if (dSpeed == 0) return bClassB ? 0 : 180;
    return 0;
}

}  // namespace targets
