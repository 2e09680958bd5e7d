// Line errors from a driver's counters; the test is the driver.
#include "platform/toolkit/LineErrors.h"

#include <fcntl.h>
#include <unistd.h>

#include <QTest>
#include <climits>

#include "tests/support/PtyPort.h"

namespace {
serial_icounter_struct Counters;
bool HasCounters;
int Asked;

int FakeDriver(int, serial_icounter_struct* pCounters) {
    ++Asked;
    if (!HasCounters) return -1;
    *pCounters = Counters;
    return 0;
}
}  // namespace

using Member = int serial_icounter_struct::*;
class LineErrorsTest : public QObject {
    Q_OBJECT
private slots:
    void init();
    void EachCounterHasItsEvent_data();
    void EachCounterHasItsEvent();
    void ManyErrorsAtOnceAreOneEvent();
    void DifferentErrorsComeInAFixedOrder();
    void NothingNewNoEvent();
    void ErrorsFromBeforeTheOpenAreNotReported();
    void OtherCountersAreNoErrors();
    void CounterMayWrapAround();
    void ResetCounterIsNoError();
    void DriverWithoutCountersIsNotAskedAgain();
    void FailingReadIsSkipped();
    void StoppedReportsNothing();
    void PseudoTerminalHasNoCounters();
};

void LineErrorsTest::init() {
    Counters = {};
    HasCounters = true;
    Asked = 0;
}

void LineErrorsTest::EachCounterHasItsEvent_data() {
    QTest::addColumn<Member>("pCounter");
    QTest::addColumn<int>("iEvent");
    QTest::newRow("break") << &serial_icounter_struct::brk << 1001;
    QTest::newRow("framing") << &serial_icounter_struct::frame << 1004;
    QTest::newRow("overrun") << &serial_icounter_struct::overrun << 1006;
    QTest::newRow("receive overflow") << &serial_icounter_struct::buf_overrun << 1008;
    QTest::newRow("parity") << &serial_icounter_struct::parity << 1009;
}

void LineErrorsTest::EachCounterHasItsEvent() {
    QFETCH(Member, pCounter);
    QFETCH(int, iEvent);
    toolkit::LineErrors tErrors(FakeDriver);
    tErrors.Start(3);
    ++(Counters.*pCounter);
    QCOMPARE(tErrors.Poll(3), std::vector<int>{iEvent});
    QCOMPARE(tErrors.Poll(3), std::vector<int>{});
}

void LineErrorsTest::ManyErrorsAtOnceAreOneEvent() {
    toolkit::LineErrors tErrors(FakeDriver);
    tErrors.Start(3);
    Counters.parity = 5000;
    QCOMPARE(tErrors.Poll(3), std::vector<int>{1009});
}

void LineErrorsTest::DifferentErrorsComeInAFixedOrder() {
    toolkit::LineErrors tErrors(FakeDriver);
    tErrors.Start(3);
    Counters.parity = Counters.buf_overrun = Counters.overrun = Counters.frame = Counters.brk = 2;
    QCOMPARE(tErrors.Poll(3), (std::vector<int>{1001, 1004, 1006, 1008, 1009}));
}

void LineErrorsTest::NothingNewNoEvent() {
    toolkit::LineErrors tErrors(FakeDriver);
    tErrors.Start(3);
    QVERIFY(tErrors.Supported());
    QVERIFY(tErrors.Poll(3).empty());
}

void LineErrorsTest::ErrorsFromBeforeTheOpenAreNotReported() {
    Counters.brk = 7;
    Counters.frame = 9;
    toolkit::LineErrors tErrors(FakeDriver);
    tErrors.Start(3);
    QVERIFY(tErrors.Poll(3).empty());
    Counters.frame = 10;
    tErrors.Start(4);  // opened again
    QVERIFY(tErrors.Poll(4).empty());
}

void LineErrorsTest::OtherCountersAreNoErrors() {
    toolkit::LineErrors tErrors(FakeDriver);
    tErrors.Start(3);
    Counters.rx = Counters.tx = Counters.cts = Counters.dsr = Counters.rng = Counters.dcd = 1000;
    QVERIFY(tErrors.Poll(3).empty());
}

void LineErrorsTest::CounterMayWrapAround() {
    Counters.frame = INT_MAX;
    toolkit::LineErrors tErrors(FakeDriver);
    tErrors.Start(3);
    Counters.frame = INT_MIN;
    QCOMPARE(tErrors.Poll(3), std::vector<int>{1004});
}

void LineErrorsTest::ResetCounterIsNoError() {
    Counters.frame = 100;
    toolkit::LineErrors tErrors(FakeDriver);
    tErrors.Start(3);
    Counters.frame = 0;
    QVERIFY(tErrors.Poll(3).empty());
    Counters.frame = 1;
    QCOMPARE(tErrors.Poll(3), std::vector<int>{1004});
}

void LineErrorsTest::DriverWithoutCountersIsNotAskedAgain() {
    HasCounters = false;
    toolkit::LineErrors tErrors(FakeDriver);
    tErrors.Start(3);
    QVERIFY(!tErrors.Supported());
    QVERIFY(tErrors.Poll(3).empty());
    QCOMPARE(Asked, 1);
}

void LineErrorsTest::FailingReadIsSkipped() {
    toolkit::LineErrors tErrors(FakeDriver);
    tErrors.Start(3);
    HasCounters = false;
    QVERIFY(tErrors.Poll(3).empty());
    HasCounters = true;
    Counters.overrun = 1;
    QCOMPARE(tErrors.Poll(3), std::vector<int>{1006});
}

void LineErrorsTest::StoppedReportsNothing() {
    toolkit::LineErrors tErrors(FakeDriver);
    tErrors.Start(3);
    tErrors.Stop();
    Counters.brk = 1;
    QVERIFY(!tErrors.Supported());
    QVERIFY(tErrors.Poll(3).empty());
}

void LineErrorsTest::PseudoTerminalHasNoCounters() {
    support::PtyPort tPty;
    const QByteArray sDevice = tPty.Device().toLocal8Bit();
    // Else it becomes the terminal of a test that leads its session, and ends it with a SIGHUP when it goes.
    const int iDescriptor = ::open(sDevice.constData(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    QVERIFY2(iDescriptor >= 0, sDevice.constData());
    toolkit::LineErrors tErrors;
    tErrors.Start(iDescriptor);
    QVERIFY(!tErrors.Supported());
    ::close(iDescriptor);
}

QTEST_GUILESS_MAIN(LineErrorsTest)
#include "LineErrorsTest.moc"
