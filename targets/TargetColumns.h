// The columns of the target table: a row each, with everything that is the same for all their cells.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace targets {

enum TargetColumn : int {
    ColNumber,  // the sequence number, a row's identity; never shown
    ColMmsi,
    ColChannel,
    ColSignal,
    ColThreshold,
    ColSnr,
    ColTime,
    ColMessageId,
    ColRange,
    ColBearing,
    ColLatitude,
    ColLongitude,
    ColRateOfTurn,
    ColSpeed,
    ColLast,
    ColSpec,
    ColMiss,
    TargetColumnCount  // stays the last
};

// The detail modes in which a column shows (ColumnShown).
enum class ColumnGroup { Hidden, Always, Position, Motion, Missing };

// What the mouse is told of a column. With levels in dBm another text may tell the unit.
struct ColumnTip {
    constexpr ColumnTip(std::string_view sText) : ColumnTip(sText, sText) {}
    constexpr ColumnTip(std::string_view sText, std::string_view sTextInDbm) : sRaw(sText), sDbm(sTextInDbm) {}
    std::string_view sRaw;
    std::string_view sDbm;
};

struct TargetColumnDesign {
    TargetColumn eColumn;
    std::string_view sHeader;
    std::string_view sTemplate;  // the column is as wide as this text in the grid's font
    ColumnGroup eGroup;
    ColumnTip tTip;
};

// clang-format off
inline constexpr auto TargetColumns = std::to_array<TargetColumnDesign>({
    {ColNumber,     "",           "",                ColumnGroup::Hidden,   {""}},
    // Kept on purpose: the spelling users know
    {ColMmsi,       "MMSI",       "------MMSI-----", ColumnGroup::Always,   {"Martime Mobile Service Identifier"}},
    {ColChannel,    "Ch",         "-Ch-",            ColumnGroup::Always,   {"Channel Id"}},
    {ColSignal,     "Signal",     "-Signal-",        ColumnGroup::Always,   {"Signal Level", "Signal Level (dBm)"}},
    {ColThreshold,  "Thres",      "-Thres-",         ColumnGroup::Always,   {"Threshold Level",
                                                                             "Threshold Level (dBm), default=-107"}},
    {ColSnr,        "Snr",        "-Snr-",           ColumnGroup::Always,   {"Signal to Noise Ratio, bigger is better",
                                                                    "Signal to Noise Ratio (dB), bigger is better"}},
    {ColTime,       "Time",       "-hh:mm:ss-",      ColumnGroup::Always,   {"Time (hh:mm:ss)"}},
    // Kept on purpose: narrow; wide enough by a double-click
    {ColMessageId,  "Message Id", "0",               ColumnGroup::Always,   {"Message Id"}},
    {ColRange,      "Rng",        "--Rng--",         ColumnGroup::Always,   {"Range (nm)"}},
    {ColBearing,    "Brg",        "--Brg--",         ColumnGroup::Always,   {"Bearing (T)"}},
    {ColLatitude,   "Lat",        "-00-00.00-N-",    ColumnGroup::Position, {"Latitude"}},
    {ColLongitude,  "Lon",        "-000-00.00-W-",   ColumnGroup::Position, {"Longitude"}},
    {ColRateOfTurn, "Rot",        "--Rot--",         ColumnGroup::Motion,   {"Rate of Turn (deg/min)"}},
    {ColSpeed,      "Sog",        "--Sog--",         ColumnGroup::Motion,   {"Speed Over Ground (kts)"}},
    {ColLast,       "Last",       "-Last-",          ColumnGroup::Missing,  {"Time Since Last Message (sec)"}},
    {ColSpec,       "Spec",       "-Spec-",          ColumnGroup::Missing,  {"Specified Message Interval (sec)"}},
    {ColMiss,       "Miss",       "-Miss-",          ColumnGroup::Missing,  {"Missing Messages"}},
});
// clang-format on

constexpr bool InOrderWithTexts() {
    for (std::size_t i = 0; i < TargetColumns.size(); ++i) {
        const TargetColumnDesign& t = TargetColumns[i];
        if (t.eColumn != static_cast<int>(i)) return false;
        if (t.eGroup != ColumnGroup::Hidden && (t.sHeader.empty() || t.tTip.sRaw.empty())) return false;
    }
    return true;
}
static_assert(TargetColumns.size() == TargetColumnCount, "every column has its row");
static_assert(InOrderWithTexts(),
              "the rows stand in the order of the columns, and those that show have header and tip");

// The items of the detail and sort choices, in order.
extern const std::array<std::string_view, 5> DetailModes;   // "None", "Lat/Lon", "Speed", "Missing", "All"
extern const std::array<std::string_view, 3> SortCriteria;  // "MMSI", "Range", "Signal"

// Whether a column shows in a detail mode. Any text that is no mode shows like "None".
bool ColumnShown(const TargetColumnDesign& tColumn, std::string_view sDetail);

// The tip of a cell: empty for no row (-1) and for what is no column. bPower adds the units of the level columns.
std::string_view TargetTip(int iRow, int iColumn, bool bPower);

inline constexpr std::int32_t MessageRowLimit = 256;  // message rows that the table holds at the most

}  // namespace targets
