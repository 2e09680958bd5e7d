// The timing planner on its tab: inputs read, rows drawn, captions set.
#include "app/frmMain.h"

namespace app {

void frmMain::TimingPlan() {
    ui::TimingInputs tInputs{};
    const std::string sRefused =
        ui::ReadTimingInputs(txtTimingRateTx.Text(), txtTimingRateRc.Text(), txtTimingTimeSpan.Text(), tInputs);
    lblTimingMessage.setText(toolkit::FromLatin1(sRefused));
    if (!sRefused.empty()) return;  // drawing and captions stay
    m_tTimingInputs = tInputs;
    ++m_lTimingRuns;
    TimingDraw();
}

void frmMain::TimingRedraw() {
    if (!m_tTimingInputs) return;
    pctTiming.Clear();
    TimingDraw();
}

ui::TimingRow frmMain::TimingRowOf(const ui::TimingLabels& t) const {
    const QRect tName = t.Name.geometry();
    return {tName.x() + tName.width(), t.Percentage.x(), tName.y(), tName.y() + tName.height()};
}

void frmMain::TimingDraw() {
    const ui::TimingInputs& tInputs = *m_tTimingInputs;
    m_tTimingPrimitives.clear();
    const auto Show = [this](const ui::TimingDrawing& tDrawing, const ui::TimingLabels& tLabels) {
        pctTiming.Draw(tDrawing.tPrimitives);
        m_tTimingPrimitives.insert(m_tTimingPrimitives.end(), tDrawing.tPrimitives.begin(), tDrawing.tPrimitives.end());
        tLabels.Percentage.setText(toolkit::FromLatin1(tDrawing.sPercentage));
    };
    Show(ui::TimingChannel(TimingRowOf(lblTimingChA), tInputs, 0, ui::ChannelAColour), lblTimingChA);
    Show(ui::TimingChannel(TimingRowOf(lblTimingChB), tInputs, tInputs.dRateTx, ui::ChannelBColour), lblTimingChB);
    const ui::TimingAlternateDrawing tAlternate = ui::TimingAlternate(TimingRowOf(lblTimingChAlternate), tInputs);
    Show(tAlternate, lblTimingChAlternate);
    lblTimingSummary.setText(toolkit::FromLatin1(tAlternate.sSummary));
}

}  // namespace app
