// Bringing files to the disk in the background: nobody waits who need not, one at a time, nothing forgotten.
#include "platform/runtime/DiskSync.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QTemporaryFile>
#include <QTest>
#include <atomic>
#include <cerrno>
#include <random>

#include "tests/support/SlowDisk.h"

using runtime::DiskSync;
using support::SlowDisk;

namespace {

qsizetype Entries(const char* sFolder) {
    return QDir(QLatin1StringView(sFolder)).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::System).size();
}

qsizetype Threads() { return Entries("/proc/self/task"); }
qsizetype Descriptors() { return Entries("/proc/self/fd"); }

}  // namespace

class DiskSyncTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(m_tFile.open()); }
    void init() {
        m_lThreads = Threads();
        m_lDescriptors = Descriptors();
    }

    void requestDoesNotWait();
    void everyRequestIsFollowedByASynchronization();
    void requestsMeanwhileBecomeOne();
    void waitEndsWhenAllIsDone();
    void waitGivesUpAfterItsPatience();
    void firstFailureIsToldOnce();
    void laterSuccessDoesNotHideAFailure();
    void endDoesNotWaitForTheDisk();
    void whatWasAskedForIsDoneAfterTheEnd();
    void nothingIsLeftBehind();
    void descriptorIsACopy();
    void badDescriptorIsRefused();
    void realDiskIsSynchronized_data();
    void realDiskIsSynchronized();
    void randomUse();

private:
    // The system lists an ended thread for a moment longer.
    void AwaitNothingLeft() const {
        while (Threads() != m_lThreads || Descriptors() != m_lDescriptors) std::this_thread::yield();
    }

    QTemporaryFile m_tFile;
    qsizetype m_lThreads = 0;
    qsizetype m_lDescriptors = 0;
};

void DiskSyncTest::requestDoesNotWait() {
    const SlowDisk tDisk;
    DiskSync t(m_tFile.handle(), tDisk.Function());
    t.Request();
    tDisk.AwaitBegun(1);
    t.Request();
    QCOMPARE(t.TakeError(), 0);
    QCOMPARE(tDisk.Ended(), 0);
    tDisk.ReleaseAll();
    t.Wait();
}

void DiskSyncTest::everyRequestIsFollowedByASynchronization() {
    const SlowDisk tDisk;
    tDisk.ReleaseAll();
    DiskSync t(m_tFile.handle(), tDisk.Function());
    QCOMPARE(tDisk.Begun(), 0);
    for (int i = 1; i <= 20; ++i) {
        t.Request();
        t.Wait();
        QCOMPARE(tDisk.Ended(), i);
    }
}

// One that is under way may have begun before the latest was written, so it does not count for it.
void DiskSyncTest::requestsMeanwhileBecomeOne() {
    const SlowDisk tDisk;
    DiskSync t(m_tFile.handle(), tDisk.Function());
    t.Request();
    tDisk.AwaitBegun(1);
    for (int i = 0; i < 10; ++i) t.Request();
    QCOMPARE(tDisk.Begun(), 1);
    tDisk.Release(1);
    tDisk.AwaitBegun(2);
    tDisk.ReleaseAll();
    t.Wait();
    QCOMPARE(tDisk.Ended(), 2);
    QCOMPARE(tDisk.MostAtOnce(), 1);
}

void DiskSyncTest::waitEndsWhenAllIsDone() {
    const SlowDisk tDisk;
    DiskSync t(m_tFile.handle(), tDisk.Function());
    t.Wait();  // nothing was asked for
    QVERIFY(t.Wait(std::chrono::milliseconds(0)));
    t.Request();
    tDisk.AwaitBegun(1);
    t.Request();
    std::atomic<bool> bDone = false;
    std::thread tWaiting([&] {
        t.Wait();
        bDone = true;
    });
    tDisk.Release(1);
    tDisk.AwaitBegun(2);
    QVERIFY(!bDone);
    tDisk.Release(1);
    tWaiting.join();
    QCOMPARE(tDisk.Ended(), 2);
}

void DiskSyncTest::waitGivesUpAfterItsPatience() {
    const SlowDisk tDisk;
    DiskSync t(m_tFile.handle(), tDisk.Function());
    t.Request();
    QVERIFY(!t.Wait(std::chrono::milliseconds(1)));
    QCOMPARE(tDisk.Ended(), 0);
    tDisk.Release(1);
    t.Wait();
    QVERIFY(t.Wait(std::chrono::milliseconds(0)));
    QCOMPARE(tDisk.Ended(), 1);
}

void DiskSyncTest::firstFailureIsToldOnce() {
    const SlowDisk tDisk;
    tDisk.ReleaseAll();
    DiskSync t(m_tFile.handle(), tDisk.Function());
    for (const int iError : {ENOSPC, EIO}) {
        tDisk.Answer(iError);
        t.Request();
        t.Wait();
    }
    QCOMPARE(t.TakeError(), ENOSPC);
    QCOMPARE(t.TakeError(), 0);
}

