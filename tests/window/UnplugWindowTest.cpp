// The device of an input that is pulled out and put back, as the user sees it: what stood half received, and receiver
// commands that meet no device. The inputs are real pseudo-terminals that hang up.
#include <QFile>
#include <QImage>
#include <QTest>

#include "tests/support/PtyPort.h"
#include "tests/window/Shown.h"

using namespace support;

namespace {

struct Plugged {
    World tWorld;
    PtyPort tPty, tOutput;
    TestWindow t{tWorld};

    Plugged() {
        tWorld.bNativeDevices = true;
        t.LoadAndShow();
        t.chkCommEnabled(0).setChecked(true);
        t.chkCommEnabled(1).setChecked(false);
        t.chkOutputEnabled.setChecked(true);
        t.txtCommPort(0).SetText(tPty.Link().toStdString());
        t.txtOutputPort.SetText(tOutput.Link().toStdString());
        t.txtOutputSettings.SetText("38400,n,8,1");
        t.Press(ui::KeyStart);
    }
    QStringList Log() { return support::Log(t, t.lstCommData(0)); }
    // The device goes and the window knows it.
    void PullOut() {
        tPty.HangUp();
        QTRY_VERIFY(t.MSComm(0).Away());
    }
    void PutBack() {
        tPty.Recreate();
        t.MSComm(0).Retry();
    }
    // Turns the event loop until the input has come as far as this.
    void Receive(std::string_view sData, const std::string& sBuffer) {
        QVERIFY(tPty.Write(sData));
        QTRY_COMPARE(std::string(t.m_sCommBuffer(0)), sBuffer);
    }
};

}  // namespace

class UnplugWindowTest : public QObject {
    Q_OBJECT
private slots:
    void halfLineIsDroppedWhenTheDeviceIsBack();
    void wholeLinesLoseNothing();
    void halfLineOfTheOtherPortStays();
    void overlongLineIsForgottenWithoutAnotherWord();
    void commandIsRefusedWhileTheDeviceIsAway();
    void commandThatIsCutOffSaysSo();
    void commandThatIsEndedByStopSaysNothing();
    void pulledPlugShowsAtItsClock();
    void stopEndsTheSignOfAPulledPlug();
    void deviceThatCannotBeOpenedSaysWhyOnceAChange();
    void deviceThatComesAsAnotherThingSaysSo();
    void outputThatCannotBeOpenedSaysWhy();
};

namespace {

const QString Tip1 = QStringLiteral("Time since the last line on input #1");
const QString Tip2 = QStringLiteral("Time since the last line on input #2");
const QString Gone = QStringLiteral("\nThe device has gone: it is opened again as soon as it is back.");

QString Tip(TestWindow& t, int iPanel) {
    t.Synchronize();
    QCoreApplication::processEvents();  // the layout
    return t.StatusBar.Panel(iPanel).toolTip();
}

// Whether red is drawn in a panel; the palette's text colour is none.
bool DrawnRed(TestWindow& t, int iPanel) {
    t.Synchronize();
    QCoreApplication::processEvents();
    const QImage tImage = t.StatusBar.Panel(iPanel).grab().toImage();
    for (int y = 0; y < tImage.height(); ++y) {
        for (int x = 0; x < tImage.width(); ++x) {
            const QColor tColour = tImage.pixelColor(x, y);
            if (tColour.red() > tColour.green() + 100 && tColour.red() > tColour.blue() + 100) return true;
        }
    }
    return false;
}

}  // namespace

