// Real pseudo-terminals for the ports of a script: one for each port number that is opened. Bytes are waited for, so
// that a step ends with the same state as with devices in memory.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "platform/toolkit/NativeSerialDevice.h"
#include "tests/support/PtyPort.h"

namespace scenarios {

class PtyBench;

// The real device, counting what passes.
class PtyDevice : public toolkit::NativeSerialDevice {
    Q_OBJECT
public:
    explicit PtyDevice(PtyBench& tBench) : m_tBench(tBench) {}

    void Open(const QString& sDevice, const runtime::SerialSettings& tSettings) override;
    void ReadAll(std::string& sInto) override;
    void Write(std::string_view sData) override;
    bool TakesMore() const override { return true; }  // a script's time stands still

    // Sends to the program and waits until it has read everything.
    void Feed(std::string_view sData);
    // Waits until everything that was written has come out at the far end.
    void Collect();
    const std::string& Arrived() const { return m_sArrived; }

private:
    PtyBench& m_tBench;
    support::PtyPort* m_pPort = nullptr;
    std::size_t m_lRead = 0;
    std::size_t m_lWritten = 0;
    std::string m_sArrived;
};

class PtyBench {
public:
    explicit PtyBench(const std::map<int, std::string>& sBadPorts) : m_sBadPorts(sBadPorts) {}

    // Path of the pseudo-terminal that is this port number.
    QString DeviceOf(int iNumber);
    // The far end of a device; raises toolkit::CommError where its number is bad.
    support::PtyPort& FarEnd(const QString& sDevice) const;

private:
    const std::map<int, std::string>& m_sBadPorts;
    std::map<int, std::unique_ptr<support::PtyPort>> m_pPorts;
};

}  // namespace scenarios
