// Pictures of two recordings of the same time, A and B over each other.
#include "report/ComparisonTables.h"
#include "report/PlainText.h"

namespace report {

namespace {

constexpr double Percent = 100;

// A ring's points from the innermost to the outermost, with gaps where there is nothing. dAt: where in the ring, 0
// to 1.
template <class Function>
std::vector<Point> RingPoints(const std::map<int, Tally>& tRings, double dAt, const Function& Read) {
    std::vector<Point> tPoints;
    if (tRings.empty()) return tPoints;
    for (int i = 0; i <= tRings.rbegin()->first; ++i) {
        Point tPoint{(i + dAt) * Comparison::RingMiles, NotKnown};
        const auto p = tRings.find(i);
        if (p != tRings.end()) Read(p->second, tPoint);
        tPoints.push_back(tPoint);
    }
    return tPoints;
}

std::string SideName(const Options& t, std::size_t iSide) {
    return (iSide == 0 ? "A: " : "B: ") + FileNameOf(t.sFiles[iSide]);
}

Picture CoveragePicture(const Comparison& t, const Options& tOptions) {
    Picture tPicture{Picture::Kind::Rose, "compare-coverage", "Range by bearing: A and B"};
    tPicture.tY = {"95 % range, nm", false, 0};
    for (std::size_t iSide = 0; iSide < t.tReach.size(); ++iSide) {
        Series tSeries{SideName(tOptions, iSide), {}};
        for (int iDegrees = 0; iDegrees < 360; iDegrees += tOptions.iSector) {
            const auto p = t.tReach[iSide].find(iDegrees / tOptions.iSector);
            const bool bThere = p != t.tReach[iSide].end();
            tSeries.tPoints.push_back({static_cast<double>(iDegrees), bThere ? p->second.Quantile(0.95) : NotKnown});
            if (bThere) tPicture.lCount += p->second.Count();
        }
        tPicture.tSeries.push_back(tSeries);
    }
    tPicture.sRule = "95 % of a sector's reports come from within that range, each from the own position of its file.";
    tPicture.sCounted = "positions heard";
    return tPicture;
}

Picture HeardPicture(const Comparison& t, const Options& tOptions) {
    Picture tPicture{Picture::Kind::Lines, "compare-heard", "Heard against range: A and B"};
    tPicture.tX = {"range, nm", false, 0};
    tPicture.tY = {"heard of what either heard, %", false, 0, Percent};
    for (const Share e : {Share::First, Share::Second}) {
        const auto Read = [e](const Tally& tRing, Point& tPoint) {
            const auto lHeard = e == Share::First ? tRing.ByFirst() : tRing.BySecond();
            tPoint.dY = Percent * static_cast<double>(lHeard) / static_cast<double>(tRing.Either());
            const auto tInterval = tRing.Shares().Of(e);
            if (!tInterval) return;
            tPoint.dLow = tInterval->dLow * Percent;
            tPoint.dHigh = tInterval->dHigh * Percent;
        };
        tPicture.tSeries.push_back({SideName(tOptions, e == Share::First ? 0 : 1), RingPoints(t.tRings, 0.5, Read)});
    }
    for (const auto& [iRing, tRing] : t.tRings) tPicture.lCount += iRing == Comparison::NoPlace ? 0 : tRing.Either();
    tPicture.sRule = "Of the messages that either heard from that range; the band is the 95 % interval.";
    tPicture.sCounted = "messages that either heard";
    return tPicture;
}

Picture LevelPicture(const Comparison& t, bool bRaw) {
    Picture tPicture{Picture::Kind::Lines, "compare-level", "Signal level against range: A less B"};
    tPicture.tX = {"range, nm", false, 0};
    tPicture.tY.sTitle = bRaw ? "A less B, steps" : "A less B, dB";
    const auto Read = [&tPicture](const Tally& tRing, Point& tPoint) {
        if (tRing.tSignal.Count() == 0) return;
        const RankMedian tMedian = tRing.tSignal.Median();
        tPicture.lCount += tRing.tSignal.Count();
        tPoint.dY = tMedian.dMedian;
        if (!tMedian.tInterval) return;
        tPoint.dLow = tMedian.tInterval->dLow;
        tPoint.dHigh = tMedian.tInterval->dHigh;
    };
    tPicture.tSeries.push_back({"A less B", RingPoints(t.tRings, 0.5, Read)});
    tPicture.sRule = "Median over the ships of a ring of each ship's mean difference; the band is its 95 % interval.";
    tPicture.sCounted = "messages that both heard";
    return tPicture;
}

}  // namespace

void ComparisonTables::DrawPictures() const {
    if (!m_tWriter.Draws()) return;
    m_tWriter.Draw(CoveragePicture(m_tFigures, m_tOptions));
    m_tWriter.Draw(HeardPicture(m_tFigures, m_tOptions));
    m_tWriter.Draw(LevelPicture(m_tFigures, m_tOptions.bRaw));
}

}  // namespace report
