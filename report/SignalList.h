// Levels by channel, against range, over time, and of the fixed stations one by one: those always send from the same
// place, so what changes in their levels is the receiver's doing or the propagation's.
#pragma once

#include <map>
#include <vector>

#include "report/LevelFigures.h"
#include "report/Options.h"
#include "report/TimeBins.h"
#include "report/TrackCheck.h"

namespace report {

class SignalList final : public Collector {
public:
    SignalList(const Options& tOptions, Writer& tWriter);

    void Message(const Report& t) override;
    bool Finish() override;

private:
    struct Station {
        std::int32_t lMmsi = 0;
        LevelFigures tLevels;
    };

    void Begin(const std::string& sKey, const std::string& sTitle, const std::string& sOf);
    void Row(const std::string& sOf, const LevelFigures& t);
    void End();
    void WriteNotes() const;
    void Draw(Picture t, const std::vector<std::pair<double, const LevelFigures*>>& tFigures) const;
    void DrawAll() const;

    const Period m_eBy;
    const LevelScale m_tScale;
    Writer& m_tWriter;
    std::string m_sGroup;  // of the rows that are being written
    std::array<LevelFigures, ChannelCount> m_tChannels;
    std::map<int, LevelFigures> m_tRings;
    std::map<runtime::DateTime, LevelFigures> m_tPeriods;
    TimeBins<LevelFigures> m_tTimes;     // for the picture
    std::map<int, Station> m_tStations;  // by their number among the senders
    TrackCheck m_tTracks;
    std::int64_t m_lMessages = 0;
    std::int64_t m_lLevels = 0;
    std::int64_t m_lNoRange = 0;
};

}  // namespace report
