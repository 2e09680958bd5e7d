// Four groups of the same figures: tables one by one, or one table in CSV.
#include "report/SignalList.h"

#include <numeric>

namespace report {

namespace {

constexpr int RingMiles = 5;
constexpr std::int32_t BaseStation = 4;
constexpr std::int32_t AidToNavigation = 21;

std::vector<Cell> QuantileCells(const Distribution& t, std::initializer_list<double> dShares) {
    std::vector<Cell> tCells;
    for (const double d : dShares) tCells.push_back(t.Empty() ? Cell() : Cell(Number{t.Quantile(d), 1}));
    return tCells;
}

}  // namespace

SignalList::SignalList(const Options& tOptions, Writer& tWriter)
    : m_eBy(tOptions.eBy.value_or(Period::Day)), m_tScale(tOptions.bRaw), m_tWriter(tWriter), m_tTimes(tOptions.eBy) {}

void SignalList::Message(const Report& t) {
    ++m_lMessages;
    const bool bJump = t.bPosition && m_tTracks.Jumps(t);
    auto pStation = m_tStations.find(t.iShip);
    if (pStation == m_tStations.end() && (t.lType == BaseStation || t.lType == AidToNavigation)) {
        pStation = m_tStations.emplace(t.iShip, Station{t.lMmsi, {}}).first;
    }
    if (!t.bLevels) return;
    ++m_lLevels;
    const ShownLevels tLevels = m_tScale.Show(t.tLevels);
    m_tChannels[static_cast<std::size_t>(t.eChannel)].Add(tLevels);
    m_tPeriods[StartOf(m_eBy, t.dt)].Add(tLevels);
    if (m_tWriter.Draws()) m_tTimes.At(t.dt).Add(tLevels);
    if (pStation != m_tStations.end()) pStation->second.tLevels.Add(tLevels);
    if (t.bRange && !bJump) {
        m_tRings[static_cast<int>(t.tFromUs.Range()) / RingMiles].Add(tLevels);
    } else {
        ++m_lNoRange;
    }
}

void SignalList::Begin(const std::string& sKey, const std::string& sTitle, const std::string& sOf) {
    const bool bFirst = m_sGroup.empty();
    m_sGroup = sKey;
    if (m_tWriter.OneTable() && !bFirst) return;
    std::vector<Column> tColumns = {
        {"of", sOf, 19, true},           {"reports", "reports", 9},    {"signal_25", "sig 25 %", 8},
        {"signal_median", "sig med", 8}, {"signal_75", "sig 75 %", 8}, {"signal_best", "best", 7},
        {"threshold_median", "thr", 7},  {"snr_25", "snr 25 %", 8},    {"snr_median", "snr med", 7},
        {"snr_75", "snr 75 %", 8},       {"snr_best", "best", 6}};
    if (m_tWriter.OneTable()) tColumns.insert(tColumns.begin(), {"group", "group", 8, true});
    m_tWriter.BeginTable(sKey, sTitle, tColumns);
}

void SignalList::Row(const std::string& sOf, const LevelFigures& t) {
    std::vector<Cell> tCells = {sOf, t.tSignal.Count()};
    if (m_tWriter.OneTable()) tCells.insert(tCells.begin(), m_sGroup);
    for (const auto& tQuantiles : {QuantileCells(t.tSignal, {0.25, 0.5, 0.75, 1}), QuantileCells(t.tThreshold, {0.5}),
                                   QuantileCells(t.tSnr, {0.25, 0.5, 0.75, 1})}) {
        tCells.insert(tCells.end(), tQuantiles.begin(), tQuantiles.end());
    }
    m_tWriter.Row(tCells);
}

void SignalList::End() {
    if (!m_tWriter.OneTable()) m_tWriter.EndTable();
}

// Signal and threshold in one picture, SNR, which has another unit, in one beside it.
void SignalList::Draw(Picture t, const std::vector<std::pair<double, const LevelFigures*>>& tFigures) const {
    const auto PointOf = [](double dX, const Distribution& td) {
        return Point{dX, td.Median(), td.Quantile(0.25), td.Quantile(0.75)};
    };
    const std::string sKey = t.sKey, sOf = t.sTitle;
    Series tSignal{"signal", {}}, tThreshold{"threshold", {}}, tSnr{"SNR", {}};
    for (const auto& [dX, p] : tFigures) {
        if (!p) {
            for (Series* pSeries : {&tSignal, &tThreshold, &tSnr}) pSeries->tPoints.push_back({dX, NotKnown});
            continue;
        }
        tSignal.tPoints.push_back(PointOf(dX, p->tSignal));
        tThreshold.tPoints.push_back(PointOf(dX, p->tThreshold));
        tSnr.tPoints.push_back(PointOf(dX, p->tSnr));
        t.lCount += p->tSnr.Count();
    }
    t.sCounted = "reports with levels";
    t.sKey = "levels-" + sKey;
    t.sTitle = "Signal and threshold " + sOf;
    t.tY.sTitle = std::string("level, ") + m_tScale.Unit();
    t.tSeries = {tSignal, tThreshold};
    m_tWriter.Draw(t);
    t.sKey = "snr-" + sKey;
    t.sTitle = "SNR " + sOf;
    t.tY.sTitle = std::string("SNR, ") + m_tScale.SnrUnit();
    t.tSeries = {tSnr};
    m_tWriter.Draw(t);
}

void SignalList::DrawAll() const {
    const std::string sBand = "; the band is from the lower to the upper quartile.";
    std::vector<std::pair<double, const LevelFigures*>> tFigures;
    int iNext = m_tRings.empty() ? 0 : m_tRings.begin()->first;
    for (const auto& [iRing, t] : m_tRings) {
        if (iRing > iNext) tFigures.emplace_back((iNext + 0.5) * RingMiles, nullptr);
        tFigures.emplace_back((iRing + 0.5) * RingMiles, &t);
        iNext = iRing + 1;
    }
    Picture t{Picture::Kind::Lines, "range", "against range", {"range, nm", false, 0, iNext * 1.0 * RingMiles}};
    t.sRule = "Medians of the reports in a ring of 5 nm" + sBand;
    Draw(t, tFigures);

    tFigures.clear();
    runtime::DateTime dtNext;
    for (const auto& [dt, tBin] : m_tTimes.All()) {
        if (!tFigures.empty() && dt > dtNext) tFigures.emplace_back(static_cast<double>(dtNext.lSeconds), nullptr);
        dtNext = m_tTimes.EndOf(dt);
        tFigures.emplace_back(static_cast<double>(dt.lSeconds + dtNext.lSeconds) / 2, &tBin);
    }
    t = {Picture::Kind::Lines, "time", "over time", {"time", true}};
    t.sRule = std::string("Medians of the reports by ") + m_tTimes.StepName() + sBand;
    Draw(t, tFigures);
}

bool SignalList::Finish() {
    if (m_tWriter.Draws()) DrawAll();
    const std::string sUnit = std::string(" (") + m_tScale.Unit() + ", SNR " + m_tScale.SnrUnit() + ")";
    Begin("channels", "Levels by channel" + sUnit, "channel");
    LevelFigures tAll;
    for (const LevelFigures& t : m_tChannels) tAll.Add(t);
    Row("all", tAll);
    for (std::size_t i = 0; i < ChannelCount; ++i) {
        if (!m_tChannels[i].tSignal.Empty()) Row(std::string(ChannelNames[i]), m_tChannels[i]);
    }
    End();
    Begin("ranges", "Levels against range" + sUnit, "nm");
    for (const auto& [iRing, t] : m_tRings) {
        Row(std::to_string(iRing * RingMiles) + "-" + std::to_string((iRing + 1) * RingMiles), t);
    }
    End();
    Begin("periods", "Levels over time" + sUnit, "from");
    for (const auto& [dt, t] : m_tPeriods) Row(IsoText(dt), t);
    End();
    Begin("stations", "Base stations and aids to navigation" + sUnit, "MMSI");
    std::map<std::int32_t, const Station*> tByMmsi;
    for (const auto& [iShip, t] : m_tStations) tByMmsi[t.lMmsi] = &t;
    for (const auto& [lMmsi, p] : tByMmsi) Row(std::to_string(lMmsi), p->tLevels);
    End();
    if (m_tWriter.OneTable()) m_tWriter.EndTable();
    WriteNotes();
    return m_lLevels > 0;
}

void SignalList::WriteNotes() const {
    if (m_lMessages == 0) return m_tWriter.Note("There is no AIS message.");
    if (m_lLevels == 0) {
        return m_tWriter.Note("No message is followed by a $PNMLS sentence: nothing can be said of levels.");
    }
    m_tWriter.Note("Levels belong to the message right before them. Quartiles and medians are values that came.");
    m_tWriter.Note(std::to_string(m_lMessages - m_lLevels) + " of " + std::to_string(m_lMessages) +
                   " messages have no levels.");
    if (m_lNoRange > 0) {
        m_tWriter.Note(std::to_string(m_lNoRange) +
                       " messages with levels have no range (no position of theirs or of ours, or a jump) and are left "
                       "out of the rings.");
    }
    if (m_tStations.empty()) m_tWriter.Note("No base station and no aid to navigation was heard.");
}

}  // namespace report
