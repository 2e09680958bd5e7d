// Cuts lines at carriage returns.
#include "nmea/LineBuffer.h"

namespace nmea {

bool LineBuffer::Take(std::string_view& sBlock) {
    const std::size_t iReturn = sBlock.find('\r');
    const bool bComplete = iReturn != std::string_view::npos;
    std::string_view sPiece = sBlock.substr(0, iReturn);
    sBlock.remove_prefix(bComplete ? iReturn + 1 : sBlock.size());
    if (sPiece.starts_with('\n')) sPiece.remove_prefix(1);  // of the line end before
    std::size_t iFeed = sPiece.find('\n');
    if (bComplete && empty() && iFeed == std::string_view::npos) {
        m_sLine = sPiece;
        return true;
    }
    for (; iFeed != std::string_view::npos; iFeed = sPiece.find('\n')) {
        Append(sPiece.substr(0, iFeed));
        sPiece.remove_prefix(iFeed + 1);
    }
    Append(sPiece);
    m_sLine = m_sKept;
    return bComplete;
}

void LineBuffer::Append(std::string_view sPiece) { m_sKept += sPiece.substr(0, Longest + 1 - m_sKept.size()); }

void LineBuffer::assign(std::string_view sLine) {
    m_sKept.assign(sLine);
    m_sLine = m_sKept;
}

void LineBuffer::Keep() {
    if (m_sKept.empty()) assign(m_sLine);
}

void LineBuffer::clear() {
    m_sKept.clear();
    m_sLine = {};
}

}  // namespace nmea
