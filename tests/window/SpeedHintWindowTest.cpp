// An input that brings bytes but no sentence: the notice in its log and the line in its panel's tip.
#include <QTest>

#include "tests/support/PrintString.h"
#include "tests/window/Bench.h"

using support::AnyReport;
using support::Listening;
using support::TestWindow;
using support::World;

namespace {

constexpr char Notice[] = "<<Bytes arrive but no sentence - is the speed right?>>";
constexpr const char* Good = AnyReport;
const QString Tip1 = QStringLiteral("Time since the last line on input #1");
const QString Tip2 = QStringLiteral("Time since the last line on input #2");
const QString Hint = QStringLiteral("\nBytes arrive but no sentence: is the speed right?");

struct Inputs : Listening {
    // Noise, as a wrong speed makes it, in every one of so many seconds.
    void Noise(app::PortIndex i, int iSeconds, std::string_view sNoise = "\xf8\x80\x1c\xe0\r\xfe\x86") {
        for (int iSecond = 0; iSecond < iSeconds; ++iSecond) {
            Feed(i, sNoise);
            Advance(1);
        }
    }
    int Notices(app::PortIndex i) {
        const auto sLines = Lines(lstCommData(i));
        return static_cast<int>(std::count(sLines.begin(), sLines.end(), Notice));
    }
    QString Tip(int iPanel) {
        Synchronize();
        return StatusBar.Panel(iPanel).toolTip();
    }
};

}  // namespace

class SpeedHintWindowTest : public QObject {
    Q_OBJECT
private slots:
    void tenSecondsOfNoiseAreTold();
    void toldOnceUntilASentenceComes();
    void bytesWithoutAnyLineAreTold();
    void portsAreWatchedApart();
    void silenceAndSentencesAreNotTold();
    void stopAndStartBeginAnew();
    void noticeIsNotRecorded();
    void playbackHasNone();
};

void SpeedHintWindowTest::tenSecondsOfNoiseAreTold() {
    Inputs t;
    t.Noise(0, 9);
    QCOMPARE(t.Notices(0), 0);
    QCOMPARE(t.Tip(3), Tip1);
    t.Noise(0, 1);
    QCOMPARE(t.LastLine(t.lstCommData(0)), std::string(Notice));
    QCOMPARE(t.Marks(t.lstCommData(0)).back(), false);
    QCOMPARE(t.Tip(3), Tip1 + Hint);
}

void SpeedHintWindowTest::toldOnceUntilASentenceComes() {
    Inputs t;
    t.Noise(0, 40);
    QCOMPARE(t.Notices(0), 1);
    t.Feed(0, "\r\n");
    t.FeedLine(0, Good);
    t.Advance(1);
    QCOMPARE(t.Tip(3), Tip1);
    t.Noise(0, 9);
    QCOMPARE(t.Notices(0), 1);
    t.Noise(0, 1);
    QCOMPARE(t.Notices(0), 2);
    QCOMPARE(t.Tip(3), Tip1 + Hint);
}

void SpeedHintWindowTest::bytesWithoutAnyLineAreTold() {
    Inputs t;
    t.Noise(0, 10, std::string(Good) + "\n");  // never a carriage return
    QCOMPARE(t.Notices(0), 1);
    QCOMPARE(t.Panel(3), std::string("00:10"));
}

void SpeedHintWindowTest::portsAreWatchedApart() {
    Inputs t;
    for (int i = 0; i < 10; ++i) {
        t.FeedLine(0, Good);
        t.Noise(1, 1);
    }
    QCOMPARE(t.Notices(0), 0);
    QCOMPARE(t.Notices(1), 1);
    QCOMPARE(t.Tip(3), Tip1);
    QCOMPARE(t.Tip(4), Tip2 + Hint);
}

void SpeedHintWindowTest::silenceAndSentencesAreNotTold() {
    Inputs t;
    t.Advance(100);
    t.Noise(0, 100, std::string(Good) + "\r\n\xf8\x80\r");
    t.Noise(1, 100, "$GPZDA,not decoded, and a sentence\r\n");
    t.Noise(0, 1);
    t.Advance(100);
    QCOMPARE(t.Notices(0) + t.Notices(1), 0);
    QCOMPARE(t.Tip(3), Tip1);
    QCOMPARE(t.Tip(4), Tip2);
}

void SpeedHintWindowTest::stopAndStartBeginAnew() {
    Inputs t;
    t.Noise(0, 15);
    t.Press("Stop");
    QCOMPARE(t.Tip(3), Tip1);
    t.Press("Start");
    t.Noise(0, 9);
    QCOMPARE(t.Notices(0), 0);
    QCOMPARE(t.Tip(3), Tip1);
    t.Noise(0, 1);
    QCOMPARE(t.Notices(0), 1);
}

void SpeedHintWindowTest::noticeIsNotRecorded() {
    Inputs t;
    const QString sFile = t.tWorld.Path(QStringLiteral("record.txt"));
    t.PressWithFile("Record", sFile);
    t.Noise(0, 15);
    t.Press("Stop");
    QCOMPARE(t.tWorld.ReadFile(sFile), std::string());
}

void SpeedHintWindowTest::playbackHasNone() {
    World tWorld;
    const QString sFile = tWorld.Path(QStringLiteral("played.txt"));
    std::string sBad;
    for (int i = 10; i < 40; ++i) sBad += "03/07/2005 10:00:" + std::to_string(i) + " no sentence\r\n";
    tWorld.WriteFile(sFile, sBad);
    TestWindow t(tWorld);
    t.LoadAndShow();
    tWorld.tFileAnswers = {sFile};
    t.Press("Playback");
    t.Advance(25);
    QVERIFY(t.m_bPlayback);
    for (const std::string& sLine : t.Lines(t.lstCommData(0))) QVERIFY(sLine != Notice);
}

QTEST_MAIN(SpeedHintWindowTest)
#include "SpeedHintWindowTest.moc"
