// The signals that ask a program to end (a logout, Ctrl+C, kill), handed to the event loop, so that the window closes
// as if by hand: ports and files are closed and the settings are saved.
#pragma once

#include <csignal>
#include <functional>

class QObject;

namespace toolkit {

// Blocks SIGTERM, SIGINT and SIGHUP; call it before anything else may start a thread.
void BlockQuitSignals();

// From now on tQuit runs, in the event loop, when one of them arrives; as long as pContext lives.
void OnQuitSignal(QObject* pContext, std::function<void()> tQuit);

}  // namespace toolkit
