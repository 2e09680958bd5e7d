// Fuzz target for what is typed into fields or stands in files as one short text: port settings, numbers, record
// stamps, the unattended keys of a profile and the receiver's commands.
#include <cmath>
#include <string>

#include "app/RecordLine.h"
#include "app/UnattendedKeys.h"
#include "decoders/ReceiverCommand.h"
#include "nmea/Sentence.h"
#include "platform/runtime/Convert.h"
#include "platform/runtime/SerialSettings.h"
#include "tests/fuzz/Harness.h"

namespace {

using fuzz::Promise;

// Settings that are taken mean the same when they are written out.
void Settings(std::string_view sText) {
    try {
        const runtime::SerialSettings t = runtime::ParseSerialSettings(sText);
        Promise(t.lBaud > 0 && t.iDataBits >= 5 && t.iDataBits <= 8);
        Promise(std::string_view("neoms").find(t.cParity) != std::string_view::npos);
        const char* sStop = t.eStopBits == runtime::StopBits::One ? "1" : "2";
        if (t.eStopBits == runtime::StopBits::OneAndHalf) sStop = "1.5";
        const std::string sWritten =
            std::to_string(t.lBaud) + ',' + t.cParity + ',' + std::to_string(t.iDataBits) + ',' + sStop;
        const runtime::SerialSettings tAgain = runtime::ParseSerialSettings(sWritten);
        Promise(tAgain.lBaud == t.lBaud && tAgain.cParity == t.cParity && tAgain.iDataBits == t.iDataBits);
        Promise(tAgain.eStopBits == t.eStopBits);
        const double dBits = 1 + t.iDataBits + (t.cParity == 'n' ? 0 : 1) + std::atof(sStop);
        Promise(std::fabs(runtime::CharactersPerSecond(t) - t.lBaud / dBits) <= 1e-9 * t.lBaud);
    } catch (const runtime::SettingsError& tError) {
        Promise(*tError.what() != '\0');
    }
}

// The three readings of a number say the same where all three have one.
void Numbers(std::string_view sText) {
    const double dLeading = runtime::LeadingNumber(sText);
    Promise(!std::isnan(dLeading));
    try {
        const double dReal = runtime::ToReal(sText);
        Promise(std::isfinite(dReal) && dReal == dLeading);
        const std::string sZero(sText);
        Promise(dReal == std::strtod(sZero.c_str(), nullptr));
        const std::int32_t lWhole = runtime::ToInteger(sText);
        Promise(std::fabs(lWhole - dReal) < 0.5 || (std::fabs(lWhole - dReal) == 0.5 && lWhole % 2 == 0));
    } catch (const runtime::ConversionError& tError) {
        Promise(*tError.what() != '\0');
    }
}

// A stamp that is read is written the same.
void Stamp(std::string_view sText) {
    app::RecordStampReader tStamps;
    const auto dt = tStamps.Read(sText);
    Promise(app::RecordSentence(sText).size() <= sText.size());
    if (!dt) return;
    std::string sLine;
    app::WriteRecordLine(sLine, *dt, app::RecordSentence(sText));
    Promise(sLine.substr(0, app::RecordStampLength) == sText.substr(0, app::RecordStampLength));
    Promise(app::RecordSentence(sLine) == app::RecordSentence(sText));
    Promise(tStamps.Read(sLine)->lSeconds == dt->lSeconds);
}

void Unattended(std::string_view sText) {
    std::u16string sWide = u"[Unattended]\r\n";
    for (const char c : sText) sWide += static_cast<unsigned char>(c);
    std::vector<app::WrongValue> tWrong;
    const app::UnattendedKeys t = app::ReadUnattendedKeys(runtime::Profile(sWide), tWrong);
    Promise(t.lKeepDays.value_or(1) > 0 && t.lKeepBytes.value_or(1) > 0);
    Promise(tWrong.size() <= 6);
    for (const app::WrongValue& tValue : tWrong) Promise(!tValue.sValue.empty() && !tValue.sWanted.empty());
}

// What the user types for the receiver.
void Command(std::string_view sText) {
    const auto Whole = [](std::string_view s) {
        return s.ends_with("\r\n") && nmea::TestSentence(s.substr(0, s.size() - 2)) == nmea::SentenceFault::None;
    };
    Promise(Whole(decoders::ChannelCommand(sText)));
    if (const auto iCode = decoders::IntervalCode(sText)) Promise(Whole(decoders::IntervalCommand(*iCode)));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t iSize) {
    const std::string_view sText = fuzz::Text(pData, iSize);
    const fuzz::Cost tCost = fuzz::CostOf([sText] {
        Settings(sText);
        Numbers(sText);
        Stamp(sText);
        Unattended(sText);
        Command(sText);
    });
    fuzz::PromiseLinear(tCost, iSize, {20000, 100}, {600, 4});
    return 0;
}
