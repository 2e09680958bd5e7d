// Joins pieces as the window joins receptions.
#include "report/CaptureReader.h"

#include <utility>

namespace report {

bool CaptureReader::Take(std::string_view sLine) {
    if (app::IsCaptureHead(sLine)) return true;  // the program was started anew, or files were joined
    auto tPiece = app::ReadCaptureLine(sLine);
    if (!tPiece) return false;
    if (tPiece->cKind != app::CaptureReceived || (m_Only && tPiece->Index != *m_Only)) return true;
    m_tPiece = *std::move(tPiece);
    m_sRest = m_tPiece.sBytes;
    return true;
}

bool CaptureReader::Next(std::optional<std::string_view>& sSentence) {
    nmea::LineBuffer& tLine = m_tLines(m_tPiece.Index);
    if (std::exchange(m_bHandedOut, false)) tLine.clear();
    if (!tLine.Take(m_sRest)) return false;
    m_bHandedOut = true;
    sSentence.reset();
    if (!tLine.Overlong()) sSentence = tLine;
    return true;
}

}  // namespace report
