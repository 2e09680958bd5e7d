// The figures of a summary, of the whole or of one period, and how they are written.
#pragma once

#include <array>

#include "report/LevelFigures.h"
#include "report/RingRates.h"
#include "report/Writer.h"

namespace report {

struct SummaryFigures {
    static constexpr std::size_t Types = 64;  // element 0 counts those that are no type from 1 on

    runtime::DateTime dtFirst, dtLast;  // earliest and latest line that has a time
    bool bTimed = false;                // there is one
    std::array<std::int64_t, LineKindCount> lLines{};
    std::int64_t lSeconds = 0;  // recorded: gaps left out
    std::int64_t lGaps = 0;     // of the whole only
    std::int64_t lGapSeconds = 0;
    std::int64_t lSetBacks = 0;

    std::int64_t lMessages = 0;
    std::array<std::int64_t, Types> lTypes{};
    std::array<std::int64_t, ChannelCount> lChannels{};
    std::int64_t lBusiest = 0;  // messages in the busiest minute
    runtime::DateTime dtBusiest;
    std::int64_t lShips = 0;

    std::array<LevelFigures, ChannelCount> tLevels;

    Distribution tRange;
    double dGreatest = 0;
    std::int32_t lGreatestMmsi = 0;
    runtime::DateTime dtGreatest;
    std::int64_t lJumps = 0;
    RingRates tRates;

    static constexpr double ReliableShare = 0.8;  // that is heard within the reliable range

    void AddTime(runtime::DateTime dt) {
        if (!bTimed || dt < dtFirst) dtFirst = dt;
        if (!bTimed || dt > dtLast) dtLast = dt;
        bTimed = true;
    }
    void AddRange(const Report& t);
    std::int64_t Lines() const;
    std::int64_t BadLines() const;
    LevelFigures AllLevels() const;
    // Messages in a minute; nothing where less than a minute was recorded.
    Cell PerMinute() const;
    // Nautical miles; nothing where it cannot be said.
    Cell ReliableRange() const;
};

// "bad size" and so on: what programs and people call a kind of line.
struct LineKindName {
    const char* sKey;
    const char* sLabel;
};
extern const std::array<LineKindName, LineKindCount> LineKindNames;

void WriteSummary(const SummaryFigures& t, const LevelScale& tScale, Writer& tWriter);

// A table with a row for each period.
class PeriodTable {
public:
    PeriodTable(const LevelScale& tScale, Writer& tWriter) : m_tScale(tScale), m_tWriter(tWriter) {}
    void Begin(const std::string& sTitle);
    void Row(runtime::DateTime dtStart, const SummaryFigures& t);
    void End() { m_tWriter.EndTable(); }

private:
    const LevelScale& m_tScale;
    Writer& m_tWriter;
};

}  // namespace report
