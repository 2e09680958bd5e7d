// Answers by the estimate, and by the arithmetic where the estimate's error could change them.
#include "report/FromUs.h"

#include "nav/Trigonometry.h"
#include "report/Distribution.h"

namespace report {

namespace {

// The whole number below d; false where dError could make it another. d is not negative.
bool SurelyBelow(double d, double dError, std::int64_t& lBelow) {
    lBelow = static_cast<std::int64_t>(d);
    const double dRest = d - static_cast<double>(lBelow);
    return dRest > dError && dRest < 1 - dError;
}

}  // namespace

bool FromUs::Measure(const OwnPlace& tOwn, nav::Position tTo) {
    m_tFrom = tOwn.tPosition;
    m_tTo = tTo;
    m_bExact = false;
    m_bNear = tOwn.tEstimate.To(tTo, m_tNear);
    if (m_bNear) return true;
    try {
        return Exact().dRange == m_tExact.dRange;  // not-a-number a hair from the own position
    } catch (const nav::DivisionByZero&) {
        Forget();
        return false;
    }
}

void FromUs::Forget() {
    m_bNear = false;
    m_bExact = true;
    m_tExact = Nothing;
}

const nav::RangeAndBearing& FromUs::Exact() const {
    if (!m_bExact)
        m_tExact = nav::RangeBearing(m_tFrom.dLatitude, m_tFrom.dLongitude, m_tTo.dLatitude, m_tTo.dLongitude);
    m_bExact = true;
    return m_tExact;
}

std::int64_t FromUs::RangeStep() const {
    constexpr double Error = nav::RangeEstimate::RangeError * Distribution::StepsPerOne;
    std::int64_t lStep = 0;
    if (m_bNear && SurelyBelow(m_tNear.dRange * Distribution::StepsPerOne + 0.5, Error, lStep)) return lStep;
    return Distribution::StepOf(Range());
}

std::int64_t FromUs::Ring(int iMiles) const {
    std::int64_t lRing = 0;
    const double dRings = 1.0 / iMiles;  // in a mile
    if (m_bNear && SurelyBelow(m_tNear.dRange * dRings, nav::RangeEstimate::RangeError * dRings, lRing)) return lRing;
    return static_cast<std::int64_t>(Range() / iMiles);
}

bool FromUs::Beyond(double dMiles) const {
    if (m_bNear && m_tNear.dRange + nav::RangeEstimate::RangeError < dMiles) return false;
    return Range() > dMiles;
}

std::int64_t FromUs::Sector(int iDegrees) const {
    std::int64_t lSector = 0;
    const double dSectors = 1.0 / iDegrees;  // in a degree
    constexpr double Error = nav::RangeEstimate::BearingError;
    if (m_bNear && SurelyBelow(m_tNear.Bearing() * dSectors, Error * dSectors, lSector)) return lSector;
    return static_cast<std::int64_t>(Bearing() / iDegrees);
}

}  // namespace report
