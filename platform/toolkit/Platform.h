// Everything outside the process that the window asks for, handed to it when it is made, so that a test hands in
// another clock, other answers and other devices.
#pragma once

#include <QRect>
#include <QString>
#include <functional>
#include <optional>
#include <vector>

#include "platform/runtime/DateTime.h"
#include "platform/runtime/DiskRoom.h"
#include "platform/runtime/DiskSync.h"
#include "platform/toolkit/FileChoice.h"
#include "platform/toolkit/Focus.h"
#include "platform/toolkit/SerialPort.h"

namespace toolkit {

enum class MessageIcon { Plain, Exclamation };

struct Platform {
    std::function<runtime::DateTime()> Now;
    std::function<double()> SecondsSinceMidnight;  // with fraction, wraps at midnight
    std::function<void()> Yield;                   // one turn of the event loop
    std::function<std::optional<QString>(QWidget* pWindow, const FileRequest&)> AskFile;  // nothing: cancelled
    std::function<void(QWidget* pWindow, const QString& sText, MessageIcon)> ShowMessage;
    std::function<void(bool bBusy)> ShowBusyPointer;
    // Shows a file in the program that the desktop has for its kind; false when there is none.
    std::function<bool(const QString& sFile)> OpenDocument;
    std::function<bool(const QWidget& tControl)> HasFocus = toolkit::HasFocus;  // does it hold the keyboard focus
    // Brings a written file to the disk, on a thread that is not the window's.
    runtime::DiskSync::Function Synchronize = runtime::DiskSync::ToDisk;
    runtime::RoomFunction DiskRoom = runtime::RoomOfDisk;  // on such a thread, too
    SerialAccess Serial;
    // What each screen leaves to windows, device-independent pixels, the main screen first. None: nothing is known.
    std::function<std::vector<QRect>()> ScreenAreas;
    QString sProgramFile;  // the program's folder and the name it was started by; profile and playback folder follow it

    // The real ones.
    static Platform Native();
};

}  // namespace toolkit
