// The beat of the views.
#include "platform/toolkit/RepaintBeat.h"

#include <QCoreApplication>
#include <QPointer>
#include <QTimer>
#include <algorithm>
#include <utility>
#include <vector>

namespace toolkit {

namespace {

// The one beat: begins with the first view that waits, and ends when all that wait by then have taken over.
class SharedBeat : public QObject {
public:
    static SharedBeat& Instance() {
        static QPointer<SharedBeat> p;
        if (!p) p = new SharedBeat(QCoreApplication::instance());
        return *p;
    }
    void Add(RepaintBeat* p) {
        if (std::find(m_tWaiting.begin(), m_tWaiting.end(), p) == m_tWaiting.end()) m_tWaiting.emplace_back(p);
        if (!m_tTimer.isActive()) m_tTimer.start();
    }

private:
    explicit SharedBeat(QObject* pParent) : QObject(pParent) {
        m_tWaiting.reserve(UsualViews);
        m_tSpare.reserve(UsualViews);
        m_tTimer.setSingleShot(true);
        m_tTimer.setInterval(RepaintBeat::BeatMilliseconds);
        connect(&m_tTimer, &QTimer::timeout, this, [this] {
            std::vector<QPointer<RepaintBeat>> tTaking = std::exchange(m_tSpare, {});
            tTaking.swap(m_tWaiting);
            for (const QPointer<RepaintBeat>& p : tTaking) {
                if (p) p->Beat();
            }
            tTaking.clear();
            m_tSpare = std::move(tTaking);
        });
    }

    static constexpr std::size_t UsualViews = 32;  // of a window: so that to wait takes no memory

    QTimer m_tTimer;
    std::vector<QPointer<RepaintBeat>> m_tWaiting;
    std::vector<QPointer<RepaintBeat>> m_tSpare;  // changes places with the others, so that both keep their memory
};

}  // namespace

RepaintBeat::RepaintBeat(QWidget& tView, std::function<void()> tTake)
    : QObject(&tView), m_tView(tView), m_tTake(std::move(tTake)) {}

void RepaintBeat::Mark() {
    if (m_bWaiting) return;
    m_bWaiting = true;
    SharedBeat::Instance().Add(this);
}

void RepaintBeat::Synchronize() {
    if (!m_bWaiting) return;
    m_bWaiting = false;
    m_tTake();
}

void RepaintBeat::Beat() {
    if (m_tView.isVisible()) Synchronize();  // else it stays waiting: showing the view takes over
}

}  // namespace toolkit
