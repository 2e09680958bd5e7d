// See RecordWriter.h.
#include "tools/RecordWriter.h"

#include <array>

namespace simulator {

namespace {

using runtime::MakeDateTime;

constexpr std::int64_t NoiseEvery = 40;
constexpr std::int64_t EmptyEvery = 57;

std::array<RecordKind, 6> Kinds() {
    const auto dtMorning = MakeDateTime({2025, 6, 14}, 8, 0, 0);
    const auto dtLate = MakeDateTime({2025, 11, 21}, 23, 57, 30);  // the night's file passes midnight
    return {{
        {"harbour", {1, 40, 3.0, 0.0, true, true, dtMorning}, false},
        {"night", {1, 180, 35.0, 0.0, true, true, dtLate}, false},
        {"damaged", {1, 40, 5.0, 12.0, true, true, dtMorning}, true},
        {"mixed", {1, 150, 5.0, 0.0, true, true, dtMorning}, false},
        {"sea", {1, 150, 0.0, 0.0, true, true, dtMorning, 12, {40, true}}, false},
        {"reports", {1, 150, 5.0, 0.0, false, false, dtMorning}, false},
    }};
}

}  // namespace

std::optional<RecordKind> FindRecordKind(std::string_view sName) {
    for (const RecordKind& t : Kinds()) {
        if (t.sName == sName) return t;
    }
    return std::nullopt;
}

RecordWriter::RecordWriter(const RecordKind& tKind, std::int64_t lLines)
    : m_tKind(tKind), m_tTraffic(tKind.tTraffic), m_tNoise(~tKind.tTraffic.lSeed), m_lLines(lLines) {}

void RecordWriter::AppendLine(std::string& sText) {
    const TrafficLine& t = m_tTraffic.Next();
    m_lMilliseconds = t.lMilliseconds;
    const std::int64_t lSecond = t.lMilliseconds / 1000;
    if (lSecond != m_lStampSecond) {
        m_lStampSecond = lSecond;
        m_sStamp.clear();
        runtime::AppendRecordStamp(m_sStamp, {m_tKind.tTraffic.dtStart.lSeconds + lSecond + m_tKind.lClockSeconds});
        m_sStamp += ' ';
    }
    ++m_lLine;
    if (m_tKind.bDamagedFile && m_lLine == m_lLines - DamageFromEnd) {
        sText += "02/30/2025";
        sText += std::string_view(m_sStamp).substr(10);
        sText += t.sText;
    } else if (m_tKind.bDamagedFile && m_lLine % NoiseEvery == 0) {
        sText += m_sStamp;
        AppendNoise(sText);
    } else if (m_tKind.bDamagedFile && m_lLine % EmptyEvery == 0) {
        sText.append(m_sStamp, 0, m_sStamp.size() - 1);  // a stamp alone
    } else {
        sText += m_sStamp;
        sText += t.sText;
    }
    sText += "\r\n";
}

// Any bytes but line ends: behind a line end there would be a line without a stamp, and the playback would end there.
void RecordWriter::AppendNoise(std::string& sText) {
    const int iLength = m_tNoise.Whole(1, 90);
    for (int i = 0; i < iLength; ++i) {
        const auto c = static_cast<char>(m_tNoise.Whole(0, 255));
        sText += c == '\r' || c == '\n' ? '\0' : c;
    }
}

}  // namespace simulator
