// The own position's part in the navigation arithmetic: parsing into it, range and bearing from it.
#include "app/frmMain.h"

namespace app {

bool frmMain::LatitudeFromString(std::string_view sLatitude, double& dLatitude, bool bDisplayError) {
    const auto dParsed = nav::ParseLatitude(sLatitude);
    dLatitude = dParsed.value_or(nav::PositionUnknown);
    if (!dParsed && bDisplayError) {
        m_tPlatform.ShowMessage(this, QStringLiteral("Unable for decode Latitude ") + toolkit::FromLatin1(sLatitude),
                                toolkit::MessageIcon::Exclamation);
    }
    return dParsed.has_value();
}

bool frmMain::LongitudeFromString(std::string_view sLongitude, double& dLongitude, bool bDisplayError) {
    const auto dParsed = nav::ParseLongitude(sLongitude);
    dLongitude = dParsed.value_or(nav::PositionUnknown);
    if (!dParsed && bDisplayError) {
        m_tPlatform.ShowMessage(this, QStringLiteral("Unable for decode Longitude ") + toolkit::FromLatin1(sLongitude),
                                toolkit::MessageIcon::Exclamation);
    }
    return dParsed.has_value();
}

void frmMain::RangeBearingText(double dLatitude, double dLongitude, std::string& sRange, std::string& sBearing) const {
    nav::RangeBearingText(m_dLatitude, m_dLongitude, dLatitude, dLongitude, sRange, sBearing);
}

}  // namespace app
