// The capture beside a recording: every byte of both inputs, events and commands, file by file.
#include <QFile>
#include <QTest>
#include <algorithm>

#include "app/CaptureLine.h"
#include "tests/support/PrintString.h"
#include "tests/window/Unattended.h"

using support::TestWindow;
using support::Unattended;

namespace {

using Names = std::vector<std::string>;

// The lines of a capture, its head left out.
std::vector<app::CaptureLine> LinesOf(const std::string& sContent) {
    std::vector<app::CaptureLine> tLines;
    for (std::size_t i = 0; i < sContent.size();) {
        const std::size_t iEnd = sContent.find("\r\n", i);
        if (iEnd == std::string::npos) qFatal("the last line has no end");
        if (const auto t = app::ReadCaptureLine(std::string_view(sContent).substr(i, iEnd - i))) tLines.push_back(*t);
        i = iEnd + 2;
    }
    return tLines;
}

std::string BytesOf(const std::string& sContent, app::PortIndex i, char cKind) {
    std::string sBytes;
    for (const app::CaptureLine& t : LinesOf(sContent)) {
        if (t.Index == i && t.cKind == cKind) sBytes += t.sBytes;
    }
    return sBytes;
}

std::string FirstLine(const std::string& sContent) { return sContent.substr(0, sContent.find("\r\n")); }

}  // namespace

class CaptureWindowTest : public QObject {
    Q_OBJECT

private slots:
    void holdsEveryByte();
    void holdsEventsAndCommands();
    void standsBesideARecordingByHand();
    void withoutTheKeyThereIsNone();
    void nothingIsLostBeforeTheFirstSentence();
    void followsTheRecordingFromFileToFile();
    void beginsAnewByItselfWhereNoSentenceComes();
    void anotherFileOfThatNameStays();
    void isWithTheSystemEachSecond();
};

void CaptureWindowTest::holdsEveryByte() {
    Unattended u("Start=1\nRecord=$F\nCapture=1\n");
    TestWindow& t = u.Begin();
    t.Press("Stop");
    u.Pass(1);
    t.StartBoth();
    std::string sAll;
    for (int i = 0; i < 256; ++i) sAll += static_cast<char>(i);
    t.Feed(0, sAll);
    t.Feed(1, "$GPGLL,2\r\n");
    t.Feed(0, "\r\n$GPGLL,1*00\r\n\n\n$GPGLL,half");
    t.Feed(1, sAll + sAll);
    t.Feed(0, std::string(5000, 'x'));
    t.Press("Stop");
    QCOMPARE(u.Files(), (Names{"tidewatch-20110515-120001.capture", "tidewatch-20110515-120001.txt"}));
    const std::string sCapture = u.Content(u.Files()[0]);
    QCOMPARE(FirstLine(sCapture).substr(19 + 4), std::string(" Tidewatch capture 1"));
    QCOMPARE(BytesOf(sCapture, 0, '<'), sAll + "\r\n$GPGLL,1*00\r\n\n\n$GPGLL,half" + std::string(5000, 'x'));
    QCOMPARE(BytesOf(sCapture, 1, '<'), "$GPGLL,2\r\n" + sAll + sAll);
    std::string sBefore;
    for (std::size_t i = 0; i < sCapture.size(); i = sCapture.find("\r\n", i) + 2) {
        const std::string sStamp = sCapture.substr(i, 23);
        QVERIFY2(sStamp.starts_with("05/15/2011 12:00:01."), sStamp.c_str());
        QVERIFY2(sStamp >= sBefore, sStamp.c_str());
        QVERIFY(sCapture.find("\r\n", i) - i < 6000);
        sBefore = sStamp;
    }
    QVERIFY(u.Content(u.Files()[1]).find("Tidewatch") == std::string::npos);
}

void CaptureWindowTest::holdsEventsAndCommands() {
    Unattended u("Start=1\nRecord=$F\nCapture=1\n");
    TestWindow& t = u.Begin();
    t.MSComm(0).RaiseEvent(1004);
    t.FeedLine(0, "$GPGLL,1");
    t.MSComm(0).RaiseEvent(2001);
    t.MSComm(0).RaiseEvent(2002);
    t.txtRxNasaChannel.SetText("A");
    t.cmdRxNasaChannel.click();
    const std::string sSent = t.Device(t.MSComm(0))->Written();
    t.Press("Stop");
    const std::string sCapture = u.Content("tidewatch-20110515-120000.capture");
    QVERIFY(!sSent.empty());
    QCOMPARE(BytesOf(sCapture, 0, '>'), sSent);
    QCOMPARE(BytesOf(sCapture, 0, '!'), std::string("100420012002"));
    const auto tLines = LinesOf(sCapture);
    QCOMPARE(tLines[0].sBytes, std::string("1004"));
    QCOMPARE(tLines[1].sBytes, std::string("$GPGLL,1\r\n"));
}

