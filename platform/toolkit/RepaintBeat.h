// When a view takes over what its store holds: at the most ten times a second, and only while it can be seen. The
// stores may change a million times in between. All views have one beat, so that what changes together is painted
// together: to wake up and to bring a window to the screen costs as much as to paint a view.
#pragma once

#include <QWidget>
#include <functional>

namespace toolkit {

class RepaintBeat : public QObject {
    Q_OBJECT
public:
    static constexpr int BeatMilliseconds = 100;

    // tTake brings tView up to date with its store.
    RepaintBeat(QWidget& tView, std::function<void()> tTake);

    // The store has changed: takes over at the next beat, BeatMilliseconds from now at the latest.
    void Mark();
    // Takes over now, seen or not, if anything has changed.
    void Synchronize();
    // The view has come into sight.
    void Shown() { Synchronize(); }
    // Takes over if anything has changed and the view can be seen.
    void Beat();

private:
    QWidget& m_tView;
    std::function<void()> m_tTake;
    bool m_bWaiting = false;
};

}  // namespace toolkit
