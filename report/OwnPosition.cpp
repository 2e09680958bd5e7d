// The own position goes through its texts, as it does in the window.
#include "report/OwnPosition.h"

#include "nav/PositionText.h"

namespace report {

void OwnPosition::Take(const decoders::GpsPosition& t) {
    if (m_bFixed || (m_tPosition && t.sLatitude == m_sLatitude && t.sLongitude == m_sLongitude)) return;
    m_sLatitude = t.sLatitude;
    m_sLongitude = t.sLongitude;
    const auto dLatitude = nav::ParseLatitude(nav::LatitudeToString(t.dLatitude));
    const auto dLongitude = nav::ParseLongitude(nav::LongitudeToString(t.dLongitude));
    if (!dLatitude || !dLongitude) return;
    m_tPosition = nav::Position{*dLatitude, *dLongitude};
    m_tPlace = OwnPlace(*m_tPosition);
}

}  // namespace report
