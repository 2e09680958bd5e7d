// What the output log says of lines that did not leave: unmarked lines, and numbers that add up to what was to be
// sent. The output is a real pseudo-terminal that is read late, never, or as fast as it is written.
#include <QRegularExpression>
#include <QTest>

#include "tests/support/PtyPort.h"
#include "tests/window/Bench.h"
#include "tests/window/Shown.h"

using namespace support;

namespace {

std::string Line(int iNumber, std::size_t lLength) {
    std::string sNumber = std::to_string(iNumber);
    std::string sLine = "$GPZDA," + std::string(5 - sNumber.size(), '0') + sNumber + ",";
    return sLine + std::string(lLength - sLine.size() - 2, 'x');  // CR LF belong to it
}

std::string Lines(int iCount, std::size_t lLength) {
    std::string sLines;
    for (int i = 0; i < iCount; ++i) sLines += Line(i, lLength) + "\r\n";
    return sLines;
}

// A window that plays lines, all of one second unless a line follows later, to a pseudo-terminal at 4800 baud.
struct Playing : ShownWindow {
    PtyPort tPty;

    Playing(int iCount, std::size_t lLength, bool bLineMuchLater = false) {
        tWorld.bNativeDevices = true;
        chkOutputEnabled.setChecked(true);
        txtOutputPort.SetText(tPty.Link().toStdString());
        txtOutputSettings.SetText("4800,n,8,1");
        std::string sContent;
        for (int i = 0; i < iCount; ++i) sContent += "05/15/2011 12:00:00 " + Line(i, lLength) + "\r\n";
        if (bLineMuchLater) sContent += "05/15/2011 13:00:00 $GPZDA,later\r\n";
        const QString sFile = tWorld.Path(QStringLiteral("played.txt"));
        tWorld.WriteFile(sFile, sContent);
        PressWithFile(ui::KeyPlayback, sFile);
    }
    QStringList Log() { return support::Log(*this, lstOutputData); }
    // The number in the newest notice that begins so; 0 where there is none.
    int Told(const char* sBeginning) {
        int iNumber = 0;
        for (const QString& sLine : Log()) {
            if (sLine.startsWith(QLatin1String(sBeginning))) iNumber = sLine.section(QLatin1Char(' '), 3, 3).toInt();
        }
        return iNumber;
    }
    // Everything that has come out at the far end when the port is closed.
    std::string Arrived(int iLines, std::size_t lLength) {
        std::string sArrived = tPty.ReadAtLeast(static_cast<std::size_t>(iLines) * lLength);
        for (int iQuiet = 0; iQuiet < 50; ++iQuiet) {
            QTest::qWait(1);
            const std::string sMore = tPty.Read();
            if (!sMore.empty()) iQuiet = 0;
            sArrived += sMore;
        }
        return sArrived;
    }
};

constexpr const char* Full = "<<Output full - ";
constexpr const char* Closed = "<<Output closed - ";

}  // namespace

class OutputDropsWindowTest : public QObject {
    Q_OBJECT
private slots:
    void thousandLinesOfOneSecondAddUp();
    void markedLinesAreThoseThatWereHandedOver();
    void stopTellsWhatStillWaits_data();
    void stopTellsWhatStillWaits();
    void nothingIsToldWhenAllLeft();
    void oldestMakeRoomAndLoseTheirMark();
    void numberIsInSightWhileLinesAreDropped();
    void numberIsToldOnceASecondAtMostWhenFewAreDropped();
    void numberBeginsAnewWithEachRun();
    void lossTellsWhatStillWaited();
    void linesAreUnmarkedWhileTheDeviceIsAway();
    void linesAreUnmarkedWhenTheOutputCannotBeOpened();
};

// How much the system takes on its own differs from run to run; the numbers add up all the same.
void OutputDropsWindowTest::thousandLinesOfOneSecondAddUp() {
    constexpr std::size_t Length = 120;
    Playing t(1000, Length);
    t.Advance(1);
    QCOMPARE(Panel(t, ui::PanelState), QByteArray("Done"));
    const int iDropped = t.Told(Full);
    QVERIFY(iDropped > 0);
    const int iWhole = 1000 - iDropped - t.Told(Closed);
    const std::string sArrived = t.Arrived(iWhole, Length);
    QCOMPARE(static_cast<int>(sArrived.size() / Length), iWhole);
    // In the order in which they came, the newest among them.
    std::size_t iFrom = 0;
    const std::string sSent = Lines(1000, Length);
    for (std::size_t i = 0; i < sArrived.size(); i += Length) {
        iFrom = sSent.find(sArrived.substr(i, Length), iFrom);
        QVERIFY(iFrom != std::string::npos);
        QCOMPARE(iFrom % Length, std::size_t{0});
        iFrom += Length;
    }
}

