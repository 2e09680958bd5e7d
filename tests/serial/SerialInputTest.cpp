// Bytes that travel from a pseudo-terminal through a serial port to its listener: all of them, in order, as they came.
#include <QTest>
#include <memory>

#include "platform/toolkit/NativeSerialDevice.h"
#include "platform/toolkit/SerialPort.h"
#include "tests/support/PtyPort.h"

using support::PtyPort;
using toolkit::SerialPort;

namespace {

// What a listener does: appends all input; keeps the numbers of other events.
struct Listener {
    SerialPort tPort;
    std::string sReceived;
    std::vector<int> iEvents;
    int iBatches = 0;

    Listener() {
        QObject::connect(&tPort, &SerialPort::OnComm, &tPort, [this] {
            if (tPort.CommEvent() != 2) return iEvents.push_back(tPort.CommEvent());
            ++iBatches;
            sReceived += tPort.Input();
        });
    }
    void Open(const PtyPort& tPty, std::string_view sSettings = "38400,n,8,1") {
        tPort.SetCommPort(tPty.Link());
        tPort.SetSettings(sSettings);
        tPort.OpenPort();
    }
};

// Counters of a driver that the test plays.
serial_icounter_struct Counters;
int FakeDriver(int, serial_icounter_struct* pCounters) {
    *pCounters = Counters;
    return 0;
}

std::string EveryByteValue() {
    std::string sData;
    for (int i = 0; i < 256; ++i) sData += static_cast<char>(i);
    return sData;
}

std::string Lines(int iCount, char cMark) {
    std::string sLines;
    for (int i = 0; i < iCount; ++i) {
        sLines += '!';
        sLines += cMark;
        sLines += std::to_string(i) + ",some words to fill a line of a usual length,0*00\r\n";
    }
    return sLines;
}
}  // namespace

class SerialInputTest : public QObject {
    Q_OBJECT
private slots:
    void EveryByteValueArrivesUnchanged();
    void SplitLinesArriveInOrder();
    void TwoPortsAtOnceDoNotMix();
    void BusyListenerLosesNothing();
    void ListenerThatRunsTheEventLoopLosesNothing();
    void CharactersFromBeforeTheOpenAreNotInput();
    void ReopenedPortReadsOn();
    void KernelNameAndPathOpenTheSameDevice();
    void SettingsReachTheDevice_data();
    void SettingsReachTheDevice();
    void BreaksAreNotReceivedAsCharacters();
    void LineErrorsComeBeforeTheCharacters();
    void LineErrorsComeWithoutCharactersToo();
    void AdapterWithoutCountersSaysSo();
};

void SerialInputTest::EveryByteValueArrivesUnchanged() {
    PtyPort tPty;
    Listener t;
    t.Open(tPty);
    const std::string sAll = EveryByteValue();
    QVERIFY(tPty.Write(sAll));
    QTRY_COMPARE(t.sReceived.size(), sAll.size());
    QVERIFY(t.sReceived == sAll);
}

void SerialInputTest::SplitLinesArriveInOrder() {
    PtyPort tPty;
    Listener t;
    t.Open(tPty);
    const std::string sLine = "$GPGLL,4916.45,N,12311.12,W,225444,A*31\r\n";
    for (const char c : sLine) {
        const std::size_t iBefore = t.sReceived.size();
        QVERIFY(tPty.Write(std::string_view(&c, 1)));
        QTRY_COMPARE(t.sReceived.size(), iBefore + 1);
    }
    QCOMPARE(t.sReceived, sLine);
    QCOMPARE(t.iBatches, static_cast<int>(sLine.size()));
}

void SerialInputTest::TwoPortsAtOnceDoNotMix() {
    PtyPort tFirst, tSecond;
    Listener t1, t2;
    t1.Open(tFirst);
    t2.Open(tSecond);
    const std::string sFirst = Lines(500, 'A'), sSecond = Lines(500, 'B');
    // Odd pieces in turn, so that the lines of both ports are always cut somewhere.
    for (std::size_t i = 0; i < std::max(sFirst.size(), sSecond.size()); i += 37) {
        if (i < sFirst.size()) QVERIFY(tFirst.Write(std::string_view(sFirst).substr(i, 37)));
        if (i < sSecond.size()) QVERIFY(tSecond.Write(std::string_view(sSecond).substr(i, 37)));
        if (i % 5 == 0) QCoreApplication::processEvents();
    }
    QTRY_COMPARE(t1.sReceived.size(), sFirst.size());
    QTRY_COMPARE(t2.sReceived.size(), sSecond.size());
    QVERIFY(t1.sReceived == sFirst);
    QVERIFY(t2.sReceived == sSecond);
}

// The far end goes on sending while nobody looks; more than the kernel keeps makes it wait, nothing is lost.
void SerialInputTest::BusyListenerLosesNothing() {
    PtyPort tPty;
    Listener t;
    t.Open(tPty);
    const std::string sData = Lines(3000, 'S');
    std::string_view sRest = sData;
    while (const std::size_t iTaken = tPty.WriteSome(sRest)) sRest.remove_prefix(iTaken);
    QVERIFY(!sRest.empty());
    QVERIFY(t.sReceived.empty());
    QVERIFY(tPty.Write(sRest));
    QTRY_COMPARE(t.sReceived.size(), sData.size());
    QVERIFY(t.sReceived == sData);
}

