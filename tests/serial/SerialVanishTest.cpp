// Devices that vanish while a port is open and come back under the same name.
#include <sys/resource.h>

#include <QDir>
#include <QTest>

#include "platform/toolkit/SerialPort.h"
#include "tests/support/PtyPort.h"

using support::PtyPort;
using toolkit::SerialPort;

namespace {

struct Listener {
    SerialPort tPort;
    std::string sReceived;
    std::vector<int> iEvents;

    explicit Listener(const PtyPort& tPty) {
        QObject::connect(&tPort, &SerialPort::OnComm, &tPort, [this] {
            if (tPort.CommEvent() == 2)
                sReceived += tPort.Input();
            else
                iEvents.push_back(tPort.CommEvent());
        });
        tPort.SetCommPort(tPty.Link());
        tPort.SetSettings("38400,n,8,1");
        tPort.OpenPort();
    }
};

double ProcessorSeconds() {
    rusage tUsage{};
    ::getrusage(RUSAGE_SELF, &tUsage);
    const auto Seconds = [](const timeval& t) {
        return static_cast<double>(t.tv_sec) + 1e-6 * static_cast<double>(t.tv_usec);
    };
    return Seconds(tUsage.ru_utime) + Seconds(tUsage.ru_stime);
}

qsizetype OpenDescriptors() {
    return QDir(QStringLiteral("/proc/self/fd"))
        .entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot)
        .size();
}

using Events = std::vector<int>;
}  // namespace

class SerialVanishTest : public QObject {
    Q_OBJECT
private slots:
    void VanishedDeviceIsToldOnceAndThePortStaysOpen();
    void VanishedDeviceCostsNoProcessorTime();
    void DeviceIsBackUnderTheSameLink();
    void DeviceIsBackByTheTimer();
    void CharactersSentBeforeTheReopenAreNotLost();
    void VanishesWhileWriting();
    void OutputGoesOnAfterTheReturn();
    void CanBeStoppedWhileAway();
    void HandlerMayCloseThePortWhenTheDeviceIsLost();
    void ManyReturnsLeakNoDescriptor();
};

void SerialVanishTest::VanishedDeviceIsToldOnceAndThePortStaysOpen() {
    PtyPort tPty;
    Listener t(tPty);
    QVERIFY(tPty.Write("before"));
    QTRY_COMPARE(t.sReceived, std::string("before"));
    tPty.HangUp();
    QTRY_COMPARE(t.iEvents, Events{2001});
    QTest::qWait(50);
    t.tPort.Retry();
    QCOMPARE(t.iEvents, Events{2001});
    QVERIFY(t.tPort.PortOpen());
    QCOMPARE(t.tPort.Input(), std::string_view());
    t.tPort.Output("into the void");
}

void SerialVanishTest::VanishedDeviceCostsNoProcessorTime() {
    PtyPort tPty;
    Listener t(tPty);
    tPty.HangUp();
    QTRY_COMPARE(t.iEvents, Events{2001});
    const double dBefore = ProcessorSeconds();
    QTest::qWait(500);
    QVERIFY2(ProcessorSeconds() - dBefore < 0.1, "half a second of waiting took a tenth of computing");
}

void SerialVanishTest::DeviceIsBackUnderTheSameLink() {
    PtyPort tPty;
    Listener t(tPty);
    const QString sFormer = t.tPort.Device();
    tPty.HangUp();
    QTRY_COMPARE(t.iEvents, Events{2001});
    tPty.Recreate();
    QVERIFY(tPty.Device() != sFormer);
    t.tPort.Retry();
    QCOMPARE(t.iEvents, (Events{2001, 2002}));
    QCOMPARE(t.tPort.Device(), tPty.Device());
    QVERIFY(tPty.Write("after"));
    QTRY_COMPARE(t.sReceived, std::string("after"));
}

void SerialVanishTest::DeviceIsBackByTheTimer() {
    PtyPort tPty;
    Listener t(tPty);
    tPty.HangUp();
    QTRY_COMPARE(t.iEvents, Events{2001});
    tPty.Recreate();
    QTRY_COMPARE_WITH_TIMEOUT(t.iEvents, (Events{2001, 2002}), 3000);
}

void SerialVanishTest::CharactersSentBeforeTheReopenAreNotLost() {
    PtyPort tPty;
    Listener t(tPty);
    tPty.HangUp();
    QTRY_COMPARE(t.iEvents, Events{2001});
    t.tPort.Retry();  // fails, which must not make the next one forget
    tPty.Recreate();
    QVERIFY(tPty.Write("early bird"));
    t.tPort.Retry();
    QTRY_COMPARE(t.sReceived, std::string("early bird"));
}

void SerialVanishTest::VanishesWhileWriting() {
    PtyPort tPty;
    Listener t(tPty);
    tPty.HangUp();
    for (int i = 0; i < 100; ++i) t.tPort.Output("the far end is gone, nobody has noticed yet\r\n");
    QTRY_COMPARE(t.iEvents, Events{2001});
    QVERIFY(t.tPort.PortOpen());
}

void SerialVanishTest::OutputGoesOnAfterTheReturn() {
    PtyPort tPty;
    Listener t(tPty);
    tPty.HangUp();
    QTRY_COMPARE(t.iEvents, Events{2001});
    t.tPort.Output("dropped");
    tPty.Recreate();
    t.tPort.Retry();
    t.tPort.Output("kept");
    QCOMPARE(tPty.ReadAtLeast(4), std::string("kept"));
}

void SerialVanishTest::CanBeStoppedWhileAway() {
    PtyPort tPty;
    Listener t(tPty);
    tPty.HangUp();
    QTRY_COMPARE(t.iEvents, Events{2001});
    t.tPort.ClosePort();
    tPty.Recreate();
    t.tPort.Retry();
    QVERIFY(!t.tPort.PortOpen());
    QCOMPARE(t.iEvents, Events{2001});
    t.tPort.OpenPort();
    QVERIFY(tPty.Write("anew"));
    QTRY_COMPARE(t.sReceived, std::string("anew"));
}

void SerialVanishTest::HandlerMayCloseThePortWhenTheDeviceIsLost() {
    PtyPort tPty;
    Listener t(tPty);
    QObject::connect(&t.tPort, &SerialPort::OnComm, &t.tPort, [&t] {
        if (t.tPort.CommEvent() == 2001) t.tPort.ClosePort();
    });
    tPty.HangUp();
    QTRY_VERIFY(!t.tPort.PortOpen());
    QCOMPARE(t.iEvents, Events{2001});
}

void SerialVanishTest::ManyReturnsLeakNoDescriptor() {
    PtyPort tPty;
    Listener t(tPty);
    const qsizetype iBefore = OpenDescriptors();
    for (std::size_t i = 1; i <= 30; ++i) {
        tPty.HangUp();
        QTRY_COMPARE(t.iEvents.size(), 2 * i - 1);
        t.tPort.Retry();
        tPty.Recreate();
        t.tPort.Retry();
        QCOMPARE(t.iEvents.size(), 2 * i);
    }
    QCOMPARE(OpenDescriptors(), iBefore);
}

QTEST_GUILESS_MAIN(SerialVanishTest)
#include "SerialVanishTest.moc"
