// The serial port control on a device that lives in memory: what it does with settings, input, output, events, other
// ports and a device that vanishes.
#include "platform/toolkit/SerialPort.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <functional>
#include <vector>

using toolkit::CommError;
using toolkit::SerialPort;

namespace {

struct MemoryDevice : toolkit::SerialDevice {
    QString sOpened;
    runtime::SerialSettings tSettings;
    std::string sWaiting, sWritten;
    std::int64_t lQueued = 0;
    std::int64_t lTakenInClose = 0;
    bool bOpen = false, bCounters = false, bLostInWrite = false;
    bool* pFails = nullptr;

    void Open(const QString& sDevice, const runtime::SerialSettings& tNew) override {
        if (*pFails) throw CommError("no such device");
        sOpened = sDevice;
        tSettings = tNew;
        bOpen = true;
    }
    void Close() override {
        bOpen = false;
        lQueued -= lTakenInClose;
    }
    bool IsOpen() const override { return bOpen; }
    void ReadAll(std::string& sInto) override { sInto += std::exchange(sWaiting, {}); }
    bool TakesMore() const override { return true; }
    void Write(std::string_view sData) override {
        sWritten += sData;
        lQueued += static_cast<std::int64_t>(sData.size());
        if (bLostInWrite) Vanish();
    }
    std::int64_t BytesToWrite() const override { return lQueued; }
    bool ReportsLineErrors() const override { return bCounters; }

    void Feed(std::string_view sData) {
        sWaiting += sData;
        emit Received();
    }
    void Vanish() {
        bOpen = false;
        emit Lost();
    }
};

// A port with its device and a record of what its listener saw.
struct Fixture {
    QObject tWindow;
    bool bFails = false;
    int iResolved = 0;
    MemoryDevice* pDevice = nullptr;
    SerialPort& tPort;
    std::vector<int> iEvents;
    std::vector<std::string> sInputs;
    bool bTakesInput = true;
    std::function<void()> OnReceive;

    Fixture() : tPort(*new SerialPort(&tWindow)) {
        tPort.SetAccess(Access());
        tPort.SetCommPort(QStringLiteral("6"));
        tPort.SetSettings("38400,n,8,1");
        QObject::connect(&tPort, &SerialPort::OnComm, &tWindow, [this] {
            iEvents.push_back(tPort.CommEvent());
            if (tPort.CommEvent() != 2) return;
            if (bTakesInput) sInputs.emplace_back(tPort.Input());
            if (OnReceive) OnReceive();
        });
    }
    toolkit::SerialAccess Access() {
        return {[this](const QString& sPort) {
                    ++iResolved;
                    if (sPort == QLatin1String("abc")) throw CommError("\"abc\" names no serial port");
                    return QStringLiteral("memory:") + sPort;
                },
                [this] {
                    auto p = std::make_unique<MemoryDevice>();
                    p->pFails = &bFails;
                    pDevice = p.get();
                    return p;
                }};
    }
    SerialPort& Sibling(const char* pTitle, std::string_view sPort) {
        auto& tOther = *new SerialPort(&tWindow);
        tOther.SetAccess({[](const QString& s) { return QStringLiteral("memory:") + s; },
                          [this] {
                              auto p = std::make_unique<MemoryDevice>();
                              p->pFails = &bFails;
                              return p;
                          }});
        tOther.SetTitle(QString::fromLatin1(pTitle));
        tOther.SetCommPort(toolkit::FromLatin1(sPort));
        tOther.SetSettings("4800,n,8,1");
        return tOther;
    }
};

std::string ErrorOf(SerialPort& tPort) {
    try {
        tPort.OpenPort();
    } catch (const CommError& tError) {
        return tError.what();
    }
    return "opened";
}

using Events = std::vector<int>;
using Texts = std::vector<std::string>;
}  // namespace

