// Fuzz target for the texts that come from outside otherwise: the profile, port settings, record lines, text files.
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "app/RecordLine.h"
#include "platform/runtime/Convert.h"
#include "platform/runtime/Profile.h"
#include "platform/runtime/SerialSettings.h"
#include "platform/runtime/TextFiles.h"

namespace {

void Promise(bool bHeld) {
    if (!bHeld) std::abort();
}

// What was not written stays as it was, what was written is read again, and a second reading changes nothing.
void ProfileText(const std::string& sText) {
    const std::u16string sWide(sText.begin(), sText.end());
    runtime::Profile t(sWide);
    Promise(t.Text() == sWide);
    Promise(t.Read("Nmea Data", "Settings #0").size() <= runtime::Profile::LongestValue);
    t.Write("Nmea Data", "Settings #0", u"38400,n,8,1");
    Promise(t.Read("nmea data", "SETTINGS #0") == u"38400,n,8,1");
    const runtime::Profile tAgain(t.Text());
    Promise(tAgain.Read("Nmea Data", "Settings #0") == u"38400,n,8,1");
    Promise(tAgain.Text() == t.Text());
}

void Settings(std::string_view sText) {
    try {
        const runtime::SerialSettings t = runtime::ParseSerialSettings(sText);
        Promise(t.lBaud > 0 && t.iDataBits >= 5 && t.iDataBits <= 8);
        Promise(runtime::CharactersPerSecond(t) > 0);
    } catch (const runtime::SettingsError& tError) {
        Promise(*tError.what() != '\0');
    }
}

void Numbers(std::string_view sText) {
    runtime::LeadingNumber(sText);
    try {
        runtime::ToReal(sText);
        runtime::ToInteger(sText);
    } catch (const runtime::ConversionError& tError) {
        Promise(*tError.what() != '\0');
    }
}

void Record(std::string_view sText) {
    app::RecordStampReader tStamps;
    const auto dt = tStamps.Read(sText);
    Promise(app::RecordSentence(sText).size() <= sText.size());
    if (!dt) return;
    std::string sLine;
    app::WriteRecordLine(sLine, *dt, app::RecordSentence(sText));
    Promise(tStamps.Read(sLine)->lSeconds == dt->lSeconds);
}

// Every byte of a file comes back in a line or was a line end.
void File(const std::string& sText) {
    static const std::string sPath = "/tmp/tidewatch-fuzz-" + std::to_string(::getpid()) + ".txt";
    std::FILE* pFile = std::fopen(sPath.c_str(), "wb");
    if (!pFile) return;
    std::fwrite(sText.data(), 1, sText.size(), pFile);
    std::fclose(pFile);
    runtime::TextFiles tFiles;
    const std::int16_t iFile = tFiles.FreeFile();
    tFiles.OpenForInput(iFile, sPath);
    std::size_t iBytes = 0;
    while (!tFiles.AtEnd(iFile)) {
        const std::string_view sLine = tFiles.ReadLine(iFile);
        iBytes += sLine.size();
        Record(sLine);
    }
    for (const char c : sText) iBytes += c == '\r' || c == '\n' ? 1 : 0;
    Promise(iBytes == sText.size());
    tFiles.Close(iFile);
    ::unlink(sPath.c_str());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t iSize) {
    const std::string sText(reinterpret_cast<const char*>(pData), iSize);
    ProfileText(sText);
    Settings(sText);
    Numbers(sText);
    File(sText);
    return 0;
}
