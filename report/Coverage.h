// Range by bearing: how far the receiver hears in each direction.
#pragma once

#include <vector>

#include "report/Distribution.h"
#include "report/Options.h"
#include "report/TrackCheck.h"

namespace report {

class Coverage final : public Collector {
public:
    Coverage(const Options& tOptions, Writer& tWriter);

    void Message(const Report& t) override;
    bool Finish() override;

private:
    struct Sector {
        Distribution tRange;
        bool bGreatest = false;  // there is one
        double dGreatest = 0;
        std::int32_t lMmsi = 0;  // of the greatest
        runtime::DateTime dt;

        // False where another is greater or was as great before.
        bool KeepGreatest(const Report& t);
    };

    void Row(const std::string& sName, const Sector& t);
    void WriteNotes() const;
    void DrawRose() const;
    Series Outline(const std::string& sName, const std::vector<Sector>& tSectors, double dShare) const;

    const int m_iDegrees;
    const bool m_bPosition;
    Writer& m_tWriter;
    std::vector<Sector> m_tSectors;
    std::vector<std::string> m_sFiles;                // that the rose lays over each other
    std::vector<std::vector<Sector>> m_tFileSectors;  // of each of them
    Sector m_tAll;
    TrackCheck m_tTracks;
    std::int64_t m_lPositions = 0;
    std::int64_t m_lNoOwnPosition = 0;
    std::int64_t m_lJumps = 0;
    std::int64_t m_lNoBearing = 0;
};

}  // namespace report
