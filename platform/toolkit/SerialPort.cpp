// The serial port control on a SerialDevice: finds the device of the port field, hands received characters and events
// to the window one at a time, bounds what waits to be written, and waits for a device that has vanished.
#include "platform/toolkit/SerialPort.h"

#include <QFileInfo>
#include <QScopedValueRollback>
#include <deque>
#include <utility>
#include <vector>

#include "platform/runtime/CommEvents.h"
#include "platform/toolkit/Latin1.h"
#include "platform/toolkit/NativeSerialDevice.h"
#include "platform/toolkit/PortNames.h"

namespace toolkit {

namespace {
constexpr int RetryMs = 1000;
constexpr double LongestWaitSeconds = 10;  // of the line's own rate: older sentences are of no use to anybody
constexpr std::size_t MostInput = 65536;   // characters that wait for a listener that takes none

// Two names of one device must compare equal; a device that is no file is known by its name alone.
QString CanonicalDevice(const QString& sDevice) {
    const QString sCanonical = QFileInfo(sDevice).canonicalFilePath();
    return sCanonical.isEmpty() ? sDevice : sCanonical;
}

SerialAccess NativeAccess() {
    return {[](const QString& sPort) { return PortDevice(sPort); },
            [] { return std::make_unique<NativeSerialDevice>(); }};
}

// The sizes of the texts in a queue of bytes that empties from its front: tells bytes as texts.
class WaitingTexts {
public:
    void Add(std::size_t iSize) {
        m_iSizes.push_back(iSize);
        m_lBytes += static_cast<std::int64_t>(iSize);
    }
    // Forgets the texts that are out wholly, given what is left of all bytes.
    void Keep(std::int64_t lBytesLeft) {
        while (Count() > 0 && m_lBytes - static_cast<std::int64_t>(m_iSizes[m_iFirst]) >= lBytesLeft) {
            m_lBytes -= static_cast<std::int64_t>(m_iSizes[m_iFirst++]);
        }
        if (m_iFirst * 2 < m_iSizes.size()) return;
        m_iSizes.erase(m_iSizes.begin(), m_iSizes.begin() + static_cast<std::ptrdiff_t>(m_iFirst));
        m_iFirst = 0;
    }
    void Clear() { Keep(0); }
    std::size_t Count() const { return m_iSizes.size() - m_iFirst; }

private:
    std::vector<std::size_t> m_iSizes;  // keeps its memory: a queue that comes and goes with every text takes none
    std::size_t m_iFirst = 0;           // those before are out
    std::int64_t m_lBytes = 0;
};
}  // namespace

struct SerialPort::Private {
    explicit Private(SerialPort& tOwner) : tPort(tOwner) {}

    SerialPort& tPort;
    SerialAccess tAccess = NativeAccess();
    QString sTitle;
    QString sPort;
    std::string sSettings;
    runtime::SerialSettings tSettings;

    std::unique_ptr<SerialDevice> pDevice;  // made at the first open, then kept: it may be closed by its own signal
    QTimer tmrRetry;
    QString sDevice;
    std::string sInput;
    std::string sTaken;  // handed out by Input: the two change places, so that both keep their memory
    bool bOpen = false;
    bool bAway = false;       // open, but the device has vanished
    bool bReceiving = false;  // within Receive
    bool bReceiveEvents = true;
    bool bInputFull = false;         // characters have been thrown away since somebody asked last
    bool bFull = false;              // texts have been dropped; ends when half of the queue is written
    WaitingTexts tWaiting;           // of what the device has
    std::deque<std::string> sQueue;  // what it does not have yet
    std::size_t iQueued = 0;         // characters of these
    std::int64_t lTaken = 0;         // texts
    std::int64_t lDropped = 0;
    QString sRefusal;  // why the latest try to open it again failed; empty when it is not there
    QString sRefusalTold;

