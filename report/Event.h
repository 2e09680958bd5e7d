// What a record file says, as events: one for every line, one for every AIS message with the signal levels that
// followed it. Collectors take them in and make a result.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "decoders/VdmMessage.h"
#include "platform/runtime/DateTime.h"
#include "report/FromUs.h"

namespace report {

enum class LineKind : std::uint8_t {
    Message,  // !AIVDM
    Signal,   // $PNMLS
    Gps,      // GLL or RMC with a position
    Other,    // accepted, but no decoder's
    NoStamp,  // does not begin with a date and time
    TooLong,  // more than LineReader::LongestLine characters
    Size,     // the tests that the window makes too
    Checksum,
    BadMessage,  // !AIVDM, $PNMLS, GLL or RMC with a field that cannot be read
    BadSignal,
    BadGps,
};
inline constexpr std::size_t LineKindCount = 11;
constexpr std::size_t IndexOf(LineKind e) { return static_cast<std::size_t>(e); }
inline constexpr LineKind FirstBadKind = LineKind::NoStamp;  // and all behind it

struct LineEvent {
    LineKind eKind = LineKind::Other;
    runtime::DateTime dt;   // of the line; of the one before it where it has none
    bool bTimed = false;    // there is such a time
    bool bSetBack = false;  // earlier than the line before it in its file
};

// Levels as the board sends them.
struct Levels {
    double dSignal = 0;
    double dThreshold = 0;
};

enum class Channel : std::uint8_t { A, B, Other };
inline constexpr std::size_t ChannelCount = 3;
inline constexpr std::array<std::string_view, ChannelCount> ChannelNames = {"A", "B", "other"};

// A whole AIS message.
struct Report {
    std::size_t iFile = 0;  // in the order in which the files were named
    runtime::DateTime dt;   // arrival of the completing sentence
    Channel eChannel = Channel::Other;
    std::int32_t lType = 0;
    std::int32_t lMmsi = 0;
    int iShip = 0;             // the sender's number in the order of first hearing, from 0
    bool bNewShip = false;     // heard for the first time
    decoders::VdmView lData;   // element 1 is the type; Report::ValuesKept elements
    std::int32_t lLength = 0;  // elements 1 to lLength were sent; what is behind them is left from other messages
    bool bPosition = false;
    double dLatitude = 0;       // degrees, north positive
    double dLongitude = 0;      // degrees, east positive
    bool bOwnPosition = false;  // known when it was heard
    bool bRange = false;        // the two together
    FromUs tFromUs;             // holds then
    bool bLevels = false;
    Levels tLevels;

    static constexpr std::size_t ValuesKept = decoders::VdmCapacity + 1;
};

// Takes events and makes a result of them.
class Collector {
public:
    virtual ~Collector() = default;
    virtual void Line(const LineEvent&) {}
    virtual void Message(const Report&) {}
    // Writes the result. False when what was asked for cannot be said from these files; the notes say why.
    virtual bool Finish() = 0;
};

}  // namespace report
