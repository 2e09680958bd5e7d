// The seventeen columns of the target table: header, width template and the detail modes in which they show.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace targets {

enum TargetColumn : int {
    ColNumber,
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
    TargetColumnCount
};

enum class ColumnGroup { Hidden, Always, Position, Motion, Missing };

struct TargetColumnDesign {
    std::string_view sHeader;
    std::string_view sTemplate;  // the column is as wide as this text in the grid's font
    ColumnGroup eGroup;
};

extern const std::array<TargetColumnDesign, TargetColumnCount> TargetColumns;

// The items of the detail and sort choices, in order.
extern const std::array<std::string_view, 5> DetailModes;   // "None", "Lat/Lon", "Speed", "Missing", "All"
extern const std::array<std::string_view, 3> SortCriteria;  // "MMSI", "Range", "Signal"

// Whether a column shows in a detail mode. Any text that is no mode shows like "None".
bool ColumnShown(int iColumn, std::string_view sDetail);

inline constexpr std::int32_t MessageRowLimit = 256;  // message rows that the table holds at the most

}  // namespace targets
