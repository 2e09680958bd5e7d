// Pseudo-terminals by openpty, in raw mode so that every character passes unchanged.
#include "tests/support/PtyPort.h"

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QFile>
#include <array>
#include <stdexcept>

namespace support {

namespace {
constexpr int WriteWaitMs = 1000;
constexpr int ReadWaitMs = 5000;
}  // namespace

PtyPort::PtyPort() { Recreate(); }

PtyPort::~PtyPort() {
    HangUp();
    if (m_iSlave >= 0) ::close(m_iSlave);
}

QString PtyPort::Link() const { return m_tFolder.filePath(QStringLiteral("serial-link")); }

void PtyPort::Recreate() {
    HangUp();
    const int iFormer = m_iSlave;  // given up when the new number is known, so that they differ
    std::array<char, 64> cName{};
    termios tRaw{};
    ::cfmakeraw(&tRaw);
    tRaw.c_cflag |= CREAD;
    if (::openpty(&m_iMaster, &m_iSlave, cName.data(), &tRaw, nullptr) != 0)
        throw std::runtime_error("no pseudo-terminal to be had");
    if (iFormer >= 0) ::close(iFormer);
    for (const int iDescriptor : {m_iMaster, m_iSlave}) {
        ::fcntl(iDescriptor, F_SETFD, FD_CLOEXEC);
        ::fcntl(iDescriptor, F_SETFL, ::fcntl(iDescriptor, F_GETFL) | O_NONBLOCK);
    }
    m_sDevice = QString::fromLocal8Bit(cName.data());
    QFile::link(m_sDevice, Link());
}

void PtyPort::HangUp() {
    QFile::remove(Link());
    if (m_iMaster >= 0) ::close(m_iMaster);
    m_iMaster = -1;
}

std::size_t PtyPort::WriteSome(std::string_view sData) {
    const ssize_t iWritten = ::write(m_iMaster, sData.data(), sData.size());
    return iWritten > 0 ? static_cast<std::size_t>(iWritten) : 0;
}

bool PtyPort::Write(std::string_view sData) {
    QDeadlineTimer tDeadline(WriteWaitMs);
    while (!sData.empty()) {
        const std::size_t iWritten = WriteSome(sData);
        sData.remove_prefix(iWritten);
        if (iWritten > 0) tDeadline.setRemainingTime(WriteWaitMs);
        if (tDeadline.hasExpired()) return false;
        if (iWritten == 0) QCoreApplication::processEvents();  // the reader may live in this very process
    }
    return true;
}

std::string PtyPort::Read() {
    std::string sData;
    std::array<char, 4096> cBlock;
    for (;;) {
        const ssize_t iRead = ::read(m_iMaster, cBlock.data(), cBlock.size());
        if (iRead <= 0) return sData;
        sData.append(cBlock.data(), static_cast<std::size_t>(iRead));
    }
}

std::string PtyPort::ReadAtLeast(std::size_t iSize) {
    std::string sData;
    const QDeadlineTimer tDeadline(ReadWaitMs);
    while (sData.size() < iSize && !tDeadline.hasExpired()) {
        QCoreApplication::processEvents();
        pollfd tPoll{m_iMaster, POLLIN, 0};
        ::poll(&tPoll, 1, 1);
        sData += Read();
    }
    return sData;
}

void PtyPort::Hold(bool bHold) { ::tcflow(m_iSlave, bHold ? TCOOFF : TCOON); }

termios PtyPort::Settings() const {
    termios tSettings{};
    ::tcgetattr(m_iSlave, &tSettings);
    return tSettings;
}

}  // namespace support
