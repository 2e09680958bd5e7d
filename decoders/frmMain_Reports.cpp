// Complete AIS messages: counted and registered at once, shown in log and table when the batch ends.
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
    MessageCount(lData[1]);
    if (m_lReports == m_tReports.size()) {
        // The oldest would be out of the table and of the AIS log by the end: it only counts.
        DropOldestSignal();
        m_lFirstReport = (m_lFirstReport + 1) % m_tReports.size();
        --m_lReports;
        ++m_lMessageNumber;
    }
    AisReport& t = m_tReports[(m_lFirstReport + m_lReports++) % m_tReports.size()];
    t.KeepValues(lData);
    t.dt = dt;
    t.lMmsi = VdmMmsi(lData);
    t.lLast = TargetHeard(dt, t.lMmsi);
    t.sChannel = sChannel;
    t.dOwnLatitude = m_dLatitude;
    t.dOwnLongitude = m_dLongitude;
    t.bSignal = false;
    m_bSummaryDue = true;
}

// Its levels are out of the receiver log only when enough others wait behind them.
void frmMain::DropOldestSignal() {
    const AisReport& t = m_tReports[m_lFirstReport];
    if (!t.bSignal) return;
    --m_lSignals;
    // Its row is gone by the end, but not the sort that its levels bring, which makes the first cell the current one.
    if (cmbTargetSort.ListIndex() == targets::SortBySignal) TargetSort();
    if (m_lSignals < runtime::LogLines::Capacity) ShowSignal(t.dt, &t.sChannel, t.sSignal, t.sThreshold, t.sInterval);
}

void frmMain::ShowReports() {
    if (m_lReports == 0) return;
    const toolkit::RedrawOff tRedraw(grdTargetData);
    for (; m_lReports > 0; --m_lReports) {
        ShowReport(m_tReports[m_lFirstReport]);
        m_lFirstReport = (m_lFirstReport + 1) % m_tReports.size();
    }
    m_lSignals = 0;
    if (m_bSummaryDue) ShowSummary();
}

void frmMain::ShowReport(const AisReport& t) {
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
    runtime::AppendInteger(sLine, t.lMmsi);
    if (const std::size_t lPrefix = NamePrefix(lMessageId)) {
        sLine += ", ";
        sLine.append(sName, lPrefix);
    }
    LogAis(sLine);

    TargetAddRow(t.dt, t.lMmsi, t.sChannel, sName, t.lLast);
    const decoders::VdmLayout eLayout = decoders::LayoutOf(lMessageId);
    if (eLayout != decoders::VdmLayout::None) ShowReportPosition(t);
    if (eLayout == decoders::VdmLayout::ClassA) ShowReportMotion(t, true);
    if (eLayout == decoders::VdmLayout::ClassB) ShowReportMotion(t, false);
    TargetRefresh();
    if (!t.bSignal) return;
    ShowSignal(t.dt, &t.sChannel, t.sSignal, t.sThreshold, t.sInterval);
    TargetSetSignal(t.sSignal, t.sThreshold);
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

    for (const double dCoordinate : {t.dOwnLatitude, t.dOwnLongitude, dLatitude, dLongitude}) {
        if (dCoordinate == nav::PositionUnknown) return;
    }
    std::string sRange;
    std::string sBearing;
    try {
        nav::RangeBearingText(t.dOwnLatitude, t.dOwnLongitude, dLatitude, dLongitude, sRange, sBearing);
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
