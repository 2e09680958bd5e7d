// Where each field of an AIS message stands in the 6-bit values. The tables of terms in VdmBits.cpp are made to be held
// beside ITU-R M.1371.
//
// A message is a row of bits, numbered from 0. Bits 0 to 5 are the message id, 6 and 7 say how often it was repeated, 8
// to 37 are the sender's MMSI; what follows depends on the id. Fields pay no heed to the payload's characters:
// character k (from 1) carries bits 6(k-1) to 6k-1, its highest bit first, so most fields begin and end inside a
// character. A field is therefore a sum of terms, one per character it touches: the bits of the character that belong
// to it (a mask), times what the lowest of them counts. The bits of the last character that lie behind the field's
// end are shifted out by a factor below 1.
//
// For example the speed of a class A report (id 1, 2, 3), bits 50 to 59 in tenths of knots, in the payload
// 13P=BS@3iqo?vspK?N28iFvt0000:
//
//     character   bits       value             belongs to the speed      mask  factor   term
//      9  "i"     48 to 53   49 = 11 0001      its last four, 50 to 53     15      64     64
//     10  "q"     54 to 59   57 = 111001       all                        all       1     57
//                                                                                       121: 12.1 knots
//
// and the MMSI, bits 8 to 37, of which character 2 holds the top four and character 7 the last two:
//
//     "3"  3 & 15 = 3    x 2^26   201326592
//     "P" 32             x 2^20    33554432
//     "=" 13             x 2^14      212992
//     "B" 18             x 2^8         4608
//     "S" 35             x 4            140
//     "@" 16 & 48 = 16   / 16             1
//                                 235098765
//
// Signed fields are two's complement: a longitude of 195032956 is above 2^27, so 2^28 is taken off (VdmFields), and
// -73402500 ten-thousandths of a minute are 122 degrees 20.25 minutes west.
//
// Two fields reach one step beyond their bits. Both are kept on purpose, so that figures stay comparable with
// older logs and recordings:
//
// - Longitude of ids 1 to 4. Its last bit stands second to last in its character, behind it comes the sign of the
//   latitude. The mask is 63, not 62, so for a southern latitude one half is added, and rounding half to even turns an
//   odd raw longitude into the next even one: 0.0001 minutes, 18 cm at the most.
// - Speed of ids 18 and 19. The mask of its first character is 15, not 3, which takes in two reserved bits. They are
//   zero by the standard; a station that sets them shows 102.4, 204.8 or 307.2 knots too much, and 1023 with one of
//   them set is no longer "not available".
#pragma once

#include <cstdint>

#include "decoders/VdmMessage.h"

namespace decoders {

// The raw fields. Each answers for the message types named; the value is the sum of its terms in double precision,
// rounded half to even.
std::int32_t RawMmsi(VdmView lData);  // bits 8 to 37, every type

// Message id groups with one bit layout each.
enum class VdmLayout { ClassA, Base, ClassB, None };  // 1 to 3; 4; 18 and 19; others
VdmLayout LayoutOf(std::int32_t lMessageId);

std::int32_t RawRateOfTurn(VdmView lData);                    // ClassA only
std::int32_t RawSpeed(VdmView lData, VdmLayout eLayout);      // ClassA, ClassB; 0 otherwise
std::int32_t RawLongitude(VdmView lData, VdmLayout eLayout);  // ClassA, Base, ClassB; 0 otherwise
std::int32_t RawLatitude(VdmView lData, VdmLayout eLayout);   // ClassA, Base, ClassB; 0 otherwise
std::int32_t RawCourse(VdmView lData, VdmLayout eLayout);     // ClassA, ClassB; 0 otherwise
std::int32_t RawHeading(VdmView lData, VdmLayout eLayout);    // ClassA, ClassB; 0 otherwise

}  // namespace decoders
