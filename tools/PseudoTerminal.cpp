// See PseudoTerminal.h.
#include "tools/PseudoTerminal.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <system_error>

namespace simulator {

namespace {

[[noreturn]] void Fail(const std::string& sWhat, int iError) {
    throw std::system_error(iError, std::generic_category(), sWhat);
}

// Opens and closes the far side once: it becomes transparent to every byte, and from now on the near side can tell
// whether somebody has it open.
void PrepareFarSide(const std::string& sDevice) {
    const int iSlave = ::open(sDevice.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (iSlave < 0) Fail(sDevice, errno);
    termios tSettings{};
    ::tcgetattr(iSlave, &tSettings);
    ::cfmakeraw(&tSettings);
    ::tcsetattr(iSlave, TCSANOW, &tSettings);
    ::close(iSlave);
}

bool IsLink(const std::string& sFile) {
    struct stat tInfo {};
    return ::lstat(sFile.c_str(), &tInfo) == 0 && S_ISLNK(tInfo.st_mode);
}

bool LinkLeadsTo(const std::string& sLink, const std::string& sDevice) {
    std::array<char, 256> sTarget{};
    const ssize_t iLength = ::readlink(sLink.c_str(), sTarget.data(), sTarget.size());
    return iLength > 0 && std::string_view(sTarget.data(), static_cast<std::size_t>(iLength)) == sDevice;
}

}  // namespace

PseudoTerminal::PseudoTerminal(std::string sLink) : m_sLink(std::move(sLink)) {
    m_iMaster = ::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (m_iMaster < 0) Fail("pseudo-terminal", errno);
    try {
        std::array<char, 128> sName{};
        if (::grantpt(m_iMaster) != 0 || ::unlockpt(m_iMaster) != 0) Fail("pseudo-terminal", errno);
        if (const int iError = ::ptsname_r(m_iMaster, sName.data(), sName.size())) Fail("pseudo-terminal", iError);
        m_sDevice = sName.data();
        PrepareFarSide(m_sDevice);
        if (IsLink(m_sLink)) ::unlink(m_sLink.c_str());
        if (::symlink(m_sDevice.c_str(), m_sLink.c_str()) != 0) Fail(m_sLink, errno);
    } catch (const std::system_error&) {
        ::close(m_iMaster);
        throw;
    }
}

PseudoTerminal::~PseudoTerminal() {
    if (LinkLeadsTo(m_sLink, m_sDevice)) ::unlink(m_sLink.c_str());
    ::close(m_iMaster);
}

bool PseudoTerminal::Listened() {
    pollfd tPoll{m_iMaster, POLLIN, 0};
    const bool bListened = ::poll(&tPoll, 1, 0) >= 0 && (tPoll.revents & POLLHUP) == 0;
    if (m_bListened && !bListened) {
        m_sRest.clear();
        ::tcflush(m_iMaster, TCIOFLUSH);
    }
    m_bListened = bListened;
    return bListened;
}

bool PseudoTerminal::WriteLine(std::string_view sLine) {
    if (!Listened() || !WriteRest()) return false;
    m_sRest.assign(sLine);
    m_sRest += "\r\n";
    const std::size_t iLength = m_sRest.size();
    WriteRest();
    if (m_sRest.size() < iLength) return true;
    m_sRest.clear();
    return false;
}

// True when nothing is left.
bool PseudoTerminal::WriteRest() {
    while (!m_sRest.empty()) {
        const ssize_t iWritten = ::write(m_iMaster, m_sRest.data(), m_sRest.size());
        if (iWritten < 0 && errno == EINTR) continue;
        if (iWritten <= 0) return false;
        m_sRest.erase(0, static_cast<std::size_t>(iWritten));
    }
    return true;
}

std::string PseudoTerminal::Read() {
    std::array<char, 1024> sBytes{};
    const ssize_t iRead = ::read(m_iMaster, sBytes.data(), sBytes.size());
    return iRead > 0 ? std::string(sBytes.data(), static_cast<std::size_t>(iRead)) : std::string();
}

}  // namespace simulator
