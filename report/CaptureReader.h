// The lines that the inputs brought, out of the pieces that a capture keeps (docs/capture-format.md).
#pragma once

#include <optional>
#include <string_view>

#include "app/CaptureLine.h"
#include "nmea/LineBuffer.h"
#include "platform/runtime/PortIndex.h"

namespace report {

class CaptureReader {
public:
    explicit CaptureReader(std::optional<runtime::PortIndex> Only) : m_Only(Only) {}

    // The next line of the file. False where it is none of a capture.
    bool Take(std::string_view sLine);
    // The next line that an input has completed since; false when there is none. The view holds until the next call.
    // A line that is longer than the window takes is told as nothing.
    bool Next(std::optional<std::string_view>& sSentence);
    // When it was completed.
    runtime::DateTime Time() const { return m_tPiece.tMoment.dt; }

private:
    std::optional<runtime::PortIndex> m_Only;
    app::CaptureLine m_tPiece;
    std::string_view m_sRest;  // of the piece
    runtime::PerPort<nmea::LineBuffer> m_tLines;
    bool m_bHandedOut = false;  // the line of the piece's port
};

}  // namespace report
