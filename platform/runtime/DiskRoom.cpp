// Asks the file system.
#include "platform/runtime/DiskRoom.h"

#include <sys/statvfs.h>

namespace runtime {

std::optional<DiskRoom> RoomOfDisk(const std::filesystem::path& tFolder) {
    struct statvfs t {};
    if (::statvfs(tFolder.c_str(), &t) != 0 || t.f_blocks == 0) return std::nullopt;
    const auto lBlock = static_cast<std::int64_t>(t.f_frsize);
    return DiskRoom{static_cast<std::int64_t>(t.f_bavail) * lBlock, static_cast<std::int64_t>(t.f_blocks) * lBlock};
}

}  // namespace runtime
