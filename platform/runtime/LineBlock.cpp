// The memory of a block. Only the piece of a line at its end is moved, to the front, before more is read behind it.
#include "platform/runtime/LineBlock.h"

#include <algorithm>

namespace runtime {

namespace {

constexpr std::size_t BlockSize = 256 * 1024;
constexpr std::size_t LongestLineEnd = 2;

}  // namespace

std::span<char> LineBlock::MakeRoom() {
    const std::size_t iLeft = Size();
    if (m_iBegin > 0 && iLeft > 0) std::memmove(m_sBuffer.data(), m_sBuffer.data() + m_iBegin, iLeft);
    m_iBegin = 0;
    m_iEnd = iLeft;
    m_iLineFeed = iLeft;
    if (m_iEnd == m_sBuffer.size()) {
        m_sBuffer.resize(std::clamp(m_sBuffer.size() * 2, BlockSize, LongestLine + LongestLineEnd));
    }
    return std::span(m_sBuffer).subspan(m_iEnd);
}

void LineBlock::Added(std::size_t iBytes) {
    const std::size_t iFrom = m_iEnd;
    m_iEnd += iBytes;
    m_iLineFeed = Find('\n', iFrom, m_iEnd);
}

bool LineBlock::TakeRest(std::string_view& sLine) {
    sLine = {m_sBuffer.data() + m_iBegin, Size()};
    if (sLine.ends_with('\r')) sLine.remove_suffix(1);
    if (sLine.size() > LongestLine) return false;
    m_iBegin = m_iEnd;
    ++m_lLines;
    return true;
}

void LineBlock::Free() {
    std::vector<char>().swap(m_sBuffer);
    m_iBegin = m_iEnd = m_iLineFeed = 0;
}

}  // namespace runtime
