// The device in memory.
#include "tests/support/MemoryDevice.h"

namespace support {

void MemoryDevice::Open(const QString& sDevice, const runtime::SerialSettings& tSettings) {
    m_tOpen(sDevice);
    m_tSettings = tSettings;
    m_sWaiting.clear();
    m_bOpen = true;
}

void MemoryDevice::Feed(std::string_view sData) {
    if (!m_bOpen) return;
    m_sWaiting += sData;
    emit Received();
}

void MemoryDevice::Vanish() {
    m_bOpen = false;
    emit Lost();
}

void MemoryDevice::Hold(bool bHold) {
    m_bHeld = bHold;
    if (!bHold) emit Ready();
}

}  // namespace support
