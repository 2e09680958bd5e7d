// Drives a QSerialPort around its habits: settings go in before the open, a write waits in its buffer until flushed,
// and a vanished device makes it report an error without end until it is closed.
#include "platform/toolkit/NativeSerialDevice.h"

#include <poll.h>
#include <sys/ioctl.h>
#include <termios.h>

#include <algorithm>

#include "platform/toolkit/OpenFailure.h"

namespace toolkit {

namespace {
constexpr int LineErrorPollMs = 100;
// Errors in a row, without a character moving, after which a device counts as gone even though it does not say so.
// Far more than chance can pile up, and still only an instant of a device that reports them without pause.
constexpr int MostIdleErrors = 1000;
constexpr int PacePollMs = 50;
// What is handed over beyond what the line has sent. A driver takes seconds of a slow line, a pseudo-terminal most of a
// minute, and what it has taken nobody can take back when it has become old.
constexpr double MostSecondsAhead = 0.5;

QSerialPort::Parity ParityOf(char cParity) {
    switch (cParity) {
        case 'e':
            return QSerialPort::EvenParity;
        case 'o':
            return QSerialPort::OddParity;
        case 'm':
            return QSerialPort::MarkParity;
        case 's':
            return QSerialPort::SpaceParity;
        default:
            return QSerialPort::NoParity;
    }
}

QSerialPort::DataBits DataBitsOf(int iDataBits) {
    switch (iDataBits) {
        case 5:
            return QSerialPort::Data5;
        case 6:
            return QSerialPort::Data6;
        case 7:
            return QSerialPort::Data7;
        default:
            return QSerialPort::Data8;
    }
}

// With 5 data bits the two-stop-bit setting of the hardware means one and a half; asking for one and a half as such
// does nothing on Linux.
QSerialPort::StopBits StopBitsOf(runtime::StopBits eStopBits) {
    return eStopBits == runtime::StopBits::One ? QSerialPort::OneStop : QSerialPort::TwoStop;
}

// A break is reported by its counter; without this it would also come as a NUL character among the data.
void IgnoreBreakCharacters(int iDescriptor) {
    termios tTerminal{};
    if (::tcgetattr(iDescriptor, &tTerminal) != 0) return;
    tTerminal.c_iflag |= static_cast<tcflag_t>(IGNBRK);
    ::tcsetattr(iDescriptor, TCSANOW, &tTerminal);
}
}  // namespace

NativeSerialDevice::NativeSerialDevice(LineCounters pCounters, ClockFunction pClock)
    : m_tLineErrors(pCounters), m_pClock(pClock) {
    m_tmrLineErrors.setInterval(LineErrorPollMs);
    m_tmrPace.setInterval(PacePollMs);
    connect(&m_tmrPace, &QTimer::timeout, this, &NativeSerialDevice::PollPace);
    connect(&m_tmrLineErrors, &QTimer::timeout, this, &NativeSerialDevice::PollLineErrors);
    connect(&m_tPort, &QSerialPort::readyRead, this, &NativeSerialDevice::OnReadyRead);
    connect(&m_tPort, &QSerialPort::bytesWritten, this, [this] { m_iIdleErrors = 0; });
    connect(&m_tPort, &QSerialPort::errorOccurred, this, &NativeSerialDevice::OnError);
}

NativeSerialDevice::~NativeSerialDevice() {
    m_tPort.disconnect(this);
    NativeSerialDevice::Close();
}

void NativeSerialDevice::Open(const QString& sDevice, const runtime::SerialSettings& tSettings) {
    const bool bReturning = m_bLost;
    if (m_tPort.isOpen()) Close();
    m_tPort.setPortName(sDevice);
    m_tPort.setBaudRate(tSettings.lBaud);
    m_tPort.setParity(ParityOf(tSettings.cParity));
    m_tPort.setDataBits(DataBitsOf(tSettings.iDataBits));
    m_tPort.setStopBits(StopBitsOf(tSettings.eStopBits));
    m_tPort.setFlowControl(QSerialPort::NoFlowControl);
    // An empty name would open the folder of devices.
    if (sDevice.isEmpty() || !m_tPort.open(QIODevice::ReadWrite)) {
        const QString sReason = OpenFailure(sDevice, m_tPort.errorString());
        if (sReason == NoSuchDevice(sDevice)) throw DeviceMissing(sReason);
        throw CommError(sReason);
    }

    m_bLost = false;
    m_iIdleErrors = 0;
    m_dRate = runtime::CharactersPerSecond(tSettings);
    m_dAhead = 0;
    m_tAheadAt = m_pClock();
    // Characters from before the open belong to no run. What a returning device has sent by now belongs to this one.
    if (!bReturning) m_tPort.clear();
    const int iDescriptor = m_tPort.handle();
    IgnoreBreakCharacters(iDescriptor);
    m_tLineErrors.Start(iDescriptor);
    if (m_tLineErrors.Supported()) m_tmrLineErrors.start();
}

void NativeSerialDevice::Close() {
    m_tmrLineErrors.stop();
    if (m_tPort.isOpen()) {
        FlushQueue();
        if (m_tPort.isOpen()) ClosePort();
        m_tLineErrors.Stop();
    }
    m_bLost = false;  // at the end, because the loss may be noticed in the last flush
    m_sRest.clear();
}

void NativeSerialDevice::ClosePort() {
    m_lLeft = m_tPort.bytesToWrite();
    m_tmrPace.stop();
    m_tPort.close();
}

void NativeSerialDevice::FlushQueue() {
    m_bWriting = true;
    for (qint64 lBefore = m_tPort.bytesToWrite(), lLeft = 0; lBefore > 0; lBefore = lLeft) {
        m_tPort.flush();  // hands over one block of the queue at most
        lLeft = m_tPort.bytesToWrite();
        if (lLeft == lBefore) break;
    }
    m_bWriting = false;
}

void NativeSerialDevice::ReadAll(std::string& sInto) {
    sInto += m_sRest;
    m_sRest.clear();
    const qint64 lWaiting = m_tPort.isOpen() ? m_tPort.bytesAvailable() : 0;
    if (lWaiting == 0) return;
    const std::size_t lBefore = sInto.size();
    sInto.resize(lBefore + static_cast<std::size_t>(lWaiting));
    const qint64 lRead = std::max<qint64>(0, m_tPort.read(sInto.data() + lBefore, lWaiting));
    sInto.resize(lBefore + static_cast<std::size_t>(lRead));
}

void NativeSerialDevice::Write(std::string_view sData) {
    if (!m_tPort.isOpen()) return;
    m_dAhead = CharactersAhead() + static_cast<double>(sData.size());
    m_tAheadAt = m_pClock();
    m_tPort.write(sData.data(), static_cast<qint64>(sData.size()));
    m_bWriting = true;
    m_tPort.flush();
    m_bWriting = false;
    if (m_tPort.isOpen() && !TakesMore() && !m_tmrPace.isActive()) m_tmrPace.start();
}

double NativeSerialDevice::CharactersAhead() const {
    const std::chrono::duration<double> tSince = m_pClock() - m_tAheadAt;
    return std::max(0.0, m_dAhead - tSince.count() * m_dRate);
}

// Some drivers tell what they hold, which counts where a line is slower than its rate says.
bool NativeSerialDevice::TakesMore() const {
    if (!m_tPort.isOpen() || m_tPort.bytesToWrite() > 0) return false;
    const double dMost = MostSecondsAhead * m_dRate;
    if (CharactersAhead() > dMost) return false;
    int iHeld = 0;
    return ::ioctl(m_tPort.handle(), TIOCOUTQ, &iHeld) != 0 || iHeld <= dMost;
}

void NativeSerialDevice::PollPace() {
    if (!TakesMore()) return;
    m_tmrPace.stop();
    emit Ready();
}

void NativeSerialDevice::PollLineErrors() {
    for (const int iEvent : m_tLineErrors.Poll(m_tPort.handle())) {
        if (!m_tPort.isOpen()) return;  // the event made its listener close the port
        emit LineEvent(iEvent);
    }
}

void NativeSerialDevice::OnReadyRead() {
    m_iIdleErrors = 0;
    PollLineErrors();
    if (m_tPort.isOpen()) emit Received();
}

void NativeSerialDevice::OnError(QSerialPort::SerialPortError eError) {
    if (eError != QSerialPort::ReadError && eError != QSerialPort::ResourceError) return;
    if (!m_tPort.isOpen()) return;
    // A device that cannot take more characters just now reports the same error as one that is gone.
    if (!HungUp() && (m_bWriting || ++m_iIdleErrors < MostIdleErrors)) {
        m_tPort.setReadBufferSize(0);  // as it is; but a port that has met such an error reads on only after this
        return;
    }
    GiveUp();
}

bool NativeSerialDevice::HungUp() const {
    pollfd tPoll{m_tPort.handle(), POLLIN, 0};
    return ::poll(&tPoll, 1, 0) != 0 && (tPoll.revents & (POLLHUP | POLLERR | POLLNVAL)) != 0;
}

void NativeSerialDevice::GiveUp() {
    std::string sRest;
    ReadAll(sRest);
    m_tmrLineErrors.stop();
    m_tLineErrors.Stop();
    ClosePort();
    m_bLost = true;
    m_sRest = sRest;
    if (!m_sRest.empty()) emit Received();
    emit Lost();
}

}  // namespace toolkit
