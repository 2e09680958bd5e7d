// What a simulated receiver hears of what is sent: a share that is known by range, bearing and channel, at a known
// level. The shares multiply: what --missing leaves, by range, in a shadow, on the channel, and of this receiver
// altogether.
#pragma once

#include <set>
#include <string_view>
#include <vector>

#include "tools/Arguments.h"

namespace simulator {

struct ReceptionRule {
    struct Point {
        double dMiles;
        double dPercent;
    };
    std::vector<Point> tHeard;  // by rising range, straight lines between; empty: everything
    // Clockwise from the first bearing to before the second, at this distance and beyond, this share is heard.
    double dShadowFrom = 0;
    double dShadowTo = 0;
    double dShadowMiles = 0;
    double dShadowPercent = 100;
    double dPercentOfA = 100;
    double dPercentOfB = 100;
    double dPercent = 100;
    double dOffset = 0;  // dB, of the level of every message

    // Whether the share depends on range or bearing.
    bool AsksForPlace() const { return !tHeard.empty() || dShadowPercent < 100; }
    // The share heard, 0 to 1, of what is sent from there: nautical miles and degrees from us.
    double Share(double dMiles, double dBearing, char sChannel) const;
};

// The names of the options that make a rule, and the rule. Raises ArgumentError when a value cannot be read.
extern const std::set<std::string_view> ReceptionOptions;
ReceptionRule ReadReceptionRule(const Arguments& t);
// What they mean, for usage texts.
extern const char* const ReceptionUsage;

}  // namespace simulator
