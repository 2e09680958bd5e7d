// The program: one window.
#include <QApplication>

#include "app/frmMain.h"

int main(int argc, char* argv[]) {
    QApplication tApplication(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Tidewatch"));
    QApplication::setApplicationVersion(QStringLiteral("1.25"));
    QApplication::setDesktopFileName(QStringLiteral("tidewatch"));
    app::frmMain tWindow;
    tWindow.Form_Load();
    tWindow.show();
    return QApplication::exec();
}
