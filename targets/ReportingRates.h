// The reporting intervals by ship state, ITU-R M.1371 tables 1 (class A) and 2 (class B), in the words of the Spec tab.
//
// An AIS station sends its position by itself, the more often the more there is to tell: a ship at anchor every three
// minutes, a fast ferry in a turn every two seconds. Class A is the equipment that large ships must carry, class B the
// lighter one of yachts and small craft, which sends less often. Name, call sign, type of ship, destination and so on
// change rarely and come every six minutes. Each station uses the two AIS channels in turn, and a receiver that listens
// to one of them hears every other report.
//
// Knowing a target's speed one knows how often it should be heard. The target table makes use of that, in the columns
// Last, Spec and Miss. A class A ship at 16.0 knots owes a report every 6 seconds (row 5 below). If its last report
// came 25 seconds after the one before, then Last is 25, Spec is 6 and Miss is 25 / 6 = 4.17, rounded down: 4 were
// missed. After 8 seconds nothing would show: stations vary their sending times a little, so two seconds are forgiven.
//
// The check (ReportingInterval) sees the speed alone. It cannot know a change of course, so rows 4, 6 and 8 are there
// for the reader only, and it draws the lines a little differently at low speed: a class B station at up to 2 knots is
// held to 180 seconds, where the row "Ship 0-14 knots" tells the usual 30.
#pragma once

#include <array>
#include <string_view>

namespace targets {

// Row 0 is the header; rows 2, 9 and 12 are blank separators.
extern const std::array<std::array<std::string_view, 3>, 14> ReportingRates;

}  // namespace targets
