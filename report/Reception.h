// The reception rate against range: of the position reports that ships at a distance must have sent by the reporting
// rules, the share that was heard.
#pragma once

#include "report/DueReports.h"
#include "report/Options.h"
#include "report/RingRates.h"
#include "report/TrackCheck.h"

namespace report {

class Reception final : public Collector {
public:
    Reception(const Options& tOptions, Writer& tWriter);

    void Message(const Report& t) override;
    bool Finish() override;

private:
    void CountVisit(std::size_t iShip, std::size_t iRing);
    void WriteRings() const;
    void WriteNotes() const;
    void DrawRates() const;

    const int m_iGap;    // intervals
    const int m_iShare;  // percent, of reliable range
    Writer& m_tWriter;
    DueReports m_tDue;
    RingRates m_tRates;
    TrackCheck m_tTracks;
    std::vector<std::int64_t> m_lVisits;   // of each ring: how often a ship came into it
    std::vector<std::size_t> m_iLastRing;  // of each ship: that in which it was heard last, and one more
    std::int64_t m_lReports = 0, m_lCounted = 0, m_lNoRange = 0;
};

}  // namespace report
