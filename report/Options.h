// What the user asks for.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "nav/PositionReading.h"
#include "report/Period.h"
#include "report/WatchRules.h"
#include "report/Writer.h"

namespace report {

struct Options {
    std::vector<std::string> sFiles;  // "-" is standard input
    Format eFormat = Format::Text;
    std::optional<nav::Position> tPosition;
    std::optional<Period> eBy;
    int iSector = 10;          // degrees; divides 360
    int iGap = 30;             // intervals without a report, above which a ship is out of reach
    int iRing = 5;             // nautical miles of a ring of range
    int iShare = 80;           // percent that are heard within the reliable range
    std::string sPage{};       // where a page goes, or nowhere
    std::string sPngFolder{};  // where pictures go
    std::string sSvgFolder{};
    bool bRaw = false;  // levels in the board's numbers
    WatchLimits tWatch{};
    std::string sRun{};  // what the shell runs at an event of watch
};

}  // namespace report
