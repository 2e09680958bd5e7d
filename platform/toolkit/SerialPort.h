// The serial port control: port field text, settings string, open, close, input, output and one event, as the run
// control and the framing use them. Stays "open" when its device vanishes and tries once a second to get it back.
#pragma once

#include <QObject>
#include <QTimer>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "platform/toolkit/SerialDevice.h"

namespace toolkit {

// How a port finds its device; handed in, so that a test can give pseudo-terminals or memory.
struct SerialAccess {
    // Text of a port field to a device path. Raises CommError where the text names none.
    std::function<QString(const QString& sPort)> Resolve;
    std::function<std::unique_ptr<SerialDevice>()> MakeDevice;
};

class SerialPort : public QObject {
    Q_OBJECT
public:
    explicit SerialPort(QObject* pParent = nullptr);
    ~SerialPort() override;

    void SetAccess(SerialAccess tAccess);  // before the first open
    void SetTitle(const QString& sTitle);  // "input #1": how another port's error names this one

    // Without receive events what arrives is thrown away; with them (as a port is made) event 2 tells of it.
    void SetReceiveEvents(bool bReceiveEvents);
    // The text of the port field: a number, or a device name. Resolved when the port is opened, never earlier.
    void SetCommPort(const QString& sPort);
    std::int32_t CommPort() const;                 // the number; 0 where the text is a name or never was set
    void SetSettings(std::string_view sSettings);  // raises runtime::SettingsError and keeps the former settings
    const std::string& Settings() const;

    // Opens. Raises CommError, also when a sibling port (same parent) has the device open ("already open as input #1").
    void OpenPort();
    void ClosePort();         // harmless when closed
    bool PortOpen() const;    // true until ClosePort, also while the device is away
    bool Away() const;        // open, but its device has vanished
    QString Refusal() const;  // why the device, there again, cannot be opened; empty when there is nothing to say
    QString Device() const;   // path of the open device, empty when closed
    SerialDevice* OpenDevice() const;  // what the port drives; null before the first open
    bool ReportsLineErrors() const;

    // All waiting characters (Latin-1), until the next call. While nobody asks, 64 KiB and a reception are kept; what
    // comes then is thrown away, and event 1008 tells of it once.
    std::string_view Input();
    // Writes whole texts. What the line cannot take at once waits, up to ten seconds of its own rate. Of what would go
    // beyond the oldest is dropped, whole: signal Dropped tells which, and event 1010 is raised once per episode (until
    // the queue has drained to half). True when the text is on its way, false when this one was dropped: it has no room
    // at all, or the port is closed or its device away.
    bool Output(std::string_view sData);
    std::int64_t TextsTaken() const;  // how many were on their way since the port was opened; 0 when closed
    // Texts of which the device has not taken every character. When its loss is told (2001), and from a close to the
    // next open: those that it never will.
    std::size_t TextsWaiting();
    std::int64_t TextsDropped() const;  // for the full queue, since the port was opened; 0 when closed

    int CommEvent() const { return m_iCommEvent; }  // number of the latest event
    void RaiseEvent(int iEvent);                    // the one way out for every event, and a test's way in
    void Retry();                                   // what the once-a-second timer does while the device is away

signals:
    void OnComm();
    // A text that was taken (the first since the open is 1) is not sent after all: newer ones take its place.
    void Dropped(std::int64_t lText);
    // The device is there again and cannot be opened. Told once a reason, when two tries in a row have met it: an
    // instant after it has come the system has not yet given a device to its user.
    void NotReopened(const QString& sReason);

private:
    struct Private;
    std::unique_ptr<Private> d;
    int m_iCommEvent = 0;
};

}  // namespace toolkit
