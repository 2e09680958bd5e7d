// The mask of an own-position field as rules on text and selection: stepping over separators, stepping the value by
// the place that is selected, and which characters may be typed where.
#include "ui/PositionField.h"

#include <algorithm>

#include "nav/PositionText.h"

namespace ui {

const PositionMask LatitudeMask{10, {3, 6, 9}, {'N', 'S'}, 90.0, true};
const PositionMask LongitudeMask{11, {4, 7, 10}, {'E', 'W'}, 180.0, false};

namespace {
constexpr int KeyLeft = 37;
constexpr int KeyRight = 39;

// Degrees per step by selection start; places that are missing at the end, separators and the letter have none.
constexpr std::array<double, 9> LatitudeSteps{10.0, 1.0, 0.0, 10.0 / 60, 1.0 / 60, 0.0, 0.1 / 60, 0.01 / 60, 0.0};
constexpr std::array<double, 10> LongitudeSteps{100.0,    10.0, 1.0,      0.0,       10.0 / 60,
                                                1.0 / 60, 0.0,  0.1 / 60, 0.01 / 60, 0.0};

template <std::size_t N>
double StepAt(const std::array<double, N>& dSteps, int iStart) {
    const auto i = static_cast<std::size_t>(iStart);
    return i < N ? dSteps[i] : 0.0;
}

int Length(const PositionFieldState& t) { return static_cast<int>(t.sText.size()); }

bool AtLetter(const PositionFieldState& t, const PositionMask& tMask) { return t.iStart + 1 == tMask.iMaxLength; }

std::optional<double> Parse(const std::string& sText, const PositionMask& tMask) {
    return tMask.bLatitude ? nav::ParseLatitude(sText) : nav::ParseLongitude(sText);
}

char UpperCase(char cTyped) { return cTyped >= 'a' && cTyped <= 'z' ? static_cast<char>(cTyped - 'a' + 'A') : cTyped; }
}  // namespace

void PositionFieldCaret(PositionFieldState& t, int iDirection, const PositionMask& tMask) {
    const int iPosition = t.iStart + 1;
    const auto& iSeparators = tMask.iSeparators;
    if (std::find(iSeparators.begin(), iSeparators.end(), iPosition) != iSeparators.end())
        t.iStart += iDirection;
    else if (iPosition == tMask.iMaxLength + 1)
        t.iStart = tMask.iMaxLength - 1;
    // A text shorter than the mask ends before its places do, and nothing stands there to be selected.
    t.iStart = std::clamp(t.iStart, 0, Length(t));
    t.iLength = std::min(1, Length(t) - t.iStart);
}

void PositionFieldMove(PositionFieldState& t, int iKeyCode, const PositionMask& tMask) {
    if (iKeyCode == KeyRight) {
        if (t.iStart < Length(t) - 1) ++t.iStart;
        PositionFieldCaret(t, +1, tMask);
    } else if (iKeyCode == KeyLeft) {
        if (t.iStart > 0) --t.iStart;
        PositionFieldCaret(t, -1, tMask);
    }
}

std::optional<std::string> PositionFieldStep(const PositionFieldState& t, int iDirection, const PositionMask& tMask) {
    if (t.iLength != 1) return std::nullopt;
    const std::optional<double> dParsed = Parse(t.sText, tMask);
    if (!dParsed) return std::nullopt;

    const double dValue = AtLetter(t, tMask) ? -*dParsed : *dParsed;
    const double dStep = tMask.bLatitude ? StepAt(LatitudeSteps, t.iStart) : StepAt(LongitudeSteps, t.iStart);
    const double dSign = dValue >= 0 ? 1.0 : -1.0;  // up raises the magnitude in both hemispheres, and at 0
    const double dNew = std::clamp(dValue + dStep * iDirection * dSign, -tMask.dLimit, tMask.dLimit);
    return tMask.bLatitude ? nav::LatitudeToString(dNew) : nav::LongitudeToString(dNew);
}

std::optional<char> PositionFieldFilter(const PositionFieldState& t, char cTyped, const PositionMask& tMask) {
    if (AtLetter(t, tMask)) {
        const char cLetter = UpperCase(cTyped);
        if (cLetter == tMask.cLetters[0] || cLetter == tMask.cLetters[1]) return cLetter;
        return std::nullopt;
    }
    if (cTyped >= '0' && cTyped <= '9') return cTyped;
    return std::nullopt;
}

bool PositionFieldType(PositionFieldState& t, char cAccepted, const PositionMask& tMask) {
    const int iStart = std::clamp(t.iStart, 0, Length(t));
    const int iReplaced = std::clamp(t.iLength, 0, Length(t) - iStart);
    if (Length(t) - iReplaced + 1 > tMask.iMaxLength) return false;

    t.sText.replace(static_cast<std::size_t>(iStart), static_cast<std::size_t>(iReplaced), 1, cAccepted);
    t.iStart = iStart + 1;
    t.iLength = 0;
    return true;
}

}  // namespace ui
