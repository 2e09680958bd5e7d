// Three ways lead out. Qt's own connection and Xlib's call exit(), which runs what atexit() was given. A desktop's
// theme (GTK's) has a connection of its own, whose handler in Xlib calls _exit(), which runs nothing: so that handler
// is preceded by one of ours. Qt's Wayland client calls _exit() as well; all that it leaves before is a message, and
// each of its threads does so by itself.
#include "platform/toolkit/DisplayEnd.h"

#include <dlfcn.h>

#include <QCoreApplication>
#include <QString>
#include <QThread>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdlib>
#include <mutex>
#include <utility>

namespace toolkit {

namespace {

using IoErrorHandler = int (*)(void* pDisplay);
using SetIoErrorHandler = IoErrorHandler (*)(IoErrorHandler pHandler);

constexpr std::chrono::seconds ThreadPatience{10};

std::atomic<bool> g_bWatching = false;  // while there is a DisplayEnd
std::function<void()> g_tSave;
IoErrorHandler g_pFormerIoError = nullptr;
QtMessageHandler g_pFormerMessage = nullptr;

std::mutex g_tLock;
std::condition_variable g_tSaved;
bool g_bSaved = false;

void Save() {
    const auto tSave = std::exchange(g_tSave, nullptr);
    if (tSave) tSave();
    const std::lock_guard tGuard(g_tLock);
    g_bSaved = true;
    g_tSaved.notify_all();
}

// The window belongs to the main thread, which meets the end as well: another one must not end the process before.
void SaveOrWait() {
    if (!g_bWatching) return;
    if (QThread::currentThread() == QCoreApplication::instance()->thread()) return Save();
    std::unique_lock tGuard(g_tLock);
    g_tSaved.wait_for(tGuard, ThreadPatience, [] { return g_bSaved; });
}

int OnIoError(void* pDisplay) {
    SaveOrWait();
    return g_pFormerIoError ? g_pFormerIoError(pDisplay) : 0;
}

void OnMessage(QtMsgType eType, const QMessageLogContext& tContext, const QString& sMessage) {
    if (g_pFormerMessage) g_pFormerMessage(eType, tContext, sMessage);
    if (sMessage.startsWith(QLatin1String("The Wayland connection "))) SaveOrWait();
}

// Only where Xlib is in the process, brought in by Qt's platform or theme; nothing is loaded for it.
SetIoErrorHandler XlibSetter() {
    void* pXlib = ::dlopen("libX11.so.6", RTLD_LAZY | RTLD_NOLOAD);
    return pXlib ? reinterpret_cast<SetIoErrorHandler>(::dlsym(pXlib, "XSetIOErrorHandler")) : nullptr;
}

}  // namespace

DisplayEnd::DisplayEnd(std::function<void()> tSave) {
    g_tSave = std::move(tSave);
    g_bWatching = true;
    static const bool bRegistered = std::atexit(Save) == 0;
    static_cast<void>(bRegistered);
    if (const SetIoErrorHandler pSet = XlibSetter()) g_pFormerIoError = pSet(OnIoError);
    g_pFormerMessage = qInstallMessageHandler(OnMessage);
}

DisplayEnd::~DisplayEnd() {
    g_bWatching = false;
    g_tSave = nullptr;
    qInstallMessageHandler(g_pFormerMessage);
}

}  // namespace toolkit