class SerialPortTest : public QObject {
    Q_OBJECT
private slots:
    void PortNumberIsTheTextsNumber_data();
    void PortNumberIsTheTextsNumber();
    void BadSettingsAreRefusedAndTheFormerKept();
    void OpenAndClose();
    void NameIsResolvedAtTheOpenAndNoEarlier();
    void UnknownNameFailsInWords();
    void FailedOpenLeavesThePortClosed();
    void SameDeviceAsASiblingIsRefused();
    void SameDeviceByAnotherNameIsRefused();
    void ClosedSiblingIsNoHindrance();
    void OneEventPerBatch();
    void CharactersArrivingMeanwhileAreNotForgotten();
    void NothingIsReceivedTwiceOrFromWithin();
    void InputThatNobodyTakesWaits();
    void HandlerMayCloseThePort();
    void NothingIsReadOrWrittenWhenClosed();
    void LineEventsPassThrough();
    void OutputWaitsTenSecondsAndDropsWholeTexts();
    void DroppedTextsAreReportedOncePerEpisode();
    void TextThatStillFitsIsTakenDuringAnEpisode();
    void OutputTellsWhetherTheDeviceHasIt();
    void TextsThatWaitAreCounted();
    void TextsLeftBehindAreCountedAtTheClose();
    void TextsLeftBehindAreCountedAtTheLoss();
    void DroppedTextsAreCounted();
    void InputThatNobodyTakesIsBounded();
    void VanishedDeviceIsReportedOnce();
    void DeviceComesBack();
    void FailedRetriesAreSilent();
    void RetryResolvesTheNameAgain();
    void RetryOfAPortThatIsNotAwayDoesNothing();
    void OutputWhileAwayIsDropped();
    void PortThatIsAwayCanBeClosed();
    void LineErrorReportIsTheDevices();
};

void SerialPortTest::PortNumberIsTheTextsNumber_data() {
    QTest::addColumn<std::string>("sText");
    QTest::addColumn<int>("iNumber");
    QTest::newRow("number") << std::string("6") << 6;
    QTest::newRow("real number") << std::string("2.5") << 2;
    QTest::newRow("classic name") << std::string("com7") << 7;
    QTest::newRow("kernel name") << std::string("ttyUSB0") << 0;
    QTest::newRow("path") << std::string("/dev/ttyS5") << 0;
    QTest::newRow("empty") << std::string() << 0;
}

void SerialPortTest::PortNumberIsTheTextsNumber() {
    QFETCH(std::string, sText);
    SerialPort tPort;
    QCOMPARE(tPort.CommPort(), 0);
    tPort.SetCommPort(toolkit::FromLatin1(sText));
    QTEST(tPort.CommPort(), "iNumber");
}

void SerialPortTest::BadSettingsAreRefusedAndTheFormerKept() {
    Fixture t;
    QVERIFY_EXCEPTION_THROWN(t.tPort.SetSettings("38400,x,8,1"), runtime::SettingsError);
    QCOMPARE(t.tPort.Settings(), std::string("38400,n,8,1"));
    t.tPort.SetSettings("4800,e,7,2");
    QCOMPARE(t.tPort.Settings(), std::string("4800,e,7,2"));
    t.tPort.OpenPort();
    QCOMPARE(t.pDevice->tSettings.lBaud, 4800);
    QCOMPARE(t.pDevice->tSettings.cParity, 'e');
    QCOMPARE(t.pDevice->tSettings.iDataBits, 7);
    QVERIFY(t.pDevice->tSettings.eStopBits == runtime::StopBits::Two);
}

void SerialPortTest::OpenAndClose() {
    Fixture t;
    QVERIFY(!t.tPort.PortOpen());
    QCOMPARE(t.tPort.Device(), QString());
    t.tPort.OpenPort();
    QVERIFY(t.tPort.PortOpen());
    QVERIFY(t.pDevice->bOpen);
    QCOMPARE(t.tPort.Device(), QStringLiteral("memory:6"));
    QCOMPARE(ErrorOf(t.tPort), std::string("the port is already open"));
    t.tPort.ClosePort();
    t.tPort.ClosePort();
    QVERIFY(!t.tPort.PortOpen());
    QVERIFY(!t.pDevice->bOpen);
    QCOMPARE(t.tPort.Device(), QString());
    t.tPort.OpenPort();
    QVERIFY(t.pDevice->bOpen);
}

