// Signals as readable events.
#include "platform/toolkit/QuitSignals.h"

#include <sys/signalfd.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <utility>

namespace toolkit {

namespace {

sigset_t QuitSet() {
    sigset_t t;
    sigemptyset(&t);
    for (const int iSignal : {SIGTERM, SIGINT, SIGHUP}) sigaddset(&t, iSignal);
    return t;
}

}  // namespace

void BlockQuitSignals() {
    const sigset_t t = QuitSet();
    pthread_sigmask(SIG_BLOCK, &t, nullptr);
}

void OnQuitSignal(QObject* pContext, std::function<void()> tQuit) {
    const sigset_t t = QuitSet();
    const int iDescriptor = signalfd(-1, &t, SFD_CLOEXEC | SFD_NONBLOCK);
    if (iDescriptor < 0) return;
    auto* pNotifier = new QSocketNotifier(iDescriptor, QSocketNotifier::Read, pContext);
    QObject::connect(pNotifier, &QSocketNotifier::activated, pContext, [iDescriptor, tQuit = std::move(tQuit)] {
        signalfd_siginfo tInfo{};
        while (::read(iDescriptor, &tInfo, sizeof tInfo) == sizeof tInfo) tQuit();
    });
}

}  // namespace toolkit
