// Texts that travel through a serial port to a pseudo-terminal whose far end reads at once, late, or never.
#include <QElapsedTimer>
#include <QTest>
#include <chrono>
#include <cmath>

#include "platform/toolkit/NativeSerialDevice.h"
#include "platform/toolkit/SerialPort.h"
#include "tests/support/PtyPort.h"

using support::PtyPort;
using toolkit::SerialPort;

namespace {
constexpr int QueueAt4800 = 4800;  // ten seconds of 480 characters

using Clock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;
double g_dNow = 0;
// Moved by the test.
Clock::time_point HandClock() {
    return Clock::time_point(std::chrono::duration_cast<Clock::duration>(Seconds(g_dNow)));
}
// Every look is an hour after the one before: a line that sends at once whatever it is given.
Clock::time_point HastyClock() {
    g_dNow += 3600;
    return HandClock();
}

struct Sender {
    SerialPort tPort;
    std::vector<int> iEvents;
    std::vector<std::int64_t> lDropped;
    toolkit::NativeSerialDevice* pDevice = nullptr;

    explicit Sender(const PtyPort& tPty, std::string_view sSettings = "4800,n,8,1",
                    toolkit::NativeSerialDevice::ClockFunction pClock = HastyClock) {
        tPort.SetAccess({[](const QString& s) { return s; },
                         [this, pClock] {
                             auto p =
                                 std::make_unique<toolkit::NativeSerialDevice>(toolkit::DriverLineCounters, pClock);
                             pDevice = p.get();
                             return p;
                         }});
        QObject::connect(&tPort, &SerialPort::Dropped, &tPort, [this](std::int64_t l) { lDropped.push_back(l); });
        QObject::connect(&tPort, &SerialPort::OnComm, &tPort, [this] { iEvents.push_back(tPort.CommEvent()); });
        tPort.SetCommPort(tPty.Link());
        tPort.SetSettings(sSettings);
        tPort.OpenPort();
    }
};

std::string Sentence(int iNumber) {
    std::string sNumber = std::to_string(iNumber);
    return "!AIVDM,1,1,,A," + std::string(8 - sNumber.size(), '0') + sNumber + ",0*00\r\n";
}
// Reads until nothing has come for fifty turns of the event loop.
std::string Drain(PtyPort& tPty) {
    std::string sData;
    for (int iQuiet = 0; iQuiet < 50; ++iQuiet) {
        QTest::qWait(1);
        const std::string sMore = tPty.Read();
        if (!sMore.empty()) iQuiet = 0;
        sData += sMore;
    }
    return sData;
}
}  // namespace

class SerialOutputTest : public QObject {
    Q_OBJECT
private slots:
    void TextIsOutAtOnce();
    void EveryByteValueIsSentUnchanged();
    void LastTextBeforeTheCloseArrives();
    void CloseHandsOverWhatStillWaits();
    void SlowReaderGetsEverythingInOrder();
    void ReaderThatNeverReadsDoesNotBlockOrGrow();
    void OldestSentencesAreDroppedWhole();
    void WhatComesOutIsYoung_data();
    void WhatComesOutIsYoung();
    void LineInTimeGetsEveryTextAtOnce();
    void EverySentenceIsAccountedFor_data();
    void EverySentenceIsAccountedFor();
    void FullDeviceDoesNotCountAsVanished();
    void ClosingWithAStuckReaderDoesNotBlock();
    void TwoDirectionsAtOnce();
};

void SerialOutputTest::TextIsOutAtOnce() {
    PtyPort tPty;
    Sender t(tPty);
    t.tPort.Output("$PNMLC,A*00\r\n");
    QCOMPARE(tPty.Read(), std::string("$PNMLC,A*00\r\n"));  // no turn of the event loop in between
}

void SerialOutputTest::EveryByteValueIsSentUnchanged() {
    PtyPort tPty;
    Sender t(tPty);
    std::string sAll;
    for (int i = 0; i < 256; ++i) sAll += static_cast<char>(i);
    t.tPort.Output(sAll);
    QVERIFY(tPty.ReadAtLeast(256) == sAll);
}

void SerialOutputTest::LastTextBeforeTheCloseArrives() {
    PtyPort tPty;
    Sender t(tPty);
    t.tPort.Output("good");
    t.tPort.Output("bye");
    t.tPort.ClosePort();
    QCOMPARE(tPty.Read(), std::string("goodbye"));
}

void SerialOutputTest::CloseHandsOverWhatStillWaits() {
    PtyPort tPty;
    Sender t(tPty);
    while (t.iEvents.empty()) t.tPort.Output(Sentence(0));  // kernel and queue are full
    std::string sArrived = tPty.Read();
    // The kernel frees its buffers a moment after they are read. No event loop: the queue is still full.
    for (int i = 0; i < 20; ++i) {
        QTest::qSleep(1);
        sArrived += tPty.Read();
    }
    t.tPort.ClosePort();
    QTest::qSleep(20);
    QVERIFY(tPty.Read().size() > QueueAt4800 - Sentence(0).size());
}