void SerialPortTest::NameIsResolvedAtTheOpenAndNoEarlier() {
    Fixture t;
    t.tPort.SetCommPort(QStringLiteral("7"));
    QCOMPARE(t.iResolved, 0);
    t.tPort.OpenPort();
    QCOMPARE(t.iResolved, 1);
    QCOMPARE(t.pDevice->sOpened, QStringLiteral("memory:7"));
}

void SerialPortTest::UnknownNameFailsInWords() {
    Fixture t;
    t.tPort.SetCommPort(QStringLiteral("abc"));
    QCOMPARE(ErrorOf(t.tPort), std::string("\"abc\" names no serial port"));
    QVERIFY(!t.tPort.PortOpen());
}

void SerialPortTest::FailedOpenLeavesThePortClosed() {
    Fixture t;
    t.bFails = true;
    QCOMPARE(ErrorOf(t.tPort), std::string("no such device"));
    QVERIFY(!t.tPort.PortOpen());
    QCOMPARE(t.tPort.Device(), QString());
    t.bFails = false;
    QCOMPARE(ErrorOf(t.tPort), std::string("opened"));
}

void SerialPortTest::SameDeviceAsASiblingIsRefused() {
    Fixture t;
    t.tPort.SetTitle(QStringLiteral("input #1"));
    t.tPort.OpenPort();
    SerialPort& tOther = t.Sibling("output", "6");
    QCOMPARE(ErrorOf(tOther), std::string("already open as input #1"));
    QVERIFY(!tOther.PortOpen());
    tOther.SetCommPort(QStringLiteral("7"));
    QCOMPARE(ErrorOf(tOther), std::string("opened"));
}

void SerialPortTest::SameDeviceByAnotherNameIsRefused() {
    QTemporaryDir tFolder;
    QFile tFile(tFolder.filePath(QStringLiteral("device")));
    QVERIFY(tFile.open(QIODevice::WriteOnly));
    const QString sLink = tFolder.filePath(QStringLiteral("link"));
    QVERIFY(tFile.link(sLink));

    Fixture t;
    SerialPort& tOther = t.Sibling("input #2", "x");
    const auto Access = [&t](const QString& sPath) {
        toolkit::SerialAccess tAccess = t.Access();
        tAccess.Resolve = [sPath](const QString&) { return sPath; };
        return tAccess;
    };
    t.tPort.SetAccess(Access(sLink));
    t.tPort.OpenPort();
    QCOMPARE(t.tPort.Device(), QFileInfo(sLink).canonicalFilePath());
    tOther.SetAccess(Access(tFile.fileName()));
    QCOMPARE(ErrorOf(tOther), std::string("already open as another port"));
}

void SerialPortTest::ClosedSiblingIsNoHindrance() {
    Fixture t;
    t.tPort.OpenPort();
    t.tPort.ClosePort();
    QCOMPARE(ErrorOf(t.Sibling("output", "6")), std::string("opened"));
}

void SerialPortTest::OneEventPerBatch() {
    Fixture t;
    t.tPort.OpenPort();
    t.pDevice->Feed("$GPGLL");
    t.pDevice->Feed(",4916\r\n");
    QCOMPARE(t.iEvents, (Events{2, 2}));
    QCOMPARE(t.sInputs, (Texts{"$GPGLL", ",4916\r\n"}));
}

void SerialPortTest::CharactersArrivingMeanwhileAreNotForgotten() {
    Fixture t;
    t.tPort.OpenPort();
    int iMore = 3;
    // Characters that come while the listener works are not announced by the device once more.
    t.OnReceive = [&] {
        if (iMore-- > 0) t.pDevice->sWaiting = "more";
    };
    t.pDevice->Feed("first");
    QCOMPARE(t.sInputs, (Texts{"first", "more", "more", "more"}));
}

void SerialPortTest::NothingIsReceivedTwiceOrFromWithin() {
    Fixture t;
    t.tPort.OpenPort();
    int iDepth = 0, iDeepest = 0;
    int iMore = 2;
    t.OnReceive = [&] {
        iDeepest = std::max(iDeepest, ++iDepth);
        if (iMore-- > 0) t.pDevice->Feed("nested");
        --iDepth;
    };
    t.pDevice->Feed("first");
    QCOMPARE(iDeepest, 1);
    QCOMPARE(t.sInputs, (Texts{"first", "nested", "nested"}));
}

