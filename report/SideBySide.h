// Two recordings that cannot be held against each other message by message: each one's own figures, in the same rows.
#pragma once

#include <array>
#include <map>

#include "report/LevelFigures.h"
#include "report/Options.h"
#include "report/Recording.h"
#include "report/TrackCheck.h"

namespace report {

class SideBySide {
public:
    struct Figures {
        std::array<std::int64_t, 2> lMessages{};
        std::array<Distribution, 2> tSignal;
    };

    explicit SideBySide(const Options& tOptions) : m_iSectorDegrees(tOptions.iSector), m_tScale(tOptions.bRaw) {}

    // All of a recording, in its order. iSide: 0 or 1.
    void Take(std::size_t iSide, const Heard& t);
    // tRecordings have been read to their ends.
    void Write(const std::array<Recording*, 2>& tRecordings, Writer& tWriter) const;

private:
    void WriteTable(const std::array<double, 2>& dHours, Writer& tWriter) const;

    const int m_iSectorDegrees;
    const LevelScale m_tScale;
    std::map<int, Figures> m_tTotal, m_tChannels, m_tRings, m_tSectors, m_tTypes;
    std::array<TrackCheck, 2> m_tTracks;
};

}  // namespace report
