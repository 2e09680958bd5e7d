// Measures the program's start: the time from exec to the end of the window's first paint, and the memory resident then
// and a second later. Run by hand, offscreen: QT_QPA_PLATFORM=offscreen StartUp. Starts itself anew for each round, so
// that loading the libraries counts.
#include <sys/wait.h>
#include <unistd.h>

#include <QApplication>
#include <QEvent>
#include <QTimer>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

#include "app/frmMain.h"

namespace {

constexpr int Rounds = 10;
constexpr int SettleMs = 1000;

std::int64_t Microseconds() {
    const auto tNow = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::microseconds>(tNow).count();
}

long ResidentKilobytes() {
    std::ifstream tStatus("/proc/self/status");
    for (std::string sLine; std::getline(tStatus, sLine);) {
        if (sLine.rfind("VmRSS:", 0) == 0) return std::atol(sLine.c_str() + 6);
    }
    return 0;
}

// Tells the time of the first paint.
class FirstPaint : public QObject {
public:
    explicit FirstPaint(std::int64_t lExec) : m_lExec(lExec) {}

protected:
    bool eventFilter(QObject* pObject, QEvent* pEvent) override {
        if (pEvent->type() == QEvent::Paint && !m_bSeen) {
            m_bSeen = true;
            QTimer::singleShot(0, this, [this] { Tell(); });  // after the whole window has been painted
        }
        return QObject::eventFilter(pObject, pEvent);
    }

private:
    void Tell() {
        const double dMs = static_cast<double>(Microseconds() - m_lExec) / 1000;
        std::printf("first paint after %.1f ms, %ld kB resident", dMs, ResidentKilobytes());
        QTimer::singleShot(SettleMs, this, [] {
            std::printf(", a second later %ld kB\n", ResidentKilobytes());
            QApplication::quit();
        });
    }

    std::int64_t m_lExec;
    bool m_bSeen = false;
};

int OneStart(int argc, char* argv[], std::int64_t lExec) {
    QApplication tApplication(argc, argv);
    FirstPaint tFirstPaint(lExec);
    tApplication.installEventFilter(&tFirstPaint);
    app::frmMain tWindow;
    tWindow.Form_Load();
    tWindow.show();
    return QApplication::exec();
}

}  // namespace

int main(int argc, char* argv[]) {
    if (argc > 1) return OneStart(argc, argv, std::atoll(argv[1]));
    for (int i = 0; i < Rounds; ++i) {
        const pid_t iChild = ::fork();
        if (iChild == 0) {
            ::execl("/proc/self/exe", argv[0], std::to_string(Microseconds()).c_str(), nullptr);
            ::_exit(127);
        }
        int iStatus = 0;
        ::waitpid(iChild, &iStatus, 0);
        if (iStatus != 0) return 1;
    }
    return 0;
}
