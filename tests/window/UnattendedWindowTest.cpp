// Start without a hand on it, values that mean nothing, and a profile whose keys are only read.
#include <QAction>
#include <QTest>

#include "tests/support/PrintString.h"
#include "tests/support/PtyPort.h"
#include "tests/window/Bench.h"
#include "tests/window/Unattended.h"

using support::AnyReport;
using support::TestWindow;
using support::Unattended;

namespace {

using Log = std::vector<std::string>;

const std::string Again = "; tried again every minute>>";

}  // namespace

class UnattendedWindowTest : public QObject {
    Q_OBJECT

private slots:
    void startIsPressedOnceTheWindowIsShown();
    void withoutTheKeyNothingStarts();
    void startIsTriedAgainEveryMinute();
    void eachCauseIsToldOnce();
    void startByHandIsTriedAgainToo();
    void withoutTheKeyAFailedStartIsLeft();
    void playbackEndsTheTrying();
    void displaysStayWhileItIsTried();
    void deviceThatComesIsOpened();
    void wrongValueIsToldAndTheRestWorks_data();
    void wrongValueIsToldAndTheRestWorks();
    void wrongValuesDoNotHideWhyStartFailed();
    void keysAreNeverWritten();
};

void UnattendedWindowTest::startIsPressedOnceTheWindowIsShown() {
    Unattended u("Start=1\n");
    u.t = std::make_unique<TestWindow>(u.w);
    u.t->LoadAndShow();
    QCOMPARE(u.t->Panel(1), std::string("Stopped"));
    u.t->UnattendedBegin();
    QCOMPARE(u.t->Panel(1), std::string("Running"));
    QVERIFY(u.t->MSComm(0).PortOpen());
    QVERIFY(u.t->Toolbar.Action(QStringLiteral("Start")).isChecked());
    QVERIFY(u.t->Toolbar.Action(QStringLiteral("Record")).isEnabled());
    QCOMPARE(u.Log(), Log{});
    u.Pass(200);
    QCOMPARE(u.Log(), Log{});
    QCOMPARE(u.t->Panel(1), std::string("Running"));
}

void UnattendedWindowTest::withoutTheKeyNothingStarts() {
    for (const char* sKeys : {"", "Start=0\n", "Rotate=hourly\n", "Keep days=3\nKeep MB=10\n"}) {
        Unattended u(sKeys);
        TestWindow& t = u.Begin();
        u.Pass(200);
        QCOMPARE(t.Panel(1), std::string("Stopped"));
        QCOMPARE(t.Panel(2), std::string());
        QCOMPARE(u.Log(), Log{});
        t.Press("Start");
        u.Pass(200);
        QCOMPARE(t.Panel(1), std::string("Running"));
        QCOMPARE(u.Log(), Log{});
    }
}

void UnattendedWindowTest::startIsTriedAgainEveryMinute() {
    Unattended u("Start=1\n");
    u.w.sBadPorts[1] = "no such device";
    TestWindow& t = u.Begin();
    QCOMPARE(t.Panel(1), std::string("Stopped"));
    QCOMPARE(t.Panel(2), std::string("Input Comm - no such device"));
    QCOMPARE(u.Log(), Log{"<<Input Comm - no such device" + Again});
    u.Pass(59);
    u.w.sBadPorts.clear();
    QCOMPARE(t.Panel(1), std::string("Stopped"));
    u.Pass(1);
    QCOMPARE(t.Panel(1), std::string("Running"));
    QCOMPARE(t.Panel(2), std::string());
    QVERIFY(t.MSComm(0).PortOpen());
    QVERIFY(t.tmrComm.isActive());
    t.FeedLine(0, "$GPZDA,1");
    QCOMPARE(u.Log(), Log{"$GPZDA,1"});
    t.Press("Stop");
    u.Pass(200);
    QCOMPARE(t.Panel(1), std::string("Stopped"));  // somebody wanted that
}

