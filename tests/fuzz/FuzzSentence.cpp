// Fuzz target for a sentence's road: any bytes as they come in on a port, cut into lines, tested, sent to their decoder
// and read into values and texts; each step held against a second reading and against what it promises. A line whose
// checksum fails goes on with the right one, so that what lies behind the test is reached.
#include <cmath>
#include <string>

#include "decoders/GpsSentence.h"
#include "decoders/SignalSentence.h"
#include "decoders/VdmAssembly.h"
#include "decoders/VdmFields.h"
#include "decoders/VdmMessage.h"
#include "nav/PositionReading.h"
#include "nav/PositionText.h"
#include "nav/RangeBearing.h"
#include "nav/Trigonometry.h"
#include "nmea/LineBuffer.h"
#include "nmea/NmeaChecksum.h"
#include "nmea/RmcSentence.h"
#include "nmea/Sentence.h"
#include "platform/runtime/Convert.h"
#include "tests/fuzz/Harness.h"
#include "tests/fuzz/SentenceReading.h"

namespace {

using fuzz::Promise;

// What an input port keeps from line to line, in the program and by the second reading.
struct Port {
    decoders::VdmMessage tMessage;
    fuzz::Payload tPayload;
};

constexpr nav::Position Own{50.5, -1.25};

void Range(double dLatitude, double dLongitude) {
    try {
        const nav::RangeAndBearing t = nav::RangeBearing(Own.dLatitude, Own.dLongitude, dLatitude, dLongitude);
        Promise(std::isnan(t.dRange) || (t.dRange >= 0 && t.dRange <= 180 * 60));
        Promise(std::isnan(t.dBearing) || (t.dBearing >= 0 && t.dBearing <= 360));
    } catch (const nav::DivisionByZero&) {
    }
}

// The text says what the degrees are, to half of its last digit.
void PositionText(double dDegrees, const std::string& sText, std::optional<double> (*pParse)(std::string_view)) {
    const std::optional<double> dRead = pParse(sText);
    Promise(dRead && std::fabs(*dRead - dDegrees) <= 0.0050001 / 60 + std::fabs(dDegrees) * 1e-13);
}

struct Place {  // where a message type has its fields
    std::size_t iLongitude, iLatitude, iSpeed, iCourse, iHeading;
};
constexpr Place ClassA{61, 89, 50, 116, 128};
constexpr Place Base{79, 107, 0, 0, 0};
constexpr Place ClassB{57, 85, 46, 112, 124};

const Place* PlaceOf(std::int32_t lType) {
    if (lType >= 1 && lType <= 3) return &ClassA;
    if (lType == 4) return &Base;
    return lType == 18 || lType == 19 ? &ClassB : nullptr;
}

void Coordinates(decoders::VdmView lData, const fuzz::Payload& tPayload, const Place& tPlace) {
    double dLatitude = 0, dLongitude = 0;
    std::string sLatitude, sLongitude;
    decoders::VdmLatitude(lData, dLatitude, sLatitude);
    decoders::VdmLongitude(lData, dLongitude, sLongitude);
    const std::int64_t lLatitude = tPayload.SignedBits(tPlace.iLatitude, tPlace.iLatitude + 26);
    std::int64_t lLongitude = tPayload.Bits(tPlace.iLongitude, tPlace.iLongitude + 27);
    // Of types 1 to 4 an odd longitude before a southern latitude is the next even one.
    if (&tPlace != &ClassB && lLatitude < 0) lLongitude += lLongitude & 1;
    const bool bLongitude = lLongitude != 108600000;
    if (lLongitude >= 1 << 27) lLongitude -= 1 << 28;
    Promise(dLatitude == (lLatitude == 54600000 ? -999.0 : static_cast<double>(lLatitude) / 600000));
    Promise(dLongitude == (bLongitude ? static_cast<double>(lLongitude) / 600000 : -999.0));
    Promise((sLatitude == "n/a") == (dLatitude == -999.0) && (sLongitude == "n/a") == !bLongitude);
    if (dLatitude != -999.0) PositionText(dLatitude, sLatitude, nav::ParseLatitude);
    if (bLongitude) PositionText(dLongitude, sLongitude, nav::ParseLongitude);
    if (dLatitude != -999.0 && bLongitude) Range(dLatitude, dLongitude);
}

void Motion(decoders::VdmView lData, const fuzz::Payload& tPayload, const Place& tPlace) {
    // Of types 18 and 19 the two reserved bits before the speed are read with it.
    const std::int64_t lSpeed = tPayload.Bits(tPlace.iSpeed - (&tPlace == &ClassB ? 2 : 0), tPlace.iSpeed + 9);
    Promise(decoders::VdmSpeed(lData) == (lSpeed == 1023 ? "n/a" : fuzz::Tenths(lSpeed)));
    const std::int64_t lCourse = tPayload.Bits(tPlace.iCourse, tPlace.iCourse + 11);
    Promise(decoders::VdmCourse(lData) == (lCourse > 3600 ? "err" : lCourse == 3600 ? "n/a" : fuzz::Tenths(lCourse)));
    const std::int64_t lHeading = tPayload.Bits(tPlace.iHeading, tPlace.iHeading + 8);
    Promise(decoders::VdmHeading(lData) == (lHeading == 511 ? "n/a" : std::to_string(lHeading)));
    if (&tPlace != &ClassA) return;
    const std::int64_t lTurn = tPayload.SignedBits(42, 49);
    const std::string sTurn = decoders::VdmRateOfTurn(lData);
    if (lTurn == -128 || lTurn == 0) {
        Promise(sTurn == (lTurn == 0 ? "0" : "n/a"));
    } else if (lTurn == 127 || lTurn == -127) {
        Promise(sTurn == (lTurn > 0 ? "R>720" : "L>720"));
    } else {
        const double dRate = static_cast<double>(lTurn * lTurn) / (4.733 * 4.733);
        Promise(sTurn[0] == (lTurn > 0 ? '+' : '-'));
        Promise(std::fabs(runtime::ToReal(sTurn.substr(1)) - dRate) <= (dRate < 10 ? 0.0500001 : 0.500001));
    }
}

// A complete message. Characters outside the alphabet are read by the same rules, without a promise on what comes out.
void Message(decoders::VdmView lData, const fuzz::Payload& tPayload) {
    constexpr std::size_t Characters = 23;
    const Place* pPlace = PlaceOf(lData[1]);
    const bool bPlain = tPayload.Plain(Characters);
    if (bPlain) Promise(lData[1] == tPayload.Bits(0, 5) && decoders::VdmMmsi(lData) == tPayload.Bits(8, 37));
    double dLatitude = 0, dLongitude = 0;
    const bool bPosition = decoders::VdmPositionDegrees(lData, dLatitude, dLongitude);
    Promise(!bPosition || (std::fabs(dLatitude) <= 90 && std::fabs(dLongitude) <= 180));
    if (pPlace && bPlain) Coordinates(lData, tPayload, *pPlace);
    if (pPlace && bPlain && pPlace != &Base) return Motion(lData, tPayload, *pPlace);
    std::string sText;
    decoders::VdmLatitude(lData, dLatitude, sText);
    Promise(sText.empty() == !pPlace);
    const bool bMotion = pPlace && pPlace != &Base;
    Promise((decoders::VdmSpeed(lData) == "Err") == !bMotion && (decoders::VdmCourse(lData) == "Err") == !bMotion);
    Promise((decoders::VdmHeading(lData) == "Err") == !bMotion);
    Promise((decoders::VdmRateOfTurn(lData) == "Err") == (pPlace != &ClassA));
}

// The first field that fails, by the second reading; none is the empty text.
std::string_view VdmError(const std::vector<std::string_view>& sFields) {
    constexpr std::array<std::string_view, 5> Errors = {"Error - Sentences, ", "Error - Sentence, ",
                                                        "Error - SequenceId, ", "Error - Channel, ", "Error, "};
    for (std::size_t i = 0; i < Errors.size(); ++i) {
        if (i >= sFields.size() || (sFields[i].empty() && i != 2)) return Errors[i];
        const bool bDigit = sFields[i].size() == 1 && sFields[i][0] >= '0' && sFields[i][0] <= '9';  // nearly always
        if (i > 2 || sFields[i].empty() || bDigit) continue;
        try {
            runtime::ToInteger(sFields[i]);
        } catch (const runtime::ConversionError&) {
            return Errors[i];
        }
    }
    return {};
}

void Vdm(std::string_view sLine, Port& tPort) {
    const std::vector<std::string_view> sFields = fuzz::ReadFields(sLine, 5);
    std::string_view sExpected = VdmError(sFields);
    const bool bFirst = sExpected.empty() && runtime::ToInteger(sFields[1]) == 1;
    const std::size_t iHeld = bFirst ? 0 : tPort.tPayload.Count();
    if (sExpected.empty() && iHeld + sFields[4].size() > 512) sExpected = "Error, ";

    decoders::VdmSentence t;
    Promise(decoders::VdmTake(sLine, tPort.tMessage, t) == sExpected);
    if (!sExpected.empty()) return;
    if (bFirst) tPort.tPayload.Clear();
    tPort.tPayload.Add(sFields[4]);
    Promise(t.sChannel == sFields[3] && t.sPayload == sFields[4]);
    Promise(tPort.tMessage.lLength == static_cast<std::int32_t>(tPort.tPayload.Count()));
    for (std::size_t i = iHeld; i < tPort.tPayload.Count(); ++i) {
        Promise(tPort.tMessage.lData[i + 1] == tPort.tPayload.Value(i));
    }
    if (t.CompletesMessage()) Message(tPort.tMessage.lData, tPort.tPayload);
}

bool HasLetter(std::string_view sPiece, char cPositive, char cNegative) {
    return sPiece.size() > 2 && sPiece[sPiece.size() - 2] == ',' &&
           (sPiece.back() == cPositive || sPiece.back() == cNegative);
}

// "4916.45,N" with two digits of degrees.
double DegreesOf(std::string_view sPiece, std::size_t iDigits) {
    const double dDegrees = runtime::ToReal(sPiece.substr(0, iDigits)) +
                            runtime::ToReal(sPiece.substr(iDigits, sPiece.size() - 2 - iDigits)) / 60;
    return sPiece.back() == 'S' || sPiece.back() == 'W' ? -dDegrees : dDegrees;
}

void Gps(std::string_view sLine, bool bGll) {
    const decoders::GpsPosition t = bGll ? decoders::DecodeGll(sLine) : decoders::DecodeRmc(sLine);
    Promise(t.sError.empty() || (t.sError.starts_with("Error - ") && t.sError.ends_with(", ")));
    Promise(t.sError.empty() == (t.sTime.size() == 6));
    if (!t.sLatitude.empty()) Promise(HasLetter(t.sLatitude, 'N', 'S') && t.dLatitude == DegreesOf(t.sLatitude, 2));
    if (!t.sLongitude.empty()) Promise(HasLetter(t.sLongitude, 'E', 'W') && t.dLongitude == DegreesOf(t.sLongitude, 3));
    if (!t.sError.empty()) return;
    Promise(!t.sLatitude.empty() && !t.sLongitude.empty() && t.sUtc.size() == 8);
    Range(t.dLatitude, t.dLongitude);
    if (std::fabs(t.dLatitude) < 1e6) PositionText(t.dLatitude, nav::LatitudeToString(t.dLatitude), nav::ParseLatitude);
    std::string sMade;
    nmea::MakeRmc(sMade, t.sTime, t.sLatitude, t.sLongitude, {63'000'000'000});
    Promise(sMade.starts_with("$ECRMC,") &&
            sMade.ends_with('*' + fuzz::ReadChecksum({sMade.data(), sMade.size() - 3})));
    const decoders::GpsPosition tAgain = decoders::DecodeRmc(sMade);
    Promise(tAgain.sError.empty() && tAgain.dLatitude == t.dLatitude && tAgain.dLongitude == t.dLongitude);
}

void Signal(std::string_view sLine) {
    const std::vector<std::string_view> sFields = fuzz::ReadFields(sLine, 2);
    decoders::SignalSentence t;
    const std::string_view sError = decoders::SignalSplit(sLine, t);
    if (sFields.empty() || sFields[0].empty()) return Promise(sError == "Error - Signal, ");
    if (sFields.size() < 2 || sFields[1].empty()) return Promise(sError == "Error - Threshold, ");
    const std::size_t iStart = static_cast<std::size_t>(sFields[1].data() - sLine.data()) + sFields[1].size() + 1;
    const std::size_t iEnd = sLine.find('*', iStart);
    if (iEnd == std::string_view::npos || iEnd == iStart) return Promise(sError == "Error - Interval, ");
    Promise(sError.empty() && t.sSignal == sFields[0] && t.sThreshold == sFields[1]);
    Promise(t.sInterval == sLine.substr(iStart, iEnd - iStart));
    const decoders::SignalTexts tRaw = decoders::ShownSignal(t, false);
    Promise(tRaw.sSignal == t.sSignal && tRaw.sThreshold == t.sThreshold);
    Promise(!decoders::ShownSignal(t, true).sSignal.empty());
}

struct Decoders {  // by which the table's choice is told
    void PnmlsDecode(runtime::PortIndex) {}
    void VdmDecode(runtime::PortIndex) {}
    void GllDecode(runtime::PortIndex) {}
    void RmcDecode(runtime::PortIndex) {}
};

void Dispatch(std::string_view sLine, Port& tPort) {
    const auto pDecoder = nmea::FindDecoder<Decoders>(sLine);
    const std::string_view sKind = fuzz::ReadKind(sLine);
    Promise((pDecoder == &Decoders::PnmlsDecode) == (sKind == "PNMLS"));
    Promise((pDecoder == &Decoders::VdmDecode) == (sKind == "AIVDM"));
    Promise((pDecoder == &Decoders::GllDecode) == (sKind == "GLL"));
    Promise((pDecoder == &Decoders::RmcDecode) == (sKind == "RMC"));
    if (sKind == "PNMLS") Signal(sLine);
    if (sKind == "AIVDM") Vdm(sLine, tPort);
    if (sKind == "GLL" || sKind == "RMC") Gps(sLine, sKind == "GLL");
}

void Line(std::string_view sLine, Port& tPort) {
    const nmea::SentenceFault eFault = nmea::TestSentence(sLine);
    Promise((eFault == nmea::SentenceFault::Size) == (sLine.size() < 6));
    if (eFault == nmea::SentenceFault::Size) return;
    const std::string_view sBody = sLine.substr(0, sLine.size() - 3);
    const std::string sChecksum = fuzz::ReadChecksum(sBody);
    Promise(nmea::NmeaChecksum(sBody) == sChecksum);
    const bool bFails = sLine[sLine.size() - 3] == '*' && sLine.substr(sLine.size() - 2) != sChecksum;
    Promise((eFault == nmea::SentenceFault::Checksum) == bFails);
    if (!bFails) return Dispatch(sLine, tPort);
    const std::string sRight = std::string(sBody) + '*' + sChecksum;
    Promise(nmea::TestSentence(sRight) == nmea::SentenceFault::None);
    Dispatch(sRight, tPort);
}

// The program's lines, of bytes that come in two pieces.
void Lines(std::string_view sBytes, Port& tPort) {
    const std::vector<std::string> sExpected = fuzz::ReadLines(sBytes);
    const std::size_t iCut = static_cast<unsigned char>(sBytes[sBytes.size() / 2]) % (sBytes.size() + 1);
    nmea::LineBuffer tBuffer;
    std::size_t iLines = 0;
    for (std::string_view sPiece : {sBytes.substr(0, iCut), sBytes.substr(iCut)}) {
        while (tBuffer.Take(sPiece)) {
            Promise(iLines < sExpected.size() && std::string_view(tBuffer) == sExpected[iLines++]);
            Line(tBuffer, tPort);
            tBuffer.clear();
        }
        tBuffer.Keep();
    }
    Promise(iLines == sExpected.size());
    if (!tBuffer.empty()) Line(tBuffer, tPort);  // a file without a last line end: one sentence, bare
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t iSize) {
    static Port tPort;  // made once and emptied each time: that is quicker
    tPort.tMessage = {};
    tPort.tPayload.Clear();
    const std::string_view sBytes = fuzz::Text(pData, iSize);
    if (sBytes.empty()) return 0;
    const fuzz::Cost tCost = fuzz::CostOf([sBytes] { Lines(sBytes, tPort); });
    fuzz::PromiseLinear(tCost, iSize, {4000, 60}, {100, 2});
    return 0;
}