void SerialInputTest::ListenerThatRunsTheEventLoopLosesNothing() {
    PtyPort tPty;
    Listener t;
    t.Open(tPty);
    bool bSent = false;
    QObject::connect(&t.tPort, &SerialPort::OnComm, &t.tPort, [&] {
        if (std::exchange(bSent, true)) return;
        QVERIFY(tPty.Write("second"));
        for (int i = 0; i < 20; ++i) QTest::qWait(1);
    });
    QVERIFY(tPty.Write("first "));
    QTRY_COMPARE(t.sReceived, std::string("first second"));
}

void SerialInputTest::CharactersFromBeforeTheOpenAreNotInput() {
    PtyPort tPty;
    QVERIFY(tPty.Write("an old half line,0*"));
    Listener t;
    t.Open(tPty);
    QVERIFY(tPty.Write("new"));
    QTRY_COMPARE(t.sReceived, std::string("new"));
}

void SerialInputTest::ReopenedPortReadsOn() {
    PtyPort tPty;
    Listener t;
    for (int i = 0; i < 20; ++i) {
        t.sReceived.clear();
        t.Open(tPty);
        QVERIFY(tPty.Write("hello"));
        QTRY_COMPARE(t.sReceived, std::string("hello"));
        t.tPort.ClosePort();
    }
    QVERIFY(t.iEvents.empty());
}

void SerialInputTest::KernelNameAndPathOpenTheSameDevice() {
    PtyPort tPty;
    Listener t;
    t.tPort.SetSettings("38400,n,8,1");
    const std::string sPath = tPty.Device().toStdString();
    for (const std::string& sName : {sPath, sPath.substr(5), tPty.Link().toStdString()}) {
        t.tPort.SetCommPort(toolkit::FromLatin1(sName));
        t.tPort.OpenPort();
        QCOMPARE(t.tPort.Device(), tPty.Device());
        t.tPort.ClosePort();
    }
}

void SerialInputTest::SettingsReachTheDevice_data() {
    QTest::addColumn<std::string>("sSettings");
    QTest::addColumn<unsigned>("iSpeed");
    QTest::newRow("receiver") << std::string("38400,n,8,1") << static_cast<unsigned>(B38400);
    QTest::newRow("GPS") << std::string("4800,n,8,1") << static_cast<unsigned>(B4800);
    QTest::newRow("fast") << std::string("115200,n,8,1") << static_cast<unsigned>(B115200);
    QTest::newRow("even parity is taken at the open") << std::string("9600,e,7,2") << static_cast<unsigned>(B9600);
    QTest::newRow("mark parity, 1.5 stop bits") << std::string("9600,m,5,1.5") << static_cast<unsigned>(B9600);
}

void SerialInputTest::SettingsReachTheDevice() {
    QFETCH(std::string, sSettings);
    QFETCH(unsigned, iSpeed);
    PtyPort tPty;
    Listener t;
    t.Open(tPty, sSettings);
    const termios tSettings = tPty.Settings();
    QCOMPARE(::cfgetospeed(&tSettings), iSpeed);
    QCOMPARE(::cfgetispeed(&tSettings), iSpeed);
}

void SerialInputTest::BreaksAreNotReceivedAsCharacters() {
    PtyPort tPty;
    QVERIFY((tPty.Settings().c_iflag & IGNBRK) == 0);
    Listener t;
    t.Open(tPty);
    QVERIFY((tPty.Settings().c_iflag & IGNBRK) != 0);
}

void SerialInputTest::LineErrorsComeBeforeTheCharacters() {
    PtyPort tPty;
    Counters = {};
    Listener t;
    t.tPort.SetAccess(
        {[](const QString& s) { return s; }, [] { return std::make_unique<toolkit::NativeSerialDevice>(FakeDriver); }});
    t.Open(tPty);
    QVERIFY(t.tPort.ReportsLineErrors());
    std::vector<int> iOrder;
    QObject::connect(&t.tPort, &SerialPort::OnComm, &t.tPort, [&] { iOrder.push_back(t.tPort.CommEvent()); });
    Counters.brk = 1;
    Counters.parity = 3;
    QVERIFY(tPty.Write("x"));
    QTRY_COMPARE(t.sReceived, std::string("x"));
    QCOMPARE(iOrder, (std::vector<int>{1001, 1009, 2}));
    // Framing goes on, and nothing is told twice.
    QVERIFY(tPty.Write("y"));
    QTRY_COMPARE(t.sReceived, std::string("xy"));
    QCOMPARE(t.iEvents, (std::vector<int>{1001, 1009}));
}

void SerialInputTest::LineErrorsComeWithoutCharactersToo() {
    PtyPort tPty;
    Counters = {};
    toolkit::NativeSerialDevice* pDevice = nullptr;
    Listener t;
    t.tPort.SetAccess({[](const QString& s) { return s; },
                       [&pDevice] {
                           auto p = std::make_unique<toolkit::NativeSerialDevice>(FakeDriver);
                           pDevice = p.get();
                           return p;
                       }});
    t.Open(tPty);
    Counters.overrun = 1;
    pDevice->PollLineErrors();
    QCOMPARE(t.iEvents, std::vector<int>{1006});
    // By the timer as well, which runs only for a driver with counters.
    Counters.frame = 1;
    QTRY_COMPARE(t.iEvents, (std::vector<int>{1006, 1004}));
    t.tPort.ClosePort();
    Counters.frame = 2;
    pDevice->PollLineErrors();
    QCOMPARE(t.iEvents.size(), std::size_t{2});
}

void SerialInputTest::AdapterWithoutCountersSaysSo() {
    PtyPort tPty;
    Listener t;
    t.Open(tPty);
    QVERIFY(!t.tPort.ReportsLineErrors());
}

QTEST_GUILESS_MAIN(SerialInputTest)
#include "SerialInputTest.moc"
