// See Limit.h.
#include "tests/bench/Limit.h"

#include <algorithm>
#include <chrono>
#include <cstring>
#include <optional>
#include <utility>

namespace bench {

namespace {

constexpr std::size_t StampLength = 19;  // "mm/dd/yyyy hh:nn:ss", and a blank behind it
constexpr std::size_t FirstField = 7;    // behind "!AIVDM,"
constexpr char HexDigits[] = "0123456789ABCDEF";

// Eight characters at a time; the order does not matter to an exclusive or.
bool ChecksumMatches(std::string_view sLine) {
    const char* p = sLine.data() + 1;
    const char* pStar = sLine.data() + sLine.size() - 3;
    std::uint64_t lWords = 0;
    for (std::uint64_t lWord; pStar - p >= 8; p += 8) {
        std::memcpy(&lWord, p, 8);
        lWords ^= lWord;
    }
    lWords ^= lWords >> 32;
    lWords ^= lWords >> 16;
    lWords ^= lWords >> 8;
    for (; p < pStar; ++p) lWords ^= static_cast<unsigned char>(*p);
    return pStar[1] == HexDigits[lWords >> 4 & 15] && pStar[2] == HexDigits[lWords & 15];
}

// Cuts a line at its marks. When a mark is missing or an empty text stands where it must not, the reading has failed.
class Cutter {
public:
    explicit Cutter(std::string_view sLine) : m_p(sLine.data() + FirstField), m_pEnd(sLine.data() + sLine.size()) {}

    std::string_view Text(char cMark) {
        const char* pStart = m_p;
        while (m_p < m_pEnd && *m_p != cMark) ++m_p;
        bFailed = bFailed || m_p >= m_pEnd;
        return {pStart, static_cast<std::size_t>(m_p++ - pStart)};
    }
    std::string_view FilledText(char cMark) {
        const std::string_view s = Text(cMark);
        bFailed = bFailed || s.empty();
        return s;
    }
    unsigned Number() {
        const char* pStart = m_p;
        unsigned i = 0;
        for (; m_p < m_pEnd && *m_p >= '0' && *m_p <= '9'; ++m_p) i = i * 10 + static_cast<unsigned>(*m_p - '0');
        bFailed = bFailed || m_p == pStart || m_p >= m_pEnd || *m_p != ',';
        ++m_p;
        return i;
    }
    std::string_view Payload() {
        if (bFailed) return {};
        const void* pComma = std::memchr(m_p, ',', static_cast<std::size_t>(m_pEnd - m_p));
        bFailed = pComma == nullptr || pComma == m_p;
        return bFailed ? std::string_view()
                       : std::string_view(m_p, static_cast<std::size_t>(static_cast<const char*>(pComma) - m_p));
    }

