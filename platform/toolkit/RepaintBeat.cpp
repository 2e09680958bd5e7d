// The beat of the views.
#include "platform/toolkit/RepaintBeat.h"

#include <utility>

namespace toolkit {

RepaintBeat::RepaintBeat(QWidget& tView, std::function<void()> tTake)
    : QObject(&tView), m_tView(tView), m_tTake(std::move(tTake)) {
    m_tTimer.setSingleShot(true);
    m_tTimer.setInterval(BeatMilliseconds);
    connect(&m_tTimer, &QTimer::timeout, this, &RepaintBeat::Beat);
}

void RepaintBeat::Mark() {
    if (m_bWaiting) return;
    m_bWaiting = true;
    m_tTimer.start();
}

void RepaintBeat::Synchronize() {
    if (!m_bWaiting) return;
    m_tTimer.stop();
    m_bWaiting = false;
    m_tTake();
}

void RepaintBeat::Beat() {
    if (!m_tView.isVisible()) return;  // stays waiting: showing the view takes over
    Synchronize();
}

}  // namespace toolkit
