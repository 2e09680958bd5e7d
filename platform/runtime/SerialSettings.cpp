// Reads the settings string field by field and says of the first wrong one what is wrong with it.
#include "platform/runtime/SerialSettings.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string>
#include <system_error>

namespace runtime {
namespace {

constexpr std::array<const char*, 4> FieldNames{"baud rate", "parity", "data bits", "stop bits"};
using Fields = std::array<std::string_view, FieldNames.size()>;

[[noreturn]] void Refuse(std::string_view sSettings, const std::string& sReason) {
    throw SettingsError("Settings \"" + std::string(sSettings) + "\": " + sReason);
}

std::string Quoted(const char* sName, std::string_view sField) {
    return std::string(sName) + " \"" + std::string(sField) + "\"";
}

std::string_view TrimBlanks(std::string_view sText) {
    const std::size_t iBegin = sText.find_first_not_of(' ');
    if (iBegin == std::string_view::npos) return {};
    return sText.substr(iBegin, sText.find_last_not_of(' ') - iBegin + 1);
}

Fields SplitFields(std::string_view sSettings) {
    Fields tFields;
    std::size_t iBegin = 0;
    for (std::size_t i = 0; i < tFields.size(); ++i) {
        if (iBegin > sSettings.size()) Refuse(sSettings, std::string(FieldNames[i]) + " missing");
        const std::size_t iComma = std::min(sSettings.find(',', iBegin), sSettings.size());
        tFields[i] = TrimBlanks(sSettings.substr(iBegin, iComma - iBegin));
        if (tFields[i].empty()) Refuse(sSettings, std::string(FieldNames[i]) + " missing");
        iBegin = iComma + 1;
    }
    if (iBegin <= sSettings.size()) {
        Refuse(sSettings, Quoted("more than four fields,", sSettings.substr(iBegin)) + " follows the stop bits");
    }
    return tFields;
}

std::int32_t ReadBaud(std::string_view sSettings, std::string_view sField) {
    std::int32_t lBaud = 0;
    const char* pEnd = sField.data() + sField.size();
    const auto tRead = std::from_chars(sField.data(), pEnd, lBaud);
    if (tRead.ec != std::errc() || tRead.ptr != pEnd || lBaud <= 0) {
        Refuse(sSettings, Quoted("baud rate", sField) + " is not a whole number above 0");
    }
    return lBaud;
}

char ReadParity(std::string_view sSettings, std::string_view sField) {
    const bool bUpper = sField[0] >= 'A' && sField[0] <= 'Z';
    const char c = bUpper ? static_cast<char>(sField[0] - 'A' + 'a') : sField[0];
    if (sField.size() != 1 || std::string_view("neoms").find(c) == std::string_view::npos) {
        Refuse(sSettings, Quoted("parity", sField) + " is not one of n, e, o, m, s");
    }
    return c;
}

int ReadDataBits(std::string_view sSettings, std::string_view sField) {
    if (sField.size() != 1 || sField[0] < '5' || sField[0] > '8') {
        Refuse(sSettings, Quoted("data bits", sField) + " is not one of 5, 6, 7, 8");
    }
    return sField[0] - '0';
}

StopBits ReadStopBits(std::string_view sSettings, std::string_view sField, int iDataBits) {
    if (sField == "1") return StopBits::One;
    if (sField == "2") return StopBits::Two;
    if (sField != "1.5") Refuse(sSettings, Quoted("stop bits", sField) + " is not one of 1, 1.5, 2");
    if (iDataBits != 5) Refuse(sSettings, Quoted("stop bits", sField) + " goes with 5 data bits only");
    return StopBits::OneAndHalf;
}

double StopLength(StopBits eStopBits) {
    if (eStopBits == StopBits::One) return 1;
    return eStopBits == StopBits::Two ? 2 : 1.5;
}

}  // namespace

SerialSettings ParseSerialSettings(std::string_view sSettings) {
    const Fields tFields = SplitFields(sSettings);
    SerialSettings tSettings;
    tSettings.lBaud = ReadBaud(sSettings, tFields[0]);
    tSettings.cParity = ReadParity(sSettings, tFields[1]);
    tSettings.iDataBits = ReadDataBits(sSettings, tFields[2]);
    tSettings.eStopBits = ReadStopBits(sSettings, tFields[3], tSettings.iDataBits);
    return tSettings;
}

double CharactersPerSecond(const SerialSettings& tSettings) {
    const int iParity = tSettings.cParity == 'n' ? 0 : 1;
    return tSettings.lBaud / (1 + tSettings.iDataBits + iParity + StopLength(tSettings.eStopBits));
}

}  // namespace runtime
