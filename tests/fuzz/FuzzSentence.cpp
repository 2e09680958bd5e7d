// Fuzz target for a sentence's road: any bytes as one line, through the tests, the decoders and the texts, with the
// promises of each held against it.
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "decoders/GpsSentence.h"
#include "decoders/ReceiverCommand.h"
#include "decoders/SignalSentence.h"
#include "decoders/VdmAssembly.h"
#include "decoders/VdmBits.h"
#include "decoders/VdmFields.h"
#include "decoders/VdmMessage.h"
#include "nav/PositionText.h"
#include "nav/RangeBearing.h"
#include "nav/Trigonometry.h"
#include "nmea/NmeaChecksum.h"
#include "nmea/RmcSentence.h"
#include "nmea/Sentence.h"

namespace {

void Promise(bool bHeld) {
    if (!bHeld) std::abort();
}

void Framing(std::string_view sLine) {
    const nmea::SentenceFault eFault = nmea::TestSentence(sLine);
    Promise((sLine.size() < nmea::ShortestSentence) == (eFault == nmea::SentenceFault::Size));
    if (sLine.empty()) return;
    const std::string sWhole = std::string(sLine) + "*" + nmea::NmeaChecksum(sLine);
    Promise(sWhole.size() == sLine.size() + 3);
    Promise(sWhole.size() < nmea::ShortestSentence || nmea::TestSentence(sWhole) == nmea::SentenceFault::None);
}

void Position(double dLatitude, double dLongitude) {
    std::string sRange, sBearing;
    try {
        nav::RangeBearingText(50.5, -1.25, dLatitude, dLongitude, sRange, sBearing);
        Promise(!sRange.empty() && !sBearing.empty());
    } catch (const nav::DivisionByZero&) {
        Promise(sRange.empty() && sBearing.empty());
    }
}

void Report(decoders::VdmView lData) {
    decoders::VdmMmsi(lData);  // any number: characters outside the alphabet count too
    double dLatitude = 0, dLongitude = 0;
    std::string sLatitude, sLongitude;
    decoders::VdmLatitude(lData, dLatitude, sLatitude);
    decoders::VdmLongitude(lData, dLongitude, sLongitude);
    Position(dLatitude, dLongitude);
    for (const std::string& s : {decoders::VdmRateOfTurn(lData), decoders::VdmSpeed(lData), decoders::VdmCourse(lData),
                                 decoders::VdmHeading(lData)}) {
        Promise(!s.empty());
    }
}

// The sentence's payload behind what an earlier one left.
void Vdm(std::string_view sLine) {
    static decoders::VdmMessage tMessage;
    decoders::VdmSentence t;
    if (decoders::VdmTake(sLine, tMessage, t).empty() && t.CompletesMessage()) Report(tMessage.lData);
}

void Gps(std::string_view sLine) {
    for (const decoders::GpsPosition& t : {decoders::DecodeGll(sLine), decoders::DecodeRmc(sLine)}) {
        if (!t.sError.empty()) continue;
        Position(t.dLatitude, t.dLongitude);
        Promise(nav::ParseLatitude(nav::LatitudeToString(t.dLatitude)).has_value() || t.dLatitude > 90);
        std::string sMade;
        nmea::MakeRmc(sMade, t.sTime, t.sLatitude, t.sLongitude, {63'000'000'000});
        Promise(nmea::TestSentence(sMade) == nmea::SentenceFault::None);
    }
}

void Receiver(std::string_view sLine) {
    decoders::SignalSentence t;
    if (decoders::SignalSplit(sLine, t).empty()) decoders::SignalToDbm(t.sSignal);
    decoders::ChannelCommand(sLine);
    if (const auto iCode = decoders::IntervalCode(sLine)) Promise(!decoders::IntervalCommand(*iCode).empty());
    nav::ParseLatitude(sLine);
    nav::ParseLongitude(sLine);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t iSize) {
    const std::string sLine(reinterpret_cast<const char*>(pData), iSize);
    Framing(sLine);
    Vdm(sLine);
    Vdm("!AIVDM,1,1,,A," + sLine + ",0*00");
    Gps(sLine);
    Receiver(sLine);
    return 0;
}
