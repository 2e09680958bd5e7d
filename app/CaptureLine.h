// The line of a capture: moment, input, what kind of thing, and its bytes, any of them as text. See
// docs/capture-format.md.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/runtime/DateTime.h"
#include "platform/runtime/PortIndex.h"

namespace app {

inline constexpr std::string_view CaptureSuffix = ".capture";
inline constexpr char CaptureReceived = '<';  // bytes that came
inline constexpr char CaptureSent = '>';      // bytes of a receiver command that went
inline constexpr char CaptureEvent = '!';     // an event of the port, its number in decimal

struct CaptureMoment {
    runtime::DateTime dt;
    int iMilliseconds = 0;  // 0 to 999
};

struct CaptureLine {
    CaptureMoment tMoment;
    runtime::PortIndex Index = 0;
    char cKind = CaptureReceived;
    std::string sBytes;
};

// Without line end, over sLine.
void WriteCaptureHead(std::string& sLine, const CaptureMoment& t);
void WriteCaptureLine(std::string& sLine, const CaptureMoment& t, runtime::PortIndex Index, char cKind,
                      std::string_view sBytes);

// The line that a capture, and each of its continuations, begins with.
bool IsCaptureHead(std::string_view sLine);
// Nothing where the line is a head or none that we write.
std::optional<CaptureLine> ReadCaptureLine(std::string_view sLine);

}  // namespace app