    bool bFailed = false;

private:
    const char* m_p;
    const char* m_pEnd;
};

// Sixteen characters at a time, which the compiler does in a few instructions; the last sixteen take in what stands
// behind the payload, up to pFileEnd, and write as much.
void Unarmor(std::string_view sPayload, const char* pFileEnd, std::uint8_t* pTo) {
    std::array<std::uint8_t, Block> i;
    const char* const pPayloadEnd = sPayload.data() + sPayload.size();
    for (const char* p = sPayload.data(); p < pPayloadEnd; p += Block, pTo += Block) {
        if (pFileEnd - p >= static_cast<std::ptrdiff_t>(Block))
            std::memcpy(i.data(), p, Block);
        else
            std::copy(p, pFileEnd, i.begin());
        for (std::uint8_t& c : i) c = static_cast<std::uint8_t>(c < 96 ? c - 48 : c - 56);
        std::memcpy(pTo, i.data(), Block);
    }
}

std::optional<int> DigitsOf(std::string_view s) {
    int i = 0;
    for (const char c : s) {
        if (c < '0' || c > '9') return std::nullopt;
        i = i * 10 + (c - '0');
    }
    return i;
}

}  // namespace

std::int32_t LimitShips::Heard(std::int32_t lMmsi, std::int32_t lSecond) {
    Place& t = PlaceOf(lMmsi);
    if (t.lMmsi == lMmsi) return lSecond - std::exchange(t.lSecond, lSecond);
    t = {lMmsi, lSecond};
    if (++m_lCount * 2 > static_cast<std::int64_t>(m_tPlaces.size())) Grow();
    return 0;
}

LimitShips::Place& LimitShips::PlaceOf(std::int32_t lMmsi) {
    constexpr std::uint32_t Spread = 2654435769U;  // the golden ratio: spreads numbers that differ in few digits
    const std::size_t iMask = m_tPlaces.size() - 1;
    std::size_t i = static_cast<std::uint32_t>(lMmsi) * Spread >> 8 & iMask;
    while (m_tPlaces[i].lMmsi != lMmsi && m_tPlaces[i].lMmsi != Nobody) i = (i + 1) & iMask;
    return m_tPlaces[i];
}

void LimitShips::Grow() {
    std::vector<Place> tOld(m_tPlaces.size() * 2);
    tOld.swap(m_tPlaces);
    for (const Place& t : tOld) {
        if (t.lMmsi != Nobody) PlaceOf(t.lMmsi) = t;
    }
}

void Limit::Read(std::string_view sFile) {
    const char* p = sFile.data();
    const char* const pEnd = p + sFile.size();
    m_pFileEnd = pEnd;
    while (p < pEnd) {
        const void* pFound = std::memchr(p, '\r', static_cast<std::size_t>(pEnd - p));
        const char* pLineEnd = pFound ? static_cast<const char*>(pFound) : pEnd;
        const std::string_view sLine(p, static_cast<std::size_t>(pLineEnd - p));
        if (!ReadStamp(sLine)) return;
        TakeSentence(sLine.substr(std::min(StampLength + 1, sLine.size())));
        p = pLineEnd + 2;
    }
}

bool Limit::ReadStamp(std::string_view sLine) {
    if (sLine.size() < StampLength) return false;
    const std::string_view s = sLine.substr(0, StampLength);
    if (s == m_sStamp) return true;
    const auto iMonth = DigitsOf(s.substr(0, 2)), iDay = DigitsOf(s.substr(3, 2)), iYear = DigitsOf(s.substr(6, 4));
    const auto iHour = DigitsOf(s.substr(11, 2)), iMinute = DigitsOf(s.substr(14, 2)), iSecond = DigitsOf(s.substr(17));
    if (!iMonth || !iDay || !iYear || !iHour || !iMinute || !iSecond) return false;
    if (s[2] != '/' || s[5] != '/' || s[10] != ' ' || s[13] != ':' || s[16] != ':') return false;
    const std::chrono::year_month_day tDate(std::chrono::year(*iYear),
                                            std::chrono::month(static_cast<unsigned>(*iMonth)),
                                            std::chrono::day(static_cast<unsigned>(*iDay)));
    if (!tDate.ok() || *iHour > 23 || *iMinute > 59 || *iSecond > 59) return false;
    m_sStamp = s;
    m_lSecond = (*iHour * 60 + *iMinute) * 60 + *iSecond;
    return true;
}

void Limit::TakeSentence(std::string_view sLine) {
    if (sLine.size() < 6) return KeepLine("<<Size Error>>");
    KeepLine(sLine);
    if (sLine[sLine.size() - 3] == '*' && !ChecksumMatches(sLine)) return KeepLine("<<Checksum Error>>");
    const bool bMessage = sLine.starts_with("!AIVDM");
    if (bMessage)
        TakeMessage(sLine);
    else if (sLine.starts_with("$PNMLS"))
        TakeLevels(sLine);
    m_bAfterMessage = bMessage;
}

// "!AIVDM,<sentences>,<this one>,<id>,<channel>,<payload>,..."
void Limit::TakeMessage(std::string_view sLine) {
    Cutter tCutter(sLine);
    const unsigned iSentences = tCutter.Number();
    const unsigned iSentence = tCutter.Number();
    tCutter.Text(',');
    const std::string_view sChannel = tCutter.FilledText(',');
    const std::string_view sPayload = tCutter.Payload();
    const std::size_t iHeld = iSentence == 1 ? 0 : m_iHeld;
    if (tCutter.bFailed || iHeld + sPayload.size() > LongestPayload) return;
    Unarmor(sPayload, m_pFileEnd, m_iValues.data() + iHeld);
    m_iHeld = iHeld + sPayload.size();
    if (iSentence == iSentences) KeepReport(sChannel);
}

// "$PNMLS,<signal>,<threshold>,<interval>*hh", right behind the message that it belongs to.
void Limit::TakeLevels(std::string_view sLine) {
    if (!m_bAfterMessage || lReports == 0) return;
    Cutter tCutter(sLine);
    const std::string_view sSignal = tCutter.FilledText(',');
    const std::string_view sThreshold = tCutter.FilledText(',');
    const std::string_view sInterval = tCutter.FilledText('*');
    if (tCutter.bFailed) return;
    LimitReport& t = m_tReports[static_cast<std::size_t>(lReports - 1) % ReportsKept];
    t.sSignal = sSignal;
    t.sThreshold = sThreshold;
    t.sInterval = sInterval;
}

void Limit::KeepLine(std::string_view sLine) {
    m_sLines[m_iNextLine] = sLine;
    m_iNextLine = m_iNextLine + 1 == LinesKept ? 0 : m_iNextLine + 1;
    ++m_iLines;
}

void Limit::KeepReport(std::string_view sChannel) {
    const auto& i = m_iValues;
    LimitReport& t = m_tReports[static_cast<std::size_t>(lReports++) % ReportsKept];
    std::copy_n(i.begin(), t.iValues.size(), t.iValues.begin());
    t.lMmsi = (i[1] & 15) << 26 | i[2] << 20 | i[3] << 14 | i[4] << 8 | i[5] << 2 | i[6] >> 4;
    t.lSecond = m_lSecond;
    t.lLast = tShips.Heard(t.lMmsi, m_lSecond);
    t.sChannel = sChannel;
    t.sSignal = t.sThreshold = t.sInterval = {};
    if (i[0] <= Types && i[0] > 0) ++lCounts[i[0]];
}

std::vector<std::string_view> Limit::Lines() const {
    if (m_iLines < LinesKept) return {m_sLines.begin(), m_sLines.begin() + static_cast<std::ptrdiff_t>(m_iLines)};
    std::vector<std::string_view> s(m_sLines.begin(), m_sLines.end());
    std::ranges::rotate(s, s.begin() + static_cast<std::ptrdiff_t>(m_iNextLine));
    return s;
}

std::vector<LimitReport> Limit::Reports() const {
    std::vector<LimitReport> t;
    const auto lAll = static_cast<std::size_t>(lReports);
    for (std::size_t l = lAll - std::min(lAll, ReportsKept); l < lAll; ++l) t.push_back(m_tReports[l % ReportsKept]);
    return t;
}

}  // namespace bench
