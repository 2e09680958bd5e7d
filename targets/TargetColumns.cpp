// What the columns show, and the choices that the Targets tab offers.
#include "targets/TargetColumns.h"

namespace targets {

const std::array<std::string_view, 5> DetailModes = {"None", "Lat/Lon", "Speed", "Missing", "All"};
const std::array<std::string_view, 3> SortCriteria = {"MMSI", "Range", "Signal"};

bool ColumnShown(const TargetColumnDesign& tColumn, std::string_view sDetail) {
    const bool bAll = sDetail == "All";
    switch (tColumn.eGroup) {  // GCOVR_EXCL_BR_LINE: there is no other group
        case ColumnGroup::Hidden:
            break;
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

std::string_view TargetTip(int iRow, int iColumn, bool bPower) {
    if (iRow < 0 || iColumn < 0 || iColumn >= TargetColumnCount) return {};
    const ColumnTip& tTip = TargetColumns[static_cast<std::size_t>(iColumn)].tTip;
    return bPower ? tTip.sDbm : tTip.sRaw;
}

}  // namespace targets