void UnplugWindowTest::halfLineIsDroppedWhenTheDeviceIsBack() {
    Plugged tPlugged;
    tPlugged.Receive("$GPZDA,1\r\n$GPGLL,4916.45,N,123", "$GPGLL,4916.45,N,123");
    tPlugged.PullOut();
    tPlugged.PutBack();
    // Without a checksum the two halves would pass as one good line, with a wrong longitude.
    tPlugged.Receive("456.12,E,000000,A\r\n$GPZDA,2\r\n$GP", "$GP");
    QCOMPARE(tPlugged.Log(), Texts({"$GPZDA,1", "<<Event 2001>>", "<<Event 2002>>",
                                    "<<Half line dropped - 20 characters>>", "456.12,E,000000,A", "$GPZDA,2"}));
    QCOMPARE(Marks(tPlugged.t, tPlugged.t.lstCommData(0)), QByteArray("------"));
    const std::string sForwarded = "$GPZDA,1\r\n456.12,E,000000,A\r\n$GPZDA,2\r\n";
    QCOMPARE(tPlugged.tOutput.ReadAtLeast(sForwarded.size()), sForwarded);
    QVERIFY(tPlugged.t.Lines(tPlugged.t.lstGpsData).empty());
}

void UnplugWindowTest::wholeLinesLoseNothing() {
    Plugged tPlugged;
    tPlugged.Receive("$GPZDA,1\r\n$", "$");
    tPlugged.Receive("GPZDA,2\r\n", "");
    tPlugged.PullOut();
    tPlugged.PutBack();
    tPlugged.Receive("$GPZDA,3\r\n$", "$");
    QCOMPARE(tPlugged.Log(), Texts({"$GPZDA,1", "$GPZDA,2", "<<Event 2001>>", "<<Event 2002>>", "$GPZDA,3"}));
}

void UnplugWindowTest::halfLineOfTheOtherPortStays() {
    World tWorld;
    TestWindow t(tWorld);
    t.LoadAndShow();
    t.StartBoth();
    t.Feed(0, "$GPZDA,");
    t.Feed(1, "$GPVTG,");
    t.Device(t.MSComm(0))->Vanish();
    t.MSComm(0).Retry();
    t.Feed(0, "$GPZDA,1\r\n");
    t.Feed(1, "2\r\n");
    QCOMPARE(Log(t, t.lstCommData(0)),
             Texts({"<<Event 2001>>", "<<Event 2002>>", "<<Half line dropped - 7 characters>>", "$GPZDA,1"}));
    QCOMPARE(Log(t, t.lstCommData(1)), Texts({"$GPVTG,2"}));
}

void UnplugWindowTest::overlongLineIsForgottenWithoutAnotherWord() {
    World tWorld;
    TestWindow t(tWorld);
    t.LoadAndShow();
    t.StartBoth();
    t.Feed(0, std::string(70000, 'x'));
    t.Device(t.MSComm(0))->Vanish();
    t.MSComm(0).Retry();
    t.Feed(0, "$GPZDA,1\r\n");
    QCOMPARE(Log(t, t.lstCommData(0)), Texts({"<<Line dropped - longer than 65536 characters>>", "<<Event 2001>>",
                                              "<<Event 2002>>", "$GPZDA,1"}));
}

void UnplugWindowTest::commandIsRefusedWhileTheDeviceIsAway() {
    Plugged tPlugged;
    tPlugged.PullOut();
    tPlugged.t.cmdRxNasaChannel.click();
    QCOMPARE(Panel(tPlugged.t, ui::PanelSummary),
             QByteArray("Receiver - The device of input #1 is away, nothing was sent"));
    tPlugged.PutBack();
    tPlugged.t.cmdRxNasaChannel.click();
    const std::string sCommand = TestWindow::WithChecksum("$PNMLC,S") + "\r\n";
    QCOMPARE(tPlugged.tPty.ReadAtLeast(sCommand.size()), sCommand);
}