void CaptureWindowTest::standsBesideARecordingByHand() {
    Unattended u("Start=1\nCapture=1\n");
    TestWindow& t = u.Begin();
    t.FeedLine(0, "$GPGLL,before");
    u.w.tFileAnswers = {u.sFolder + QStringLiteral("/by hand.txt")};
    t.Press("Record");
    t.FeedLine(0, "$GPZDA,not decoded");
    t.FeedLine(0, "$GPGLL,1");
    t.Press("Stop");
    t.Press("Start");
    t.FeedLine(0, "$GPGLL,after");
    QCOMPARE(u.Files(), (Names{"by hand.capture", "by hand.txt"}));
    QCOMPARE(BytesOf(u.Content("by hand.capture"), 0, '<'), std::string("$GPZDA,not decoded\r\n$GPGLL,1\r\n"));
}

void CaptureWindowTest::withoutTheKeyThereIsNone() {
    Unattended u("Start=1\nRecord=$F\nCapture=0\n");
    TestWindow& t = u.Begin();
    t.FeedLine(0, "$GPGLL,1");
    t.Press("Stop");
    QCOMPARE(u.Files(), Names{"tidewatch-20110515-120000.txt"});
}

void CaptureWindowTest::nothingIsLostBeforeTheFirstSentence() {
    Unattended u("Start=1\nRecord=$F\nCapture=1\n");
    TestWindow& t = u.Begin();
    t.Feed(0, "noise");
    QCOMPARE(u.Files(), Names{"tidewatch-20110515-120000.capture"});
    QVERIFY(FirstLine(u.Content(u.Files()[0])).ends_with(" Tidewatch capture 1"));  // at once
    u.Pass(7);
    t.Feed(0, "\r\n$GPG");
    t.Feed(0, "LL,1\r\n");
    QCOMPARE(u.Files(), (Names{"tidewatch-20110515-120007.capture", "tidewatch-20110515-120007.txt"}));
    t.FeedLine(0, "$GPGLL,2");
    t.Press("Stop");
    QCOMPARE(BytesOf(u.Content("tidewatch-20110515-120007.capture"), 0, '<'),
             std::string("noise\r\n$GPGLL,1\r\n$GPGLL,2\r\n"));
}

void CaptureWindowTest::followsTheRecordingFromFileToFile() {
    Unattended u("Start=1\nRecord=$F\nCapture=1\nKeep days=1\n", "2011-05-15T23:59:59");
    TestWindow& t = u.Begin();
    t.FeedLine(0, "$GPGLL,1");
    u.Pass(2);
    t.FeedLine(0, "$GPGLL,2");
    u.Pass(1);
    QCOMPARE(u.Files(), (Names{"tidewatch-20110515-235959.capture", "tidewatch-20110515-235959.txt",
                               "tidewatch-20110516-000001.capture", "tidewatch-20110516-000001.txt"}));
    QCOMPARE(BytesOf(u.Content(u.Files()[0]), 0, '<'), std::string("$GPGLL,1\r\n"));
    QCOMPARE(BytesOf(u.Content(u.Files()[2]), 0, '<'), std::string("$GPGLL,2\r\n"));
    u.w.SetClock("2011-05-18T12:00:00");  // both go together
    t.FeedLine(0, "$GPGLL,3");
    u.Pass(62);
    QCOMPARE(u.Files(), (Names{"tidewatch-20110518-120000.capture", "tidewatch-20110518-120000.txt"}));
}

void CaptureWindowTest::beginsAnewByItselfWhereNoSentenceComes() {
    Unattended u("Start=1\nRecord=$F\nCapture=1\n", "2011-05-15T23:59:59");
    TestWindow& t = u.Begin();
    t.FeedLine(0, "noise");
    u.w.SetClock("2011-05-16T00:00:05");
    t.FeedLine(0, "noise");
    QCOMPARE(u.Files(), (Names{"tidewatch-20110515-235959.capture", "tidewatch-20110516-000005.capture"}));
}

void CaptureWindowTest::anotherFileOfThatNameStays() {
    Unattended u("Start=1\nCapture=1\n");
    u.w.WriteFile(u.sFolder + QStringLiteral("/a.capture"), "precious");
    TestWindow& t = u.Begin();
    u.w.tFileAnswers = {u.sFolder + QStringLiteral("/a.txt")};
    t.Press("Record");
    t.FeedLine(0, "$GPGLL,1");
    t.Press("Stop");
    QCOMPARE(u.Content("a.capture"), std::string("precious"));
    QCOMPARE(BytesOf(u.Content("a-2.capture"), 0, '<'), std::string("$GPGLL,1\r\n"));
}

void CaptureWindowTest::isWithTheSystemEachSecond() {
    Unattended u("Start=1\nRecord=$F\nCapture=1\n");
    TestWindow& t = u.Begin();
    t.FeedLine(0, "$GPGLL,1");
    t.FeedLine(0, "$GPGLL,2");
    u.Pass(1);
    QCOMPARE(BytesOf(u.Content("tidewatch-20110515-120000.capture"), 0, '<'), std::string("$GPGLL,1\r\n$GPGLL,2\r\n"));
}

QTEST_MAIN(CaptureWindowTest)
#include "CaptureWindowTest.moc"
