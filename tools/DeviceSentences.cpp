// See DeviceSentences.h.
#include "tools/DeviceSentences.h"

#include <cmath>
#include <cstdint>

#include "platform/runtime/Format.h"

namespace simulator {

namespace {

void AppendCoordinate(std::string& s, double dDegrees, int iDegreeDigits, char sPlus, char sMinus) {
    // Thousandths of a minute, so that 59.9996 becomes the next degree and not 60.000.
    const std::int64_t l = std::llround(std::abs(dDegrees) * 60000.0);
    const std::int64_t lDegrees = l / 60000;
    if (iDegreeDigits == 3) s += static_cast<char>('0' + lDegrees / 100);
    runtime::AppendTwoDigits(s, static_cast<int>(lDegrees % 100));
    runtime::AppendTwoDigits(s, static_cast<int>(l % 60000 / 1000));
    s += '.';
    s += static_cast<char>('0' + l % 1000 / 100);
    runtime::AppendTwoDigits(s, static_cast<int>(l % 100));
    s += ',';
    s += dDegrees < 0 ? sMinus : sPlus;
}

void AppendPlace(std::string& s, const Fix& t) {
    AppendCoordinate(s, t.dLatitude, 2, 'N', 'S');
    s += ',';
    AppendCoordinate(s, t.dLongitude, 3, 'E', 'W');
}

void AppendClock(std::string& s, runtime::DateTime dtUtc) {
    const std::int32_t l = runtime::SecondOfDay(dtUtc);
    runtime::AppendTwoDigits(s, l / 3600);
    runtime::AppendTwoDigits(s, l / 60 % 60);
    runtime::AppendTwoDigits(s, l % 60);
}

// dBm = -Bend x^2 + Slope x - Lowest, x = level - Middle.
constexpr double Bend = 0.008658;
constexpr double Slope = 2.08658;
constexpr double Lowest = 107.0;
constexpr double Middle = 19.0;

}  // namespace

double DbmOfLevel(double dLevel) {
    const double x = dLevel - Middle;
    return -Bend * x * x + Slope * x - Lowest;
}

double LevelOfDbm(double dDbm) {
    return Middle + (Slope - std::sqrt(Slope * Slope - 4 * Bend * (dDbm + Lowest))) / (2 * Bend);
}

void Damage(std::string& sText, Random& tChance) {
    if (sText.size() < 8) return;
    const int iLength = static_cast<int>(sText.size());
    const auto iWhere = static_cast<std::size_t>(tChance.Whole(1, iLength - 4));
    switch (tChance.Whole(0, 3)) {
        case 0:
            sText[iWhere] = sText[iWhere] == 'x' ? 'y' : 'x';
            break;
        case 1:
            sText.resize(iWhere + 1);
            break;
        case 2:
            for (std::size_t i = iWhere; i < sText.size() && i < iWhere + 12; ++i) {
                sText[i] = static_cast<char>(tChance.Whole(128, 255));
            }
            break;
        default:
            sText.back() = sText.back() == '0' ? '1' : '0';
            break;
    }
}

std::string SignalSentence(int iSignal, int iThreshold, int iInterval) {
    std::string s = "$PNMLS,";
    runtime::AppendInteger(s, iSignal);
    s += ',';
    runtime::AppendInteger(s, iThreshold);
    s += ',';
    runtime::AppendInteger(s, iInterval);
    CloseSentence(s);
    return s;
}

std::string GllSentence(const Motion& t, runtime::DateTime dtUtc) {
    std::string s = "$GPGLL,";
    AppendPlace(s, t.tFix);
    s += ',';
    AppendClock(s, dtUtc);
    s += ",A,A";  // valid, autonomous
    CloseSentence(s);
    return s;
}

std::string RmcSentence(const Motion& t, runtime::DateTime dtUtc) {
    std::string s = "$GPRMC,";
    AppendClock(s, dtUtc);
    s += ",A,";
    AppendPlace(s, t.tFix);
    s += ',';
    runtime::AppendFormat(s, t.dSpeed, runtime::PictureTenths);
    s += ',';
    runtime::AppendFormat(s, t.dCourse, runtime::PictureCourse);
    s += ',';
    s += runtime::RmcDateText(dtUtc);
    s += ",,,A";  // no magnetic variation, autonomous
    CloseSentence(s);
    return s;
}

}  // namespace simulator
