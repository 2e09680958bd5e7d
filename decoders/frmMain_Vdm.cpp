// AIS messages: sentences assembled per port, complete messages into the log, the counts and the target table.
#include "app/frmMain.h"
#include "decoders/VdmBits.h"
#include "decoders/VdmSentence.h"
#include "platform/runtime/Format.h"
#include "platform/toolkit/Scopes.h"

namespace app {

namespace {

// How many characters of a type name are its number and equals sign; 0 where the header carries no name.
std::size_t NamePrefix(std::int32_t lMessageId) {
    if (lMessageId >= 1 && lMessageId <= 5) return 2;
    if (lMessageId == 18 || lMessageId == 19) return 3;
    return 0;
}

}  // namespace

void frmMain::VdmDecode(PortIndex Index) {
    const std::string& sSentence = m_sCommBuffer(Index);
    decoders::VdmSentence t;
    std::string_view sError = decoders::VdmSplit(sSentence, t);
    decoders::VdmMessage& tMessage = m_tVdmMessage(Index);
    const std::int32_t lHeld = t.lSentence == 1 ? 0 : tMessage.lLength;
    const auto lNew = static_cast<std::int64_t>(t.sPayload.size());
    if (sError.empty() && lHeld + lNew > decoders::VdmCapacity) sError = "Error, ";
    if (!sError.empty()) {
        m_sLogLine = sError;
        m_sLogLine += sSentence;
        LogAis(m_sLogLine);
        return;
    }
    decoders::VdmUnarmor(t.sPayload, tMessage.lData, lHeld);
    tMessage.lLength = lHeld + static_cast<std::int32_t>(lNew);
    if (t.lSentences != t.lSentence) return;

    const toolkit::RedrawOff tRedraw(grdTargetData);
    VdmReport(tMessage.lData, m_dtCommLast(Index), t.sChannel);
    m_sVdmChannel = t.sChannel;
    m_dtVdm = m_dtCommLast(Index);
}

void frmMain::VdmReport(const decoders::VdmValues& lData, DateTime dt, std::string_view sChannel) {
    const std::int32_t lMessageId = lData[1];
    MessageCount(lMessageId);
    const std::int32_t lMmsi = VdmMmsi(lData);
    const std::string& sName = MessageName(lMessageId);

    std::string& sLine = m_sLogLine;
    sLine = "Time=";
    runtime::AppendTime(sLine, dt);
    sLine += ", Ch=";
    sLine += sChannel;
    sLine += ", Id=";
    runtime::AppendInteger(sLine, lMessageId);
    sLine += ", MMSI=";
    runtime::AppendInteger(sLine, lMmsi);
    if (const std::size_t lPrefix = NamePrefix(lMessageId)) {
        sLine += ", ";
        sLine.append(sName, lPrefix);
    }
    LogAis(sLine);

    TargetUpdate(dt, lMmsi, sChannel, sName);
    switch (decoders::LayoutOf(lMessageId)) {
        case decoders::VdmLayout::ClassA:
            VdmReportPosition(lData);
            VdmReportMotion(lData, lMessageId, true);
            break;
        case decoders::VdmLayout::Base: VdmReportPosition(lData); break;
        case decoders::VdmLayout::ClassB:
            VdmReportPosition(lData);
            VdmReportMotion(lData, lMessageId, false);
            break;
        case decoders::VdmLayout::None: break;
    }
    TargetRefresh();
}

void frmMain::VdmReportPosition(const decoders::VdmValues& lData) {
    double dLatitude = 0;
    double dLongitude = 0;
    std::string sLatitude;
    std::string sLongitude;
    VdmLatitude(lData, dLatitude, sLatitude);
    VdmLongitude(lData, dLongitude, sLongitude);
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
void frmMain::VdmReportMotion(const decoders::VdmValues& lData, std::int32_t lMessageId, bool bRateOfTurn) {
    const std::string sRot = bRateOfTurn ? VdmRateOfTurn(lData) : std::string();
    const std::string sSog = VdmSpeed(lData);
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
    TargetCheckInterval(lMessageId, sRot, sSog);
    sLine = "   Cog=";
    sLine += VdmCourse(lData);
    sLine += ", Heading=";
    sLine += VdmHeading(lData);
    LogAis(sLine);
}

}  // namespace app
