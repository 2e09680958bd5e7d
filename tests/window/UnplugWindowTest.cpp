// The device of an input that is pulled out and put back, as the user sees it: what stood half received, and receiver
// commands that meet no device. The inputs are real pseudo-terminals that hang up.
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
};

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

QTEST_MAIN(UnplugWindowTest)
#include "UnplugWindowTest.moc"
