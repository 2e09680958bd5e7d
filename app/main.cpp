// The program: one window.
#include <QApplication>
#include <csignal>

#include "app/frmMain.h"
#include "platform/toolkit/DisplayEnd.h"
#include "platform/toolkit/QuitSignals.h"

int main(int argc, char* argv[]) {
    toolkit::BlockQuitSignals();
    std::signal(SIGXFSZ, SIG_IGN);  // a file that may grow no further is a failed write, not the end of the program
    QApplication tApplication(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Tidewatch"));
    QApplication::setDesktopFileName(QStringLiteral("org.tidewatch.tidewatch"));
    app::frmMain tWindow;
    tWindow.Form_Load();
    toolkit::OnQuitSignal(&tWindow, [&tWindow] { tWindow.close(); });
    const toolkit::DisplayEnd tDisplayEnd([&tWindow] { tWindow.DisplayLost(); });
    tWindow.show();
    tWindow.UnattendedBegin();
    return QApplication::exec();
}
