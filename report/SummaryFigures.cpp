// The summary's groups and its table, which says more in CSV, where it stands alone.
#include "report/SummaryFigures.h"

#include <algorithm>
#include <numeric>

#include "report/Period.h"
#include "targets/MessageNames.h"

namespace report {

namespace {

constexpr double LowerQuartile = 0.25;
constexpr double UpperQuartile = 0.75;
constexpr double MostReports = 0.95;

Cell QuantileCell(const Distribution& t, double dShare) {
    if (t.Empty()) return {};
    return Number{t.Quantile(dShare), 1};
}

Cell TimeCell(bool bKnown, runtime::DateTime dt) {
    if (!bKnown) return {};
    return IsoText(dt);
}

void WriteRecording(const SummaryFigures& t, Writer& tWriter) {
    std::vector<Field> tFields = {
        {"from", "from", TimeCell(t.bTimed, t.dtFirst)},
        {"to", "to", TimeCell(t.bTimed, t.dtLast)},
        {"seconds", "time recorded", t.lSeconds, "s, " + DurationText(t.lSeconds)},
        {"gaps", "gaps", t.lGaps},
        {"gap_seconds", "time of the gaps", t.lGapSeconds, "s, " + DurationText(t.lGapSeconds)},
        {"set_back", "clock set back", t.lSetBacks, "times"},
    };
    tWriter.Fields("recording", "Recording", tFields);
    tFields = {{"lines", "lines", t.Lines()}};
    for (std::size_t i = 0; i < LineKindCount; ++i) {
        tFields.push_back({LineKindNames[i].sKey, LineKindNames[i].sLabel, t.lLines[i]});
    }
    tFields.push_back({"bad", "bad, altogether", t.BadLines(), t.Lines() > 0 ? "of " + std::to_string(t.Lines()) : ""});
    tWriter.Fields("lines", "Lines", tFields);
}

void WriteMessages(const SummaryFigures& t, Writer& tWriter) {
    std::vector<Field> tFields = {
        {"messages", "messages", t.lMessages},
        {"per_minute", "in a minute, mean", t.PerMinute()},
        {"busiest_minute", "in the busiest minute", t.lBusiest > 0 ? Cell(t.lBusiest) : Cell()},
        {"busiest_minute_at", "the busiest minute", TimeCell(t.lBusiest > 0, t.dtBusiest)},
        {"ships", "senders (MMSI)", t.lShips},
    };
    for (std::size_t i = 0; i < ChannelCount; ++i) {
        const std::string sName(ChannelNames[i]);
        tFields.push_back({"channel_" + sName, "channel " + sName, t.lChannels[i]});
    }
    tWriter.Fields("messages", "Messages", tFields);
    tFields.clear();
    for (std::size_t i = 1; i < SummaryFigures::Types; ++i) {
        if (t.lTypes[i] == 0) continue;
        tFields.push_back({std::to_string(i), targets::MessageName(static_cast<std::int32_t>(i)), t.lTypes[i]});
    }
    if (t.lTypes[0] > 0) tFields.push_back({"other", "of no known type", t.lTypes[0]});
    tWriter.Fields("types", "Messages by type", tFields);
}

void WriteLevels(const SummaryFigures& t, const LevelScale& tScale, Writer& tWriter) {
    tWriter.BeginTable("levels", "Levels",
                       {{"channel", "channel", 8, true},
                        {"figure", "figure", 10, true},
                        {"unit", "unit", 4, true},
                        {"reports", "reports", 9},
                        {"lower_quartile", "25 %", 7},
                        {"median", "median", 7},
                        {"upper_quartile", "75 %", 7},
                        {"best", "best", 7}});
    const auto WriteRow = [&](const std::string& sChannel, const char* sFigure, const char* sUnit,
                              const Distribution& td) {
        tWriter.Row({sChannel, sFigure, sUnit, td.Count(), QuantileCell(td, LowerQuartile), QuantileCell(td, 0.5),
                     QuantileCell(td, UpperQuartile), QuantileCell(td, 1)});
    };
    const auto WriteRows = [&](const std::string& sChannel, const LevelFigures& tLevels) {
        WriteRow(sChannel, "signal", tScale.Unit(), tLevels.tSignal);
        WriteRow(sChannel, "threshold", tScale.Unit(), tLevels.tThreshold);
        WriteRow(sChannel, "SNR", tScale.SnrUnit(), tLevels.tSnr);
    };
    WriteRows("all", t.AllLevels());
    for (std::size_t i = 0; i < ChannelCount; ++i) {
        if (t.lChannels[i] > 0) WriteRows(std::string(ChannelNames[i]), t.tLevels[i]);
    }
    tWriter.EndTable();
}

void WriteRange(const SummaryFigures& t, Writer& tWriter) {
    const bool bAny = !t.tRange.Empty();
    std::vector<Field> tFields = {
        {"reports", "positions with a range", t.tRange.Count()},
        {"jumps", "positions dropped as jumps", t.lJumps},
        {"median", "median range", QuantileCell(t.tRange, 0.5), "nm"},
        {"most", "95 % come from within", QuantileCell(t.tRange, MostReports), "nm"},
        {"reliable", "80 % are heard up to", t.ReliableRange(), "nm"},
        {"greatest", "greatest range", bAny ? Cell(Number{t.dGreatest, 1}) : Cell(), "nm"},
        {"greatest_mmsi", "that was MMSI", bAny ? Cell(std::int64_t{t.lGreatestMmsi}) : Cell()},
        {"greatest_at", "at", TimeCell(bAny, t.dtGreatest)},
    };
    tWriter.Fields("range", "Range", tFields);
}

}  // namespace

const std::array<LineKindName, LineKindCount> LineKindNames = {{
    {"vdm", "!AIVDM"},
    {"pnmls", "$PNMLS"},
    {"gps", "GLL and RMC"},
    {"other", "other sentences"},
    {"bad_stamp", "bad: no date and time"},
    {"bad_length", "bad: too long"},
    {"bad_size", "bad: size"},
    {"bad_checksum", "bad: checksum"},
    {"bad_vdm", "bad: fields of !AIVDM"},
    {"bad_pnmls", "bad: fields of $PNMLS"},
    {"bad_gps", "bad: GLL, RMC"},
}};

void SummaryFigures::AddRange(const Report& t) {
    tRange.AddStep(t.tFromUs.RangeStep());
    if (!t.tFromUs.Beyond(dGreatest) && tRange.Count() > 1) return;
    dGreatest = t.tFromUs.Range();
    lGreatestMmsi = t.lMmsi;
    dtGreatest = t.dt;
}

std::int64_t SummaryFigures::Lines() const { return std::accumulate(lLines.begin(), lLines.end(), std::int64_t{0}); }

std::int64_t SummaryFigures::BadLines() const {
    return std::accumulate(lLines.begin() + IndexOf(FirstBadKind), lLines.end(), std::int64_t{0});
}

LevelFigures SummaryFigures::AllLevels() const {
    LevelFigures tAll;
    for (const LevelFigures& t : tLevels) tAll.Add(t);
    return tAll;
}

Cell SummaryFigures::PerMinute() const {
    constexpr std::int64_t Minute = 60;
    if (lSeconds < Minute) return {};
    return Number{static_cast<double>(lMessages) * Minute / static_cast<double>(lSeconds), 1};
}

Cell SummaryFigures::ReliableRange() const {
    const double dMiles = tRates.ReliableMiles(ReliableShare);
    return dMiles > 0 ? Cell(Number{dMiles, 0}) : Cell();
}

void WriteSummary(const SummaryFigures& t, const LevelScale& tScale, Writer& tWriter) {
    WriteRecording(t, tWriter);
    WriteMessages(t, tWriter);
    WriteLevels(t, tScale, tWriter);
    WriteRange(t, tWriter);
}

void PeriodTable::Begin(const std::string& sTitle) {
    std::vector<Column> tColumns = {{"from", "from", 19, true},
                                    {"seconds", "s heard", 7},
                                    {"lines", "lines", 8},
                                    {"bad", "bad", 6},
                                    {"messages", "msgs", 7},
                                    {"per_minute", "/min", 6},
                                    {"busiest_minute", "max", 5},
                                    {"ships", "ships", 6},
                                    {"signal_median", "sig", 6},
                                    {"threshold_median", "thr", 6},
                                    {"snr_median", "snr", 5},
                                    {"range_median", "range", 6},
                                    {"range_most", "95 %", 6},
                                    {"range_greatest", "most", 6},
                                    {"range_reliable", "reliable", 8}};
    if (m_tWriter.OneTable()) {
        for (std::size_t i = 0; i < LineKindCount; ++i) tColumns.push_back({LineKindNames[i].sKey, "", 0});
        for (const auto sName : ChannelNames) tColumns.push_back({"channel_" + std::string(sName), "", 0});
        for (std::size_t i = 1; i <= targets::LastCountedId; ++i) {
            tColumns.push_back({"type_" + std::to_string(i), "", 0});
        }
        tColumns.push_back({"type_other", "", 0});
        tColumns.push_back({"jumps", "", 0});
    }
    m_tWriter.BeginTable("periods", sTitle, tColumns);
}

void PeriodTable::Row(runtime::DateTime dtStart, const SummaryFigures& t) {
    const LevelFigures tLevels = t.AllLevels();
    std::vector<Cell> tCells = {TimeCell(t.bTimed, dtStart),
                                t.lSeconds,
                                t.Lines(),
                                t.BadLines(),
                                t.lMessages,
                                t.PerMinute(),
                                t.lBusiest > 0 ? Cell(t.lBusiest) : Cell(),
                                t.lShips,
                                QuantileCell(tLevels.tSignal, 0.5),
                                QuantileCell(tLevels.tThreshold, 0.5),
                                QuantileCell(tLevels.tSnr, 0.5),
                                QuantileCell(t.tRange, 0.5),
                                QuantileCell(t.tRange, MostReports),
                                t.tRange.Empty() ? Cell() : Cell(Number{t.dGreatest, 1}),
                                t.ReliableRange()};
    if (m_tWriter.OneTable()) {
        tCells.insert(tCells.end(), t.lLines.begin(), t.lLines.end());
        tCells.insert(tCells.end(), t.lChannels.begin(), t.lChannels.end());
        const auto pOther = t.lTypes.begin() + targets::LastCountedId + 1;
        tCells.insert(tCells.end(), t.lTypes.begin() + 1, pOther);
        tCells.emplace_back(std::accumulate(pOther, t.lTypes.end(), t.lTypes[0]));
        tCells.emplace_back(t.lJumps);
    }
    m_tWriter.Row(tCells);
}

}  // namespace report
