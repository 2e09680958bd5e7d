// The own-position boxes: events in, mask rules (ui/PositionField) applied, the position kept. Whatever changes a text,
// its change handler parses it: the boxes are the only way into the own position.
#include "app/frmMain.h"
#include "nav/PositionReading.h"

namespace app {

namespace {

ui::PositionFieldState StateOf(const toolkit::MaskedBox& txt) { return {txt.Text(), txt.SelStart(), txt.SelLength()}; }

constexpr int KeyUp = 38;
constexpr int KeyDown = 40;
constexpr int QuotedChars = 30;       // of a text that was refused
constexpr int LongestPosition = 100;  // a whole document is not looked through

// The marks that other programs put into positions, as those of Latin-1.
std::string WithPlainMarks(QString sText) {
    for (const char16_t c : {u'\u2032', u'\u2019', u'\u00b4'}) sText.replace(QChar(c), QLatin1Char('\''));
    for (const char16_t c : {u'\u2033', u'\u201d'}) sText.replace(QChar(c), QLatin1Char('"'));
    for (const char16_t c : {u'\u2212', u'\u2013'}) sText.replace(QChar(c), QLatin1Char('-'));
    for (const char16_t c : {u'\u2009', u'\u202f'}) sText.replace(QChar(c), QLatin1Char(' '));
    return toolkit::ToLatin1(sText);
}

// Puts in a text as if it had been typed: the same character stays selected.
void PutText(toolkit::MaskedBox& txt, const std::string& sText) {
    const int iStart = txt.SelStart();
    txt.SetText(sText);
    txt.SetSelection(iStart, 1);
}

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

// Into this box what belongs there; a latitude and longitude at once into both.
void frmMain::PositionFieldPaste(toolkit::MaskedBox& txt, const QString& sPasted) {
    const QString sTrimmed = sPasted.trimmed();
    const std::string sText = sTrimmed.size() <= LongestPosition ? WithPlainMarks(sTrimmed) : std::string();
    const bool bLatitude = MaskOf(txt).bLatitude;
    if (const auto dRead = bLatitude ? nav::ReadLatitude(sText) : nav::ReadLongitude(sText)) {
        PutText(txt, bLatitude ? LatitudeToString(*dRead) : LongitudeToString(*dRead));
    } else if (const auto tRead = nav::ReadPosition(sText)) {
        PutText(txtGpsLat, LatitudeToString(tRead->dLatitude));
        PutText(txtGpsLon, LongitudeToString(tRead->dLongitude));
    } else {
        const QString sQuoted = sPasted.simplified().left(QuotedChars);
        ShowError("Paste - \"" + toolkit::ToLatin1(sQuoted) + "\" is no " + (bLatitude ? "latitude" : "longitude"));
    }
}

void frmMain::PositionFieldStep(toolkit::MaskedBox& txt, int iDirection) {
    const ui::PositionFieldState t = StateOf(txt);
    const auto sStepped = ui::PositionFieldStep(t, iDirection, MaskOf(txt));
    if (!sStepped) return;
    PutText(txt, *sStepped);
}

}  // namespace app
