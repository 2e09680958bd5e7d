// What counts as a sentence is what a wrong speed does not make by chance: printable, with its first character, and not
// refused for its checksum.
#include "nmea/SpeedWatch.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace nmea {

namespace {

bool LooksLikeSentence(std::string_view sLine) {
    const auto Printable = [](char c) { return c >= ' ' && c <= '~'; };
    return !sLine.empty() && (sLine[0] == '$' || sLine[0] == '!') && std::ranges::all_of(sLine, Printable);
}

// Among the newest so many lines; the newest of all first, because most often it is one.
bool HasSentence(const runtime::LogLines& tLog, std::uint64_t lNew) {
    const int iLast = tLog.Count() - 1;
    const int iOldest = iLast - static_cast<int>(std::min<std::uint64_t>(lNew, static_cast<std::uint64_t>(iLast) + 1));
    for (int i = iLast; i > iOldest; --i) {
        const bool bRefused = i < iLast && tLog.Line(i + 1) == "<<Checksum Error>>";
        if (!bRefused && LooksLikeSentence(tLog.Line(i))) return true;
    }
    return false;
}

}  // namespace

void SpeedWatch::Start(const runtime::LogLines& tLog) {
    m_lAdded = tLog.Added();
    m_iSeconds = 0;
    m_bReceived = false;
}

bool SpeedWatch::Tick(const runtime::LogLines& tLog) {
    const bool bReceived = std::exchange(m_bReceived, false);
    const std::uint64_t lNew = tLog.Added() - std::exchange(m_lAdded, tLog.Added());
    if (HasSentence(tLog, lNew)) {
        m_iSeconds = 0;
        return false;
    }
    if (!bReceived || Doubts()) return false;
    return ++m_iSeconds == Patience;
}

}  // namespace nmea
