// A row for each sender heard.
#pragma once

#include <vector>

#include "report/DueReports.h"
#include "report/LevelFigures.h"
#include "report/Options.h"
#include "report/StaticData.h"
#include "report/TrackCheck.h"

namespace report {

class ShipList final : public Collector {
public:
    ShipList(const Options& tOptions, Writer& tWriter);

    void Message(const Report& t) override;
    bool Finish() override;

private:
    struct Ship {
        std::int32_t lMmsi = 0;
        runtime::DateTime dtFirst, dtLast;  // the earliest and the latest time
        std::int64_t lReports = 0;
        std::int64_t lPositions = 0;  // with a range, jumps left out
        double dGreatest = 0;
        std::int64_t lLevels = 0;
        double dSnrSum = 0;
        double dSnrBest = 0;
        std::int64_t lHeard = 0;  // of the position reports due
        double dDue = 0;
        StaticData tStatic;
    };

    void CountDue(const Report& t, bool bJump, Ship& tShip);
    void Row(const Ship& t);

    const LevelScale m_tScale;
    Writer& m_tWriter;
    TrackCheck m_tTracks;
    DueReports m_tDue;
    std::vector<Ship> m_tShips;
    std::int64_t m_lNoOwnPosition = 0;
};

}  // namespace report