void UnplugWindowTest::commandThatIsCutOffSaysSo() {
    Plugged tPlugged;
    std::string sArrived;
    tPlugged.tWorld.tYield = [&] {
        QCoreApplication::processEvents();
        sArrived += tPlugged.tPty.Read();
        if (sArrived.size() == 4) tPlugged.tPty.HangUp();
    };
    tPlugged.t.cmdRxNasaChannel.click();
    QCOMPARE(sArrived, std::string("$PNM"));
    QCOMPARE(Panel(tPlugged.t, ui::PanelSummary),
             QByteArray("Receiver - The command was cut off, the device of input #1 has gone"));
    // And it can be sent anew.
    tPlugged.tWorld.tYield = [] {};
    QTRY_VERIFY(tPlugged.t.MSComm(0).Away());
    tPlugged.PutBack();
    tPlugged.t.cmdRxNasaChannel.click();
    const std::string sCommand = TestWindow::WithChecksum("$PNMLC,S") + "\r\n";
    QCOMPARE(tPlugged.tPty.ReadAtLeast(sCommand.size()), sCommand);
}

void UnplugWindowTest::commandThatIsEndedByStopSaysNothing() {
    Plugged tPlugged;
    int iYields = 0;
    tPlugged.tWorld.tYield = [&] {
        if (++iYields == 5) tPlugged.t.Press(ui::KeyStop);
    };
    tPlugged.t.cmdRxNasaChannel.click();
    QCOMPARE(Panel(tPlugged.t, ui::PanelState), QByteArray("Stopped"));
    QCOMPARE(Panel(tPlugged.t, ui::PanelSummary), QByteArray());
}

// The clock's text is what it always was; tip and colour tell the rest.
void UnplugWindowTest::pulledPlugShowsAtItsClock() {
    Plugged tPlugged;
    TestWindow& t = tPlugged.t;
    t.Advance(1);
    QCOMPARE(Tip(t, ui::PanelSilence0), Tip1);
    QVERIFY(!DrawnRed(t, ui::PanelSilence0));
    tPlugged.PullOut();
    QCOMPARE(Tip(t, ui::PanelSilence0), Tip1 + Gone);
    QVERIFY(DrawnRed(t, ui::PanelSilence0));
    t.Advance(2);
    QCOMPARE(Panel(t, ui::PanelSilence0), QByteArray("00:03"));
    QCOMPARE(Tip(t, ui::PanelSilence0), Tip1 + Gone);
    QVERIFY(DrawnRed(t, ui::PanelSilence0));
    const toolkit::PanelLabel& tLabel = t.StatusBar.Panel(ui::PanelSilence0);
    QCOMPARE(tLabel.Drawn(), QStringLiteral("00:03"));  // not cut, for the sign beside it
    QCOMPARE(Tip(t, ui::PanelSilence1), Tip2);
    QVERIFY(!DrawnRed(t, ui::PanelSilence1));
    tPlugged.PutBack();
    QCOMPARE(Panel(t, ui::PanelSilence0), QByteArray("00:03"));
    QCOMPARE(Tip(t, ui::PanelSilence0), Tip1);
    QVERIFY(!DrawnRed(t, ui::PanelSilence0));
}

void UnplugWindowTest::stopEndsTheSignOfAPulledPlug() {
    Plugged tPlugged;
    tPlugged.PullOut();
    tPlugged.t.Advance(1);
    QVERIFY(DrawnRed(tPlugged.t, ui::PanelSilence0));
    tPlugged.t.Press(ui::KeyStop);
    QCOMPARE(Tip(tPlugged.t, ui::PanelSilence0), Tip1);
    QVERIFY(!DrawnRed(tPlugged.t, ui::PanelSilence0));
}