void SerialPortTest::InputThatNobodyTakesWaits() {
    Fixture t;
    t.tPort.OpenPort();
    t.bTakesInput = false;
    t.pDevice->Feed("one ");
    QCOMPARE(t.iEvents, Events{2});
    t.bTakesInput = true;
    t.pDevice->Feed("two");
    QCOMPARE(t.sInputs, Texts{"one two"});
    QCOMPARE(t.tPort.Input(), std::string_view());
}

void SerialPortTest::HandlerMayCloseThePort() {
    Fixture t;
    t.tPort.OpenPort();
    t.OnReceive = [&] {
        t.pDevice->sWaiting = "too late";
        t.tPort.ClosePort();
    };
    t.pDevice->Feed("last");
    QCOMPARE(t.iEvents, Events{2});
    QVERIFY(!t.tPort.PortOpen());
}

void SerialPortTest::NothingIsReadOrWrittenWhenClosed() {
    Fixture t;
    t.tPort.Output("lost");
    QCOMPARE(t.tPort.Input(), std::string_view());
    t.tPort.OpenPort();
    t.bTakesInput = false;
    t.pDevice->Feed("not taken");
    t.tPort.ClosePort();
    t.tPort.Output("lost");
    t.pDevice->Feed("lost");
    QCOMPARE(t.tPort.Input(), std::string_view());
    QCOMPARE(t.pDevice->sWritten, std::string());
    QCOMPARE(t.iEvents, Events{2});
    t.pDevice->sWaiting.clear();
    t.tPort.OpenPort();
    QCOMPARE(t.tPort.Input(), std::string_view());
}

void SerialPortTest::LineEventsPassThrough() {
    Fixture t;
    t.tPort.OpenPort();
    for (const int iEvent : {1001, 1004, 1006, 1008, 1009}) emit t.pDevice->LineEvent(iEvent);
    t.tPort.RaiseEvent(4711);
    QCOMPARE(t.iEvents, (Events{1001, 1004, 1006, 1008, 1009, 4711}));
    QVERIFY(t.tPort.PortOpen());
}

void SerialPortTest::OutputWaitsTenSecondsAndDropsWholeTexts() {
    Fixture t;
    t.tPort.SetSettings("4800,n,8,1");  // 480 characters a second
    t.tPort.OpenPort();
    const std::string sText(100, 'x');
    for (int i = 0; i < 60; ++i) t.tPort.Output(sText);
    QCOMPARE(t.pDevice->sWritten.size(), std::size_t{4800});
    QCOMPARE(t.iEvents, Events{1010});
}

void SerialPortTest::DroppedTextsAreReportedOncePerEpisode() {
    Fixture t;
    t.tPort.SetSettings("4800,n,8,1");
    t.tPort.OpenPort();
    const auto Fill = [&] {
        for (int i = 0; i < 100; ++i) t.tPort.Output(std::string(100, 'x'));
    };
    Fill();
    QCOMPARE(t.iEvents, Events{1010});
    t.pDevice->lQueued = 2401;  // not yet half
    Fill();
    QCOMPARE(t.iEvents, Events{1010});
    t.pDevice->lQueued = 2400;
    Fill();
    QCOMPARE(t.iEvents, (Events{1010, 1010}));
}

void SerialPortTest::TextThatStillFitsIsTakenDuringAnEpisode() {
    Fixture t;
    t.tPort.SetSettings("4800,n,8,1");
    t.tPort.OpenPort();
    t.pDevice->lQueued = 4790;
    t.tPort.Output("longer than the place left");
    QCOMPARE(t.pDevice->sWritten, std::string());
    t.tPort.Output("0123456789");
    QCOMPARE(t.pDevice->sWritten, std::string("0123456789"));
}

