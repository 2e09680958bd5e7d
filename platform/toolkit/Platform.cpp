// The real clock, dialogs, pointer and devices.
#include "platform/toolkit/Platform.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QFileInfo>
#include <QGuiApplication>
#include <QMessageBox>
#include <QScreen>
#include <QThread>
#include <QUrl>

#include "platform/toolkit/FileDialog.h"
#include "platform/toolkit/NativeSerialDevice.h"
#include "platform/toolkit/PortNames.h"

namespace toolkit {

namespace {

constexpr unsigned long YieldMicroseconds = 500;  // so that a waiting loop leaves the processor to others

void NativeShowMessage(QWidget* pWindow, const QString& sText, MessageIcon eIcon) {
    QMessageBox tBox(eIcon == MessageIcon::Exclamation ? QMessageBox::Warning : QMessageBox::NoIcon,
                     QCoreApplication::applicationName(), sText, QMessageBox::Ok, pWindow);
    tBox.exec();
}

void NativeShowBusyPointer(bool bBusy) {
    if (bBusy) {
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    } else {
        QGuiApplication::restoreOverrideCursor();
    }
}

// The program's own folder, and the name that it was started by: that of a link where there is one.
QString ProgramFile() {
    const QString sStarted = QFileInfo(QCoreApplication::arguments().value(0)).fileName();
    return sStarted.isEmpty() ? QCoreApplication::applicationFilePath()
                              : QCoreApplication::applicationDirPath() + QLatin1Char('/') + sStarted;
}

std::vector<QRect> NativeScreenAreas() {
    std::vector<QRect> tAreas;
    for (const QScreen* pScreen : QGuiApplication::screens()) tAreas.push_back(pScreen->availableGeometry());
    return tAreas;
}

}  // namespace

Platform Platform::Native() {
    Platform t;
    t.Now = runtime::LocalNow;
    t.SecondsSinceMidnight = runtime::LocalSecondsSinceMidnight;
    t.Yield = [] {
        QCoreApplication::processEvents();
        QThread::usleep(YieldMicroseconds);
    };
    t.AskFile = AskForFile;
    t.ShowMessage = NativeShowMessage;
    t.ShowBusyPointer = NativeShowBusyPointer;
    t.OpenDocument = [](const QString& sFile) { return QDesktopServices::openUrl(QUrl::fromLocalFile(sFile)); };
    t.ScreenAreas = NativeScreenAreas;
    t.Serial.Resolve = [](const QString& sPort) { return PortDevice(sPort); };
    t.Serial.MakeDevice = [] { return std::make_unique<NativeSerialDevice>(); };
    t.sProgramFile = ProgramFile();
    return t;
}

}  // namespace toolkit
