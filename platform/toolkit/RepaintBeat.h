// When a view takes over what its store holds: at the most ten times a second, and only while it can be seen. The
// stores may change a million times in between.
#pragma once

#include <QTimer>
#include <QWidget>
#include <functional>

namespace toolkit {

class RepaintBeat : public QObject {
    Q_OBJECT
public:
    static constexpr int BeatMilliseconds = 100;

    // tTake brings tView up to date with its store.
    RepaintBeat(QWidget& tView, std::function<void()> tTake);

    // The store has changed: takes over at the next beat.
    void Mark();
    // Takes over now, seen or not, if anything has changed.
    void Synchronize();
    // The view has come into sight.
    void Shown() { Synchronize(); }

private:
    void Beat();

    QWidget& m_tView;
    std::function<void()> m_tTake;
    QTimer m_tTimer;
    bool m_bWaiting = false;
};

}  // namespace toolkit