// Ten seconds of 480 characters wait, and not a character leaves. The line has been given the first; of the others the
// oldest make room.
void OutputDropsWindowTest::markedLinesAreThoseThatWereHandedOver() {
    Playing t(60, 100);
    t.tPty.Hold(true);
    t.Advance(1);
    QCOMPARE(Panel(t, ui::PanelState), QByteArray("Done"));
    QStringList sExpected;
    for (int i = 0; i < 48; ++i) sExpected << toolkit::FromLatin1(Line(i, 100));
    sExpected << QStringLiteral("<<Event 1010>>");
    for (int i = 48; i < 60; ++i) sExpected << toolkit::FromLatin1(Line(i, 100));
    sExpected << QStringLiteral("<<Output full - 12 sentences dropped>>")
              << QStringLiteral("<<Output closed - 48 sentences dropped>>");
    QCOMPARE(t.Log(), sExpected);
    QCOMPARE(Marks(t, t.lstOutputData),
             "+" + QByteArray(12, '-') + QByteArray(35, '+') + "-" + QByteArray(12, '+') + "--");
    t.tPty.Hold(false);
    QCOMPARE(Bytes(t.Arrived(0, 100)), QByteArray());
}

void OutputDropsWindowTest::stopTellsWhatStillWaits_data() {
    QTest::addColumn<bool>("bHeld");
    QTest::newRow("the line still takes nothing") << true;
    QTest::newRow("the line takes everything again") << false;
}

void OutputDropsWindowTest::stopTellsWhatStillWaits() {
    QFETCH(bool, bHeld);
    Playing t(30, 100, true);
    t.tPty.Hold(true);
    t.Advance(1);
    QCOMPARE(Panel(t, ui::PanelState), QByteArray("Playback"));
    QCOMPARE(t.Log().size(), 30);
    t.tPty.Hold(bHeld);
    t.Press(ui::KeyStop);
    QVERIFY(!t.MSCommOutput.PortOpen());
    QCOMPARE(t.Log().mid(30), bHeld ? Texts({"<<Output closed - 30 sentences dropped>>"}) : QStringList());
    t.tPty.Hold(false);
    QCOMPARE(t.Arrived(bHeld ? 0 : 30, 100), bHeld ? std::string() : Lines(30, 100));
}

void OutputDropsWindowTest::nothingIsToldWhenAllLeft() {
    Playing t(80, 49);
    t.Advance(1);
    QCOMPARE(Panel(t, ui::PanelState), QByteArray("Done"));
    QCOMPARE(t.Log().size(), 80);
    QCOMPARE(Marks(t, t.lstOutputData), QByteArray(80, '+'));
    QVERIFY(t.Arrived(80, 49) == Lines(80, 49));
}

namespace {

// A window that forwards input #1 to an output in memory, which can be stuck.
struct Stuck : Forwarding {
    int iFed = 0;
    void Feed(int iLines) {
        for (int i = 0; i < iLines; ++i) FeedLine(0, "$GPZDA," + std::to_string(++iFed));
    }
    QStringList Log() { return support::Log(*this, lstOutputData); }
};

constexpr std::int64_t TenSeconds = 38400;

}  // namespace

// A line that is behind keeps what it has; ten seconds of it wait in the port, and no line of 10 characters more.
void OutputDropsWindowTest::oldestMakeRoomAndLoseTheirMark() {
    Stuck t;
    t.Feed(1);
    t.Output().Hold(true);
    t.Output().Stick(TenSeconds - 50);
    t.Feed(8);
    QCOMPARE(Marks(t, t.lstOutputData), QByteArray("+---++-+++"));
    t.Output().Stick(0);
    t.Output().Hold(false);
    QCOMPARE(Bytes(t.Output().Written()),
             QByteArray("$GPZDA,1\r\n$GPZDA,5\r\n$GPZDA,6\r\n$GPZDA,7\r\n$GPZDA,8\r\n$GPZDA,9\r\n"));
    t.Advance(1);
    QCOMPARE(t.Log().last(), QStringLiteral("<<Output full - 3 sentences dropped>>"));
}

void OutputDropsWindowTest::numberIsInSightWhileLinesAreDropped() {
    Stuck t;
    t.Output().Stick(TenSeconds);
    t.Feed(1);
    QCOMPARE(t.Log(), Texts({"<<Event 1010>>", "$GPZDA,1"}));
    t.Advance(1);
    QCOMPARE(t.Log().last(), QStringLiteral("<<Output full - 1 sentence dropped>>"));
    // A flood between two seconds; each notice tells how many have been dropped so far.
    t.Feed(1000);
    const QStringList sLog = t.Log();
    int iNotices = 0, iLine = 0;
    for (const QString& sLine : sLog) {
        if (!sLine.startsWith(QLatin1String(Full))) {
            iLine = sLine.section(QLatin1Char(','), 1).toInt();
            continue;
        }
        ++iNotices;
        QCOMPARE(sLine, QStringLiteral("<<Output full - %1 sentences dropped>>").arg(iLine));
    }
    QVERIFY(iNotices >= 3);
    QVERIFY(sLog.indexOf(QRegularExpression(QStringLiteral("<<Output full.*"))) < 30);
    QCOMPARE(sLog.size(), 101);
    QVERIFY(!Marks(t, t.lstOutputData).contains('+'));
}