void UnplugWindowTest::deviceThatCannotBeOpenedSaysWhyOnceAChange() {
    World tWorld;
    TestWindow t(tWorld);
    t.LoadAndShow();
    t.StartBoth();
    t.Device(t.MSComm(0))->Vanish();
    const auto Try = [&](int iTimes) {
        for (int i = 0; i < iTimes; ++i) t.MSComm(0).Retry();
    };
    QStringList sLog{QStringLiteral("<<Event 2001>>")};
    tWorld.sBadPorts[1] = "permission denied: /dev/ttyS0";
    Try(1);
    QCOMPARE(Log(t, t.lstCommData(0)), sLog);  // for an instant a new device is nobody's
    Try(5);
    sLog << QStringLiteral("<<Device not opened - permission denied: /dev/ttyS0>>");
    QCOMPARE(Log(t, t.lstCommData(0)), sLog);
    QCOMPARE(Tip(t, ui::PanelSilence0),
             Tip1 + QStringLiteral("\nThe device is back and cannot be opened: permission denied: /dev/ttyS0"));
    t.Advance(1);
    QVERIFY(DrawnRed(t, ui::PanelSilence0));
    tWorld.sBadPorts[1] = "busy: /dev/ttyS0 is in use by gpsd (process 4711)";
    Try(1);
    QCOMPARE(Log(t, t.lstCommData(0)), sLog);
    Try(5);
    sLog << QStringLiteral("<<Device not opened - busy: /dev/ttyS0 is in use by gpsd (process 4711)>>");
    QCOMPARE(Log(t, t.lstCommData(0)), sLog);
    tWorld.sBadPorts.clear();
    Try(1);
    sLog << QStringLiteral("<<Event 2002>>");
    QCOMPARE(Log(t, t.lstCommData(0)), sLog);
    QCOMPARE(Marks(t, t.lstCommData(0)), QByteArray("----"));
    QCOMPARE(Tip(t, ui::PanelSilence0), Tip1);
    QCOMPARE(Log(t, t.lstCommData(1)), QStringList());
    // The next time it is told again.
    t.Device(t.MSComm(0))->Vanish();
    tWorld.sBadPorts[1] = "permission denied: /dev/ttyS0";
    Try(2);
    sLog << QStringLiteral("<<Event 2001>>") << QStringLiteral("<<Device not opened - permission denied: /dev/ttyS0>>");
    QCOMPARE(Log(t, t.lstCommData(0)), sLog);
}

// A real device, away, then under its name something that is none, then the device.
void UnplugWindowTest::deviceThatComesAsAnotherThingSaysSo() {
    Plugged tPlugged;
    tPlugged.PullOut();
    for (int i = 0; i < 3; ++i) tPlugged.t.MSComm(0).Retry();
    QCOMPARE(tPlugged.Log(), Texts({"<<Event 2001>>"}));  // that it is away is known
    QVERIFY(QFile::link(QStringLiteral("/dev/null"), tPlugged.tPty.Link()));
    for (int i = 0; i < 3; ++i) tPlugged.t.MSComm(0).Retry();
    const QStringList sTold = Texts({"<<Event 2001>>", "<<Device not opened - not a serial device: /dev/null>>"});
    QCOMPARE(tPlugged.Log(), sTold);
    QVERIFY(QFile::remove(tPlugged.tPty.Link()));
    tPlugged.t.MSComm(0).Retry();
    tPlugged.t.Advance(1);
    QCOMPARE(Tip(tPlugged.t, ui::PanelSilence0), Tip1 + Gone);
    tPlugged.PutBack();
    tPlugged.Receive("$GPZDA,1\r\n$", "$");
    QCOMPARE(tPlugged.Log(), sTold + Texts({"<<Event 2002>>", "$GPZDA,1"}));
}

void UnplugWindowTest::outputThatCannotBeOpenedSaysWhy() {
    World tWorld;
    TestWindow t(tWorld);
    t.LoadAndShow();
    t.chkOutputEnabled.setChecked(true);
    t.txtOutputPort.SetText("3");
    t.StartBoth();
    t.Device(t.MSCommOutput)->Vanish();
    tWorld.sBadPorts[3] = "permission denied: /dev/ttyS2";
    for (int i = 0; i < 4; ++i) t.MSCommOutput.Retry();
    QCOMPARE(Log(t, t.lstOutputData),
             Texts({"<<Event 2001>>", "<<Device not opened - permission denied: /dev/ttyS2>>"}));
    QCOMPARE(Marks(t, t.lstOutputData), QByteArray("--"));
}

QTEST_MAIN(UnplugWindowTest)
#include "UnplugWindowTest.moc"
