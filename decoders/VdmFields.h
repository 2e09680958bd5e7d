// The fields of a decoded AIS message as the user sees them. Each reads the message type from element 1 of lData.
#pragma once

#include <cstdint>
#include <string>

#include "decoders/VdmMessage.h"

namespace decoders {

std::int32_t VdmMmsi(VdmView lData);

// Degrees, north and east positive, and the position text. Not available: -999 and "n/a". A type without a position:
// -999 and an empty text.
void VdmLatitude(VdmView lData, double& dLatitude, std::string& sLatitude);
void VdmLongitude(VdmView lData, double& dLongitude, std::string& sLongitude);

// The degrees alone.
double VdmLatitudeDegrees(VdmView lData);
double VdmLongitudeDegrees(VdmView lData);
// Both at once. False, and nothing is set, where one of them is not available or outside 90 and 180 degrees, or the
// type has no position.
bool VdmPositionDegrees(VdmView lData, double& dLatitude, double& dLongitude);

// Degrees per minute: "+10", "-4.5", "0", "L>720", "R>720", "n/a"; "Err" for types other than 1 to 3.
std::string VdmRateOfTurn(VdmView lData);
// Knots, "12.1"; "n/a"; "Err" for a type without speed.
std::string VdmSpeed(VdmView lData);
// Degrees true, "224.5"; "n/a"; "err" above 360; "Err" for a type without course.
std::string VdmCourse(VdmView lData);
// Degrees true, "223"; "n/a"; "Err" for a type without heading.
std::string VdmHeading(VdmView lData);

}  // namespace decoders
