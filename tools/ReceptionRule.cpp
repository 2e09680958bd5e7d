// See ReceptionRule.h.
#include "tools/ReceptionRule.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "platform/runtime/Convert.h"

namespace simulator {

namespace {

// Numbers with this character between them; a number for each place of the list.
std::vector<double> ReadNumbers(const std::string& sOption, std::string_view sText, std::string_view sBetween) {
    std::vector<double> d;
    for (std::size_t iAt = 0;;) {
        const std::size_t iEnd = d.size() < sBetween.size() ? sText.find(sBetween[d.size()], iAt) : sText.size();
        if (iEnd == std::string_view::npos) throw ArgumentError("too few numbers behind " + sOption);
        try {
            d.push_back(runtime::ToReal(sText.substr(iAt, iEnd - iAt)));
        } catch (const runtime::ConversionError&) {
            throw ArgumentError("no numbers behind " + sOption);
        }
        if (d.size() > sBetween.size()) return d;
        iAt = iEnd + 1;
    }
}

void CheckPercent(const std::string& sOption, double d) {
    if (!(d >= 0 && d <= 100)) throw ArgumentError("out of range: " + sOption);
}

void ReadHeard(std::string_view sText, ReceptionRule& t) {
    while (!sText.empty()) {
        const std::size_t iEnd = std::min(sText.find(','), sText.size());
        const auto d = ReadNumbers("--heard", sText.substr(0, iEnd), ":");
        CheckPercent("--heard", d[1]);
        if (!t.tHeard.empty() && d[0] < t.tHeard.back().dMiles) throw ArgumentError("ranges must rise behind --heard");
        t.tHeard.push_back({d[0], d[1]});
        sText.remove_prefix(std::min(iEnd + 1, sText.size()));
    }
}

void ReadShadow(std::string_view sText, ReceptionRule& t) {
    const auto d = ReadNumbers("--shadow", sText, "-::");
    CheckPercent("--shadow", d[3]);
    t.dShadowFrom = d[0];
    t.dShadowTo = d[1];
    t.dShadowMiles = d[2];
    t.dShadowPercent = d[3];
}

double ByRange(const std::vector<ReceptionRule::Point>& t, double dMiles) {
    if (t.empty()) return 100;
    std::size_t i = 0;
    while (i < t.size() && t[i].dMiles <= dMiles) ++i;  // behind all points that are nearer
    if (i == 0) return t.front().dPercent;
    if (i == t.size()) return t.back().dPercent;
    const auto& tNear = t[i - 1];
    return tNear.dPercent + (t[i].dPercent - tNear.dPercent) * (dMiles - tNear.dMiles) / (t[i].dMiles - tNear.dMiles);
}

double Wrapped(double dDegrees) { return dDegrees - 360 * std::floor(dDegrees / 360); }

}  // namespace

double ReceptionRule::Share(double dMiles, double dBearing, char sChannel) const {
    const bool bShadow = dMiles >= dShadowMiles && Wrapped(dBearing - dShadowFrom) < Wrapped(dShadowTo - dShadowFrom);
    const double dOfShadow = bShadow ? dShadowPercent : 100;
    const double dOfChannel = sChannel == 'A' ? dPercentOfA : dPercentOfB;
    return ByRange(tHeard, dMiles) / 100 * (dOfShadow / 100) * (dOfChannel / 100) * (dPercent / 100);
}

const std::set<std::string_view> ReceptionOptions = {"--heard", "--shadow", "--heard-a", "--heard-b",
                                                     "--share", "--level",  "--chance"};

ReceptionRule ReadReceptionRule(const Arguments& tArguments) {
    ReceptionRule t;
    ReadHeard(tArguments.Text("--heard", ""), t);
    if (tArguments.Has("--shadow")) ReadShadow(tArguments.Text("--shadow", ""), t);
    t.dPercentOfA = tArguments.Number("--heard-a", 100, 0, 100);
    t.dPercentOfB = tArguments.Number("--heard-b", 100, 0, 100);
    t.dPercent = tArguments.Number("--share", 100, 0, 100);
    t.dOffset = tArguments.Number("--level", 0, -20, 20);
    return t;
}

const char* const ReceptionUsage =
    "What the receiver hears, shares that multiply; levels stay within what the board can tell:\n"
    "  --heard NM:PERCENT,NM:PERCENT,...  by range, straight lines between; two points at one range make a step\n"
    "  --shadow FROM-TO:NM:PERCENT        between two bearings from a distance on, such as 40-80:8:10\n"
    "  --heard-a PERCENT  --heard-b PERCENT   of a channel\n"
    "  --share PERCENT    of everything\n"
    "  --level DB         every message so much stronger, -20 to 20\n"
    "  --chance N         the seed of what this receiver loses: the same --seed is the same traffic for another\n";

}  // namespace simulator
