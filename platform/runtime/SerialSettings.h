// The settings string of a serial port, "38400,n,8,1": baud rate, parity letter, data bits, stop bits.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string_view>

namespace runtime {

// Names the field of a settings string that is wrong, in words for the user.
struct SettingsError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

enum class StopBits { One, OneAndHalf, Two };

struct SerialSettings {
    std::int32_t lBaud = 9600;
    char cParity = 'n';  // n none, e even, o odd, m mark, s space
    int iDataBits = 8;   // 5 to 8
    StopBits eStopBits = StopBits::One;
};

// Reads all four fields, strictly: blanks around a field and either case of the parity letter are taken, nothing else
// is guessed. 1.5 stop bits go with 5 data bits only. Raises SettingsError, for example
// `Settings "38400,x,8,1": parity "x" is not one of n, e, o, m, s`.
SerialSettings ParseSerialSettings(std::string_view sSettings);

// Characters per second of the line: baud rate over start, data, parity and stop bits.
double CharactersPerSecond(const SerialSettings& tSettings);

}  // namespace runtime
