// The two one-second clocks: how long each port has been silent, and the time of day.
#include <utility>

#include "app/SilenceText.h"
#include "app/frmMain.h"

namespace app {

void frmMain::tmrComm_Timer() {
    for (PortIndex i = 0; i < runtime::PortCount; ++i) {
        if (!MSComm(i).PortOpen() && !m_bPlayback) continue;
        if (m_bCommReceived(i)) {
            m_bCommReceived(i) = false;
            m_lCommSeconds(i) = 0;
        } else {
            ++m_lCommSeconds(i);
        }
        StatusBar.SetPanelText(ui::PanelSilence0 + i, SilenceText(m_lCommSeconds(i)));
        if (MSComm(i).PortOpen()) CommCheckSpeed(i);
    }
    if (!std::exchange(m_bLineError, false)) m_bLineErrorTold = false;
}

void frmMain::tmrTime_Timer() {
    StatusBar.SetPanelText(ui::PanelClock, runtime::TimeText(m_tPlatform.Now()));
    if (m_bPlayback) PlaybackStep(0);
    if (MSCommOutput.PortOpen()) OutputTellDropped(1);
    RecordFlush();  // a kill loses no more than the last second
    UnattendedTick();
    ShowRunNote();
}

}  // namespace app