void SerialOutputTest::SlowReaderGetsEverythingInOrder() {
    PtyPort tPty;
    Sender t(tPty);
    std::string sSent, sArrived;
    // In steps that kernel and queue can always hold, the reader lagging behind by a step.
    for (int i = 0; i < 3000; ++i) {
        t.tPort.Output(Sentence(i));
        sSent += Sentence(i);
        if (i % 100 == 99) sArrived += tPty.ReadAtLeast(Sentence(0).size() * 90);
    }
    sArrived += tPty.ReadAtLeast(sSent.size() - sArrived.size());
    QVERIFY(sArrived == sSent);
    QVERIFY(t.iEvents.empty());
}

void SerialOutputTest::ReaderThatNeverReadsDoesNotBlockOrGrow() {
    PtyPort tPty;
    Sender t(tPty);
    QElapsedTimer tElapsed;
    tElapsed.start();
    for (int i = 0; i < 20000; ++i) t.tPort.Output(Sentence(i));
    QVERIFY(tElapsed.elapsed() < 5000);
    QVERIFY(t.tPort.PortOpen());
    QCOMPARE(t.iEvents, std::vector<int>{1010});
}

void SerialOutputTest::OldestSentencesAreDroppedWhole() {
    PtyPort tPty;
    Sender t(tPty);
    for (int i = 1; i <= 5000; ++i) QVERIFY(t.tPort.Output(Sentence(i)));
    // What arrives is a beginning that the system had taken, and the newest: ten seconds of the line.
    const std::string sArrived = Drain(tPty);
    const std::size_t iLength = Sentence(0).size();
    QCOMPARE(sArrived.size() % iLength, std::size_t{0});
    const auto iDropped = static_cast<int>(t.lDropped.size());
    QVERIFY(iDropped > 0);
    QCOMPARE(t.tPort.TextsDropped(), std::int64_t{iDropped});
    const auto iFirst = static_cast<int>(t.lDropped.front());
    for (int i = 0; i < iDropped; ++i) QCOMPARE(t.lDropped[static_cast<std::size_t>(i)], std::int64_t{iFirst + i});
    std::string sExpected;
    for (int i = 1; i <= 5000; ++i)
        if (i < iFirst || i >= iFirst + iDropped) sExpected += Sentence(i);
    QVERIFY(sArrived == sExpected);
    QVERIFY(static_cast<std::size_t>(5000 - iFirst - iDropped + 1) * iLength > QueueAt4800 - 2 * iLength);
    // The way is free again; a new jam is a new episode.
    t.tPort.Output("free");
    QCOMPARE(tPty.ReadAtLeast(4), std::string("free"));
    for (int i = 0; i < 5000; ++i) t.tPort.Output(Sentence(i));
    QCOMPARE(t.iEvents, (std::vector<int>{1010, 1010}));
}

void SerialOutputTest::WhatComesOutIsYoung_data() {
    QTest::addColumn<double>("dLoad");     // times what the line carries
    QTest::addColumn<double>("dMostAge");  // seconds: ten of the line's rate, filled at that load, and one
    QTest::newRow("a fifth too much") << 1.2 << 11.0;
    QTest::newRow("two and a half times") << 2.5 << 5.0;
    QTest::newRow("ten times") << 10.0 << 2.0;
}

// Eighty-eight seconds by a clock of the test's own. The far end reads whatever is there, so what it gets in a tick is
// what the line was given.
void SerialOutputTest::WhatComesOutIsYoung() {
    QFETCH(double, dLoad);
    QFETCH(double, dMostAge);
    PtyPort tPty;
    Sender t(tPty, "4800,n,8,1", HandClock);
    const auto dLength = static_cast<double>(Sentence(0).size());
    std::string sArrived;
    std::vector<double> dSent;
    double dOldest = 0;
    int iLast = -1, iOut = 0;
    const double dBegan = g_dNow;
    while (g_dNow - dBegan < 88) {
        g_dNow += 0.05;
        while (static_cast<double>(dSent.size()) * dLength < (g_dNow - dBegan) * 480 * dLoad) {
            QVERIFY(t.tPort.Output(Sentence(static_cast<int>(dSent.size()))));
            dSent.push_back(g_dNow);
        }
        t.pDevice->PollPace();
        sArrived += tPty.Read();
        for (; sArrived.size() >= Sentence(0).size(); sArrived.erase(0, Sentence(0).size()), ++iOut) {
            const int iNumber = std::stoi(sArrived.substr(15, 8));
            QCOMPARE(sArrived.substr(0, Sentence(0).size()), Sentence(iNumber));
            QVERIFY(iNumber > iLast);
            iLast = iNumber;
            dOldest = std::max(dOldest, g_dNow - dSent[static_cast<std::size_t>(iNumber)]);
        }
    }
    QVERIFY2(dOldest < dMostAge, qPrintable(QString::number(dOldest)));
    // And the line was used: all but half a second more than it carries may be in the system.
    QVERIFY2(std::abs(iOut * dLength - 88 * 480) < 480, qPrintable(QString::number(iOut * dLength)));
    QVERIFY(!t.iEvents.empty());
    QCOMPARE(t.iEvents.front(), 1010);
}

