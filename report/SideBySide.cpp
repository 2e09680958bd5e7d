// Counting, and a table in which the two stand beside each other.
#include "report/SideBySide.h"

#include "report/CompareWords.h"
#include "report/Comparison.h"

namespace report {

namespace {

constexpr double SecondsPerHour = 3600;
constexpr double Percent = 100;

double HoursOf(const Recording& t) {
    if (!t.Timed()) return 0;
    std::int64_t lSeconds = t.Last().lSeconds - t.First().lSeconds;
    for (const Recording::Gap& tGap : t.Gaps()) lSeconds -= tGap.dtTo.lSeconds - tGap.dtFrom.lSeconds;
    return static_cast<double>(lSeconds) / SecondsPerHour;
}

}  // namespace

void SideBySide::Take(std::size_t iSide, const Heard& t) {
    const bool bJump = t.bPosition && m_tTracks[iSide].Jumps(t.iShip, t.dt, t.dLatitude, t.dLongitude);
    const bool bPlace = t.bRange && !bJump;
    const bool bBearing = bPlace && t.tFromUs.dBearing == t.tFromUs.dBearing;
    const int iSectors = 360 / m_iSectorDegrees;
    const int iRing = bPlace ? static_cast<int>(t.tFromUs.dRange) / Comparison::RingMiles : Comparison::NoPlace;
    const int iSector =
        bBearing ? static_cast<int>(t.tFromUs.dBearing / m_iSectorDegrees) % iSectors : Comparison::NoPlace;
    for (Figures* p : {&m_tTotal[0], &m_tRings[iRing], &m_tSectors[iSector], &m_tChannels[static_cast<int>(t.eChannel)],
                       &m_tTypes[t.lType]}) {
        ++p->lMessages[iSide];
        if (t.bLevels) p->tSignal[iSide].Add(m_tScale.Show(t.tLevels).dSignal);
    }
}

void SideBySide::Write(const std::array<Recording*, 2>& tRecordings, Writer& tWriter) const {
    const std::array<double, 2> dHours = {HoursOf(*tRecordings[0]), HoursOf(*tRecordings[1])};
    std::vector<Field> tFields;
    for (std::size_t i = 0; i < tRecordings.size(); ++i) {
        const Recording& t = *tRecordings[i];
        const std::string sKey = i == 0 ? "a" : "b", sName = i == 0 ? "A" : "B";
        tFields.push_back({sKey, sName, t.Name()});
        tFields.push_back({sKey + "_from", sName + " from", t.Timed() ? Cell(IsoText(t.First())) : Cell()});
        tFields.push_back({sKey + "_to", sName + " to", t.Timed() ? Cell(IsoText(t.Last())) : Cell()});
        tFields.push_back({sKey + "_hours", sName + " recorded", Number{dHours[i], 2}, "hours"});
    }
    if (!tWriter.OneTable()) tWriter.Fields("time", "Time", tFields);
    WriteTable(dHours, tWriter);
}

void SideBySide::WriteTable(const std::array<double, 2>& dHours, Writer& tWriter) const {
    const std::string sUnit = m_tScale.Unit();
    tWriter.BeginTable("side_by_side", "Side by side: each by itself, not the same messages",
                       {{"group", "group", 8, true},
                        {"of", "of", 10, true},
                        {"a_messages", "A messages", 9},
                        {"a_share", "%", 5},
                        {"a_hour", "an hour", 8},
                        {"a_signal", "A " + sUnit, 7},
                        {"b_messages", "B messages", 9},
                        {"b_share", "%", 5},
                        {"b_hour", "an hour", 8},
                        {"b_signal", "B " + sUnit, 7}});
    const auto Rows = [&](const char* sGroup, const std::map<int, Figures>& tRows, const auto& Name) {
        for (const auto& [iRow, t] : tRows) {
            std::vector<Cell> tCells = {sGroup, Name(iRow)};
            for (std::size_t i = 0; i < dHours.size(); ++i) {
                const auto lAll = m_tTotal.at(0).lMessages[i];
                const auto d = static_cast<double>(t.lMessages[i]);
                tCells.emplace_back(lAll > 0 ? Cell(t.lMessages[i]) : Cell());
                tCells.push_back(lAll > 0 ? Cell(Number{d / static_cast<double>(lAll) * Percent, 1}) : Cell());
                tCells.push_back(lAll > 0 && dHours[i] > 0 ? Cell(Number{d / dHours[i], 1}) : Cell());
                tCells.push_back(t.tSignal[i].Empty() ? Cell() : Cell(Number{t.tSignal[i].Median(), 1}));
            }
            tWriter.Row(tCells);
        }
    };
    Rows("totals", m_tTotal, [](int) { return std::string("all"); });
    Rows("rings", m_tRings, RingName);
    Rows("sectors", m_tSectors, [this](int i) { return SectorName(i, m_iSectorDegrees); });
    Rows("channels", m_tChannels, ChannelName);
    Rows("types", m_tTypes, TypeName);
    tWriter.EndTable();
}

}  // namespace report
