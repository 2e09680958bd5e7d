// Where the receiver stands: told by the user, or by the GPS sentences of the files.
#pragma once

#include <optional>
#include <string>

#include "decoders/GpsSentence.h"
#include "report/FromUs.h"

namespace report {

class OwnPosition {
public:
    OwnPosition() = default;
    // A fixed position: GPS sentences do not change it.
    explicit OwnPosition(nav::Position t) : m_tPosition(t), m_tPlace(t), m_bFixed(true) {}

    const std::optional<nav::Position>& Get() const { return m_tPosition; }
    // The same, for FromUs. Only where there is one.
    const OwnPlace& Place() const { return *m_tPlace; }
    // Takes a decoded position over, to the hundredth of a minute that the window keeps of it.
    void Take(const decoders::GpsPosition& t);

private:
    std::optional<nav::Position> m_tPosition;
    std::optional<OwnPlace> m_tPlace;  // made of it
    bool m_bFixed = false;
    std::string m_sLatitude;  // as received last: the same text is the same position
    std::string m_sLongitude;
};

}  // namespace report