void SerialPortTest::OutputTellsWhetherTheDeviceHasIt() {
    Fixture t;
    t.tPort.SetSettings("4800,n,8,1");
    QVERIFY(!t.tPort.Output("closed"));
    t.tPort.OpenPort();
    QVERIFY(t.tPort.Output(std::string(4800, 'x')));
    QVERIFY(!t.tPort.Output("full"));
    QVERIFY(!t.tPort.Output("still full"));
    t.pDevice->lQueued = 0;
    QVERIFY(t.tPort.Output("out"));
    t.pDevice->Vanish();
    QVERIFY(!t.tPort.Output("away"));
    t.tPort.Retry();
    QVERIFY(t.tPort.Output("back"));
    t.pDevice->bLostInWrite = true;
    QVERIFY(!t.tPort.Output("lost just now"));
    t.tPort.ClosePort();
    QVERIFY(!t.tPort.Output("closed"));
}

void SerialPortTest::TextsThatWaitAreCounted() {
    Fixture t;
    QCOMPARE(t.tPort.TextsWaiting(), std::size_t{0});
    t.tPort.OpenPort();
    for (const char* pText : {"one", "three", "eleven", "four"}) t.tPort.Output(pText);  // 3, 5, 6 and 4 characters
    const auto Left = [&t](std::int64_t lBytes) {
        t.pDevice->lQueued = lBytes;
        return t.tPort.TextsWaiting();
    };
    QCOMPARE(Left(18), std::size_t{4});
    QCOMPARE(Left(16), std::size_t{4});  // of the first text one character is left
    QCOMPARE(Left(15), std::size_t{3});
    QCOMPARE(Left(5), std::size_t{2});
    QCOMPARE(Left(4), std::size_t{1});
    t.tPort.Output("seven");
    QCOMPARE(t.tPort.TextsWaiting(), std::size_t{2});
    QCOMPARE(Left(0), std::size_t{0});
    t.tPort.Output("12");
    QCOMPARE(t.tPort.TextsWaiting(), std::size_t{1});
}

void SerialPortTest::TextsLeftBehindAreCountedAtTheClose() {
    Fixture t;
    t.tPort.OpenPort();
    for (int i = 0; i < 5; ++i) t.tPort.Output("0123456789");
    t.pDevice->lTakenInClose = 15;  // one and a half
    t.tPort.ClosePort();
    QCOMPARE(t.tPort.TextsWaiting(), std::size_t{4});
    t.tPort.OpenPort();
    QCOMPARE(t.tPort.TextsWaiting(), std::size_t{0});
}

void SerialPortTest::TextsLeftBehindAreCountedAtTheLoss() {
    Fixture t;
    t.tPort.OpenPort();
    for (int i = 0; i < 5; ++i) t.tPort.Output("0123456789");
    t.pDevice->lQueued = 30;
    std::vector<std::size_t> lTold;
    QObject::connect(&t.tPort, &SerialPort::OnComm, &t.tWindow, [&] { lTold.push_back(t.tPort.TextsWaiting()); });
    t.pDevice->Vanish();
    QCOMPARE(lTold, std::vector<std::size_t>{3});
    QCOMPARE(t.tPort.TextsWaiting(), std::size_t{0});  // told: nobody counts them again
    t.tPort.ClosePort();
    QCOMPARE(t.tPort.TextsWaiting(), std::size_t{0});
}

void SerialPortTest::DroppedTextsAreCounted() {
    Fixture t;
    t.tPort.SetSettings("4800,n,8,1");
    t.tPort.OpenPort();
    for (int i = 0; i < 60; ++i) t.tPort.Output(std::string(100, 'x'));  // 48 of them fit
    QCOMPARE(t.tPort.TextsDropped(), std::int64_t{12});
    t.pDevice->lQueued = 0;
    for (int i = 0; i < 50; ++i) t.tPort.Output(std::string(100, 'x'));
    QCOMPARE(t.tPort.TextsDropped(), std::int64_t{14});
    t.pDevice->Vanish();
    t.tPort.Output("not for the full queue");
    QCOMPARE(t.tPort.TextsDropped(), std::int64_t{14});
    t.tPort.ClosePort();
    QCOMPARE(t.tPort.TextsDropped(), std::int64_t{0});
}

void SerialPortTest::InputThatNobodyTakesIsBounded() {
    Fixture t;
    t.tPort.OpenPort();
    t.bTakesInput = false;
    const std::string sBatch(1000, 'x');
    for (int i = 0; i < 1000; ++i) t.pDevice->Feed(sBatch);
    QCOMPARE(std::count(t.iEvents.begin(), t.iEvents.end(), 1008), 1);
    QCOMPARE(t.tPort.Input().size(), std::size_t{66000});  // 64 KiB, and the rest of the reception that passed them
    t.bTakesInput = true;
    t.pDevice->Feed("next");
    QCOMPARE(t.sInputs, Texts{"next"});
}