void OutputDropsWindowTest::numberIsToldOnceASecondAtMostWhenFewAreDropped() {
    Stuck t;
    t.Output().Stick(TenSeconds);
    t.Feed(3);
    QCOMPARE(t.Log().filter(QLatin1String(Full)).size(), 0);
    t.Advance(1);
    QCOMPARE(t.Log().last(), QStringLiteral("<<Output full - 3 sentences dropped>>"));
    t.Advance(5);  // nothing new
    QCOMPARE(t.Log().filter(QLatin1String(Full)).size(), 1);
    t.Feed(2);
    t.Advance(1);
    QCOMPARE(t.Log().last(), QStringLiteral("<<Output full - 5 sentences dropped>>"));
    // Told also when the run ends before the second does.
    t.Feed(1);
    t.Press(ui::KeyStop);
    QCOMPARE(t.Log().last(), QStringLiteral("<<Output full - 6 sentences dropped>>"));
    QCOMPARE(t.Log().count(QStringLiteral("<<Event 1010>>")), 1);
}

void OutputDropsWindowTest::numberBeginsAnewWithEachRun() {
    Stuck t;
    t.Output().Stick(TenSeconds);
    t.Feed(7);
    t.Advance(1);
    t.Press(ui::KeyStop);
    t.Press(ui::KeyStart);
    t.Advance(1);
    QCOMPARE(t.Log(), QStringList());
    t.Feed(1);
    t.Advance(1);
    QCOMPARE(t.Log().last(), QStringLiteral("<<Output full - 1 sentence dropped>>"));
}

void OutputDropsWindowTest::lossTellsWhatStillWaited() {
    Stuck t;
    t.Output().Stick(25);  // of lines of 10 characters each: three are not out
    t.Feed(5);
    QCOMPARE(Marks(t, t.lstOutputData), QByteArray("+++++"));
    t.Output().Vanish();
    QCOMPARE(t.Log().mid(5), Texts({"<<Event 2001>>", "<<Output lost - 3 sentences dropped>>"}));
    t.Press(ui::KeyStop);
    QCOMPARE(t.Log().size(), 7);  // not told again
}

void OutputDropsWindowTest::linesAreUnmarkedWhileTheDeviceIsAway() {
    Stuck t;
    t.Feed(1);
    t.Output().Vanish();
    t.Feed(2);
    t.MSCommOutput.Retry();
    t.Feed(1);
    QCOMPARE(t.Log(), Texts({"$GPZDA,1", "<<Event 2001>>", "$GPZDA,2", "$GPZDA,3", "<<Event 2002>>", "$GPZDA,4"}));
    QCOMPARE(Marks(t, t.lstOutputData), QByteArray("+----+"));
    QCOMPARE(Bytes(t.Output().Written()), QByteArray("$GPZDA,1\r\n$GPZDA,4\r\n"));
}

void OutputDropsWindowTest::linesAreUnmarkedWhenTheOutputCannotBeOpened() {
    World tWorld;
    tWorld.sBadPorts[3] = "No such device";
    TestWindow t(tWorld);
    t.LoadAndShow();
    t.chkOutputEnabled.setChecked(true);
    t.chkOutputRMC.setChecked(true);
    t.txtOutputPort.SetText("3");
    const QString sFile = tWorld.Path(QStringLiteral("played.txt"));
    tWorld.WriteFile(sFile,
                     "05/15/2011 12:00:00 $GPZDA,1\r\n"
                     "05/15/2011 12:00:00 $GPGLL,4916.45,N,12311.12,W,225444,A*31\r\n");
    tWorld.tFileAnswers.push_back(sFile);
    t.Press(ui::KeyPlayback);
    t.Advance(1);
    QCOMPARE(Log(t, t.lstOutputData).value(0), QStringLiteral("$GPZDA,1"));
    QVERIFY(Log(t, t.lstOutputData).value(1).startsWith(QLatin1String("$ECRMC,")));
    QCOMPARE(Log(t, t.lstOutputData).size(), 3);
    QCOMPARE(Marks(t, t.lstOutputData), QByteArray("-+-"));  // a made sentence is marked in every case
}

QTEST_MAIN(OutputDropsWindowTest)
#include "OutputDropsWindowTest.moc"
