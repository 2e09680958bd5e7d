// The verdict: what is certain first.
#include "report/CompareWords.h"

#include <cmath>
#include <utility>

#include "platform/runtime/Format.h"
#include "report/Comparison.h"

namespace report {

namespace {

constexpr double Steps = 10;

std::string Tenths(double d) { return runtime::Format(d, {1, 1}); }

int SignOf(const Told& t) {
    if (!t.tInterval) return 0;
    return t.tInterval->dLow > 0 ? 1 : t.tInterval->dHigh < 0 ? -1 : 0;
}

// As seen from the one that has more.
Told Turned(const Told& t) {
    if (t.dValue >= 0) return t;
    Told tTurned{-t.dValue, std::nullopt};
    if (t.tInterval) tTurned.tInterval = Interval{-t.tInterval->dHigh, -t.tInterval->dLow};
    return tTurned;
}

std::string Range(const Told& t) {
    if (!t.tInterval) return "too few ships for an interval";
    return Tenths(t.tInterval->dLow) + " to " + Tenths(t.tInterval->dHigh);
}

// "A heard 0.3 % more (95 %: -0.2 to 0.8 %)", whether it is a difference or not.
std::string HeardText(const Told& tHeard) {
    const Told t = Turned(tHeard);
    const char* sOf = tHeard.dValue < 0 ? "B" : "A";
    return std::string(sOf) + " heard " + Tenths(t.dValue) + " % more of what either heard (" +
           (t.tInterval ? "95 %: " + Range(t) + " %" : Range(t)) + ")";
}

std::string SignalText(const Told& tSignal, const std::string& sUnit, bool bWeaker) {
    const Told t = Turned(tSignal);
    return Tenths(t.dValue) + " " + sUnit + (bWeaker ? " weaker (" : " stronger (") + Range(t) + ")";
}

Told OutwardOf(const Told& t) { return {t.dValue, t.tInterval ? std::optional(Outward(*t.tInterval)) : std::nullopt}; }

}  // namespace

std::string RingName(int iRing) {
    if (iRing == Comparison::NoPlace) return "no range";
    return std::to_string(iRing * Comparison::RingMiles) + "-" + std::to_string((iRing + 1) * Comparison::RingMiles);
}

std::string SectorName(int iSector, int iDegrees) {
    if (iSector == Comparison::NoPlace) return "no bearing";
    return runtime::Format(iSector * iDegrees, runtime::PictureThree) + "-" +
           runtime::Format((iSector + 1) * iDegrees, runtime::PictureThree);
}

std::string ChannelName(int iChannel) { return std::string(ChannelNames[static_cast<std::size_t>(iChannel)]); }

std::string TypeName(int lType) { return std::to_string(lType); }

Interval Outward(Interval t) {
    constexpr double Slip = 1e-9;  // of the arithmetic: 0.3 is 0.3
    return {std::floor(t.dLow * Steps + Slip) / Steps, std::ceil(t.dHigh * Steps - Slip) / Steps};
}

std::string Verdict(const Told& tHeardExact, const std::optional<Told>& tSignalExact, const std::string& sUnit) {
    const Told tHeard = OutwardOf(tHeardExact);
    const Told tSignal = OutwardOf(tSignalExact.value_or(Told{}));
    const int iHeard = SignOf(tHeard);
    const int iSignal = tSignalExact ? SignOf(tSignal) : 0;
    const std::string sBetter = tSignal.dValue < 0 ? "B" : "A";
    if (iHeard == 0 && iSignal == 0) {
        std::string s = "No difference that these data can show: " + HeardText(tHeard);
        if (!tSignalExact) return s + "; levels cannot be compared.";
        return s + ", and " + sBetter + " was " + SignalText(tSignal, sUnit, false) + ".";
    }
    if (iHeard == 0) {
        return sBetter + " was " + SignalText(tSignal, sUnit, false) +
               ", but no difference in what was heard that these data can show: " + HeardText(tHeard) + ".";
    }
    if (!tSignalExact) return HeardText(tHeard) + "; levels cannot be compared.";
    if (iSignal == 0) {
        return HeardText(tHeard) + "; no difference in level that these data can show: " + sBetter + " was " +
               SignalText(tSignal, sUnit, false) + ".";
    }
    return HeardText(tHeard) + (iSignal == iHeard ? ", and " : ", but ") +
           SignalText(tSignal, sUnit, iSignal != iHeard) + ".";
}

}  // namespace report
