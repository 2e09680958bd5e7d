// The file numbers over a long run: a finished burst keeps its file open, and neither the numbers nor the memory may
// run out for that.
#include <malloc.h>

#include <QTest>
#include <atomic>
#include <cstdlib>
#include <new>

#include "tests/support/Bytes.h"
#include "tests/support/PrintString.h"
#include "tests/support/TestWindow.h"

using support::Bytes;
using support::TestWindow;
using support::World;

namespace {

constexpr const char* Report = "!AIVDM,1,1,,A,15M67F@uQqG?w<hK?Mu8iFv00000,0*7B";
constexpr int Numbers = 255;  // of files that can be open

std::atomic<long long> lHeld{0};  // bytes that are held by new

// A window and a short recording.
struct Run {
    Run() : sFile(tWorld.Path(QStringLiteral("played.txt"))), t(tWorld) {
        tWorld.WriteFile(sFile, std::string("05/15/2011 10:00:00 ") + Report + "\r\n");
        t.LoadAndShow();
    }
    void Burst() {
        tWorld.tFileAnswers = {sFile};
        t.Press("Playback Burst");
    }
    void Bursts(int iCount) {
        for (int i = 0; i < iCount; ++i) Burst();
    }

    World tWorld;
    QString sFile;
    TestWindow t;
};

}  // namespace

void* operator new(std::size_t lSize) {
    void* p = std::malloc(lSize);
    if (p == nullptr) throw std::bad_alloc();
    lHeld += static_cast<long long>(::malloc_usable_size(p));
    return p;
}

void operator delete(void* p) noexcept {
    lHeld -= static_cast<long long>(::malloc_usable_size(p));
    std::free(p);
}

void operator delete(void* p, std::size_t) noexcept { operator delete(p); }

class FileNumbersWindowTest : public QObject {
    Q_OBJECT

private slots:
    void burstsGoOnWithoutEnd();
    void oldestFinishedBurstGivesItsNumber();
    void recordingGoesOnAfterManyBursts();
    void playbackGoesOnAfterManyBursts();
    void burstThatEndedEarlyGivesItsNumberToo();
    void finishedBurstKeepsNoMemory_data();
    void finishedBurstKeepsNoMemory();
};

void FileNumbersWindowTest::burstsGoOnWithoutEnd() {
    Run r;
    for (int i = 0; i < 2 * Numbers + 10; ++i) {
        r.t.StatusBar.SetPanelText(ui::PanelSummary, "before");
        r.Burst();
        QCOMPARE(r.t.Panel(2), std::string("1 Targets, 1 Messages"));
        QCOMPARE(r.t.windowTitle(), QStringLiteral("Tidewatch - played.txt"));
    }
}

void FileNumbersWindowTest::oldestFinishedBurstGivesItsNumber() {
    Run r;
    for (int i = 1; i <= Numbers; ++i) {
        r.Burst();
        QCOMPARE(int{r.t.m_iRecordFile}, i);
    }
    for (std::int16_t i = 1; i <= Numbers; ++i) QVERIFY(r.t.m_tFiles.IsOpen(i));  // no earlier than needed
    for (int i = 1; i <= 3; ++i) {
        r.Burst();
        QCOMPARE(int{r.t.m_iRecordFile}, i);
    }
}

void FileNumbersWindowTest::recordingGoesOnAfterManyBursts() {
    Run r;
    r.Bursts(Numbers);
    r.t.StartBoth();
    const QString sRecord = r.tWorld.Path(QStringLiteral("record.txt"));
    r.tWorld.tFileAnswers = {sRecord};
    r.t.Press("Record");
    QCOMPARE(r.t.Panel(1), std::string("Record"));
    r.t.FeedLine(0, "$PNMLS,1,1,1*");
    r.t.Press("Stop");
    QCOMPARE(Bytes(r.tWorld.ReadFile(sRecord)), QByteArray("05/15/2011 12:00:00 $PNMLS,1,1,1*\r\n"));
}

void FileNumbersWindowTest::playbackGoesOnAfterManyBursts() {
    Run r;
    r.Bursts(Numbers);
    r.tWorld.tFileAnswers = {r.sFile};
    r.t.Press("Playback");
    QCOMPARE(r.t.Panel(1), std::string("Playback"));
    r.t.Advance(1);
    QCOMPARE(r.t.Panel(1), std::string("Done"));
    QCOMPARE(r.t.Panel(2), std::string("1 Targets, 1 Messages"));
}

void FileNumbersWindowTest::burstThatEndedEarlyGivesItsNumberToo() {
    Run r;
    r.tWorld.WriteFile(r.sFile, "no recording\r\n");
    r.Bursts(Numbers);
    r.tWorld.WriteFile(r.sFile, std::string("05/15/2011 10:00:00 ") + Report + "\r\n");
    r.Burst();
    QCOMPARE(r.t.Panel(2), std::string("1 Targets, 1 Messages"));
}

void FileNumbersWindowTest::finishedBurstKeepsNoMemory_data() {
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("read to its end") << QByteArray("05/15/2011 10:00:00 $PNMLS,1,1,1*\r\n").repeated(10000);
    QTest::newRow("ended by a bad line") << QByteArray("no recording\r\n").repeated(10000);
    QTest::newRow("ended by a line too long") << QByteArray(1500000, 'x');
}

void FileNumbersWindowTest::finishedBurstKeepsNoMemory() {
    QFETCH(QByteArray, content);
    Run r;
    r.tWorld.WriteFile(r.sFile, support::View(content));
    r.Bursts(3);
    const long long lBefore = lHeld;
    r.Bursts(50);
    const long long lMore = lHeld - lBefore;
    QVERIFY2(lMore < 100000, qPrintable(QStringLiteral("%1 bytes more after 50 bursts").arg(lMore)));
}

QTEST_MAIN(FileNumbersWindowTest)
#include "FileNumbersWindowTest.moc"
