// What the ships around say of their own reception: in messages of types 1, 2 and 4 the communication state tells, in
// turn with other things, how many stations the sender receives. Ours beside theirs is a comparison with many antennas.
#pragma once

#include <map>
#include <optional>
#include <vector>

#include "report/Distribution.h"
#include "report/Event.h"
#include "report/MinuteCounts.h"
#include "report/Options.h"

namespace report {

// The number of stations that the sender of a message receives; nothing where the message does not tell.
std::optional<std::int32_t> ReceivedStations(decoders::VdmView lData, std::int32_t lLength);

class StationCounts final : public Collector {
public:
    StationCounts(const Options& tOptions, Writer& tWriter);

    void Message(const Report& t) override;
    bool Finish() override;

private:
    struct PeriodCounts {
        Distribution tOurs;  // senders heard in a minute, of the minutes with any
        std::int64_t lOurs = 0;
        Distribution tTheirs;
        std::int64_t lTelling = 0;  // senders that told
    };
    struct Sender {
        std::int32_t lMmsi = 0;
        std::int64_t lMinute = -1;             // in which it was heard last
        const PeriodCounts* pHeard = nullptr;  // the period of that
        const PeriodCounts* pTold = nullptr;
        std::int64_t lTold = 0;
        std::int64_t lSum = 0;
        std::int32_t lGreatest = 0;
        std::optional<FromUs> tFromUs;  // its last range
    };

    PeriodCounts& PeriodOf(runtime::DateTime dt) { return m_tPeriods[StartOf(m_eBy, dt)]; }
    void CountMinute(const MinuteCounts::Minute& t) { PeriodOf(t.Start()).tOurs.Add(static_cast<double>(t.lCount)); }
    void WriteSenders() const;
    void DrawCounts() const;

    const Period m_eBy;
    Writer& m_tWriter;
    std::map<runtime::DateTime, PeriodCounts> m_tPeriods;
    std::vector<Sender> m_tSenders;
    MinuteCounts m_tMinutes;
    std::int64_t m_lTold = 0;
};

}  // namespace report
