// The bracketed notices in the logs: each must have been announced by its cause or be one of a trouble that is under
// way, and every one that was announced must come.
#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <string>

#include "platform/runtime/LogLines.h"

namespace simulation {

// Troubles whose notices come when the program finds out, or once for a while.
enum Trouble : std::size_t { TroubleDisk, TroublePort, TroubleOutput, TroubleSpeed, TroubleStop, TroubleCount };

class Notices {
public:
    enum Log : std::size_t { Input1, Input2, Output, LogCount };

    // Exactly this text is the next in that log, in the present second.
    void Expect(Log eLog, std::string sText) { m_sExpected[eLog].push_back(std::move(sText)); }
    void Begin(Trouble e) { ++m_iUnderWay[e]; }
    void End(Trouble e, std::int64_t lSecond) {
        --m_iUnderWay[e];
        m_lEnded[e] = lSecond;
    }
    bool UnderWay(Trouble e) const { return m_iUnderWay[e] > 0; }
    // Under way, or over for less than so many seconds.
    bool Recent(Trouble e, std::int64_t lSecond, std::int64_t lSeconds) const {
        return UnderWay(e) || lSecond - m_lEnded[e] < lSeconds;
    }

    // Looks at the lines that are new since the last look. Raises Failure.
    void Look(Log eLog, const runtime::LogLines& tLines, std::int64_t lSecond);
    // Raises Failure where one that was announced has not come.
    void CheckAllCame() const;
    std::int64_t Seen() const { return m_lSeen; }

private:
    void Explain(Log eLog, const std::string& sText, std::int64_t lSecond);

    std::array<std::deque<std::string>, LogCount> m_sExpected;
    std::array<std::uint64_t, LogCount> m_lAdded{};
    std::array<int, TroubleCount> m_iUnderWay{};
    std::array<std::int64_t, TroubleCount> m_lEnded = {-1000, -1000, -1000, -1000, -1000};
    std::int64_t m_lSeen = 0;
};

}  // namespace simulation