void DiskSyncTest::laterSuccessDoesNotHideAFailure() {
    const SlowDisk tDisk;
    tDisk.ReleaseAll();
    DiskSync t(m_tFile.handle(), tDisk.Function());
    for (const int iError : {EIO, 0}) {
        tDisk.Answer(iError);
        t.Request();
        t.Wait();
    }
    QCOMPARE(t.TakeError(), EIO);
}

void DiskSyncTest::endDoesNotWaitForTheDisk() {
    const SlowDisk tDisk;
    {
        DiskSync t(m_tFile.handle(), tDisk.Function());
        t.Request();
        tDisk.AwaitBegun(1);
    }
    QCOMPARE(tDisk.Ended(), 0);
    tDisk.ReleaseAll();
    AwaitNothingLeft();
    QCOMPARE(tDisk.Ended(), 1);
}

void DiskSyncTest::whatWasAskedForIsDoneAfterTheEnd() {
    const SlowDisk tDisk;
    {
        DiskSync t(m_tFile.handle(), tDisk.Function());
        t.Request();
        tDisk.AwaitBegun(1);
        t.Request();
    }
    tDisk.ReleaseAll();
    AwaitNothingLeft();
    QCOMPARE(tDisk.Ended(), 2);
}

void DiskSyncTest::nothingIsLeftBehind() {
    const SlowDisk tDisk;
    tDisk.ReleaseAll();
    {
        DiskSync t(m_tFile.handle(), tDisk.Function());
        QCOMPARE(Threads(), m_lThreads + 1);
        QCOMPARE(Descriptors(), m_lDescriptors + 1);
        t.Request();
        t.Wait();
    }
    AwaitNothingLeft();
}

void DiskSyncTest::descriptorIsACopy() {
    struct stat tExpected {};
    QCOMPARE(::fstat(m_tFile.handle(), &tExpected), 0);
    struct stat tSeen {};
    bool bInherited = true;
    const int iOriginal = ::dup(m_tFile.handle());
    DiskSync t(iOriginal, [&](int iDescriptor) {
        bInherited = (::fcntl(iDescriptor, F_GETFD) & FD_CLOEXEC) == 0;
        return ::fstat(iDescriptor, &tSeen) == 0 ? 0 : errno;
    });
    ::close(iOriginal);
    t.Request();
    t.Wait();
    QCOMPARE(t.TakeError(), 0);
    QCOMPARE(tSeen.st_ino, tExpected.st_ino);
    QVERIFY(!bInherited);
}

void DiskSyncTest::badDescriptorIsRefused() {
    try {
        const DiskSync t(-1, DiskSync::ToDisk);
        QFAIL("no failure");
    } catch (const std::system_error& tError) {
        QCOMPARE(tError.code().value(), EBADF);
    }
    AwaitNothingLeft();
}

void DiskSyncTest::realDiskIsSynchronized_data() {
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<int>("error");
    QTest::newRow("file") << QFile::encodeName(m_tFile.fileName()) << 0;
    QTest::newRow("device without") << QByteArray("/dev/full") << 0;
}

void DiskSyncTest::realDiskIsSynchronized() {
    QFETCH(QByteArray, file);
    QFETCH(int, error);
    const int iDescriptor = ::open(file.constData(), O_WRONLY | O_CLOEXEC);
    QVERIFY(iDescriptor >= 0);
    QCOMPARE(DiskSync::ToDisk(iDescriptor), error);
    ::close(iDescriptor);
    QCOMPARE(DiskSync::ToDisk(iDescriptor), EBADF);
}

void DiskSyncTest::randomUse() {
    std::mt19937 tRandom(7);
    for (int iRound = 0; iRound < 300; ++iRound) {
        const SlowDisk tDisk;
        {
            DiskSync t(m_tFile.handle(), tDisk.Function());
            const int iSteps = static_cast<int>(tRandom() % 8);
            for (int i = 0; i < iSteps; ++i) {
                t.Request();
                if (tRandom() % 2 == 0) tDisk.Release(1);
                if (tRandom() % 4 == 0) std::this_thread::yield();
                if (tRandom() % 8 == 0) t.TakeError();
            }
            if (tRandom() % 2 == 0) tDisk.ReleaseAll();
        }
        tDisk.ReleaseAll();
        AwaitNothingLeft();
        QCOMPARE(tDisk.Ended(), tDisk.Begun());
        QVERIFY(tDisk.MostAtOnce() <= 1);
    }
}

QTEST_GUILESS_MAIN(DiskSyncTest)
#include "DiskSyncTest.moc"
