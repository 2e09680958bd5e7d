// Tables and pictures; the rules are in ComparisonNotes.cpp.
#include "report/ComparisonTables.h"

#include <algorithm>
#include <cstdlib>

#include "platform/runtime/Format.h"
#include "report/CompareWords.h"

namespace report {

namespace {

constexpr double Percent = 100;

std::vector<Column> RowColumns(const std::string& sOf) {
    return {{"of", sOf, 10, true},
            {"either", "either", 8},
            {"both", "both", 8},
            {"a_alone", "A alone", 7},
            {"b_alone", "B alone", 7},
            {"ships", "ships", 5},
            {"a", "A %", 5},
            {"a_low", "from", 5},
            {"a_high", "to", 5},
            {"b", "B %", 5},
            {"b_low", "from", 5},
            {"b_high", "to", 5},
            {"difference", "A-B %", 6},
            {"difference_low", "from", 5},
            {"difference_high", "to", 5}};
}

// The value and the ends of its interval, in percent.
void Append(std::vector<Cell>& tCells, double dValue, const std::optional<Interval>& t) {
    tCells.emplace_back(Number{dValue * Percent, 1});
    if (!t) return tCells.resize(tCells.size() + 2);
    const Interval tPercent = Outward({t->dLow * Percent, t->dHigh * Percent});
    tCells.emplace_back(Number{tPercent.dLow, 1});
    tCells.emplace_back(Number{tPercent.dHigh, 1});
}

void Append(std::vector<Cell>& tCells, const RankMedian& t) {
    tCells.emplace_back(Number{t.dMedian, 1});
    if (!t.tInterval) return tCells.resize(tCells.size() + 2);
    const Interval tOut = Outward(*t.tInterval);
    tCells.emplace_back(Number{tOut.dLow, 1});
    tCells.emplace_back(Number{tOut.dHigh, 1});
}

std::vector<Cell> RowCells(const std::string& sOf, const Tally& t) {
    std::vector<Cell> tCells = {
        sOf, t.Either(), t.Count(HeardBy::Both), t.Count(HeardBy::First), t.Count(HeardBy::Second), t.ShipCount()};
    const auto dAll = static_cast<double>(t.Either());
    const Tally::Intervals tShares = t.Shares();
    Append(tCells, static_cast<double>(t.ByFirst()) / dAll, tShares.Of(Share::First));
    Append(tCells, static_cast<double>(t.BySecond()) / dAll, tShares.Of(Share::Second));
    Append(tCells, static_cast<double>(t.ByFirst() - t.BySecond()) / dAll, tShares.tDifference);
    return tCells;
}

// Pairs, ships, median of the pairs, median of the ships with its interval.
std::vector<Cell> LevelCells(const Comparison::LevelDifference& t) {
    std::vector<Cell> tCells = {t.tShips.Count(), t.tShips.ShipCount()};
    if (t.tPairs.Empty()) {
        tCells.resize(tCells.size() + 4);
        return tCells;
    }
    tCells.emplace_back(Number{t.tPairs.Median(), 1});
    Append(tCells, t.tShips.Median());
    return tCells;
}

std::string NameOfRing(int i, const Options&) { return RingName(i); }
std::string NameOfSector(int i, const Options& t) { return SectorName(i, t.iSector); }
std::string NameOfChannel(int i, const Options&) { return ChannelName(i); }
std::string NameOfType(int i, const Options&) { return TypeName(i); }

}  // namespace

std::string ClockText(std::int64_t lSeconds) {
    const std::int64_t l = std::llabs(lSeconds);
    const auto Two = [](std::int64_t lValue) { return (lValue < 10 ? ":0" : ":") + std::to_string(lValue); };
    return (lSeconds < 0 ? "-" : "") + std::to_string(l / 3600) + Two(l / 60 % 60) + Two(l % 60);
}

void ComparisonTables::Write() {
    if (m_tFigures.tTotal.Either() > 0) WriteVerdict();
    DrawPictures();
    if (!m_tWriter.OneTable()) WriteTimes();
    if (m_tWriter.OneTable()) {
        WriteOneTable();
    } else if (m_tFigures.tTotal.Either() > 0) {
        WriteTotals();
        WriteRows("rings", "By range from us, nautical miles", "nm", NameOfRing, m_tFigures.tRings);
        WriteRows("sectors", "By bearing from us", "bearing", NameOfSector, m_tFigures.tSectors);
        WriteRows("channels", "By channel", "channel", NameOfChannel, m_tFigures.tChannels);
        WriteRows("types", "By message type", "type", NameOfType, m_tFigures.tTypes);
        WriteLevels();
    }
    WriteNotes();
}

// Not more exact than the data, and not a word more certain.
void ComparisonTables::WriteVerdict() const {
    const Tally& t = m_tFigures.tTotal;
    const double dOne = Percent / static_cast<double>(t.Either());
    Told tHeard{static_cast<double>(t.ByFirst() - t.BySecond()) * dOne, t.Shares().tDifference};
    if (tHeard.tInterval) tHeard.tInterval = {tHeard.tInterval->dLow * Percent, tHeard.tInterval->dHigh * Percent};
    std::optional<Told> tSignal;
    if (m_tFigures.tSignal.tShips.Count() > 0) {
        const RankMedian tMedian = m_tFigures.tSignal.tShips.Median();
        tSignal = Told{tMedian.dMedian, tMedian.tInterval};
    }
    const std::string sVerdict = Verdict(tHeard, tSignal, m_tOptions.bRaw ? "steps" : "dB");
    if (m_tWriter.OneTable()) return m_tWriter.Note(sVerdict);
    m_tWriter.Fields("verdict", "Verdict", {{"text", "", sVerdict}});
}

void ComparisonTables::WriteTimes() const {
    const Common tCommon = CommonTime();
    const bool bAny = tCommon.lSeconds > 0;
    const auto& [pA, pB] = m_tRecordings;
    m_tWriter.Fields("time", "Clocks and time",
                     {{"a", "A", pA->Name()},
                      {"b", "B", pB->Name()},
                      {"offset", "B's clock ahead of A's by", m_tClocks.tFound.lSeconds, "s"},
                      {"offset_text", "that is", ClockText(m_tClocks.tFound.lSeconds), "(h:mm:ss)"},
                      {"offset_agreeing", "payloads that say so", m_tClocks.tFound.lAgreeing},
                      {"offset_compared", "of so many that stand in both", m_tClocks.tFound.lCompared},
                      {"offset_least", "as it went on: at least", m_tClocks.lLeast, "s"},
                      {"offset_most", "at most", m_tClocks.lMost, "s"},
                      {"from", "both recorded from (A's clock)", bAny ? Cell(IsoText(tCommon.dtFrom)) : Cell()},
                      {"to", "to", bAny ? Cell(IsoText(tCommon.dtTo)) : Cell()},
                      {"common_seconds", "time compared", tCommon.lSeconds, "s"},
                      {"common_text", "that is", DurationText(tCommon.lSeconds)},
                      {"a_left_out", "left out: A while B did not record", m_tFigures.lLeftOut[0], "messages"},
                      {"b_left_out", "left out: B while A did not record", m_tFigures.lLeftOut[1], "messages"},
                      {"a_lost", "left out: A in lost time", m_tFigures.lLost[0], "messages"},
                      {"b_lost", "left out: B in lost time", m_tFigures.lLost[1], "messages"}});
}

// From where both have begun to where the first has ended, less gaps of both and what was lost.
ComparisonTables::Common ComparisonTables::CommonTime() const {
    constexpr std::int64_t Margin = Recording::MarginSeconds;
    const auto& [pA, pB] = m_tRecordings;
    const std::int64_t lOffset = m_tClocks.lAtEnd;
    Common t;
    t.dtFrom = {std::max(pA->First().lSeconds, pB->First().lSeconds - m_tClocks.tFound.lSeconds) + Margin};
    t.dtTo = {std::min(pA->Last().lSeconds, pB->Last().lSeconds - lOffset) - Margin};
    std::vector<std::pair<std::int64_t, std::int64_t>> tOut;
    for (const Recording::Gap& tGap : pA->Gaps()) {
        tOut.emplace_back(tGap.dtFrom.lSeconds - Margin, tGap.dtTo.lSeconds + Margin);
    }
    for (const Recording::Gap& tGap : pB->Gaps()) {
        tOut.emplace_back(tGap.dtFrom.lSeconds - lOffset - Margin, tGap.dtTo.lSeconds - lOffset + Margin);
    }
    for (const Recording::Gap& tGap : m_tFigures.tLost) tOut.emplace_back(tGap.dtFrom.lSeconds, tGap.dtTo.lSeconds);
    std::ranges::sort(tOut);
    std::int64_t lAt = t.dtFrom.lSeconds;
    for (const auto& [lFrom, lTo] : tOut) {
        t.lSeconds += std::max<std::int64_t>(0, std::min(lFrom, t.dtTo.lSeconds) - lAt);
        lAt = std::max(lAt, lTo);
    }
    t.lSeconds += std::max<std::int64_t>(0, t.dtTo.lSeconds - lAt);
    return t;
}

void ComparisonTables::WriteTotals() const {
    const Tally& t = m_tFigures.tTotal;
    const auto dAll = static_cast<double>(t.Either());
    const Tally::Intervals tShares = t.Shares();
    m_tWriter.BeginTable("totals",
                         "What either heard: " + std::to_string(t.Either()) + " messages of " +
                             std::to_string(t.ShipCount()) + " senders",
                         {{"heard", "heard by", 10, true},
                          {"messages", "messages", 9},
                          {"share", "%", 6},
                          {"low", "from", 6},
                          {"high", "to", 6}});
    const auto Row = [&](const char* sName, std::int64_t lCount, const std::optional<Interval>& tInterval) {
        std::vector<Cell> tCells = {sName, lCount};
        Append(tCells, static_cast<double>(lCount) / dAll, tInterval);
        m_tWriter.Row(tCells);
    };
    Row("both", t.Count(HeardBy::Both), tShares.Of(Share::Both));
    Row("A alone", t.Count(HeardBy::First), tShares.Of(Share::FirstAlone));
    Row("B alone", t.Count(HeardBy::Second), tShares.Of(Share::SecondAlone));
    Row("A", t.ByFirst(), tShares.Of(Share::First));
    Row("B", t.BySecond(), tShares.Of(Share::Second));
    Row("A less B", t.ByFirst() - t.BySecond(), tShares.tDifference);
    m_tWriter.EndTable();
}

void ComparisonTables::WriteRows(const std::string& sKey, const std::string& sTitle, const std::string& sOf,
                                 NameOfRow Name, const std::map<int, Tally>& tRows) const {
    m_tWriter.BeginTable(sKey, sTitle, RowColumns(sOf));
    for (const auto& [iRow, t] : tRows) m_tWriter.Row(RowCells(Name(iRow, m_tOptions), t));
    m_tWriter.EndTable();
}

void ComparisonTables::WriteLevels() const {
    const std::string sUnit = m_tOptions.bRaw ? "steps of the board" : "dB";
    m_tWriter.BeginTable("levels", "Levels of what both heard, A less B, " + sUnit,
                         {{"group", "level", 9, true},
                          {"of", "of", 10, true},
                          {"pairs", "pairs", 8},
                          {"ships", "ships", 5},
                          {"pairs_median", "pairs med", 9},
                          {"median", "median", 6},
                          {"low", "from", 6},
                          {"high", "to", 6}});
    const auto Total = [&](const char* sName, const Comparison::LevelDifference& t) {
        std::vector<Cell> tCells = LevelCells(t);
        tCells.insert(tCells.begin(), {sName, "all"});
        m_tWriter.Row(tCells);
    };
    Total("signal", m_tFigures.tSignal);
    Total("threshold", m_tFigures.tThreshold);
    Total("snr", m_tFigures.tSnr);
    const auto Rows = [&](const char* sGroup, NameOfRow Name, const std::map<int, Tally>& tRows) {
        for (const auto& [iRow, t] : tRows) {
            if (t.tSignal.Count() == 0) continue;
            std::vector<Cell> tCells = {sGroup, Name(iRow, m_tOptions), t.tSignal.Count(), t.tSignal.ShipCount(), {}};
            Append(tCells, t.tSignal.Median());
            m_tWriter.Row(tCells);
        }
    };
    Rows("by range", NameOfRing, m_tFigures.tRings);
    Rows("by bearing", NameOfSector, m_tFigures.tSectors);
    Rows("channel", NameOfChannel, m_tFigures.tChannels);
    Rows("type", NameOfType, m_tFigures.tTypes);
    m_tWriter.EndTable();
}

// All in one, the group in front and the level of the signal behind; threshold and SNR of the whole alone.
void ComparisonTables::WriteOneTable() const {
    std::vector<Column> tColumns = RowColumns("of");
    tColumns.insert(tColumns.begin(), {"group", "group", 8, true});
    for (const std::string sLevel : {"signal", "threshold", "snr"}) {
        for (const char* sEnd : {"", "_low", "_high"}) tColumns.push_back({sLevel + sEnd, sLevel + sEnd, 6});
    }
    m_tWriter.BeginTable("comparison", "Comparison", tColumns);
    const auto Level = [](std::vector<Cell>& tCells, const ShipMeans& t) {
        if (t.Count() == 0) return tCells.resize(tCells.size() + 3);
        Append(tCells, t.Median());
    };
    const auto Row = [&](const char* sGroup, const std::string& sOf, const Tally& t, bool bTotal) {
        std::vector<Cell> tCells = RowCells(sOf, t);
        tCells.insert(tCells.begin(), sGroup);
        Level(tCells, t.tSignal);
        Level(tCells, bTotal ? m_tFigures.tThreshold.tShips : ShipMeans());
        Level(tCells, bTotal ? m_tFigures.tSnr.tShips : ShipMeans());
        m_tWriter.Row(tCells);
    };
    if (m_tFigures.tTotal.Either() > 0) Row("totals", "all", m_tFigures.tTotal, true);
    for (const auto& [i, t] : m_tFigures.tRings) Row("rings", RingName(i), t, false);
    for (const auto& [i, t] : m_tFigures.tSectors) Row("sectors", SectorName(i, m_tOptions.iSector), t, false);
    for (const auto& [i, t] : m_tFigures.tChannels) Row("channels", ChannelName(i), t, false);
    for (const auto& [i, t] : m_tFigures.tTypes) Row("types", TypeName(i), t, false);
    m_tWriter.EndTable();
}

}  // namespace report
