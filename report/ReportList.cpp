// The row of a message. Its fields read as in the window's AIS log.
#include "report/ReportList.h"

#include <cmath>

#include "decoders/VdmBits.h"
#include "decoders/VdmFields.h"
#include "platform/runtime/Convert.h"

namespace report {

namespace {

constexpr int DegreeDecimals = 6;                // ten-thousandths of a minute are 0.0000017 degrees
constexpr std::int32_t LastFieldCharacter = 23;  // of speed, course and heading

// "n/a" and a type that has no such field are nothing, "R>720" is a text.
Cell FieldCell(bool bThere, const std::string& s, int iDecimals) {
    if (!bThere || s == "n/a" || s == "Err" || s == "err") return {};
    try {
        return Number{runtime::ToReal(s), iDecimals};
    } catch (const runtime::ConversionError&) {
        return s;
    }
}

}  // namespace

ReportList::ReportList(const Options& tOptions, Writer& tWriter) : m_tScale(tOptions.bRaw), m_tWriter(tWriter) {
    m_tWriter.BeginTable("reports", "Reports",
                         {{"time", "time", 19, true},
                          {"channel", "ch", 5, true},
                          {"type", "type", 4},
                          {"mmsi", "MMSI", 9},
                          {"latitude", "latitude", 10},
                          {"longitude", "longitude", 11},
                          {"range", "nm", 6},
                          {"bearing", "brg", 5},
                          {"turn", "rot", 5},
                          {"speed", "sog", 5},
                          {"course", "cog", 5},
                          {"heading", "hdg", 3},
                          {"signal", "sig", 6},
                          {"threshold", "thr", 6},
                          {"snr", "snr", 5}});
}

void ReportList::Message(const Report& t) {
    ++m_lReports;
    const auto NumberCell = [](bool bThere, double d, int iDecimals) {
        return bThere && !std::isnan(d) ? Cell(Number{d, iDecimals}) : Cell();
    };
    const decoders::VdmLayout eLayout = decoders::LayoutOf(t.lType);
    const bool bWhole = t.lLength >= LastFieldCharacter;
    const bool bMoves = bWhole && (eLayout == decoders::VdmLayout::ClassA || eLayout == decoders::VdmLayout::ClassB);
    const bool bTurns = bWhole && eLayout == decoders::VdmLayout::ClassA;
    const ShownLevels tLevels = t.bLevels ? m_tScale.Show(t.tLevels) : ShownLevels{};
    m_tWriter.Row({IsoText(t.dt), std::string(ChannelNames[static_cast<std::size_t>(t.eChannel)]),
                   std::int64_t{t.lType}, std::int64_t{t.lMmsi}, NumberCell(t.bPosition, t.dLatitude, DegreeDecimals),
                   NumberCell(t.bPosition, t.dLongitude, DegreeDecimals), NumberCell(t.bRange, t.tFromUs.Range(), 1),
                   NumberCell(t.bRange, t.tFromUs.Bearing(), 1), FieldCell(bTurns, decoders::VdmRateOfTurn(t.lData), 1),
                   FieldCell(bMoves, decoders::VdmSpeed(t.lData), 1),
                   FieldCell(bMoves, decoders::VdmCourse(t.lData), 1),
                   FieldCell(bMoves, decoders::VdmHeading(t.lData), 0), NumberCell(t.bLevels, tLevels.dSignal, 1),
                   NumberCell(t.bLevels, tLevels.dThreshold, 1), NumberCell(t.bLevels, tLevels.dSnr, 1)});
}

bool ReportList::Finish() {
    m_tWriter.EndTable();
    m_tWriter.Note(
        "Positions in degrees, north and east positive; bearing, course and heading in degrees true; rot in "
        "degrees in a minute, sog in knots.");
    if (m_lReports == 0) m_tWriter.Note("There is no AIS message.");
    return m_lReports > 0;
}

}  // namespace report
