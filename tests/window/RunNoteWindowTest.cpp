// What a person looks for while a recording or a paced playback is under way: the line beside the buttons and the tip
// of the run state. Panel and caption keep their texts.
#include <QFile>
#include <QTest>

#include "tests/support/PrintString.h"
#include "tests/window/Bench.h"

using support::Player;
using support::Recording;
using support::ShownWindow;
using support::TestWindow;
using support::World;

namespace {

QString Note(const TestWindow& t) { return t.Toolbar.Note().text(); }

QString StateTip(TestWindow& t) {
    t.Synchronize();
    return t.StatusBar.Panel(1).toolTip();
}

const QString PlainTip = QStringLiteral("Run state");

std::string Line(const char* sStamp) { return std::string(sStamp) + " " + support::AnyReport + "\r\n"; }

// A window that plays a file.
struct Playback : Player {
    explicit Playback(std::string_view sContent, const QString& sName = QStringLiteral("harbour.txt"))
        : Player(sContent, sName) {
        Play();
    }
};

}  // namespace

class RunNoteWindowTest : public QObject {
    Q_OBJECT
private slots:
    void nothingStandsThereWithoutARecording();
    void recordingTellsFileSizeAndTime();
    void sizeCountsWhatIsNotWrittenYet();
    void stopAndFailureEndTheNote();
    void playbackTellsHowFarItIs();
    void playbackBeyondMidnightTellsTheDay();
    void playbackWithoutAnEndTellsItsTimeOnly_data();
    void playbackWithoutAnEndTellsItsTimeOnly();
    void endOfPlaybackEndsTheNote();
    void burstHasNone();
    void narrowWindowCutsTheNote();
    void lineIsDrawnBesideTheButtons();
};

void RunNoteWindowTest::nothingStandsThereWithoutARecording() {
    ShownWindow t;
    QCOMPARE(Note(t), QString());
    QCOMPARE(StateTip(t), PlainTip);
    t.StartBoth();
    t.Advance(5);
    QCOMPARE(Note(t), QString());
    QCOMPARE(StateTip(t), PlainTip);
}

void RunNoteWindowTest::recordingTellsFileSizeAndTime() {
    Recording r;
    QCOMPARE(Note(r.t), QStringLiteral("Recording 0:00:00, 0 bytes: record.txt"));
    QCOMPARE(StateTip(r.t), QStringLiteral("Run state\nRecording to %1\n0 bytes in 0:00:00").arg(r.sFile));
    r.t.FeedLine(0, support::AnyReport);
    r.t.Advance(1);
    // The stamp and a blank are 20 characters, CR and LF two more.
    const auto lSize = 22 + std::string(support::AnyReport).size();
    QCOMPARE(Note(r.t), QStringLiteral("Recording 0:00:01, %1 bytes: record.txt").arg(lSize));
    for (int i = 0; i < 999; ++i) r.t.FeedLine(1, support::AnyReport);
    r.t.Advance(3600);
    const QString sSize = QString::number(static_cast<double>(lSize), 'f', 1) + QStringLiteral(" kB");
    QCOMPARE(Note(r.t), QStringLiteral("Recording 1:00:01, %1: record.txt").arg(sSize));
    QCOMPARE(StateTip(r.t), QStringLiteral("Run state\nRecording to %1\n%2 in 1:00:01").arg(r.sFile, sSize));
    QCOMPARE(QFile(r.sFile).size(), static_cast<qint64>(1000 * lSize));
    QCOMPARE(r.t.Panel(1), std::string("Record"));
    QCOMPARE(r.t.windowTitle(), QStringLiteral("Tidewatch"));
}

void RunNoteWindowTest::sizeCountsWhatIsNotWrittenYet() {
    Recording r;
    for (int i = 0; i < 5000; ++i) r.t.FeedLine(0, support::AnyReport);
    r.t.ShowRunNote();
    const double dSize = 5000.0 * static_cast<double>(22 + std::string(support::AnyReport).size()) / 1000;
    QCOMPARE(Note(r.t), QStringLiteral("Recording 0:00:00, %1 kB: record.txt").arg(dSize, 0, 'f', 1));
}

void RunNoteWindowTest::stopAndFailureEndTheNote() {
    Recording r;
    r.t.Advance(3);
    QVERIFY(!Note(r.t).isEmpty());
    r.t.Press("Stop");
    QCOMPARE(Note(r.t), QString());
    QCOMPARE(StateTip(r.t), PlainTip);

    Recording tFailed;
    QVERIFY(QFile::remove(tFailed.sFile));
    tFailed.t.Advance(1);
    QVERIFY(!tFailed.t.m_bRecording);
    QCOMPARE(Note(tFailed.t), QString());
    QCOMPARE(StateTip(tFailed.t), PlainTip);
}

