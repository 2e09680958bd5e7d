// Text files by file number, as record and playback use them: numbers from 1, line reading that takes CR LF, LF and CR,
// large buffers, and failures as exceptions with the system's words. Knows nothing of record lines.
#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "platform/runtime/DiskSync.h"
#include "platform/runtime/LineBlock.h"

namespace runtime {

// Carries what failed in words for the user: the system's (SystemText), or ours. Latin-1.
struct FileError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// "line 1204: too long". Lines count from 1.
FileError ErrorInLine(std::uint64_t lLine, std::string_view sReason);

class TextFiles {
public:
    static constexpr std::size_t LongestLine = LineBlock::LongestLine;  // a longer line is a FileError

    // tSynchronize is run on another thread, for one file at a time.
    explicit TextFiles(DiskSync::Function tSynchronize = DiskSync::ToDisk);
    ~TextFiles();  // flushes and closes what is open
    TextFiles(const TextFiles&) = delete;
    TextFiles& operator=(const TextFiles&) = delete;

    // The lowest number from 1 with no open file. Where all 255 are taken the file that was retired first is closed and
    // gives its number. Raises FileError where none is retired.
    std::int16_t FreeFile();

    // Opens a regular file for line reading. Raises FileError (missing, unreadable, a directory, a FIFO or a device:
    // it never waits for another process).
    void OpenForInput(std::int16_t iFile, const std::filesystem::path& tPath);
    // Creates or empties a file for writing. Raises FileError.
    void OpenForOutput(std::int16_t iFile, const std::filesystem::path& tPath);
    // Creates a file for writing, and locks it (flock) as long as it is open, by which others can tell that it is in
    // use. False where there is one of that name already. Raises FileError.
    bool Create(std::int16_t iFile, const std::filesystem::path& tPath);
    // Closes the file; a number that is not open is left alone. Output still buffered is written, but not waited for
    // until it is on the disk; a failure then is not reported.
    void Close(std::int16_t iFile) noexcept;
    bool IsOpen(std::int16_t iFile) const noexcept;
    // For an input file that is not needed any more: it stays open until FreeFile needs its number, but keeps no
    // memory. It can be read on all the same. A number that is not open for input is left alone.
    void Retire(std::int16_t iFile) noexcept;

    // How many lines have been handed out.
    std::uint64_t LinesRead(std::int16_t iFile) const;
    // Nothing has been read yet.
    bool AtStart(std::int16_t iFile) const { return LinesRead(iFile) == 0; }
    // No byte is left (a last line without line end counts as a line). Raises FileError, with the line's number, when
    // the read fails.
    bool AtEnd(std::int16_t iFile);
    // The next line without its line end. The view holds until the next call on this number. Raises FileError at the
    // end, on a read failure and for a line over LongestLine, the latter two with the line's number.
    std::string_view ReadLine(std::int16_t iFile);
    // What has been read so far and not handed out: its lines can be taken without AtEnd and ReadLine, which read on,
    // and views into it hold until then. The reference holds as long as the file is open.
    LineBlock& AtHand(std::int16_t iFile);

    // The last bytes of an input file, as many as asked for if there are so many; the reading goes on where it was.
    // Empty where they cannot be read.
    std::string End(std::int16_t iFile, std::size_t iBytes) const;

    // Appends the line and CR LF to the buffer, which is written out when it is full. Raises FileError (disk full).
    void WriteLine(std::int16_t iFile, std::string_view sLine);
    // How many bytes were written to an output file, buffered ones included.
    std::int64_t Written(std::int16_t iFile) const;
    // Hands everything written so far to the system, so that a kill does not lose it, and has it brought to the disk,
    // without waiting for that. Raises FileError, also when the disk has failed since the last call. A number that is
    // not open for output is left alone.
    void Flush(std::int16_t iFile);
    // Waits until everything that was flushed is on the disk, so that a power cut does not lose it. With a patience:
    // false when it took longer than that. Raises FileError when the disk failed.
    void AwaitDisk(std::int16_t iFile);
    bool AwaitDisk(std::int16_t iFile, std::chrono::milliseconds tPatience);
    // Raises FileError when what is written leads nowhere any more: the file was removed, moved or replaced, or its
    // medium has been taken away. Asks no medium while all is well. A number that is not open for output is left alone.
    void CheckInPlace(std::int16_t iFile) const;

    // All bytes of a regular file, without a number; nothing where there is none of that name. Raises FileError where
    // it cannot be read; never waits for another process.
    static std::optional<std::string> ReadWhole(const std::filesystem::path& tPath);

private:
    struct File;
    File& Opened(std::int16_t iFile) const;
    std::unique_ptr<File>& Unused(std::int16_t iFile);
    DiskSync::Function m_tSynchronize;
    std::array<std::unique_ptr<File>, 256> m_tFiles;
    std::uint64_t m_lRetired = 0;  // how many were retired so far
};

}  // namespace runtime