// Up to half a second of the line's rate at once goes out without a wait.
void SerialOutputTest::LineInTimeGetsEveryTextAtOnce() {
    PtyPort tPty;
    Sender t(tPty, "38400,n,8,1", HandClock);
    std::string sSent;
    for (int i = 0; i < 66; ++i) {  // 1914 characters
        QVERIFY(t.tPort.Output(Sentence(i)));
        sSent += Sentence(i);
    }
    QCOMPARE(t.tPort.TextsWaiting(), std::size_t{0});
    QVERIFY(tPty.ReadAtLeast(sSent.size()) == sSent);
    QVERIFY(t.iEvents.empty());
}

void SerialOutputTest::EverySentenceIsAccountedFor_data() {
    QTest::addColumn<int>("iReadEvery");  // sentences between two looks of the far end
    QTest::addColumn<int>("iReads");      // sentences that it takes then, or more
    QTest::newRow("nobody reads") << 6000 << 0;
    QTest::newRow("a slow reader") << 2000 << 40;
    QTest::newRow("a reader that keeps up") << 50 << 50;
}

// What arrived whole, what was dropped, and what the close left behind: each told exactly.
void SerialOutputTest::EverySentenceIsAccountedFor() {
    QFETCH(int, iReadEvery);
    QFETCH(int, iReads);
    constexpr int Sent = 5000;
    const std::size_t lLength = Sentence(0).size();
    PtyPort tPty;
    Sender t(tPty);
    std::string sArrived;
    for (int i = 1; i <= Sent; ++i) {
        QVERIFY(t.tPort.Output(Sentence(i)));
        if (i % iReadEvery == 0) sArrived += tPty.ReadAtLeast(lLength * static_cast<std::size_t>(iReads));
    }
    const std::int64_t lDropped = t.tPort.TextsDropped();
    QCOMPARE(t.tPort.TextsTaken(), std::int64_t{Sent});
    if (iReads == 0) QVERIFY(lDropped > 0);
    if (iReads == iReadEvery) QCOMPARE(lDropped, std::int64_t{0});
    t.tPort.ClosePort();
    const std::size_t lWhole = Sent - static_cast<std::size_t>(lDropped) - t.tPort.TextsWaiting();
    if (sArrived.size() < lWhole * lLength) sArrived += tPty.ReadAtLeast(lWhole * lLength - sArrived.size());
    sArrived += Drain(tPty);
    QCOMPARE(sArrived.size() / lLength, lWhole);
}

void SerialOutputTest::FullDeviceDoesNotCountAsVanished() {
    PtyPort tPty;
    Sender t(tPty);
    for (int i = 0; i < 2000; ++i) {
        t.tPort.Output(Sentence(i));
        if (i % 10 == 0) QCoreApplication::processEvents();
    }
    QVERIFY(std::find(t.iEvents.begin(), t.iEvents.end(), 2001) == t.iEvents.end());
    QVERIFY(!tPty.ReadAtLeast(QueueAt4800).empty());
    // Alternately jammed and read.
    for (int i = 0; i < 50; ++i) {
        for (int j = 0; j < 500; ++j) t.tPort.Output(Sentence(j));
        QVERIFY(!tPty.ReadAtLeast(QueueAt4800 / 2).empty());
    }
    QVERIFY(std::find(t.iEvents.begin(), t.iEvents.end(), 2001) == t.iEvents.end());
}

void SerialOutputTest::ClosingWithAStuckReaderDoesNotBlock() {
    PtyPort tPty;
    Sender t(tPty);
    for (int i = 0; i < 2000; ++i) t.tPort.Output(Sentence(i));
    QElapsedTimer tElapsed;
    tElapsed.start();
    t.tPort.ClosePort();
    QVERIFY(tElapsed.elapsed() < 1000);
    QVERIFY(!t.tPort.PortOpen());
    QCOMPARE(t.iEvents, std::vector<int>{1010});
}

void SerialOutputTest::TwoDirectionsAtOnce() {
    PtyPort tPty;
    Sender t(tPty, "38400,n,8,1");
    std::string sReceived, sAnswers;
    QObject::connect(&t.tPort, &SerialPort::OnComm, &t.tPort, [&] {
        const std::string sInput(t.tPort.Input());
        sReceived += sInput;
        t.tPort.Output(sInput);  // from within the event, as forwarding does
    });
    std::string sSent;
    for (int i = 0; i < 500; ++i) {
        QVERIFY(tPty.Write(Sentence(i)));
        sSent += Sentence(i);
        sAnswers += tPty.Read();
    }
    sAnswers += tPty.ReadAtLeast(sSent.size() - sAnswers.size());
    QVERIFY(sReceived == sSent);
    QVERIFY(sAnswers == sSent);
}

QTEST_GUILESS_MAIN(SerialOutputTest)
#include "SerialOutputTest.moc"
