// The bytes of a file or of standard input, unpacked where they are packed by gzip or zstd.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>

namespace report {

// Carries what failed, in the system's words or ours.
struct InputError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// Bytes one after the other.
class ByteStream {
public:
    virtual ~ByteStream() = default;
    // As many as there are at hand, up to the room; 0 at the end. Raises InputError.
    virtual std::size_t Read(std::span<char> tRoom) = 0;
};

class InputFile {
public:
    static constexpr std::string_view StandardInput = "-";

    // Packed data is known by its first bytes, not by the name. Raises InputError.
    explicit InputFile(const std::string& sPath);
    ~InputFile();
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;

    // 0 at the end. Everything that came before a damage is handed out; then it raises InputError.
    std::size_t Read(std::span<char> tRoom) { return m_pStream->Read(tRoom); }
    // Bytes of it, as it lies there, that have been read.
    std::int64_t BytesTaken() const;
    bool Packed() const { return m_pUnpacked != nullptr; }
    int Descriptor() const;

private:
    class RawFile;
    std::unique_ptr<RawFile> m_pFile;
    std::unique_ptr<ByteStream> m_pUnpacked;  // null for a plain file
    ByteStream* m_pStream = nullptr;          // which of the two is read
};

// Size of a regular file, 0 for anything else: a pipe, a terminal, nothing.
std::int64_t RegularFileSize(const std::string& sPath);

}  // namespace report
