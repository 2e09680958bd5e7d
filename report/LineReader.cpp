// Cuts blocks at their line ends.
#include "report/LineReader.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace report {

namespace {

constexpr std::size_t BlockSize = 256 * 1024;  // stays in the processor's cache

const char* FindCharacter(const char* p, const char* pStop, char c) {
    return static_cast<const char*>(std::memchr(p, c, static_cast<std::size_t>(pStop - p)));
}

}  // namespace

LineReader::LineReader(const std::string& sPath) : m_tFile(sPath), m_sBlock(BlockSize) {
    m_p = m_pStop = m_sBlock.data();
}

LineReader::Found LineReader::Next(std::string_view& sLine) {
    for (;;) {
        if (const char* pEnd = FindEnd()) {
            sLine = {m_p, static_cast<std::size_t>(pEnd - m_p)};
            m_p = pEnd + 1;
            if (*pEnd == '\r') {
                if (m_p == m_pStop) {
                    m_bSkipFeed = true;
                } else if (*m_p == '\n') {
                    ++m_p;
                }
            }
            const bool bTooLong = std::exchange(m_bSkipping, false) || sLine.size() > LongestLine;
            return bTooLong ? Found::TooLong : Found::Line;
        }
        if (m_pStop - m_p > static_cast<std::ptrdiff_t>(LongestLine)) {
            m_bSkipping = true;
            m_p = m_pStop;
        }
        if (!Fill()) return Found::End;
    }
}

// The end of the line at m_p; null where it has not been read yet.
const char* LineReader::FindEnd() {
    if (m_p == m_pStop) return nullptr;
    if (m_pFeed < m_p) {
        m_pFeed = FindCharacter(m_p, m_pStop, '\n');
        if (!m_pFeed) m_pFeed = m_pStop;
    }
    if (const char* pReturn = FindCharacter(m_p, m_pFeed, '\r')) return pReturn;
    return m_pFeed < m_pStop ? m_pFeed : nullptr;
}

// Reads on behind what is left. False at the end of the file.
bool LineReader::Fill() {
    const auto lLeft = static_cast<std::size_t>(m_pStop - m_p);
    std::memmove(m_sBlock.data(), m_p, lLeft);
    if (lLeft * 2 > m_sBlock.size()) m_sBlock.resize(m_sBlock.size() * 2);
    m_p = m_sBlock.data();
    m_pStop = m_p + lLeft;
    m_pFeed = nullptr;
    const std::size_t lRead = m_tFile.Read(std::span(m_sBlock).subspan(lLeft));
    m_pStop += lRead;
    if (lRead > 0 && std::exchange(m_bSkipFeed, false) && *m_p == '\n') ++m_p;
    return lRead > 0;
}

}  // namespace report