void UnattendedWindowTest::eachCauseIsToldOnce() {
    Unattended u("Start=1\n");
    u.w.sBadPorts[1] = "no such device";
    TestWindow& t = u.Begin();
    u.Pass(600);
    Log sExpected = {"<<Input Comm - no such device" + Again};
    QCOMPARE(u.Log(), sExpected);
    u.w.sBadPorts[1] = "busy";
    u.Pass(60);
    sExpected.push_back("<<Input Comm - busy" + Again);
    QCOMPARE(t.Panel(2), std::string("Input Comm - busy"));
    for (const char* sCause : {"no such device", "busy", "no such device"}) {
        u.w.sBadPorts[1] = sCause;
        u.Pass(60);
    }
    QCOMPARE(u.Log(), sExpected);
    u.w.sBadPorts.clear();
    u.Pass(60);
    QCOMPARE(t.Panel(1), std::string("Running"));
    t.Press("Stop");
    u.w.sBadPorts[1] = "busy";
    t.Press("Start");
    QCOMPARE(u.Log(), Log{"<<Input Comm - busy" + Again});  // it had gone well meanwhile
}

void UnattendedWindowTest::startByHandIsTriedAgainToo() {
    Unattended u("Start=1\n");
    u.w.sBadPorts[1] = "busy";
    TestWindow& t = u.Begin();
    u.Pass(30);
    t.Press("Start");
    QCOMPARE(u.Log(), Log{"<<Input Comm - busy" + Again});  // the log was emptied
    u.w.sBadPorts.clear();
    u.Pass(59);
    QCOMPARE(t.Panel(1), std::string("Stopped"));
    u.Pass(1);
    QCOMPARE(t.Panel(1), std::string("Running"));
}

void UnattendedWindowTest::withoutTheKeyAFailedStartIsLeft() {
    Unattended u("");
    u.w.sBadPorts[1] = "busy";
    TestWindow& t = u.Begin();
    t.Press("Start");
    u.w.sBadPorts.clear();
    u.Pass(200);
    QCOMPARE(t.Panel(1), std::string("Stopped"));
    QCOMPARE(t.Panel(2), std::string("Input Comm - busy"));
    QCOMPARE(u.Log(), Log{});
}

void UnattendedWindowTest::playbackEndsTheTrying() {
    Unattended u("Start=1\n");
    u.w.sBadPorts[1] = "busy";
    TestWindow& t = u.Begin();
    const QString sFile = u.w.Path(QStringLiteral("a.txt"));
    u.w.WriteFile(sFile, "05/01/2011 10:00:00 $GPZDA,1\r\n");
    u.w.tFileAnswers = {sFile};
    t.Press("Playback Burst");
    u.w.sBadPorts.clear();
    u.Pass(200);
    QCOMPARE(t.Panel(1), std::string("Playback"));
    QCOMPARE(u.Log(), Log{"$GPZDA,1"});
}

void UnattendedWindowTest::displaysStayWhileItIsTried() {
    Unattended u("Start=1\n");
    TestWindow& t = u.Begin();
    t.FeedLine(0, AnyReport);
    t.Press("Stop");
    t.chkCommEnabled(1).setChecked(true);
    t.txtCommPort(1).SetText("2");
    u.w.sBadPorts[2] = "busy";
    t.Press("Start");
    t.lstAisData.Lines.Add("kept", false);
    t.lstRxData.Lines.Add("kept", false);
    u.Pass(120);
    QCOMPARE(t.LastLine(t.lstRxData), std::string("kept"));
    QVERIFY(!t.MSComm(0).PortOpen());  // both or none
    u.w.sBadPorts.clear();
    u.Pass(60);
    QCOMPARE(t.Lines(t.lstRxData), Log{});  // as Start does
    QVERIFY(t.MSComm(0).PortOpen() && t.MSComm(1).PortOpen());
}

// A real line, which is not there at first.
void UnattendedWindowTest::deviceThatComesIsOpened() {
    support::PtyPort tPort;
    tPort.HangUp();
    Unattended u("Start=1\n");
    u.w.bNativeDevices = true;
    u.w.WriteFile(u.w.ProfileFile(),
                  "[Nmea Data]\nComm Port #0=" + tPort.Link().toStdString() + "\n[Unattended]\nStart=1\n");
    TestWindow& t = u.Begin();
    u.Pass(120);
    QCOMPARE(u.Log().size(), std::size_t{1});
    QVERIFY2(u.Log()[0].find("no such device") != std::string::npos, u.Log()[0].c_str());
    tPort.Recreate();
    u.Pass(60);
    QCOMPARE(t.Panel(1), std::string("Running"));
    QVERIFY(tPort.Write("$GPZDA,1\r\n"));
    QTRY_COMPARE(u.Log(), Log{"$GPZDA,1"});
}