    void MakeDevice();
    void OpenDevice();
    void CheckSiblings(const QString& sCanonical) const;
    void Receive();
    void DeviceLost();
    void Refused(const QString& sReason);
    bool MakeRoom(std::size_t iSize);
    void DropOldest();
    bool HandOver(std::string_view sText);
    void SendQueue();
    void ClearQueue();
};

SerialPort::SerialPort(QObject* pParent) : QObject(pParent), d(std::make_unique<Private>(*this)) {
    d->tmrRetry.setInterval(RetryMs);
    connect(&d->tmrRetry, &QTimer::timeout, this, &SerialPort::Retry);
}

SerialPort::~SerialPort() { ClosePort(); }

void SerialPort::SetAccess(SerialAccess tAccess) {
    d->tAccess = std::move(tAccess);
    if (!d->bOpen) d->pDevice.reset();
}

void SerialPort::SetTitle(const QString& sTitle) { d->sTitle = sTitle; }

void SerialPort::SetReceiveEvents(bool bReceiveEvents) { d->bReceiveEvents = bReceiveEvents; }

void SerialPort::SetCommPort(const QString& sPort) { d->sPort = sPort; }

std::int32_t SerialPort::CommPort() const { return PortNumber(d->sPort).value_or(0); }

void SerialPort::SetSettings(std::string_view sSettings) {
    d->tSettings = runtime::ParseSerialSettings(sSettings);
    d->sSettings = sSettings;
}

const std::string& SerialPort::Settings() const { return d->sSettings; }

void SerialPort::OpenPort() {
    if (d->bOpen) throw CommError("the port is already open");
    d->OpenDevice();
    d->bOpen = true;
}

void SerialPort::ClosePort() {
    if (!d->bOpen) return;
    d->bOpen = false;
    d->bAway = false;
    d->bFull = false;
    d->lTaken = 0;
    d->lDropped = 0;
    d->sRefusalTold.clear();
    d->tmrRetry.stop();
    for (; !d->sQueue.empty() && d->pDevice->IsOpen(); d->sQueue.pop_front()) d->HandOver(d->sQueue.front());
    d->pDevice->Close();
    d->tWaiting.Keep(d->pDevice->BytesToWrite());
    d->bInputFull = false;
    d->sInput.clear();
    d->sDevice.clear();
}

bool SerialPort::PortOpen() const { return d->bOpen; }

bool SerialPort::Away() const { return d->bAway; }

QString SerialPort::Refusal() const { return d->sRefusalTold; }

QString SerialPort::Device() const { return d->sDevice; }

SerialDevice* SerialPort::OpenDevice() const { return d->pDevice.get(); }

bool SerialPort::ReportsLineErrors() const { return d->pDevice && d->pDevice->ReportsLineErrors(); }

std::string_view SerialPort::Input() {
    if (!d->bOpen) return {};
    d->bInputFull = false;
    d->sTaken.clear();
    d->sTaken.swap(d->sInput);
    d->pDevice->ReadAll(d->sTaken);
    return d->sTaken;
}

bool SerialPort::Output(std::string_view sData) {
    if (!d->bOpen || d->bAway) return false;
    d->SendQueue();
    if (!d->MakeRoom(sData.size()) || !d->bOpen || d->bAway) return false;
    if (d->sQueue.empty() && d->pDevice->TakesMore()) {
        if (!d->HandOver(sData)) return false;
    } else {
        d->sQueue.emplace_back(sData);
        d->iQueued += sData.size();
    }
    ++d->lTaken;
    return true;
}

std::int64_t SerialPort::TextsTaken() const { return d->lTaken; }

std::size_t SerialPort::TextsWaiting() {
    if (d->bOpen && !d->bAway) d->tWaiting.Keep(d->pDevice->BytesToWrite());
    return d->tWaiting.Count() + d->sQueue.size();
}

std::int64_t SerialPort::TextsDropped() const { return d->lDropped; }

void SerialPort::RaiseEvent(int iEvent) {
    m_iCommEvent = iEvent;
    emit OnComm();
}

void SerialPort::Retry() {
    if (!d->bOpen || !d->bAway) return;
    try {
        d->OpenDevice();
    } catch (const DeviceMissing&) {
        d->sRefusal.clear();
        d->sRefusalTold.clear();
        return;  // still away: nothing new to tell
    } catch (const CommError& tError) {
        d->Refused(tError.Text());
        return;
    }
    d->sRefusalTold.clear();
    d->bAway = false;
    d->tmrRetry.stop();
    RaiseEvent(runtime::CommRestored);
}

void SerialPort::Private::MakeDevice() {
    if (pDevice) return;
    pDevice = tAccess.MakeDevice();
    connect(pDevice.get(), &SerialDevice::Received, &tPort, [this] { Receive(); });
    connect(pDevice.get(), &SerialDevice::LineEvent, &tPort, [this](int iEvent) { tPort.RaiseEvent(iEvent); });
    connect(pDevice.get(), &SerialDevice::Lost, &tPort, [this] { DeviceLost(); });
    connect(pDevice.get(), &SerialDevice::Ready, &tPort, [this] { SendQueue(); });
}

void SerialPort::Private::OpenDevice() {
    const QString sCanonical = CanonicalDevice(tAccess.Resolve(sPort));
    CheckSiblings(sCanonical);
    MakeDevice();
    pDevice->Open(sCanonical, tSettings);
    ClearQueue();
    sRefusal.clear();
    sDevice = sCanonical;
}

void SerialPort::Private::CheckSiblings(const QString& sCanonical) const {
    if (!tPort.parent()) return;
    for (const SerialPort* pOther : tPort.parent()->findChildren<SerialPort*>()) {
        if (pOther == &tPort || !pOther->d->bOpen || pOther->d->bAway || pOther->Device() != sCanonical) continue;
        const QString sOther = pOther->d->sTitle.isEmpty() ? QStringLiteral("another port") : pOther->d->sTitle;
        throw CommError(QStringLiteral("already open as %1").arg(sOther));
    }
}

// Hands over batch after batch, so that nothing that arrives while one is being worked on is forgotten; a call from
// within leaves its characters to the loop outside. A batch that nobody takes waits for the next reception.
void SerialPort::Private::Receive() {
    if (!bOpen || bReceiving) return;
    const QScopedValueRollback tGuard(bReceiving, true);
    while (bOpen) {
        const std::size_t iBefore = sInput.size();
        pDevice->ReadAll(sInput);
        if (sInput.size() == iBefore) return;
        const bool bNoRoom = iBefore >= MostInput;
        if (!bReceiveEvents || bNoRoom) {
            sInput.resize(iBefore);
            if (bReceiveEvents && !std::exchange(bInputFull, true)) tPort.RaiseEvent(runtime::CommRxOver);
            continue;
        }
        tPort.RaiseEvent(runtime::CommReceive);
    }
}

void SerialPort::Private::DeviceLost() {
    if (!bOpen || bAway) return;
    bAway = true;
    bFull = false;
    tmrRetry.start();
    tWaiting.Keep(pDevice->BytesToWrite());
    tPort.RaiseEvent(runtime::CommLost);
    ClearQueue();  // told
}

void SerialPort::Private::Refused(const QString& sReason) {
    if (std::exchange(sRefusal, sReason) != sReason || sReason == sRefusalTold) return;
    sRefusalTold = sReason;
    emit tPort.NotReopened(sReason);
}

// The newest is worth most to whoever listens: what waits makes room for it, the oldest first.
bool SerialPort::Private::MakeRoom(std::size_t iSize) {
    const auto dRoom = LongestWaitSeconds * runtime::CharactersPerSecond(tSettings);
    const std::int64_t lDevice = pDevice->BytesToWrite();
    tWaiting.Keep(lDevice);
    const auto Waiting = [&] { return static_cast<double>(lDevice) + static_cast<double>(iQueued); };
    if (Waiting() <= dRoom / 2) bFull = false;
    const std::int64_t lBefore = lDropped;
    const auto Fits = [&] { return Waiting() + static_cast<double>(iSize) <= dRoom; };
    while (!Fits() && !sQueue.empty()) DropOldest();
    const bool bFits = Fits();
    if (!bFits) ++lDropped;
    if (lDropped > lBefore && !std::exchange(bFull, true)) tPort.RaiseEvent(runtime::CommTxFull);
    return bFits;
}

void SerialPort::Private::DropOldest() {
    const auto lText = lTaken - static_cast<std::int64_t>(sQueue.size()) + 1;
    iQueued -= sQueue.front().size();
    sQueue.pop_front();
    ++lDropped;
    emit tPort.Dropped(lText);
}

// False when the device's loss is noticed by it.
bool SerialPort::Private::HandOver(std::string_view sText) {
    pDevice->Write(sText);
    if (bAway) return false;
    if (pDevice->BytesToWrite() > 0) tWaiting.Add(sText.size());
    return true;
}

void SerialPort::Private::SendQueue() {
    while (bOpen && !bAway && !sQueue.empty() && pDevice->TakesMore()) {
        const std::string sText = sQueue.front();
        if (!HandOver(sText)) return;  // its loss has been told with the rest
        iQueued -= sText.size();
        sQueue.pop_front();
    }
}

void SerialPort::Private::ClearQueue() {
    tWaiting.Clear();
    sQueue.clear();
    iQueued = 0;
}

}  // namespace toolkit
