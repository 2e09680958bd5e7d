// What the tables of two recordings have in common: names of rows and the sentence that sums all up.
#pragma once

#include <optional>
#include <string>

#include "report/Estimates.h"

namespace report {

// "0-5 nm", "no range"; "010-020", "no bearing"; "A"; "type 1".
std::string RingName(int iRing);
std::string SectorName(int iSector, int iDegrees);
std::string ChannelName(int iChannel);
std::string TypeName(int lType);

// One decimal, never towards more certainty: the low end down, the high end up.
Interval Outward(Interval t);

// A figure of the first recording less the second's, with its interval.
struct Told {
    double dValue = 0;
    std::optional<Interval> tInterval;
};

// "A heard 10.2 % more of what either heard (95 %: 8.1 to 12.3 %), and 2.0 dB stronger (1.8 to 2.2)". A difference
// whose interval holds 0, or that has none, is never called one. tHeard in percent; tSignal nothing where it is not
// known, sUnit its unit.
std::string Verdict(const Told& tHeard, const std::optional<Told>& tSignal, const std::string& sUnit);

}  // namespace report
