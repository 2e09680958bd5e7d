// What has been read of a text file and not been handed out, cut into lines: each ends in CR LF, LF or CR, and any
// other byte, 0 and 26 included, belongs to it. Lines are views into the block.
#pragma once

#include <cstdint>
#include <cstring>
#include <span>
#include <string_view>
#include <vector>

namespace runtime {

class LineBlock {
public:
    static constexpr std::size_t LongestLine = 1 << 20;  // bytes; so memory stays bounded

    // Bytes not handed out.
    std::size_t Size() const { return m_iEnd - m_iBegin; }
    // Lines handed out.
    std::uint64_t Lines() const { return m_lLines; }

    // The next line without its end. False where none of at most LongestLine lies whole in the block; a CR that is the
    // last byte waits for the next one, which may be its LF.
    bool Next(std::string_view& sLine) {
        // The line feed is remembered: in a file of lines that end in CR alone the search for it would go through the
        // whole block again for every line.
        if (m_iLineFeed < m_iBegin) m_iLineFeed = Find('\n', m_iBegin, m_iEnd);
        const std::size_t iLineEnd = Find('\r', m_iBegin, m_iLineFeed);
        std::size_t iNext = iLineEnd + 1;
        if (iLineEnd < m_iLineFeed) {
            if (iNext == m_iEnd) return false;
            if (iNext == m_iLineFeed) ++iNext;
        } else if (iLineEnd == m_iEnd) {
            return false;
        }
        sLine = {m_sBuffer.data() + m_iBegin, iLineEnd - m_iBegin};
        if (sLine.size() > LongestLine) return false;
        m_iBegin = iNext;
        ++m_lLines;
        return true;
    }
    // At the end of the file: what is left, as its last line. False where that is longer than LongestLine.
    bool TakeRest(std::string_view& sLine);

    // Room for more behind what is left, where Next has found no line. Views handed out do not hold any longer.
    std::span<char> MakeRoom();
    // So many bytes have been put there.
    void Added(std::size_t iBytes);
    // Leaves nothing and gives the memory back.
    void Free();

private:
    // The first c from iFrom on, iTo where there is none.
    std::size_t Find(char c, std::size_t iFrom, std::size_t iTo) const {
        const char* pBegin = m_sBuffer.data();
        const void* pFound = iFrom < iTo ? std::memchr(pBegin + iFrom, c, iTo - iFrom) : nullptr;
        return pFound == nullptr ? iTo : static_cast<std::size_t>(static_cast<const char*>(pFound) - pBegin);
    }

    std::vector<char> m_sBuffer;
    std::uint64_t m_lLines = 0;
    std::size_t m_iBegin = 0;  // the bytes from here to m_iEnd are not handed out
    std::size_t m_iEnd = 0;
    std::size_t m_iLineFeed = 0;  // the first at or behind m_iBegin, m_iEnd where there is none; stale below m_iBegin
};

}  // namespace runtime
