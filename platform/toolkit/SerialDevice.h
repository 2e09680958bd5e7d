// One serial line as SerialPort drives it: the real one (NativeSerialDevice, on QSerialPort) or one that lives in
// memory and stands in for it where no device exists.
#pragma once

#include <QObject>
#include <QString>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

#include "platform/runtime/SerialSettings.h"
#include "platform/toolkit/Latin1.h"

namespace toolkit {

// Carries the description, in words for the user, of why a port could not be opened. They may quote what the user has
// typed, so they are whole in Text() alone; what() is Latin-1.
class CommError : public std::runtime_error {
public:
    explicit CommError(const QString& sText) : std::runtime_error(ToLatin1(sText)), m_sText(sText) {}
    explicit CommError(const std::string& sText) : CommError(FromLatin1(sText)) {}
    explicit CommError(const char* sText) : CommError(std::string(sText)) {}
    const QString& Text() const noexcept { return m_sText; }

private:
    QString m_sText;
};

// There is no such device, or not yet again: nothing that the user has to be told while a device is waited for.
class DeviceMissing : public CommError {
public:
    using CommError::CommError;
};

class SerialDevice : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    // sDevice is a device path. Raises CommError and stays closed on failure.
    virtual void Open(const QString& sDevice, const runtime::SerialSettings& tSettings) = 0;
    // Hands over what can be written without waiting, then closes. Harmless when closed.
    virtual void Close() = 0;
    virtual bool IsOpen() const = 0;
    // Appends everything that waits to be read. No memory is taken when sInto has room.
    virtual void ReadAll(std::string& sInto) = 0;
    // Queues the bytes; never blocks. Dropped when closed.
    virtual void Write(std::string_view sData) = 0;
    // Whether what is written now is on the line in an instant. When it was not, Ready tells that it is again.
    virtual bool TakesMore() const = 0;
    // Queued and not taken yet. Once closed, or lost: what was left, until the next open.
    virtual std::int64_t BytesToWrite() const = 0;
    // Whether the driver counts line errors (known once open).
    virtual bool ReportsLineErrors() const = 0;

signals:
    void Received();             // characters wait
    void Ready();                // TakesMore
    void LineEvent(int iEvent);  // runtime::CommEvent: 1001, 1004, 1006, 1008, 1009
    void Lost();                 // the device vanished; it is closed by now
};

}  // namespace toolkit
