// See LimitCheck.h. Everything is read from the window as a user would: cells, lines and list items.
#include "tests/bench/LimitCheck.h"

#include <array>
#include <cstdio>
#include <vector>

#include "targets/TargetColumns.h"

namespace bench {

namespace {

constexpr int TotalRow = 34;

std::string Difference(const std::string& sWhat, const std::string& sWindow, const std::string& sLimit) {
    return sWindow == sLimit ? std::string() : sWhat + ": window \"" + sWindow + "\", plain loop \"" + sLimit + "\"";
}

std::string CountsDifference(const Limit& tLimit, support::TestWindow& t) {
    std::int64_t lTotal = 0;
    for (std::size_t iType = 1; iType <= Limit::Types; ++iType) {
        lTotal += tLimit.lCounts[iType];
        const std::string sCell = t.Cell(t.grdMessageData, static_cast<int>(iType), 1);
        const std::string s = Difference("type " + std::to_string(iType), sCell, std::to_string(tLimit.lCounts[iType]));
        if (!s.empty()) return s;
    }
    return Difference("total", t.Cell(t.grdMessageData, TotalRow, 1), std::to_string(lTotal));
}

std::string ShipsDifference(const Limit& tLimit, support::TestWindow& t) {
    t.cmbTargetTarget.Synchronize();
    return Difference("ships", std::to_string(t.cmbTargetTarget.count()), std::to_string(tLimit.tShips.Count()));
}

std::string LinesDifference(const Limit& tLimit, support::TestWindow& t) {
    const std::vector<std::string_view> sLimit = tLimit.Lines();
    const std::vector<std::string> sWindow = t.Lines(t.lstCommData(0));
    std::string s = Difference("raw lines", std::to_string(sWindow.size()), std::to_string(sLimit.size()));
    for (std::size_t i = 0; s.empty() && i < sLimit.size(); ++i) {
        s = Difference("raw line " + std::to_string(i), sWindow[i], std::string(sLimit[i]));
    }
    return s;
}

std::string TimeText(std::int32_t lSecond) {
    std::array<char, 16> s{};
    std::snprintf(s.data(), s.size(), "%02d:%02d:%02d", lSecond / 3600, lSecond / 60 % 60, lSecond % 60);
    return s.data();
}

std::vector<std::string> CellsOf(std::int64_t lNumber, const LimitReport& t) {
    return {std::to_string(lNumber),
            std::to_string(t.lMmsi),
            std::string(t.sChannel),
            TimeText(t.lSecond),
            t.lLast == 0 ? std::string() : std::to_string(t.lLast),
            std::string(t.sSignal),
            std::string(t.sThreshold)};
}

// The table stands in the order of its sort: its rows are found by their numbers.
std::string RowsDifference(const Limit& tLimit, support::TestWindow& t) {
    constexpr std::array Columns{targets::ColNumber, targets::ColMmsi,   targets::ColChannel,  targets::ColTime,
                                 targets::ColLast,   targets::ColSignal, targets::ColThreshold};
    const std::vector<LimitReport> tReports = tLimit.Reports();
    const std::int64_t lFirst = tLimit.lReports - static_cast<std::int64_t>(tReports.size());
    std::vector<std::vector<std::string>> sColumns;
    for (const int iCol : Columns) sColumns.push_back(t.Column(iCol));
    std::string s = Difference("rows", std::to_string(sColumns[0].size()), std::to_string(tReports.size()));
    for (std::size_t iRow = 0; s.empty() && iRow < sColumns[0].size(); ++iRow) {
        const std::int64_t lNumber = std::stoll(sColumns[0][iRow]);
        if (lNumber <= lFirst || lNumber > tLimit.lReports) return "row " + sColumns[0][iRow] + " is not of the newest";
        const auto sCells = CellsOf(lNumber, tReports[static_cast<std::size_t>(lNumber - lFirst - 1)]);
        for (std::size_t i = 0; s.empty() && i < sCells.size(); ++i) {
            s = Difference("row " + sCells[0] + ", column " + std::to_string(Columns[i]), sColumns[i][iRow], sCells[i]);
        }
    }
    return s;
}

}  // namespace

std::string FirstDifference(const Limit& tLimit, support::TestWindow& t) {
    for (const auto& tCompare : {CountsDifference, ShipsDifference, LinesDifference, RowsDifference}) {
        if (std::string s = tCompare(tLimit, t); !s.empty()) return s;
    }
    return {};
}

}  // namespace bench