void RunNoteWindowTest::playbackTellsHowFarItIs() {
    // The world's clock stands at 2011-05-15 12:00:00; the first line is taken a second later.
    Playback t(Line("03/07/2005 10:00:00") + Line("03/07/2005 10:00:30") + Line("03/07/2005 11:20:00"));
    QCOMPARE(Note(t), QStringLiteral("Playing 0:00:00: harbour.txt"));
    t.Advance(1);
    QCOMPARE(Note(t), QStringLiteral("Playing 0:00:00 of 1:20:00, until 13:20:01: harbour.txt"));
    t.Advance(192);
    QCOMPARE(Note(t), QStringLiteral("Playing 0:03:12 of 1:20:00, until 13:20:01: harbour.txt"));
    QCOMPARE(StateTip(t), QStringLiteral("Run state\nPlaying %1\n0:03:12 of 1:20:00, until 13:20:01").arg(t.sFile));
    QCOMPARE(t.Panel(1), std::string("Playback"));
    QCOMPARE(t.windowTitle(), QStringLiteral("Tidewatch - harbour.txt"));
}

void RunNoteWindowTest::playbackBeyondMidnightTellsTheDay() {
    Playback t(Line("03/07/2005 10:00:00") + Line("03/08/2005 12:30:00"));
    t.Advance(1);
    QCOMPARE(Note(t), QStringLiteral("Playing 0:00:00 of 26:30:00, until 05/16/2011 14:30:01: harbour.txt"));
}

void RunNoteWindowTest::playbackWithoutAnEndTellsItsTimeOnly_data() {
    QTest::addColumn<QByteArray>("sEnd");
    QTest::newRow("no stamp for long") << QByteArray(70000, 'x');
    QTest::newRow("stamp before the first") << QByteArray("03/07/2005 09:00:00 $GPGLL\r\n");
}

void RunNoteWindowTest::playbackWithoutAnEndTellsItsTimeOnly() {
    QFETCH(QByteArray, sEnd);
    Playback t(Line("03/07/2005 10:00:00") + Line("03/07/2005 10:10:00") + sEnd.toStdString());
    t.Advance(62);
    QCOMPARE(Note(t), QStringLiteral("Playing 0:01:01: harbour.txt"));
}

void RunNoteWindowTest::endOfPlaybackEndsTheNote() {
    Playback t(Line("03/07/2005 10:00:00") + Line("03/07/2005 10:00:03"));
    t.Advance(3);
    QCOMPARE(Note(t), QStringLiteral("Playing 0:00:02 of 0:00:03, until 12:00:04: harbour.txt"));
    t.Advance(1);
    QCOMPARE(t.Panel(1), std::string("Done"));
    QCOMPARE(Note(t), QString());
    QCOMPARE(StateTip(t), PlainTip);
}

void RunNoteWindowTest::burstHasNone() {
    World tWorld;
    const QString sFile = tWorld.Path(QStringLiteral("played.txt"));
    tWorld.WriteFile(sFile, Line("03/07/2005 10:00:00"));
    TestWindow t(tWorld);
    t.LoadAndShow();
    tWorld.tFileAnswers = {sFile};
    t.Press("Playback Burst");
    t.Advance(2);
    QCOMPARE(Note(t), QString());
    QCOMPARE(StateTip(t), PlainTip);
}

void RunNoteWindowTest::narrowWindowCutsTheNote() {
    Playback t(Line("03/07/2005 10:00:00"), QString(120, QLatin1Char('M')) + QStringLiteral(".txt"));
    const int iLeast = t.minimumSizeHint().width();
    t.resize(600, 400);
    QCoreApplication::processEvents();
    const toolkit::PanelLabel& tNote = t.Toolbar.Note();
    QVERIFY(tNote.isVisible());
    QVERIFY(tNote.Drawn().endsWith(QChar(0x2026)));
    QCOMPARE(tNote.toolTip(), tNote.text());
    QCOMPARE(t.minimumSizeHint().width(), iLeast);
    QVERIFY(tNote.mapTo(&t, tNote.rect().topRight()).x() < t.width());
}

void RunNoteWindowTest::lineIsDrawnBesideTheButtons() {
    Recording r;
    r.t.resize(980, 640);
    QCoreApplication::processEvents();
    const toolkit::PanelLabel& tNote = r.t.Toolbar.Note();
    const QWidget* pBurst = r.t.Toolbar.widgetForAction(&r.t.Toolbar.Action(QStringLiteral("Playback Burst")));
    QVERIFY(tNote.geometry().left() > pBurst->geometry().right());
    QCOMPARE(tNote.Drawn(), tNote.text());
    const QImage tImage = r.t.Toolbar.grab(tNote.geometry()).toImage();
    int iInk = 0;
    for (int y = 0; y < tImage.height(); ++y)
        for (int x = 0; x < tImage.width(); ++x) iInk += tImage.pixelColor(x, y).lightness() < 100;
    QVERIFY(iInk > 100);
}

QTEST_MAIN(RunNoteWindowTest)
#include "RunNoteWindowTest.moc"
