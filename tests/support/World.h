// What surrounds a window under test: a clock that stands still until it is moved, prepared answers for dialogs, ports
// in memory (or wherever a test says), a folder of its own for program and profile. Everything asked for is kept.
#pragma once

#include <QStringList>
#include <QTemporaryDir>
#include <atomic>
#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/toolkit/Platform.h"
#include "tests/support/MemoryDevice.h"

namespace support {

class World {
public:
    World();

    // Handed to the window; refers to this world, which must outlive it.
    toolkit::Platform MakePlatform();

    // The clock, at first 2011-05-15 12:00:00.
    runtime::DateTime dtNow;
    void SetClock(std::string_view sIso);
    // The seconds-since-midnight clock: every look at it is dTimerStep later, so that a paced loop ends by itself.
    double dTimer = 43200;
    double dTimerStep = 0.004;
    std::function<void()> tYield;                     // what a turn of the event loop does; the real one when empty
    std::function<void(toolkit::Platform&)> tAdjust;  // the last word on the platform that is handed out

    // The disk: done at once, unless a test puts something else here before the window is made.
    runtime::DiskSync::Function tSynchronize = [](int) { return 0; };

    // The room on it, for whatever folder; asked for on another thread, which may outlive this.
    struct Room {
        std::atomic<std::int64_t> lFree = 500'000'000'000;
        std::atomic<std::int64_t> lWhole = 1'000'000'000'000;
    };
    std::shared_ptr<Room> pRoom = std::make_shared<Room>();

    // Dialog answers, first come first served; nothing in one means cancelled. A dialog without an answer is cancelled
    // and counted in iUnanswered.
    std::deque<std::optional<QString>> tFileAnswers;
    int iUnanswered = 0;
    std::vector<toolkit::FileRequest> tDialogs;
    QStringList sMessages;
    std::vector<toolkit::MessageIcon> eMessageIcons;
    std::vector<bool> bBusyPointer;
    QStringList sDocuments;  // what was to be opened
    bool bOpensDocuments = true;

    // The screens' areas; none: nothing is known of any, and a window may have any place and size.
    std::vector<QRect> tScreens;

    // Ports: numbers 1 to 255 exist in memory, but for those that fail with a text. With bNativeDevices port fields
    // name real devices (a pseudo-terminal's path).
    std::map<int, std::string> sBadPorts;
    bool bNativeDevices = false;

    QString Folder() const { return m_tFolder.path(); }
    QString Path(const QString& sName) const { return m_tFolder.filePath(sName); }
    QString ProfileFile() const { return Path(QStringLiteral("tidewatch.Ini")); }
    void WriteFile(const QString& sPath, std::string_view sContent) const;
    std::string ReadFile(const QString& sPath) const;

private:
    void OpenInMemory(const QString& sDevice) const;

    QTemporaryDir m_tFolder;
};

}  // namespace support
