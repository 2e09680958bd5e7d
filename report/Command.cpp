// The table of commands.
#include "report/Command.h"

#include <array>

#include "report/Coverage.h"
#include "report/Reception.h"
#include "report/ReportList.h"
#include "report/ShipList.h"
#include "report/SignalList.h"
#include "report/StationCounts.h"
#include "report/Summary.h"

namespace report {

namespace {

template <class T>
std::unique_ptr<Collector> Make(const Options& tOptions, Writer& tWriter) {
    return std::make_unique<T>(tOptions, tWriter);
}

// clang-format off
constexpr std::array Rows = {
    Command{"summary",  "What was heard: lines, messages, ships, levels, range", 
            TakesBy | TakesRaw | TakesPosition | TakesPictures, Make<Summary>},
    Command{"coverage", "Range by bearing", TakesSector | TakesPosition | TakesPictures, Make<Coverage>},
    Command{"range",    "Reception rate against range", TakesGap | TakesPosition | TakesPictures, Make<Reception>},
    Command{"signal",   "Levels by channel, against range, over time, of fixed stations",
            TakesBy | TakesRaw | TakesPosition | TakesPictures, Make<SignalList>},
    Command{"compare",  "Two recordings of the same time: which antenna or receiver hears more, and stronger",
            TakesSector | TakesRaw | TakesPosition | TakesPictures, nullptr},
    Command{"stations", "How many stations others say that they receive, and we", TakesBy | TakesPosition | TakesPictures,
            Make<StationCounts>},
    Command{"ships",    "A row for each ship and station", TakesRaw | TakesPosition, Make<ShipList>},
    Command{"reports",  "A row for each message", TakesRaw | TakesPosition, Make<ReportList>},
    Command{"watch",    "Follows a growing file and says when it goes quiet, stops or has too few messages", TakesWatch,
            nullptr},
};
// clang-format on

}  // namespace

std::span<const Command> Commands() { return Rows; }

std::span<const Command> PartsOf(const Command& t) {
    const bool bSummary = &t == Rows.data();
    return std::span(Rows).subspan(1, bSummary ? 3 : 0);
}

}  // namespace report
