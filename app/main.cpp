// The program: one window.
#include <QApplication>

#include "app/frmMain.h"
#include "platform/toolkit/QuitSignals.h"

int main(int argc, char* argv[]) {
    toolkit::BlockQuitSignals();
    QApplication tApplication(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Tidewatch"));
    QApplication::setApplicationVersion(QStringLiteral("1.25"));
    QApplication::setDesktopFileName(QStringLiteral("tidewatch"));
    app::frmMain tWindow;
    tWindow.Form_Load();
    toolkit::OnQuitSignal(&tWindow, [&tWindow] { tWindow.close(); });
    tWindow.show();
    return QApplication::exec();
}
