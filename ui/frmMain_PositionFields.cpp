// The own-position boxes: events in, mask rules (ui/PositionField) applied, the position kept. Whatever changes a text,
// its change handler parses it: the boxes are the only way into the own position.
#include "app/frmMain.h"

namespace app {

namespace {

ui::PositionFieldState StateOf(const toolkit::MaskedBox& txt) { return {txt.Text(), txt.SelStart(), txt.SelLength()}; }

constexpr int KeyUp = 38;
constexpr int KeyDown = 40;

}  // namespace

const ui::PositionMask& frmMain::MaskOf(const toolkit::MaskedBox& txt) const {
    return &txt == &txtGpsLat ? ui::LatitudeMask : ui::LongitudeMask;
}

void frmMain::PositionFieldCaret(toolkit::MaskedBox& txt, int iDirection) {
    ui::PositionFieldState t = StateOf(txt);
    ui::PositionFieldCaret(t, iDirection, MaskOf(txt));
    txt.SetSelection(t.iStart, t.iLength);
}

void frmMain::PositionFieldChange(toolkit::MaskedBox& txt) {
    PositionFieldCaret(txt, 1);
    if (&txt == &txtGpsLat) {
        LatitudeFromString(txt.Text(), m_dLatitude, false);
    } else {
        LongitudeFromString(txt.Text(), m_dLongitude, false);
    }
}

void frmMain::PositionFieldClick(toolkit::MaskedBox& txt) { PositionFieldCaret(txt, 1); }

void frmMain::PositionFieldKeyDown(toolkit::MaskedBox& txt, int iKeyCode) {
    if (iKeyCode == KeyUp || iKeyCode == KeyDown) {
        PositionFieldStep(txt, iKeyCode == KeyUp ? 1 : -1);
        return;
    }
    ui::PositionFieldState t = StateOf(txt);
    ui::PositionFieldMove(t, iKeyCode, MaskOf(txt));
    txt.SetSelection(t.iStart, t.iLength);
}

void frmMain::PositionFieldKeyPress(toolkit::MaskedBox& txt, char cTyped) {
    ui::PositionFieldState t = StateOf(txt);
    const auto cAccepted = ui::PositionFieldFilter(t, cTyped, MaskOf(txt));
    if (!cAccepted || !ui::PositionFieldType(t, *cAccepted, MaskOf(txt))) return;
    txt.TypeOver(t.sText, t.iStart, t.iLength);
}

void frmMain::PositionFieldStep(toolkit::MaskedBox& txt, int iDirection) {
    const ui::PositionFieldState t = StateOf(txt);
    const auto sStepped = ui::PositionFieldStep(t, iDirection, MaskOf(txt));
    if (!sStepped) return;
    txt.SetText(*sStepped);
    txt.SetSelection(t.iStart, 1);
}

}  // namespace app
