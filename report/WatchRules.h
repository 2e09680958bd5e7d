// When something is the matter with a recording that is being written: no AIS messages, no growth, fewer messages than
// usual. Only rules: no file, no clock; times and lines are handed in.
#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <optional>
#include <vector>

#include "platform/runtime/DateTime.h"

namespace report {

enum class Trouble : std::uint8_t {
    Quiet,    // the file grows, but no AIS message comes
    Stopped,  // the file does not grow, or is not there
    Below,    // an hour had less than a share of the usual messages
};

struct WatchEvent {
    Trouble eTrouble = Trouble::Quiet;
    bool bOver = false;
    double dSeconds = 0;                 // Quiet, Stopped: without; when over: from the last before to the first after
    std::optional<std::int64_t> lHeard;  // Below: messages in the hour
    std::optional<double> dUsual;        // and usually
    runtime::DateTime dtHour;            // the hour's beginning
};

struct WatchLimits {
    double dQuiet = 600;        // seconds
    double dStopped = 600;      // seconds
    std::optional<int> iBelow;  // percent of the usual
    // Three is the least of which the median is no extreme: one bad day among them does not become the usual.
    int iDays = 3;
};

class WatchRules {
public:
    static constexpr int LongestMemory = 28;  // days; what was usual before is another season

    explicit WatchRules(const WatchLimits& t) : m_tLimits(t) {}

    // A line of the recording and its time, in their order. Those before Begin are the past: they say what is usual.
    void Line(runtime::DateTime dt);
    // The line was, or completed, an AIS message.
    void Message();
    // The file has more than before, be it half a line.
    void Grew() { m_bGrew = true; }

    // From now on events are made. Seconds of any clock that only goes forward, here and below.
    void Begin(double dNow);
    // What has begun or is over since the last call, each once. To be called every now and then, after the new lines.
    std::vector<WatchEvent> Tick(double dNow);

    // Of the 24 hours of the day, how many have a usual number.
    int HoursKnown() const;

private:
    struct State {
        bool bOn = false;
        double dLast = 0;  // when it was well
    };

    void OpenHour(std::int64_t lHour, bool bWhole);
    void CloseHour();
    void Judge(runtime::DateTime dtHour, std::int64_t lHeard);
    std::optional<double> Usual(std::int64_t lHour) const;
    void Tell(Trouble e, bool bOver, double dSeconds);

    const WatchLimits m_tLimits;
    std::vector<WatchEvent> m_tEvents;
    bool m_bBegun = false;
    // Since the last Tick.
    bool m_bGrew = false;
    bool m_bMessage = false;
    bool m_bLine = false;

    State m_tQuiet, m_tStopped;
    double m_dGrowing = 0;  // since when it has not stopped
    bool m_bBelow = false;
    // The newest line's time, and when it was read: so the recording's clock is known while nothing comes.
    runtime::DateTime m_dtLast;
    double m_dLastRead = 0;
    // The hour that is running, by the lines' times.
    bool m_bLive = false;  // a line has come since Begin
    bool m_bHour = false;
    std::int64_t m_lHour = 0;
    bool m_bWhole = false;  // it was recorded from its beginning
    bool m_bLines = false;
    std::int64_t m_lMessages = 0;
    std::array<std::deque<std::int64_t>, 24> m_lPast;  // the counts of earlier days by hour of the day
};

}  // namespace report
