// Reading the communication state, and the two tables.
#include "report/StationCounts.h"

#include <algorithm>

#include "report/StaticData.h"

namespace report {

namespace {

// ITU-R M.1371, annex 2, SOTDMA communication state: the last 19 bits of these messages.
constexpr std::int32_t TimeoutBit = 151;
constexpr std::int32_t TimeoutBits = 3;
constexpr std::int32_t SubMessageBit = 154;
constexpr std::int32_t SubMessageBits = 14;
constexpr std::int32_t Characters = 28;

}  // namespace

std::optional<std::int32_t> ReceivedStations(decoders::VdmView lData, std::int32_t lLength) {
    const std::int32_t lType = lData[1];
    if ((lType != 1 && lType != 2 && lType != 4) || lLength < Characters) return std::nullopt;
    // The slot time-out says what the sub-message is: at 3, 5 and 7 the number of received stations.
    const std::int32_t lTimeout = BitsOf(lData, TimeoutBit, TimeoutBits);
    if (lTimeout != 3 && lTimeout != 5 && lTimeout != 7) return std::nullopt;
    return BitsOf(lData, SubMessageBit, SubMessageBits);
}

StationCounts::StationCounts(const Options& tOptions, Writer& tWriter)
    : m_eBy(tOptions.eBy.value_or(Period::Hour)), m_tWriter(tWriter) {}

void StationCounts::Message(const Report& t) {
    if (t.bNewShip) m_tSenders.emplace_back().lMmsi = t.lMmsi;
    Sender& tSender = m_tSenders[static_cast<std::size_t>(t.iShip)];
    PeriodCounts& tPeriod = PeriodOf(t.dt);
    const std::int64_t lMinute = t.dt.lSeconds / 60;
    if (tSender.lMinute != lMinute) {
        tSender.lMinute = lMinute;
        m_tMinutes.Add(t.dt, [this](const MinuteCounts::Minute& tDone) { CountMinute(tDone); });
    }
    if (tSender.pHeard != &tPeriod) ++tPeriod.lOurs;
    tSender.pHeard = &tPeriod;
    if (t.bRange) tSender.tFromUs = t.tFromUs;
    const auto lStations = ReceivedStations(t.lData, t.lLength);
    if (!lStations) return;
    ++m_lTold;
    tPeriod.tTheirs.Add(*lStations);
    if (tSender.pTold != &tPeriod) ++tPeriod.lTelling;
    tSender.pTold = &tPeriod;
    ++tSender.lTold;
    tSender.lSum += *lStations;
    tSender.lGreatest = std::max(tSender.lGreatest, *lStations);
}

void StationCounts::DrawCounts() const {
    Picture t{Picture::Kind::Lines, "stations", "Stations received, by us and by others"};
    t.tX = {"time", true};
    t.tY = {"stations", false, 0};
    t.tSeries = {{"ours", {}}, {"theirs", {}}};
    runtime::DateTime dtNext;
    for (const auto& [dt, tPeriod] : m_tPeriods) {
        const bool bGap = !t.tSeries[0].tPoints.empty() && dt > dtNext;
        dtNext = EndOf(m_eBy, dt);
        const double dX = static_cast<double>(dt.lSeconds + dtNext.lSeconds) / 2;
        for (Series& tSeries : t.tSeries) {
            const Distribution& td = &tSeries == t.tSeries.data() ? tPeriod.tOurs : tPeriod.tTheirs;
            if (bGap) tSeries.tPoints.push_back({dX, NotKnown});
            tSeries.tPoints.push_back(td.Empty() ? Point{dX, NotKnown}
                                                 : Point{dX, td.Median(), td.Quantile(0.25), td.Quantile(0.75)});
        }
    }
    t.sRule =
        "Ours: senders heard within a minute; theirs: the stations that others say they receive. Medians of each "
        "period; the band is from the lower to the upper quartile.";
    t.lCount = m_lTold;
    t.sCounted = "messages that told";
    m_tWriter.Draw(t);
}

bool StationCounts::Finish() {
    m_tMinutes.Finish([this](const MinuteCounts::Minute& t) { CountMinute(t); });
    if (m_tWriter.Draws()) DrawCounts();
    m_tWriter.BeginTable("periods", "Stations received, by us and by others",
                         {{"from", "from", 19, true},
                          {"ours_minute_median", "ours, median", 12},
                          {"ours_minute_greatest", "most", 5},
                          {"ours_period", "in all", 6},
                          {"theirs_median", "theirs, median", 14},
                          {"theirs_greatest", "most", 5},
                          {"told", "told", 8},
                          {"telling", "by", 6}});
    const auto QuantileCell = [](const Distribution& t, double d) {
        return t.Empty() ? Cell() : Cell(Number{t.Quantile(d), 0});
    };
    for (const auto& [dt, t] : m_tPeriods) {
        m_tWriter.Row({IsoText(dt), QuantileCell(t.tOurs, 0.5), QuantileCell(t.tOurs, 1), t.lOurs,
                       QuantileCell(t.tTheirs, 0.5), QuantileCell(t.tTheirs, 1), t.tTheirs.Count(), t.lTelling});
    }
    m_tWriter.EndTable();
    if (!m_tWriter.OneTable()) WriteSenders();
    if (m_tSenders.empty()) m_tWriter.Note("There is no AIS message.");
    if (m_lTold == 0) {
        m_tWriter.Note("No message tells how many stations its sender receives: nothing can be said of theirs.");
        return false;
    }
    m_tWriter.Note(
        "Ours: senders heard within a minute of the clock, median and most of the minutes with any; in all: "
        "within the whole period. Theirs: what messages of types 1, 2 and 4 tell in their communication "
        "state (slot time-out 3, 5 or 7). A station may count those that it has heard for longer than a "
        "minute, and it may stand higher: the course over time says more than the figure.");
    return true;
}

void StationCounts::WriteSenders() const {
    std::vector<const Sender*> pTelling;
    for (const Sender& t : m_tSenders) {
        if (t.lTold > 0) pTelling.push_back(&t);
    }
    std::ranges::sort(pTelling, {}, &Sender::lMmsi);
    m_tWriter.BeginTable("senders", "Who told",
                         {{"mmsi", "MMSI", 9},
                          {"told", "told", 8},
                          {"mean", "mean", 7},
                          {"greatest", "most", 5},
                          {"range", "last nm", 7}});
    for (const Sender* p : pTelling) {
        m_tWriter.Row({std::int64_t{p->lMmsi}, p->lTold,
                       Number{static_cast<double>(p->lSum) / static_cast<double>(p->lTold), 1},
                       std::int64_t{p->lGreatest}, p->tFromUs ? Cell(Number{p->tFromUs->Range(), 1}) : Cell()});
    }
    m_tWriter.EndTable();
}

}  // namespace report
