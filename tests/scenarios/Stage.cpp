// Loading windows, and passing bytes in and out.
#include "tests/scenarios/Stage.h"

#include <QFile>

#include "platform/toolkit/PortNames.h"

namespace scenarios {

Stage::Stage(std::string_view sClock, bool bPty) {
    tWorld.SetClock(sClock);
    if (bPty) {
        m_pPtys = std::make_unique<PtyBench>(tWorld.sBadPorts);
    } else {
        tWorld.tYield = [] {};  // nothing ever arrives by itself
    }
    tWorld.tAdjust = [this](toolkit::Platform& t) { Adjust(t); };
}

Stage::~Stage() = default;

void Stage::Adjust(toolkit::Platform& t) {
    // The script moves the focus, also to controls that are not in sight; the toolkit would move it on by itself when
    // a control is disabled or its tab goes.
    t.HasFocus = [this](const QWidget& tControl) { return !m_sFocus.isEmpty() && tControl.objectName() == m_sFocus; };
    if (!m_pPtys) return;
    const auto tElsewhere = t.Serial.Resolve;
    t.Serial.Resolve = [this, tElsewhere](const QString& sPort) {
        const auto iNumber = toolkit::PortNumber(sPort);
        return iNumber && *iNumber >= 1 && *iNumber <= 255 ? m_pPtys->DeviceOf(*iNumber) : tElsewhere(sPort);
    };
    t.Serial.MakeDevice = [this] { return std::make_unique<PtyDevice>(*m_pPtys); };
}

ScenarioWindow& Stage::Window() {
    if (!m_pWindow) Load(std::string());
    return *m_pWindow;
}

void Stage::Load(const std::optional<std::string>& sProfile) {
    m_pWindow.reset();
    m_sFocus.clear();
    const std::string sText = sProfile ? *sProfile : m_sSaved.value_or(std::string());
    QFile::remove(tWorld.ProfileFile());
    if (!sText.empty()) tWorld.WriteFile(tWorld.ProfileFile(), sText);
    m_pWindow = std::make_unique<ScenarioWindow>(tWorld);
    // The script ticks; the timers only show whether they would.
    m_pWindow->tmrComm.blockSignals(true);
    m_pWindow->tmrTime.blockSignals(true);
    m_pWindow->setMinimumSize(1, 1);  // a script may ask for any size
    // Shown first: then loading does not lay out by itself, and every later layout takes place at once.
    m_pWindow->show();
    m_pWindow->Load();
}

void Stage::Unload() {
    Window().Unload();
    m_sSaved = tWorld.ReadFile(tWorld.ProfileFile());
}

void Stage::Feed(app::PortIndex i, std::string_view sData) {
    toolkit::SerialPort& tPort = Window().MSComm(i);
    if (!tPort.PortOpen()) return;
    if (auto* pMemory = dynamic_cast<support::MemoryDevice*>(tPort.OpenDevice())) {
        pMemory->Feed(sData);
    } else if (auto* pPty = dynamic_cast<PtyDevice*>(tPort.OpenDevice())) {
        pPty->Feed(sData);
    }
}

std::string Stage::Written(const toolkit::SerialPort& tPort) const {
    if (const auto* pMemory = dynamic_cast<support::MemoryDevice*>(tPort.OpenDevice())) return pMemory->Written();
    if (const auto* pPty = dynamic_cast<PtyDevice*>(tPort.OpenDevice())) return pPty->Arrived();
    return {};
}

void Stage::Settle() {
    if (!m_pPtys || !m_pWindow) return;
    for (const toolkit::SerialPort* pPort : {&m_pWindow->MSComm(0), &m_pWindow->MSComm(1), &m_pWindow->MSCommOutput}) {
        if (auto* pPty = dynamic_cast<PtyDevice*>(pPort->OpenDevice())) pPty->Collect();
    }
}

}  // namespace scenarios
