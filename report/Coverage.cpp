// The sectors.
#include "report/Coverage.h"

#include "platform/runtime/Format.h"

namespace report {

namespace {

constexpr int Circle = 360;

}  // namespace

Coverage::Coverage(const Options& tOptions, Writer& tWriter)
    : m_iDegrees(tOptions.iSector),
      m_bPosition(tOptions.tPosition),
      m_tWriter(tWriter),
      m_tSectors(static_cast<std::size_t>(Circle / m_iDegrees)) {}

void Coverage::Sector::Add(const Report& t) {
    const double dRange = t.tFromUs.dRange;
    tRange.Add(dRange);
    if (dRange <= dGreatest && tRange.Count() > 1) return;
    dGreatest = dRange;
    lMmsi = t.lMmsi;
    dt = t.dt;
}

void Coverage::Message(const Report& t) {
    if (!t.bPosition) return;
    ++m_lPositions;
    const bool bJump = m_tTracks.Jumps(t);
    if (bJump) {
        ++m_lJumps;
    } else if (!t.bOwnPosition) {
        ++m_lNoOwnPosition;
    } else if (!t.bRange || t.tFromUs.dBearing != t.tFromUs.dBearing) {
        ++m_lNoBearing;  // not-a-number
    } else {
        m_tAll.Add(t);
        const auto iSector = static_cast<std::size_t>(t.tFromUs.dBearing / m_iDegrees);
        m_tSectors[iSector % m_tSectors.size()].Add(t);  // 360 degrees are north again
    }
}

void Coverage::Row(const std::string& sName, const Sector& t) {
    if (t.tRange.Empty()) return m_tWriter.Row({sName, std::int64_t{0}, {}, {}, {}, {}, {}});
    m_tWriter.Row({sName, t.tRange.Count(), Number{t.tRange.Median(), 1}, Number{t.tRange.Quantile(0.95), 1},
                   Number{t.dGreatest, 1}, std::int64_t{t.lMmsi}, IsoText(t.dt)});
}

bool Coverage::Finish() {
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
