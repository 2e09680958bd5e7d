// Raw fields to degrees and texts: signs, scales and the values that stand for "not available".
#include "decoders/VdmFields.h"

#include <cstdlib>

#include "decoders/VdmBits.h"
#include "nav/PositionText.h"
#include "platform/runtime/Format.h"

namespace decoders {

namespace {

constexpr double UnitsPerDegree = 600000.0;               // ten-thousandths of a minute
constexpr std::int32_t LatitudeUnavailable = 54600000;    // 91 degrees
constexpr std::int32_t LongitudeUnavailable = 108600000;  // 181 degrees
constexpr std::int32_t LatitudeSign = 1 << 26;
constexpr std::int32_t LongitudeSign = 1 << 27;
constexpr std::int32_t SpeedUnavailable = 1023;
constexpr std::int32_t CourseUnavailable = 3600;
constexpr std::int32_t HeadingUnavailable = 511;
constexpr std::int32_t RateOfTurnSign = 128;
constexpr std::int32_t RateOfTurnUnavailable = -128;
constexpr std::int32_t RateOfTurnHardLeft = -127;
constexpr std::int32_t RateOfTurnHardRight = 127;
constexpr double RateOfTurnScale = 4.733;  // raw = 4.733 times the root of the degrees per minute
constexpr double RateOfTurnWhole = 10.0;   // from here on without decimals

constexpr const char* NotAvailable = "n/a";
constexpr const char* NoSuchField = "Err";

// Two's complement: values from lSign on are negative.
std::int32_t Signed(std::int32_t lRaw, std::int32_t lSign) { return lRaw >= lSign ? lRaw - 2 * lSign : lRaw; }

bool HasMotion(VdmLayout eLayout) { return eLayout == VdmLayout::ClassA || eLayout == VdmLayout::ClassB; }

}  // namespace

std::int32_t VdmMmsi(VdmView lData) { return RawMmsi(lData); }

double VdmLatitudeDegrees(VdmView lData) {
    const VdmLayout eLayout = LayoutOf(lData[1]);
    if (eLayout == VdmLayout::None) return nav::PositionUnknown;
    const std::int32_t lRaw = RawLatitude(lData, eLayout);
    if (lRaw == LatitudeUnavailable) return nav::PositionUnknown;
    return Signed(lRaw, LatitudeSign) / UnitsPerDegree;
}

double VdmLongitudeDegrees(VdmView lData) {
    const VdmLayout eLayout = LayoutOf(lData[1]);
    if (eLayout == VdmLayout::None) return nav::PositionUnknown;
    const std::int32_t lRaw = RawLongitude(lData, eLayout);
    if (lRaw == LongitudeUnavailable) return nav::PositionUnknown;
    return Signed(lRaw, LongitudeSign) / UnitsPerDegree;
}

bool VdmPositionDegrees(VdmView lData, double& dLatitude, double& dLongitude) {
    constexpr std::int32_t GreatestLatitude = 90 * 600000;
    constexpr std::int32_t GreatestLongitude = 180 * 600000;
    const VdmLayout eLayout = LayoutOf(lData[1]);
    if (eLayout == VdmLayout::None) return false;
    const std::int32_t lLatitude = Signed(RawLatitude(lData, eLayout), LatitudeSign);
    const std::int32_t lLongitude = Signed(RawLongitude(lData, eLayout), LongitudeSign);
    // "Not available" lies outside as well.
    if (std::abs(lLatitude) > GreatestLatitude || std::abs(lLongitude) > GreatestLongitude) return false;
    dLatitude = lLatitude / UnitsPerDegree;
    dLongitude = lLongitude / UnitsPerDegree;
    return true;
}

void VdmLatitude(VdmView lData, double& dLatitude, std::string& sLatitude) {
    dLatitude = VdmLatitudeDegrees(lData);
    if (LayoutOf(lData[1]) == VdmLayout::None) return sLatitude.clear();
    if (dLatitude == nav::PositionUnknown) {
        sLatitude = NotAvailable;
    } else {
        sLatitude = nav::LatitudeToString(dLatitude);
    }
}

void VdmLongitude(VdmView lData, double& dLongitude, std::string& sLongitude) {
    dLongitude = VdmLongitudeDegrees(lData);
    if (LayoutOf(lData[1]) == VdmLayout::None) return sLongitude.clear();
    if (dLongitude == nav::PositionUnknown) {
        sLongitude = NotAvailable;
    } else {
        sLongitude = nav::LongitudeToString(dLongitude);
    }
}

std::string VdmRateOfTurn(VdmView lData) {
    if (LayoutOf(lData[1]) != VdmLayout::ClassA) return NoSuchField;
    const std::int32_t lRaw = Signed(RawRateOfTurn(lData), RateOfTurnSign);
    if (lRaw == RateOfTurnUnavailable) return NotAvailable;
    if (lRaw == RateOfTurnHardLeft) return "L>720";
    if (lRaw == RateOfTurnHardRight) return "R>720";
    if (lRaw == 0) return "0";
    const double dRoot = lRaw / RateOfTurnScale;
    const double dRate = dRoot * dRoot;
    // Kept on purpose: the sign is that of the raw value, so the smallest turns show as "+0.0" and "-0.0".
    std::string sText(1, lRaw > 0 ? '+' : '-');
    runtime::AppendFormat(sText, dRate, dRate >= RateOfTurnWhole ? runtime::PictureWhole : runtime::PictureTenths);
    return sText;
}

std::string VdmSpeed(VdmView lData) {
    const VdmLayout eLayout = LayoutOf(lData[1]);
    if (!HasMotion(eLayout)) return NoSuchField;
    const std::int32_t lRaw = RawSpeed(lData, eLayout);
    if (lRaw == SpeedUnavailable) return NotAvailable;
    return runtime::Format(lRaw / 10.0, runtime::PictureTenths);
}

std::string VdmCourse(VdmView lData) {
    const VdmLayout eLayout = LayoutOf(lData[1]);
    if (!HasMotion(eLayout)) return NoSuchField;
    const std::int32_t lRaw = RawCourse(lData, eLayout);
    // Kept on purpose: in lower case, so it is told from the "Err" of a type without course.
    if (lRaw > CourseUnavailable) return "err";
    if (lRaw == CourseUnavailable) return NotAvailable;
    return runtime::Format(lRaw / 10.0, runtime::PictureTenths);
}

std::string VdmHeading(VdmView lData) {
    const VdmLayout eLayout = LayoutOf(lData[1]);
    if (!HasMotion(eLayout)) return NoSuchField;
    const std::int32_t lRaw = RawHeading(lData, eLayout);
    if (lRaw == HeadingUnavailable) return NotAvailable;
    std::string sText;
    runtime::AppendInteger(sText, lRaw);  // 360 to 510 as they are
    return sText;
}

}  // namespace decoders
