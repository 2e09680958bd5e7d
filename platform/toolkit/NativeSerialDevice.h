// The real serial line: QSerialPort, the line errors that it no longer reports, and a clean end when the device
// vanishes.
#pragma once

#include <QSerialPort>
#include <QTimer>
#include <chrono>

#include "platform/toolkit/LineErrors.h"
#include "platform/toolkit/SerialDevice.h"

namespace toolkit {

class NativeSerialDevice : public SerialDevice {
    Q_OBJECT
public:
    using Clock = std::chrono::steady_clock;
    using ClockFunction = Clock::time_point (*)();

    explicit NativeSerialDevice(LineCounters pCounters = DriverLineCounters, ClockFunction pClock = Clock::now);
    ~NativeSerialDevice() override;

    void Open(const QString& sDevice, const runtime::SerialSettings& tSettings) override;
    void Close() override;
    bool IsOpen() const override { return m_tPort.isOpen(); }
    void ReadAll(std::string& sInto) override;
    void Write(std::string_view sData) override;
    bool TakesMore() const override;
    std::int64_t BytesToWrite() const override { return m_tPort.isOpen() ? m_tPort.bytesToWrite() : m_lLeft; }
    bool ReportsLineErrors() const override { return m_tLineErrors.Supported(); }

    // What the timer does between receptions: asks the driver for line errors.
    void PollLineErrors();
    // What the timer does while the line is behind: tells when it is not any more.
    void PollPace();

private:
    void FlushQueue();
    void ClosePort();
    double CharactersAhead() const;
    void OnReadyRead();
    void OnError(QSerialPort::SerialPortError eError);
    bool HungUp() const;
    void GiveUp();

    QSerialPort m_tPort;
    LineErrors m_tLineErrors;
    QTimer m_tmrLineErrors;
    ClockFunction m_pClock;
    QTimer m_tmrPace;
    double m_dRate = 1;   // characters a second
    double m_dAhead = 0;  // characters that the line had not sent at m_tAheadAt, by its rate
    Clock::time_point m_tAheadAt;
    std::string m_sRest;       // read from the device before it vanished, not yet handed over
    std::int64_t m_lLeft = 0;  // bytes that waited to be written when the device was closed
    int m_iIdleErrors = 0;     // errors since characters last moved
    bool m_bWriting = false;   // within Write
    bool m_bLost = false;      // closed because the device vanished
};

}  // namespace toolkit
