// The file numbers over a long run: a finished burst keeps its file open, and neither the numbers nor the memory may
// run out for that.
#include <malloc.h>

#include <QTest>
#include <atomic>
#include <cstdlib>
#include <new>

#include "tests/support/Bytes.h"
#include "tests/support/PrintString.h"
#include "tests/window/Bench.h"

using support::Bytes;
using support::Player;

namespace {

constexpr int Numbers = 255;  // of files that can be open

std::atomic<long long> lHeld{0};  // bytes that are held by new

// A window and a short recording.
struct Run : Player {
    Run() : Player(std::string("05/15/2011 10:00:00 ") + support::AnyReport + "\r\n") {}
    void Bursts(int iCount) {
        for (int i = 0; i < iCount; ++i) Burst();
    }
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
    Run t;
    for (int i = 0; i < 2 * Numbers + 10; ++i) {
        t.StatusBar.SetPanelText(ui::PanelSummary, "before");
        t.Burst();
        QCOMPARE(t.Panel(2), std::string("1 Targets, 1 Messages"));
        QCOMPARE(t.windowTitle(), QStringLiteral("Tidewatch - played.txt"));
    }
}

void FileNumbersWindowTest::oldestFinishedBurstGivesItsNumber() {
    Run t;
    for (int i = 1; i <= Numbers; ++i) {
        t.Burst();
        QCOMPARE(int{t.m_iRecordFile}, i);
    }
    for (std::int16_t i = 1; i <= Numbers; ++i) QVERIFY(t.m_tFiles.IsOpen(i));  // no earlier than needed
    for (int i = 1; i <= 3; ++i) {
        t.Burst();
        QCOMPARE(int{t.m_iRecordFile}, i);
    }
}

void FileNumbersWindowTest::recordingGoesOnAfterManyBursts() {
    Run t;
    t.Bursts(Numbers);
    t.StartBoth();
    const QString sRecord = t.tWorld.Path(QStringLiteral("record.txt"));
    t.PressWithFile("Record", sRecord);
    QCOMPARE(t.Panel(1), std::string("Record"));
    t.FeedLine(0, "$PNMLS,1,1,1*");
    t.Press("Stop");
    QCOMPARE(Bytes(t.tWorld.ReadFile(sRecord)), QByteArray("05/15/2011 12:00:00 $PNMLS,1,1,1*\r\n"));
}

void FileNumbersWindowTest::playbackGoesOnAfterManyBursts() {
    Run t;
    t.Bursts(Numbers);
    t.PressWithFile("Playback", t.sFile);
    QCOMPARE(t.Panel(1), std::string("Playback"));
    t.Advance(1);
    QCOMPARE(t.Panel(1), std::string("Done"));
    QCOMPARE(t.Panel(2), std::string("1 Targets, 1 Messages"));
}

void FileNumbersWindowTest::burstThatEndedEarlyGivesItsNumberToo() {
    Run t;
    t.tWorld.WriteFile(t.sFile, "no recording\r\n");
    t.Bursts(Numbers);
    t.tWorld.WriteFile(t.sFile, std::string("05/15/2011 10:00:00 ") + support::AnyReport + "\r\n");
    t.Burst();
    QCOMPARE(t.Panel(2), std::string("1 Targets, 1 Messages"));
}

void FileNumbersWindowTest::finishedBurstKeepsNoMemory_data() {
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("read to its end") << QByteArray("05/15/2011 10:00:00 $PNMLS,1,1,1*\r\n").repeated(10000);
    QTest::newRow("ended by a bad line") << QByteArray("no recording\r\n").repeated(10000);
    QTest::newRow("ended by a line too long") << QByteArray(1500000, 'x');
}

void FileNumbersWindowTest::finishedBurstKeepsNoMemory() {
    QFETCH(QByteArray, content);
    Run t;
    t.tWorld.WriteFile(t.sFile, support::View(content));
    t.Bursts(3);
    const long long lBefore = lHeld;
    t.Bursts(50);
    const long long lMore = lHeld - lBefore;
    QVERIFY2(lMore < 100000, qPrintable(QStringLiteral("%1 bytes more after 50 bursts").arg(lMore)));
}

QTEST_MAIN(FileNumbersWindowTest)
#include "FileNumbersWindowTest.moc"