void SerialPortTest::VanishedDeviceIsReportedOnce() {
    Fixture t;
    t.tPort.OpenPort();
    t.pDevice->Vanish();
    t.pDevice->Vanish();
    QCOMPARE(t.iEvents, Events{2001});
    QVERIFY(t.tPort.PortOpen());
    QCOMPARE(t.tPort.Device(), QStringLiteral("memory:6"));
}

void SerialPortTest::DeviceComesBack() {
    Fixture t;
    t.tPort.OpenPort();
    t.pDevice->Vanish();
    t.tPort.Retry();
    QCOMPARE(t.iEvents, (Events{2001, 2002}));
    QVERIFY(t.pDevice->bOpen);
    t.pDevice->Feed("back");
    QCOMPARE(t.sInputs, Texts{"back"});
    t.tPort.Output("out");
    QCOMPARE(t.pDevice->sWritten, std::string("out"));
    t.pDevice->Vanish();
    QCOMPARE(t.iEvents, (Events{2001, 2002, 2, 2001}));
}

void SerialPortTest::FailedRetriesAreSilent() {
    Fixture t;
    t.tPort.OpenPort();
    t.pDevice->Vanish();
    t.bFails = true;
    for (int i = 0; i < 5; ++i) t.tPort.Retry();
    QCOMPARE(t.iEvents, Events{2001});
    t.bFails = false;
    t.tPort.Retry();
    t.tPort.Retry();
    QCOMPARE(t.iEvents, (Events{2001, 2002}));
}

void SerialPortTest::RetryResolvesTheNameAgain() {
    Fixture t;
    QString sDevice = QStringLiteral("memory:first");
    toolkit::SerialAccess tAccess = t.Access();
    tAccess.Resolve = [&sDevice](const QString&) { return sDevice; };
    t.tPort.SetAccess(tAccess);
    t.tPort.OpenPort();
    t.pDevice->Vanish();
    sDevice = QStringLiteral("memory:second");
    t.tPort.Retry();
    QCOMPARE(t.tPort.Device(), QStringLiteral("memory:second"));
    QCOMPARE(t.pDevice->sOpened, QStringLiteral("memory:second"));
}

void SerialPortTest::RetryOfAPortThatIsNotAwayDoesNothing() {
    Fixture t;
    t.tPort.Retry();
    QVERIFY(!t.tPort.PortOpen());
    t.tPort.OpenPort();
    t.tPort.Retry();
    QCOMPARE(t.iResolved, 1);
    QVERIFY(t.iEvents.empty());
}

void SerialPortTest::OutputWhileAwayIsDropped() {
    Fixture t;
    t.tPort.OpenPort();
    t.pDevice->Vanish();
    for (int i = 0; i < 1000; ++i) t.tPort.Output(std::string(1000, 'x'));
    QCOMPARE(t.pDevice->sWritten, std::string());
    QCOMPARE(t.iEvents, Events{2001});
}

void SerialPortTest::PortThatIsAwayCanBeClosed() {
    Fixture t;
    t.tPort.OpenPort();
    t.pDevice->Vanish();
    t.tPort.ClosePort();
    QVERIFY(!t.tPort.PortOpen());
    t.tPort.Retry();
    QVERIFY(!t.pDevice->bOpen);
    t.tPort.OpenPort();
    QVERIFY(t.pDevice->bOpen);
    QCOMPARE(t.iEvents, Events{2001});
}

void SerialPortTest::LineErrorReportIsTheDevices() {
    Fixture t;
    QVERIFY(!t.tPort.ReportsLineErrors());
    t.tPort.OpenPort();
    QVERIFY(!t.tPort.ReportsLineErrors());
    t.pDevice->bCounters = true;
    QVERIFY(t.tPort.ReportsLineErrors());
}

QTEST_GUILESS_MAIN(SerialPortTest)
#include "SerialPortTest.moc"
