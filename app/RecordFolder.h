// Tending the folder of an unattended recording: is it there, is there room, and which old files go. Asks media that
// may be slow; not for the window's thread.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "platform/runtime/DateTime.h"
#include "platform/runtime/DiskRoom.h"

namespace app {

struct FolderTask {
    std::filesystem::path tFolder;
    std::string sProgram;  // whose files they are
    std::optional<std::int64_t> lKeepDays, lKeepBytes;
    runtime::DateTime dtNow;
    runtime::RoomFunction tRoom;
};

struct FolderReport {
    int iError = 0;                     // the system's error number: nothing can be recorded there. 0 for none
    bool bNearlyFull = false;           // and no file is left that may go
    std::vector<std::string> sRemoved;  // names, in the order of their going
};

// Removes what is beyond the limits, the oldest first: files whose last line is older than the days, files beyond the
// bytes of all of them together, and files for whose room a nearly full disk asks. Only regular files go whose name and
// first line both are our own; never the newest one, nor one that any program records into.
FolderReport TendFolder(const FolderTask& t);

}  // namespace app
