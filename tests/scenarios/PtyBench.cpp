// Passing bytes through pseudo-terminals and waiting for them.
#include "tests/scenarios/PtyBench.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QFileInfo>
#include <stdexcept>

namespace scenarios {

namespace {

constexpr int LongestWaitMs = 5000;

// Turns the event loop until tDone.
template <class Done>
void WaitFor(Done tDone) {
    const QDeadlineTimer tDeadline(LongestWaitMs);
    while (!tDone()) {
        if (tDeadline.hasExpired()) throw std::runtime_error("bytes got lost in a pseudo-terminal");
        QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
    }
}

}  // namespace

void PtyDevice::Open(const QString& sDevice, const runtime::SerialSettings& tSettings) {
    support::PtyPort& tPort = m_tBench.FarEnd(sDevice);
    NativeSerialDevice::Open(sDevice, tSettings);
    m_pPort = &tPort;
}

void PtyDevice::ReadAll(std::string& sInto) {
    const std::size_t lBefore = sInto.size();
    NativeSerialDevice::ReadAll(sInto);
    m_lRead += sInto.size() - lBefore;
}

void PtyDevice::Write(std::string_view sData) {
    if (IsOpen()) m_lWritten += sData.size();
    NativeSerialDevice::Write(sData);
}

void PtyDevice::Feed(std::string_view sData) {
    const std::size_t lWanted = m_lRead + sData.size();
    if (!m_pPort->Write(sData)) throw std::runtime_error("a pseudo-terminal takes no more bytes");
    WaitFor([&] { return m_lRead >= lWanted; });
}

void PtyDevice::Collect() {
    if (!m_pPort) return;
    WaitFor([&] {
        m_sArrived += m_pPort->Read();
        return m_sArrived.size() >= m_lWritten;
    });
}

QString PtyBench::DeviceOf(int iNumber) {
    auto& pPort = m_pPorts[iNumber];
    if (!pPort) pPort = std::make_unique<support::PtyPort>();
    return pPort->Device();
}

support::PtyPort& PtyBench::FarEnd(const QString& sDevice) const {
    for (const auto& [iNumber, pPort] : m_pPorts) {
        if (QFileInfo(pPort->Device()).canonicalFilePath() != sDevice) continue;
        const auto it = m_sBadPorts.find(iNumber);
        if (it != m_sBadPorts.end()) throw toolkit::CommError(it->second);
        return *pPort;
    }
    throw toolkit::CommError("No such device");
}

}  // namespace scenarios