void UnattendedWindowTest::wrongValueIsToldAndTheRestWorks_data() {
    QTest::addColumn<std::string>("line");
    QTest::addColumn<std::string>("notice");
    const auto Row = [](const char* sLine, const char* sNotice) {
        QTest::newRow(sLine) << std::string(sLine) << std::string(sNotice);
    };
    Row("Record=recordings\n", "Unattended - Record \"recordings\" does not begin with / or ~/");
    Row("Rotate=weekly\n", "Unattended - Rotate \"weekly\" is not daily, hourly or never");
    Row("Keep days=0\n", "Unattended - Keep days \"0\" is no whole number from 1 to 999999999");
    Row("Keep MB=1.5\n", "Unattended - Keep MB \"1.5\" is no whole number from 1 to 999999999");
}

void UnattendedWindowTest::wrongValueIsToldAndTheRestWorks() {
    QFETCH(std::string, line);
    QFETCH(std::string, notice);
    Unattended u(line + "Start=1\n");
    TestWindow& t = u.Begin();
    QCOMPARE(t.Panel(1), std::string("Running"));
    QCOMPARE(t.Panel(2), notice);
    QCOMPARE(u.Log(), Log{"<<" + notice + ">>"});
    u.Pass(200);
    QCOMPARE(u.Log(), Log{"<<" + notice + ">>"});
    QVERIFY(u.w.sMessages.isEmpty());
}

void UnattendedWindowTest::wrongValuesDoNotHideWhyStartFailed() {
    Unattended u("Start=1\nRotate=x\nKeep MB=y\n");
    u.w.sBadPorts[1] = "busy";
    TestWindow& t = u.Begin();
    QCOMPARE(t.Panel(2), std::string("Input Comm - busy"));
    QCOMPARE(u.Log(), (Log{"<<Input Comm - busy" + Again, "<<Unattended - Rotate \"x\" is not daily, hourly or never>>",
                           "<<Unattended - Keep MB \"y\" is no whole number from 1 to 999999999>>"}));
}

void UnattendedWindowTest::keysAreNeverWritten() {
    const std::string sSection =
        "[Unattended]\r\n# a comment\r\nKeep MB=500\r\nstart = 1\r\n\r\nMine=kept\r\n"
        "Record=\"$F\"\r\nRotate=sometimes\r\n";
    Unattended u("");
    std::string sWritten = sSection;
    sWritten.replace(sWritten.find("$F"), 2, u.sFolder.toStdString());
    u.w.WriteFile(u.w.ProfileFile(), "[Nmea Data]\r\nComm Port #0=1\r\n; beside the radio\r\n" + sWritten +
                                         "[Output Data]\r\nEnabled=0\r\n");
    TestWindow& t = u.Begin();
    QCOMPARE(t.Panel(1), std::string("Record"));
    t.FeedLine(0, "$GPGLL,1");
    u.Pass(5);
    t.Form_Unload();
    const std::string sSaved = u.w.ReadFile(u.w.ProfileFile());
    QVERIFY2(sSaved.find("\r\n" + sWritten + "[Output Data]\r\n") != std::string::npos, sSaved.c_str());
    QCOMPARE(sSaved.find("[Unattended]"), sSaved.rfind("[Unattended]"));
    QVERIFY(sSaved.find("\r\n; beside the radio\r\n") != std::string::npos);
    // Without the section none is made.
    Unattended tPlain("");
    tPlain.w.WriteFile(tPlain.w.ProfileFile(), "");
    tPlain.Begin().Form_Unload();
    QVERIFY(tPlain.w.ReadFile(tPlain.w.ProfileFile()).find("[Unattended]") == std::string::npos);
}

QTEST_MAIN(UnattendedWindowTest)
#include "UnattendedWindowTest.moc"
