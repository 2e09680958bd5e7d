// Opening, and the choice of the unpacker.
#include "report/InputFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <string_view>
#include <system_error>

#include "report/InputName.h"
#include "report/Unpack.h"

namespace report {

namespace {

constexpr std::string_view GzipMark("\x1F\x8B", 2);
constexpr std::string_view ZstdMark("\x28\xB5\x2F\xFD", 4);

[[noreturn]] void Raise(int iError) { throw InputError(std::generic_category().message(iError)); }

}  // namespace

// The descriptor. Its first bytes are looked at and then handed out like the others.
class InputFile::RawFile : public ByteStream {
public:
    explicit RawFile(const std::string& sPath) : m_bOurs(sPath != StandardInput) {
        if (!m_bOurs) return;
        do {
            m_iDescriptor = ::open(sPath.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY);
        } while (m_iDescriptor < 0 && errno == EINTR);
        if (m_iDescriptor < 0) Raise(errno);
    }
    ~RawFile() override {
        if (m_bOurs) ::close(m_iDescriptor);
    }
    RawFile(const RawFile&) = delete;
    RawFile& operator=(const RawFile&) = delete;

    std::string_view Peek() {
        while (m_iPeeked < m_sPeeked.size()) {
            const std::size_t iRead = ReadSome(std::span(m_sPeeked).subspan(m_iPeeked));
            if (iRead == 0) break;
            m_iPeeked += iRead;
        }
        return {m_sPeeked.data(), m_iPeeked};
    }

    std::size_t Read(std::span<char> tRoom) override {
        if (m_iGiven == m_iPeeked) return ReadSome(tRoom);
        const std::size_t iCount = std::min(tRoom.size(), m_iPeeked - m_iGiven);
        std::copy_n(m_sPeeked.begin() + static_cast<std::ptrdiff_t>(m_iGiven), iCount, tRoom.begin());
        m_iGiven += iCount;
        return iCount;
    }

    int Descriptor() const { return m_iDescriptor; }

    std::int64_t lTaken = 0;

private:
    std::size_t ReadSome(std::span<char> tRoom) {
        ssize_t iRead;
        do {
            iRead = ::read(m_iDescriptor, tRoom.data(), tRoom.size());
        } while (iRead < 0 && errno == EINTR);
        if (iRead < 0) Raise(errno);
        lTaken += iRead;
        return static_cast<std::size_t>(iRead);
    }

    const bool m_bOurs;
    int m_iDescriptor = STDIN_FILENO;
    std::array<char, ZstdMark.size()> m_sPeeked{};
    std::size_t m_iPeeked = 0;
    std::size_t m_iGiven = 0;
};

InputFile::InputFile(const std::string& sPath) : m_pFile(std::make_unique<RawFile>(sPath)), m_pStream(m_pFile.get()) {
    const std::string_view sFirst = m_pFile->Peek();
    if (sFirst.starts_with(GzipMark)) m_pUnpacked = UnpackGzip(*m_pFile);
    if (sFirst == ZstdMark) m_pUnpacked = UnpackZstd(*m_pFile);
    if (m_pUnpacked) m_pStream = m_pUnpacked.get();
}

InputFile::~InputFile() = default;

std::int64_t InputFile::BytesTaken() const { return m_pFile->lTaken; }

int InputFile::Descriptor() const { return m_pFile->Descriptor(); }

std::int64_t RegularFileSize(const std::string& sPath) {
    struct stat t {};
    if (sPath == InputFile::StandardInput || ::stat(ReadInputName(sPath).sFile.c_str(), &t) != 0 || !S_ISREG(t.st_mode))
        return 0;
    return t.st_size;
}

}  // namespace report
