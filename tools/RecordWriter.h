// Record files made from the simulated traffic, as the program itself would have recorded it, and one kind that is
// damaged in every way that a file can be. A line is "mm/dd/yyyy hh:nn:ss " and the sentence, ended by CR LF.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "platform/runtime/DateTime.h"
#include "tools/Random.h"
#include "tools/Traffic.h"

namespace simulator {

struct RecordKind {
    std::string_view sName;
    TrafficOptions tTraffic;
    bool bDamagedFile;               // noise, empty sentences and, near the end, an impossible date
    std::int64_t lClockSeconds = 0;  // by which the recording computer's clock is fast
};

// "harbour", "night", "damaged", "mixed" (reports each followed by $PNMLS, GLL and RMC each second), "sea" (the same
// over forty miles, and nothing missed unless told) or "reports" (!AIVDM lines alone); nothing for any other name.
std::optional<RecordKind> FindRecordKind(std::string_view sName);

// Gives the lines of one file, one after the other.
class RecordWriter {
public:
    // lLines: how many the file will have; the impossible date stands DamageFromEnd lines before its end.
    RecordWriter(const RecordKind& tKind, std::int64_t lLines);

    void AppendLine(std::string& sText);
    // Milliseconds from the start of the file's time to the line given last.
    std::int64_t Milliseconds() const { return m_lMilliseconds; }
    // As in Traffic.
    void TellSent(std::function<void(const SentMessage&)> Sent) { m_tTraffic.TellSent(std::move(Sent)); }

    static constexpr std::int64_t DamageFromEnd = 20;

private:
    void AppendNoise(std::string& sText);

    RecordKind m_tKind;
    Traffic m_tTraffic;
    Random m_tNoise;
    std::int64_t m_lLines;
    std::int64_t m_lLine = 0;  // lines given
    std::int64_t m_lMilliseconds = 0;
    std::int64_t m_lStampSecond = -1;
    std::string m_sStamp;  // of m_lStampSecond, with the blank behind it
};

}  // namespace simulator
