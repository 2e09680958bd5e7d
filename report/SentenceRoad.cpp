// From a sentence to its events.
#include "report/SentenceRoad.h"

#include <algorithm>

#include "decoders/GpsSentence.h"
#include "decoders/SignalSentence.h"
#include "decoders/VdmAssembly.h"
#include "decoders/VdmFields.h"
#include "nmea/Sentence.h"
#include "platform/runtime/Convert.h"

namespace report {

namespace {

constexpr runtime::PortIndex OnlyPort = 0;          // the file does not tell of ports
constexpr std::int32_t LastPositionCharacter = 23;  // of every type with a position

Channel ChannelOf(std::string_view sChannel) {
    if (sChannel == "A") return Channel::A;
    return sChannel == "B" ? Channel::B : Channel::Other;
}

// Boards send whole numbers of two digits.
double LevelOf(std::string_view s) {
    const auto Digit = [s](std::size_t i) { return static_cast<unsigned>(s[i]) - '0'; };
    if (s.size() == 2 && Digit(0) <= 9 && Digit(1) <= 9) return Digit(0) * 10 + Digit(1);
    return runtime::LeadingNumber(s);
}

}  // namespace

void SentenceRoad::Take(LineEvent& tLine, std::string_view sSentence) {
    m_sSentence = sSentence;
    m_dt = tLine.dt;
    tLine.eKind = Dispatch();
    m_tCollector.Line(tLine);
}

// The window's order: a line that fails a test changes nothing, any other parts a message from the levels behind it.
LineKind SentenceRoad::Dispatch() {
    switch (nmea::TestSentence(m_sSentence)) {
        case nmea::SentenceFault::Size:
            return LineKind::Size;
        case nmea::SentenceFault::Checksum:
            return LineKind::Checksum;
        case nmea::SentenceFault::None:
            break;
    }
    m_eKind = LineKind::Other;
    const auto pDecode = nmea::FindDecoder<SentenceRoad>(m_sSentence);
    if (pDecode) (this->*pDecode)(OnlyPort);
    m_bLastVdm = pDecode == &SentenceRoad::VdmDecode;
    return m_eKind;
}

void SentenceRoad::Finish() {
    if (!m_bWaiting) return;
    m_bWaiting = false;
    // Not before: a ship's first message may wait in one file while another's is given out.
    m_tReport.iShip = m_tShips.Find(m_tReport.lMmsi, m_tReport.bNewShip);
    m_tCollector.Message(m_tReport);
}

// Levels belong to the newest message; later ones take the place of earlier ones, as in its row of the table.
void SentenceRoad::PnmlsDecode(runtime::PortIndex) {
    decoders::SignalSentence t;
    const bool bGood = decoders::SignalSplit(m_sSentence, t).empty();
    m_eKind = bGood ? LineKind::Signal : LineKind::BadSignal;
    if (!bGood || !m_bLastVdm || !m_bWaiting) return;
    m_tReport.bLevels = true;
    m_tReport.tLevels = {LevelOf(t.sSignal), LevelOf(t.sThreshold)};
}

void SentenceRoad::VdmDecode(runtime::PortIndex) {
    decoders::VdmSentence t;
    const bool bGood = decoders::VdmTake(m_sSentence, m_tVdmMessage, t).empty();
    m_eKind = bGood ? LineKind::Message : LineKind::BadMessage;
    if (bGood && t.CompletesMessage()) Keep(t.sChannel);
}

void SentenceRoad::Keep(std::string_view sChannel) {
    Finish();
    const auto& lData = m_tVdmMessage.lData;
    // Few messages are longer than a position report, whose fields end at 23.
    const auto lCount = static_cast<std::size_t>(std::max(m_tVdmMessage.lLength, LastPositionCharacter)) + 1;
    std::copy_n(lData.begin(), lCount, m_lData.begin());
    Report& t = m_tReport;
    t.dt = m_dt;
    t.eChannel = ChannelOf(sChannel);
    t.lData = m_lData;
    t.lLength = m_tVdmMessage.lLength;
    t.lType = m_lData[1];
    t.lMmsi = decoders::VdmMmsi(t.lData);
    t.bLevels = false;
    KeepPosition();
    m_bWaiting = true;
}

// A message too short for its position has none: what the store still holds of others is not its own.
void SentenceRoad::KeepPosition() {
    Report& t = m_tReport;
    t.bPosition =
        t.lLength >= LastPositionCharacter && decoders::VdmPositionDegrees(t.lData, t.dLatitude, t.dLongitude);
    t.bOwnPosition = m_tOwn.Get().has_value();
    t.bRange = false;
    if (t.bPosition && t.bOwnPosition) {
        t.bRange = t.tFromUs.Measure(m_tOwn.Place(), {t.dLatitude, t.dLongitude});
    } else {
        t.tFromUs.Forget();
    }
}

void SentenceRoad::GllDecode(runtime::PortIndex) { KeepGps(decoders::DecodeGll(m_sSentence)); }

void SentenceRoad::RmcDecode(runtime::PortIndex) { KeepGps(decoders::DecodeRmc(m_sSentence)); }

void SentenceRoad::KeepGps(const decoders::GpsPosition& t) {
    m_eKind = t.sError.empty() ? LineKind::Gps : LineKind::BadGps;
    if (t.sError.empty()) m_tOwn.Take(t);
}

}  // namespace report
