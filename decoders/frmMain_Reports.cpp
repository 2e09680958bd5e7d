// Complete AIS messages: counted at once, shown in log and table when the lines at hand have been taken in.
#include <QScopedValueRollback>
#include <utility>

#include "app/frmMain.h"
#include "decoders/VdmBits.h"
#include "platform/runtime/Format.h"
#include "platform/toolkit/Scopes.h"

namespace app {

using decoders::AisReport;

namespace {

// How many characters of a type name are its number and equals sign; 0 where the header carries no name.
std::size_t NamePrefix(std::int32_t lMessageId) {
    if (lMessageId >= 1 && lMessageId <= 5) return 2;
    if (lMessageId == 18 || lMessageId == 19) return 3;
    return 0;
}

}  // namespace

void frmMain::KeepReport(decoders::VdmView lData, DateTime dt, std::string_view sChannel) {
    const std::int32_t lMessageId = lData[1];
    if (lMessageId > 0 && lMessageId <= targets::LastCountedId) ++m_lCounts[static_cast<std::size_t>(lMessageId)];
    if (m_tReports.Full()) DropReport();
    AisReport& t = m_tReports.Add();
    t.KeepValues(lData);
    t.dt = dt;
    t.sChannel = sChannel;
    t.bOwnDecoded = m_tPositionDue.has_value();
    t.dOwnLatitude = m_tPositionDue ? m_tPositionDue->dLatitude : m_dLatitude;
    t.dOwnLongitude = m_tPositionDue ? m_tPositionDue->dLongitude : m_dLongitude;
    m_bErrorLast = false;
    if (!m_bPlaybackBurst) t.KeepTexts();
}

// The oldest would be out of the table and of the AIS log by the end: it leaves its number and its ship, and what its
// levels leave.
void frmMain::DropReport() {
    const AisReport& t = m_tReports.Oldest();
    TargetHeard(t.dt, VdmMmsi(t.lData));
    ++m_lMessageNumber;
    if (!t.sSignal.empty()) {
        // They are out of the receiver log as well when enough others wait behind them.
        if (m_tReports.Signals() <= runtime::LogLines::Capacity) ShowReportLevels(t, false);
        m_bSortDue = true;
    }
    m_tReports.DropOldest();
}

void frmMain::ShowReports() {
    if (m_tReports.Empty()) return;
    const toolkit::RedrawOff tRedraw(grdTargetData);
    const std::string sError = m_bErrorLast ? StatusBar.PanelText(ui::PanelSummary) : std::string();
    for (int i = targets::FirstCountedId; i <= targets::LastCountedId; ++i) {
        if (const auto l = std::exchange(m_lCounts[static_cast<std::size_t>(i)], 0)) MessageCount(i, l);
    }
    if (std::exchange(m_bSortDue, false) && cmbTargetSort.ListIndex() == targets::SortBySignal) TargetSort();
    m_tReports.Drain([this](const AisReport& t) { ShowReport(t); });
    if (m_bErrorLast) ShowError(sError, false);  // it came after the reports
}

void frmMain::ShowReport(const AisReport& t) {
    // As things stood when it was heard.
    const QScopedValueRollback tOwnLatitude(m_dLatitude, t.dOwnLatitude);
    const QScopedValueRollback tOwnLongitude(m_dLongitude, t.dOwnLongitude);
    if (t.bOwnDecoded) {
        LatitudeFromString(LatitudeToString(t.dOwnLatitude), m_dLatitude, false);
        LongitudeFromString(LongitudeToString(t.dOwnLongitude), m_dLongitude, false);
    }
    const std::int32_t lMmsi = VdmMmsi(t.lData);
    const std::int32_t lMessageId = t.lData[1];
    const std::string& sName = MessageName(lMessageId);
    std::string& sLine = m_sLogLine;
    sLine = "Time=";
    runtime::AppendTime(sLine, t.dt);
    sLine += ", Ch=";
    sLine += t.sChannel;
    sLine += ", Id=";
    runtime::AppendInteger(sLine, lMessageId);
    sLine += ", MMSI=";
    runtime::AppendInteger(sLine, lMmsi);
    if (const std::size_t iPrefix = NamePrefix(lMessageId)) {
        sLine += ", ";
        sLine.append(sName, iPrefix);
    }
    LogAis(sLine);

    TargetUpdate(t.dt, lMmsi, t.sChannel, sName);
    const decoders::VdmLayout eLayout = decoders::LayoutOf(lMessageId);
    if (eLayout != decoders::VdmLayout::None) ShowReportPosition(t);
    if (eLayout == decoders::VdmLayout::ClassA) ShowReportMotion(t, true);
    if (eLayout == decoders::VdmLayout::ClassB) ShowReportMotion(t, false);
    TargetRefresh();
    if (!t.sSignal.empty()) ShowReportLevels(t, true);
    m_sVdmChannel = t.sChannel;
    m_dtVdm = t.dt;
}

void frmMain::ShowReportLevels(const AisReport& t, bool bInTable) {
    decoders::SignalSentence tFields;
    decoders::SignalSplit(t.sSignal, tFields);
    const decoders::SignalTexts tTexts = decoders::ShownSignal(tFields, t.bDbm);
    LogLevels(t.dt, t.sChannel, tTexts);
    if (bInTable) TargetSetSignal(tTexts.sSignal, tTexts.sThreshold);
}

void frmMain::ShowReportPosition(const AisReport& t) {
    double dLatitude = 0;
    double dLongitude = 0;
    std::string sLatitude;
    std::string sLongitude;
    VdmLatitude(t.lData, dLatitude, sLatitude);
    VdmLongitude(t.lData, dLongitude, sLongitude);
    std::string& sLine = m_sLogLine;
    sLine = "   Lat=";
    sLine += sLatitude;
    sLine += ", Lon=";
    sLine += sLongitude;
    LogAis(sLine);
    TargetSetPosition(sLatitude, sLongitude);

    for (const double dCoordinate : {m_dLatitude, m_dLongitude, dLatitude, dLongitude}) {
        if (dCoordinate == nav::PositionUnknown) return;
    }
    std::string sRange;
    std::string sBearing;
    try {
        RangeBearingText(dLatitude, dLongitude, sRange, sBearing);
    } catch (const nav::DivisionByZero&) {
        return;  // a target at the own position has no bearing: this message goes without
    }
    sLine = "   Rng=";
    sLine += sRange;
    sLine += ", Brg=";
    sLine += sBearing;
    LogAis(sLine);
    TargetSetRangeBearing(sRange, sBearing);
}

// Class B carries no rate of turn: its text is empty and its log line goes without.
void frmMain::ShowReportMotion(const AisReport& t, bool bRateOfTurn) {
    const std::string sRot = bRateOfTurn ? VdmRateOfTurn(t.lData) : std::string();
    const std::string sSog = VdmSpeed(t.lData);
    std::string& sLine = m_sLogLine;
    sLine = "   ";
    if (bRateOfTurn) {
        sLine += "Rot=";
        sLine += sRot;
        sLine += ", ";
    }
    sLine += "Sog=";
    sLine += sSog;
    LogAis(sLine);
    TargetSetMotion(sRot, sSog);
    TargetCheckInterval(t.lData[1], sRot, sSog);
    sLine = "   Cog=";
    sLine += VdmCourse(t.lData);
    sLine += ", Heading=";
    sLine += VdmHeading(t.lData);
    LogAis(sLine);
}

}  // namespace app
