// The table of the columns and the choices that the Targets tab offers.
#include "targets/TargetColumns.h"

namespace targets {

// clang-format off
const std::array<TargetColumnDesign, TargetColumnCount> TargetColumns = {{
    {"",           "",                 ColumnGroup::Hidden},  // the sequence number, a row's identity
    {"MMSI",       "------MMSI-----",  ColumnGroup::Always},
    {"Ch",         "-Ch-",             ColumnGroup::Always},
    {"Signal",     "-Signal-",         ColumnGroup::Always},
    {"Thres",      "-Thres-",          ColumnGroup::Always},
    {"Snr",        "-Snr-",            ColumnGroup::Always},
    {"Time",       "-hh:mm:ss-",       ColumnGroup::Always},
    {"Message Id", "0",                ColumnGroup::Always},  // Kept on purpose: narrow; wide enough by a double-click
    {"Rng",        "--Rng--",          ColumnGroup::Always},
    {"Brg",        "--Brg--",          ColumnGroup::Always},
    {"Lat",        "-00-00.00-N-",     ColumnGroup::Position},
    {"Lon",        "-000-00.00-W-",    ColumnGroup::Position},
    {"Rot",        "--Rot--",          ColumnGroup::Motion},
    {"Sog",        "--Sog--",          ColumnGroup::Motion},
    {"Last",       "-Last-",           ColumnGroup::Missing},
    {"Spec",       "-Spec-",           ColumnGroup::Missing},
    {"Miss",       "-Miss-",           ColumnGroup::Missing},
}};
// clang-format on

const std::array<std::string_view, 5> DetailModes = {"None", "Lat/Lon", "Speed", "Missing", "All"};
const std::array<std::string_view, 3> SortCriteria = {"MMSI", "Range", "Signal"};

bool ColumnShown(int iColumn, std::string_view sDetail) {
    if (iColumn < 0 || iColumn >= TargetColumnCount) return false;
    const bool bAll = sDetail == "All";
    switch (TargetColumns[static_cast<std::size_t>(iColumn)].eGroup) {
        case ColumnGroup::Hidden:
            return false;
        case ColumnGroup::Always:
            return true;
        case ColumnGroup::Position:
            return bAll || sDetail == "Lat/Lon";
        case ColumnGroup::Motion:
            return bAll || sDetail == "Speed" || sDetail == "Missing";
        case ColumnGroup::Missing:
            return bAll || sDetail == "Missing";
    }
    return false;
}

}  // namespace targets
