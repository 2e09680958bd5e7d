// A socket bound to a name that is no file: the system gives each name once, and frees it with its process. Several
// holders have a numbered name each, so that the last one left is still found when the first has gone.
#include "platform/runtime/NameHold.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <utility>

namespace runtime {
namespace {

constexpr int MostHolders = 8;  // that find each other

// The socket, or -1. Names of this kind begin with a zero byte and are not made of the text itself, which may be
// longer.
int Bound(const std::string& sName) {
    const int iSocket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (iSocket < 0) return -1;
    sockaddr_un tAddress{};
    tAddress.sun_family = AF_UNIX;
    std::memcpy(tAddress.sun_path + 1, sName.data(), sName.size());
    const auto iSize = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + sName.size());
    if (::bind(iSocket, reinterpret_cast<const sockaddr*>(&tAddress), iSize) == 0) return iSocket;
    const int iError = errno;
    ::close(iSocket);
    errno = iError;
    return -1;
}

// FNV-1a, 64 bits: the same in every build of the program.
std::uint64_t Digest(std::string_view sText) {
    std::uint64_t lDigest = 0xCBF29CE484222325;
    for (const char c : sText) lDigest = (lDigest ^ static_cast<unsigned char>(c)) * 0x100000001B3;
    return lDigest;
}

}  // namespace

bool NameHold::Take(std::string_view sName) {
    Release();
    bool bOthers = false;
    for (int i = 0; i < MostHolders; ++i) {
        const int iSocket = Bound("tidewatch-" + std::to_string(Digest(sName)) + '-' + std::to_string(i));
        if (iSocket < 0) {
            bOthers = bOthers || errno == EADDRINUSE;
        } else if (m_iSocket < 0) {
            m_iSocket = iSocket;
        } else {
            ::close(iSocket);
        }
    }
    return bOthers;
}

void NameHold::Release() {
    if (m_iSocket >= 0) ::close(std::exchange(m_iSocket, -1));
}

}  // namespace runtime
