// The sectors.
#include "report/Coverage.h"

#include "platform/runtime/Format.h"
#include "report/PlainText.h"

namespace report {

namespace {

constexpr int Circle = 360;
constexpr double MostReports = 0.95;
constexpr std::size_t MostFiles = 6;  // over each other; more cannot be told apart

}  // namespace

Coverage::Coverage(const Options& tOptions, Writer& tWriter)
    : m_iDegrees(tOptions.iSector),
      m_bPosition(tOptions.tPosition),
      m_tWriter(tWriter),
      m_tSectors(static_cast<std::size_t>(Circle / m_iDegrees)) {
    const std::size_t lFiles = tOptions.sFiles.size();
    if (!tWriter.Draws() || lFiles < 2 || lFiles > MostFiles) return;
    m_sFiles = tOptions.sFiles;
    m_tFileSectors.assign(lFiles, m_tSectors);
}

bool Coverage::Sector::KeepGreatest(const Report& t) {
    if (bGreatest && !t.tFromUs.Beyond(dGreatest)) return false;
    bGreatest = true;
    dGreatest = t.tFromUs.Range();
    lMmsi = t.lMmsi;
    dt = t.dt;
    return true;
}

void Coverage::Message(const Report& t) {
    if (!t.bPosition) return;
    ++m_lPositions;
    const bool bJump = m_tTracks.Jumps(t);
    if (bJump) {
        ++m_lJumps;
    } else if (!t.bOwnPosition) {
        ++m_lNoOwnPosition;
    } else if (!t.bRange || !t.tFromUs.HasBearing()) {
        ++m_lNoBearing;
    } else {
        auto iSector = static_cast<std::size_t>(t.tFromUs.Sector(m_iDegrees));
        if (iSector >= m_tSectors.size()) iSector = 0;  // 360 degrees are north again
        const std::int64_t lStep = t.tFromUs.RangeStep();
        Sector& tSector = m_tSectors[iSector];
        tSector.tRange.AddStep(lStep);
        if (tSector.KeepGreatest(t)) m_tAll.KeepGreatest(t);
        if (!m_tFileSectors.empty()) m_tFileSectors[t.iFile][iSector].tRange.AddStep(lStep);
    }
}

void Coverage::Row(const std::string& sName, const Sector& t) {
    if (t.tRange.Empty()) return m_tWriter.Row({sName, std::int64_t{0}, {}, {}, {}, {}, {}});
    m_tWriter.Row({sName, t.tRange.Count(), Number{t.tRange.Median(), 1}, Number{t.tRange.Quantile(MostReports), 1},
                   Number{t.dGreatest, 1}, std::int64_t{t.lMmsi}, IsoText(t.dt)});
}

Series Coverage::Outline(const std::string& sName, const std::vector<Sector>& tSectors, double dShare) const {
    Series tOutline{sName, {}};
    for (std::size_t i = 0; i < tSectors.size(); ++i) {
        const Distribution& t = tSectors[i].tRange;
        tOutline.tPoints.push_back({static_cast<double>(i) * m_iDegrees, t.Empty() ? NotKnown : t.Quantile(dShare)});
    }
    return tOutline;
}

// Of one file three outlines, of several the 95 % range of each: the greatest is a freak's.
void Coverage::DrawRose() const {
    Picture t{Picture::Kind::Rose, "coverage", "Range by bearing", {}, {"nm", false, 0}};
    if (m_tFileSectors.empty()) {
        t.tSeries = {Outline("greatest", m_tSectors, 1), Outline("95 %", m_tSectors, MostReports),
                     Outline("median", m_tSectors, 0.5)};
        t.sRule = "Nautical miles from us by true bearing, in sectors of " + std::to_string(m_iDegrees) +
                  " degrees: the greatest range of a single report, the range within which 95 % of the sector's "
                  "reports lie, and their median.";
    } else {
        for (std::size_t i = 0; i < m_sFiles.size(); ++i) {
            t.tSeries.push_back(Outline(FileNameOf(m_sFiles[i]), m_tFileSectors[i], MostReports));
        }
        t.sRule = "Nautical miles from us by true bearing, in sectors of " + std::to_string(m_iDegrees) +
                  " degrees: the range within which 95 % of the sector's reports lie, for each file.";
    }
    t.lCount = m_tAll.tRange.Count();
    t.sCounted = "positions";
    m_tWriter.Draw(t);
}

bool Coverage::Finish() {
    for (const Sector& t : m_tSectors) m_tAll.tRange.Add(t.tRange);
    if (m_tWriter.Draws()) DrawRose();
    m_tWriter.BeginTable("sectors", "Range by bearing, nautical miles",
                         {{"sector", "bearing", 7, true},
                          {"reports", "reports", 9},
                          {"median", "median", 7},
                          {"most", "95 %", 7},
                          {"greatest", "greatest", 8},
                          {"greatest_mmsi", "by MMSI", 10},
                          {"greatest_at", "at", 19, true}});
    for (std::size_t i = 0; i < m_tSectors.size(); ++i) {
        const int iFrom = static_cast<int>(i) * m_iDegrees;
        Row(runtime::Format(iFrom, runtime::PictureThree) + "-" +
                runtime::Format(iFrom + m_iDegrees, runtime::PictureThree),
            m_tSectors[i]);
    }
    Row("all", m_tAll);
    m_tWriter.EndTable();
    WriteNotes();
    return !m_tAll.tRange.Empty();
}

void Coverage::WriteNotes() const {
    const auto CountText = [](std::int64_t l) { return std::to_string(l); };
    if (m_lPositions == 0) return m_tWriter.Note("No message tells a position: nothing can be said of the range.");
    if (m_lNoOwnPosition > 0 && m_tAll.tRange.Empty()) {
        return m_tWriter.Note(
            "The own position is in none of the files: nothing can be said of the range. "
            "--position tells it.");
    }
    m_tWriter.Note(
        "A sector begins with its first bearing and ends before its second; bearings are true, from us. "
        "95 %: so many of the sector's reports come from within that range. The greatest is a single report's.");
    m_tWriter.Note(m_bPosition ? "Ranges are from the position that --position tells."
                               : "Ranges are from the GPS position in the files.");
    m_tWriter.Note(
        CountText(m_lJumps) + " of " + CountText(m_lPositions) +
        " positions were dropped as jumps: farther from the ship's last one than 102.2 knots and 1 nm allow.");
    if (m_lNoOwnPosition > 0) {
        m_tWriter.Note(CountText(m_lNoOwnPosition) + " positions came before the first own one and are left out.");
    }
    if (m_lNoBearing > 0) {
        m_tWriter.Note(
            CountText(m_lNoBearing) +
            " positions have no bearing (the own one, or due north or south of it to the last digit) and are "
            "left out.");
    }
}

}  // namespace report
