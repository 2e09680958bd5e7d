// The mask of an own-position field: which character is selected, what a key does to text and selection. Holds no
// widget; toolkit's masked box feeds it keys and shows the result.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace ui {

struct PositionMask {
    int iMaxLength;                  // 10 or 11
    std::array<int, 3> iSeparators;  // 1-based positions
    std::array<char, 2> cLetters;    // hemisphere letters, positive first
    double dLimit;                   // degrees: 90 or 180
    bool bLatitude;
};
extern const PositionMask LatitudeMask;
extern const PositionMask LongitudeMask;

// The text of a box and its selection (0-based start).
struct PositionFieldState {
    std::string sText;
    int iStart = 0;
    int iLength = 0;
};

// Normalises the selection: steps over a separator by iDirection (+1 or -1), from behind the last character back to the
// letter, and selects exactly one character.
void PositionFieldCaret(PositionFieldState& t, int iDirection, const PositionMask& tMask);

// Left (37), Right (39): moves the selection. Other codes change nothing.
void PositionFieldMove(PositionFieldState& t, int iKeyCode, const PositionMask& tMask);

// The text after a step at the selected place, up (+1) or down (-1); nothing when the selection is not one character
// long or the text does not parse. The step is taken on the magnitude; at the letter the value is negated.
std::optional<std::string> PositionFieldStep(const PositionFieldState& t, int iDirection, const PositionMask& tMask);

// The character that a typed one (Latin-1) puts at the selected place: a digit, or the upper-case letter at the letter
// place; nothing when it is discarded.
std::optional<char> PositionFieldFilter(const PositionFieldState& t, char cTyped, const PositionMask& tMask);

// Types an accepted character: replaces what is selected. False, and nothing changed, when the text would grow beyond
// its maximum length. The caller then runs the change handler, which normalises the selection.
bool PositionFieldType(PositionFieldState& t, char cAccepted, const PositionMask& tMask);

}  // namespace ui
