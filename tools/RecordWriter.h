// Record files made from the simulated traffic, as the program itself would have recorded it, and one kind that is
// damaged in every way that a file can be. A line is "mm/dd/yyyy hh:nn:ss " and the sentence, ended by CR LF.
#pragma once

#include <cstdint>
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
    bool bDamagedFile;  // noise, empty sentences and, near the end, an impossible date
};

// "harbour", "night", "damaged", "mixed" (reports each followed by $PNMLS, GLL and RMC each second) or "reports"
// (!AIVDM lines alone); nothing for any other name.
std::optional<RecordKind> FindRecordKind(std::string_view sName);

// Gives the lines of one file, one after the other.
class RecordWriter {
public:
    // lLines: how many the file will have; the impossible date stands DamageFromEnd lines before its end.
    RecordWriter(const RecordKind& tKind, std::int64_t lLines);

    void AppendLine(std::string& sText);

    static constexpr std::int64_t DamageFromEnd = 20;

private:
    void AppendNoise(std::string& sText);

    RecordKind m_tKind;
    Traffic m_tTraffic;
    Random m_tNoise;
    std::int64_t m_lLines;
    std::int64_t m_lLine = 0;  // lines given
    std::int64_t m_lStampSecond = -1;
    std::string m_sStamp;  // of m_lStampSecond, with the blank behind it
};

}  // namespace simulator
