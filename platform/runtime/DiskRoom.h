// How much room a disk has.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>

namespace runtime {

struct DiskRoom {
    std::int64_t lFree = 0;   // bytes that this user may still write
    std::int64_t lWhole = 0;  // bytes of the whole disk
};

// The disk that a folder lies on; nothing where the system does not say. It may wait for the medium.
using RoomFunction = std::function<std::optional<DiskRoom>(const std::filesystem::path& tFolder)>;
std::optional<DiskRoom> RoomOfDisk(const std::filesystem::path& tFolder);

}  // namespace runtime
