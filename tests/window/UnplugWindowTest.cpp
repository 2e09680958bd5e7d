// The device of an input that is pulled out and put back, as the user sees it: what stood half received, and receiver
// commands that meet no device. The inputs are real pseudo-terminals that hang up.
#include <QFile>
#include <QImage>
#include <QTest>

#include "tests/support/PtyPort.h"
#include "tests/window/Bench.h"
#include "tests/window/Shown.h"

using namespace support;

namespace {

struct Plugged : ShownWindow {
    PtyPort tPty, tOutput;

    Plugged() {
        tWorld.bNativeDevices = true;
        chkCommEnabled(0).setChecked(true);
        chkCommEnabled(1).setChecked(false);
        chkOutputEnabled.setChecked(true);
        txtCommPort(0).SetText(tPty.Link().toStdString());
        txtOutputPort.SetText(tOutput.Link().toStdString());
        txtOutputSettings.SetText("38400,n,8,1");
        Press(ui::KeyStart);
    }
    QStringList Log() { return support::Log(*this, lstCommData(0)); }
    // The device goes and the window knows it.
    void PullOut() {
        tPty.HangUp();
        QTRY_VERIFY(MSComm(0).Away());
    }
    void PutBack() {
        tPty.Recreate();
        MSComm(0).Retry();
    }
    // Turns the event loop until the input has come as far as this.
    void Receive(std::string_view sData, const std::string& sBuffer) {
        QVERIFY(tPty.Write(sData));
        QTRY_COMPARE(std::string(m_sCommBuffer(0)), sBuffer);
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
    Plugged t;
    t.Receive("$GPZDA,1\r\n$GPGLL,4916.45,N,123", "$GPGLL,4916.45,N,123");
    t.PullOut();
    t.PutBack();
    // Without a checksum the two halves would pass as one good line, with a wrong longitude.
    t.Receive("456.12,E,000000,A\r\n$GPZDA,2\r\n$GP", "$GP");
    QCOMPARE(t.Log(), Texts({"$GPZDA,1", "<<Event 2001>>", "<<Event 2002>>", "<<Half line dropped - 20 characters>>",
                             "456.12,E,000000,A", "$GPZDA,2"}));
    QCOMPARE(Marks(t, t.lstCommData(0)), QByteArray("------"));
    const std::string sForwarded = "$GPZDA,1\r\n456.12,E,000000,A\r\n$GPZDA,2\r\n";
    QCOMPARE(t.tOutput.ReadAtLeast(sForwarded.size()), sForwarded);
    QVERIFY(t.Lines(t.lstGpsData).empty());
}

void UnplugWindowTest::wholeLinesLoseNothing() {
    Plugged t;
    t.Receive("$GPZDA,1\r\n$", "$");
    t.Receive("GPZDA,2\r\n", "");
    t.PullOut();
    t.PutBack();
    t.Receive("$GPZDA,3\r\n$", "$");
    QCOMPARE(t.Log(), Texts({"$GPZDA,1", "$GPZDA,2", "<<Event 2001>>", "<<Event 2002>>", "$GPZDA,3"}));
}

void UnplugWindowTest::halfLineOfTheOtherPortStays() {
    ShownWindow t;
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
    ShownWindow t;
    t.StartBoth();
    t.Feed(0, std::string(70000, 'x'));
    t.Device(t.MSComm(0))->Vanish();
    t.MSComm(0).Retry();
    t.Feed(0, "$GPZDA,1\r\n");
    QCOMPARE(Log(t, t.lstCommData(0)), Texts({"<<Line dropped - longer than 65536 characters>>", "<<Event 2001>>",
                                              "<<Event 2002>>", "$GPZDA,1"}));
}

void UnplugWindowTest::commandIsRefusedWhileTheDeviceIsAway() {
    Plugged t;
    t.PullOut();
    t.cmdRxNasaChannel.click();
    QCOMPARE(Panel(t, ui::PanelSummary), QByteArray("Receiver - The device of input #1 is away, nothing was sent"));
    t.PutBack();
    t.cmdRxNasaChannel.click();
    const std::string sCommand = TestWindow::WithChecksum("$PNMLC,S") + "\r\n";
    QCOMPARE(t.tPty.ReadAtLeast(sCommand.size()), sCommand);
}

void UnplugWindowTest::commandThatIsCutOffSaysSo() {
    Plugged t;
    std::string sArrived;
    t.tWorld.tYield = [&] {
        QCoreApplication::processEvents();
        sArrived += t.tPty.Read();
        if (sArrived.size() == 4) t.tPty.HangUp();
    };
    t.cmdRxNasaChannel.click();
    QCOMPARE(sArrived, std::string("$PNM"));
    QCOMPARE(Panel(t, ui::PanelSummary),
             QByteArray("Receiver - The command was cut off, the device of input #1 has gone"));
    // And it can be sent anew.
    t.tWorld.tYield = [] {};
    QTRY_VERIFY(t.MSComm(0).Away());
    t.PutBack();
    t.cmdRxNasaChannel.click();
    const std::string sCommand = TestWindow::WithChecksum("$PNMLC,S") + "\r\n";
    QCOMPARE(t.tPty.ReadAtLeast(sCommand.size()), sCommand);
}

void UnplugWindowTest::commandThatIsEndedByStopSaysNothing() {
    Plugged t;
    int iYields = 0;
    t.tWorld.tYield = [&] {
        if (++iYields == 5) t.Press(ui::KeyStop);
    };
    t.cmdRxNasaChannel.click();
    QCOMPARE(Panel(t, ui::PanelState), QByteArray("Stopped"));
    QCOMPARE(Panel(t, ui::PanelSummary), QByteArray());
}

// The clock's text is what it always was; tip and colour tell the rest.
void UnplugWindowTest::pulledPlugShowsAtItsClock() {
    Plugged t;
    t.Advance(1);
    QCOMPARE(Tip(t, ui::PanelSilence0), Tip1);
    QVERIFY(!DrawnRed(t, ui::PanelSilence0));
    t.PullOut();
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
    t.PutBack();
    QCOMPARE(Panel(t, ui::PanelSilence0), QByteArray("00:03"));
    QCOMPARE(Tip(t, ui::PanelSilence0), Tip1);
    QVERIFY(!DrawnRed(t, ui::PanelSilence0));
}

void UnplugWindowTest::stopEndsTheSignOfAPulledPlug() {
    Plugged t;
    t.PullOut();
    t.Advance(1);
    QVERIFY(DrawnRed(t, ui::PanelSilence0));
    t.Press(ui::KeyStop);
    QCOMPARE(Tip(t, ui::PanelSilence0), Tip1);
    QVERIFY(!DrawnRed(t, ui::PanelSilence0));
}

void UnplugWindowTest::deviceThatCannotBeOpenedSaysWhyOnceAChange() {
    ShownWindow t;
    t.StartBoth();
    t.Device(t.MSComm(0))->Vanish();
    const auto Try = [&](int iTimes) {
        for (int i = 0; i < iTimes; ++i) t.MSComm(0).Retry();
    };
    QStringList sLog{QStringLiteral("<<Event 2001>>")};
    t.tWorld.sBadPorts[1] = "permission denied: /dev/ttyS0";
    Try(1);
    QCOMPARE(Log(t, t.lstCommData(0)), sLog);  // for an instant a new device is nobody's
    Try(5);
    sLog << QStringLiteral("<<Device not opened - permission denied: /dev/ttyS0>>");
    QCOMPARE(Log(t, t.lstCommData(0)), sLog);
    QCOMPARE(Tip(t, ui::PanelSilence0),
             Tip1 + QStringLiteral("\nThe device is back and cannot be opened: permission denied: /dev/ttyS0"));
    t.Advance(1);
    QVERIFY(DrawnRed(t, ui::PanelSilence0));
    t.tWorld.sBadPorts[1] = "busy: /dev/ttyS0 is in use by gpsd (process 4711)";
    Try(1);
    QCOMPARE(Log(t, t.lstCommData(0)), sLog);
    Try(5);
    sLog << QStringLiteral("<<Device not opened - busy: /dev/ttyS0 is in use by gpsd (process 4711)>>");
    QCOMPARE(Log(t, t.lstCommData(0)), sLog);
    t.tWorld.sBadPorts.clear();
    Try(1);
    sLog << QStringLiteral("<<Event 2002>>");
    QCOMPARE(Log(t, t.lstCommData(0)), sLog);
    QCOMPARE(Marks(t, t.lstCommData(0)), QByteArray("----"));
    QCOMPARE(Tip(t, ui::PanelSilence0), Tip1);
    QCOMPARE(Log(t, t.lstCommData(1)), QStringList());
    // The next time it is told again.
    t.Device(t.MSComm(0))->Vanish();
    t.tWorld.sBadPorts[1] = "permission denied: /dev/ttyS0";
    Try(2);
    sLog << QStringLiteral("<<Event 2001>>") << QStringLiteral("<<Device not opened - permission denied: /dev/ttyS0>>");
    QCOMPARE(Log(t, t.lstCommData(0)), sLog);
}

// A real device, away, then under its name something that is none, then the device.
void UnplugWindowTest::deviceThatComesAsAnotherThingSaysSo() {
    Plugged t;
    t.PullOut();
    for (int i = 0; i < 3; ++i) t.MSComm(0).Retry();
    QCOMPARE(t.Log(), Texts({"<<Event 2001>>"}));  // that it is away is known
    QVERIFY(QFile::link(QStringLiteral("/dev/null"), t.tPty.Link()));
    for (int i = 0; i < 3; ++i) t.MSComm(0).Retry();
    const QStringList sTold = Texts({"<<Event 2001>>", "<<Device not opened - not a serial device: /dev/null>>"});
    QCOMPARE(t.Log(), sTold);
    QVERIFY(QFile::remove(t.tPty.Link()));
    t.MSComm(0).Retry();
    t.Advance(1);
    QCOMPARE(Tip(t, ui::PanelSilence0), Tip1 + Gone);
    t.PutBack();
    t.Receive("$GPZDA,1\r\n$", "$");
    QCOMPARE(t.Log(), sTold + Texts({"<<Event 2002>>", "$GPZDA,1"}));
}

void UnplugWindowTest::outputThatCannotBeOpenedSaysWhy() {
    ShownWindow t;
    t.chkOutputEnabled.setChecked(true);
    t.txtOutputPort.SetText("3");
    t.StartBoth();
    t.Device(t.MSCommOutput)->Vanish();
    t.tWorld.sBadPorts[3] = "permission denied: /dev/ttyS2";
    for (int i = 0; i < 4; ++i) t.MSCommOutput.Retry();
    QCOMPARE(Log(t, t.lstOutputData),
             Texts({"<<Event 2001>>", "<<Device not opened - permission denied: /dev/ttyS2>>"}));
    QCOMPARE(Marks(t, t.lstOutputData), QByteArray("--"));
}

QTEST_MAIN(UnplugWindowTest)
#include "UnplugWindowTest.moc"
