// The curve, looked up where that gives the same.
#include "report/LevelFigures.h"

#include <string>

#include "decoders/SignalSentence.h"

namespace report {

LevelScale::LevelScale(bool bRaw) : m_bRaw(bRaw) {
    for (std::size_t i = 0; i < m_dDbm.size(); ++i) m_dDbm[i] = decoders::SignalToDbm(std::to_string(i));
}

double LevelScale::ShowOne(double dLevel) const {
    if (m_bRaw) return dLevel;
    const auto Whole = [&] { return static_cast<std::size_t>(dLevel); };
    if (dLevel >= 0 && dLevel < static_cast<double>(m_dDbm.size()) && static_cast<double>(Whole()) == dLevel) {
        return m_dDbm[Whole()];
    }
    return decoders::SignalToDbm(std::to_string(dLevel));
}

ShownLevels LevelScale::Show(const Levels& t) const {
    const double dSignal = ShowOne(t.dSignal);
    const double dThreshold = ShowOne(t.dThreshold);
    return {dSignal, dThreshold, dSignal - dThreshold};
}

}  // namespace report
