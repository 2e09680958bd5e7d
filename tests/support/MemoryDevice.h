// A serial device that lives in memory: what a test puts in waits to be read, what the program writes is kept.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "platform/toolkit/SerialDevice.h"

namespace support {

class MemoryDevice : public toolkit::SerialDevice {
    Q_OBJECT
public:
    // tOpen may raise toolkit::CommError.
    explicit MemoryDevice(std::function<void(const QString& sDevice)> tOpen) : m_tOpen(std::move(tOpen)) {}

    void Open(const QString& sDevice, const runtime::SerialSettings& tSettings) override;
    void Close() override { m_bOpen = false; }
    bool IsOpen() const override { return m_bOpen; }
    void ReadAll(std::string& sInto) override {
        sInto += m_sWaiting;
        m_sWaiting.clear();
    }
    void Write(std::string_view sData) override { m_sWritten += sData; }
    bool TakesMore() const override { return !m_bHeld; }
    std::int64_t BytesToWrite() const override { return m_lStuck; }
    bool ReportsLineErrors() const override { return true; }

    // The characters wait and one reception is reported; lost while closed.
    void Feed(std::string_view sData);
    void Vanish();
    void Stick(std::int64_t lBytes) { m_lStuck = lBytes; }  // as if the far end had not taken so many characters
    void Hold(bool bHold);                                  // as if the line were behind
    const std::string& Written() const { return m_sWritten; }
    const runtime::SerialSettings& Settings() const { return m_tSettings; }

private:
    std::function<void(const QString&)> m_tOpen;
    runtime::SerialSettings m_tSettings;
    std::string m_sWaiting;
    std::string m_sWritten;
    std::int64_t m_lStuck = 0;
    bool m_bOpen = false;
    bool m_bHeld = false;
};

}  // namespace support
