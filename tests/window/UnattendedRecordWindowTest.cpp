// Recording into a folder without a hand on it: files and their names, the change from one to the next, what happens
// when the folder or the room goes, and how it meets a recording by hand.
#include <sys/stat.h>
#include <unistd.h>

#include <QAction>
#include <QFile>
#include <QTest>
#include <algorithm>
#include <condition_variable>
#include <mutex>

#include "tests/support/Bytes.h"
#include "tests/support/FullDisk.h"
#include "tests/support/IsoTime.h"
#include "tests/support/PrintString.h"
#include "tests/support/SlowDisk.h"
#include "tests/window/Unattended.h"

using support::TestWindow;
using support::Unattended;

namespace {

using Names = std::vector<std::string>;
using Log = std::vector<std::string>;

const std::string Full = "The disk is nearly full";

std::string Sentence(int i) { return "$GPGLL," + std::to_string(i); }

auto LineCount(const std::string& sContent) { return std::ranges::count(sContent, '\n'); }

// A folder's job that ends when it may.
struct Gate {
    void Open() {
        const std::scoped_lock tLock(tMutex);
        bOpen = true;
        tChanged.notify_all();
    }
    void Pass() {
        std::unique_lock tLock(tMutex);
        ++iWaiting;
        tChanged.wait(tLock, [this] { return bOpen; });
    }
    std::mutex tMutex;
    std::condition_variable tChanged;
    bool bOpen = false;
    int iWaiting = 0;
};

}  // namespace

class UnattendedRecordWindowTest : public QObject {
    Q_OBJECT

private slots:
    void recordsFromTheFirstLineOn();
    void everyRunHasAFileOfItsOwn();
    void withoutStartItWaitsForIt();
    void homeFolderIsUnderstood();
    void nextFile_data();
    void nextFile();
    void nextFileDoesNotWaitForTheDisk();
    void nothingWaitsForTheFolder();
    void stopWaitsForAllFiles();
    void anotherFileOfThatNameStays();
    void missingFolderIsToldOnceAndWaitedFor();
    void unwritableFolderIsTold();
    void folderThatIsRemovedIsTold();
    void fileThatIsRemovedIsFollowedByAnother();
    void failingDiskLeavesNoEmptyFiles();
    void failingDiskIsTriedOnceAMinute();
    void fullDiskTakesTheOldestThenStops();
    void fullDiskAtTheStart();
    void oldFilesGo();
    void thousandForeignFilesStay();
    void fileOfAnotherWindowStays();
    void recordingByHandIsNotDisturbed();
    void openDialogIsNotDisturbed();
    void playbackIsNotRecorded();
};

void UnattendedRecordWindowTest::recordsFromTheFirstLineOn() {
    Unattended u("Start=1\nRecord=$F\n");
    TestWindow& t = u.Begin();
    QCOMPARE(t.Panel(1), std::string("Record"));
    QVERIFY(t.Toolbar.Action(QStringLiteral("Record")).isChecked());
    QVERIFY(!t.Toolbar.Action(QStringLiteral("Record")).isEnabled());
    QVERIFY(t.Toolbar.Action(QStringLiteral("Stop")).isEnabled());
    u.Pass(83);
    QCOMPARE(u.Files(), Names{});  // nothing has come
    t.FeedLine(0, "$GPZDA,not decoded");
    t.FeedLine(0, Sentence(1));
    QCOMPARE(u.Files(), Names{"tidewatch-20110515-120123.txt"});
    QCOMPARE(u.Content(u.Files()[0]), std::string("05/15/2011 12:01:23 $GPGLL,1\r\n"));  // known as ours at once
    t.FeedLine(0, Sentence(2));
    u.Pass(1);
    t.FeedLine(0, Sentence(3));
    t.Press("Stop");
    QCOMPARE(t.Panel(1), std::string("Stopped"));
    QCOMPARE(u.Files().size(), std::size_t{1});
    QCOMPARE(u.Content(u.Files()[0]), std::string("05/15/2011 12:01:23 $GPGLL,1\r\n05/15/2011 12:01:23 $GPGLL,2\r\n"
                                                  "05/15/2011 12:01:24 $GPGLL,3\r\n"));
    QVERIFY(u.w.tDialogs.empty());
}

void UnattendedRecordWindowTest::everyRunHasAFileOfItsOwn() {
    Unattended u("Start=1\nRecord=$F\nRotate=never\n");
    TestWindow& t = u.Begin();
    t.FeedLine(0, Sentence(1));
    t.Press("Stop");
    u.Pass(5);
    t.Press("Start");
    QCOMPARE(t.Panel(1), std::string("Record"));
    t.FeedLine(0, Sentence(2));
    u.t.reset();  // as a kill would, but for the last second
    u.Begin().FeedLine(0, Sentence(3));
    u.t->Form_Unload();
    QCOMPARE(u.Files(), (Names{"tidewatch-20110515-120000.txt", "tidewatch-20110515-120005-2.txt",
                               "tidewatch-20110515-120005.txt"}));
    QCOMPARE(u.Content("tidewatch-20110515-120005-2.txt"), std::string("05/15/2011 12:00:05 $GPGLL,3\r\n"));
    QCOMPARE(u.Content("tidewatch-20110515-120005.txt"), std::string("05/15/2011 12:00:05 $GPGLL,2\r\n"));
}

void UnattendedRecordWindowTest::withoutStartItWaitsForIt() {
    Unattended u("Record=$F\n");
    TestWindow& t = u.Begin();
    u.Pass(100);
    QCOMPARE(t.Panel(1), std::string("Stopped"));
    t.Press("Start");
    QCOMPARE(t.Panel(1), std::string("Record"));
    t.FeedLine(0, Sentence(1));
    QCOMPARE(u.Files(), Names{"tidewatch-20110515-120140.txt"});
}

void UnattendedRecordWindowTest::homeFolderIsUnderstood() {
    Unattended u("Start=1\nRecord=~/recordings\n");
    const QByteArray sHome = qgetenv("HOME");
    qputenv("HOME", QFile::encodeName(u.w.Folder()));
    u.Begin().FeedLine(0, Sentence(1));
    qputenv("HOME", sHome);
    QCOMPARE(u.Files().size(), std::size_t{1});
}

void UnattendedRecordWindowTest::nextFile_data() {
    QTest::addColumn<std::string>("rotate");
    QTest::addColumn<Names>("times");  // of the lines
    QTest::addColumn<Names>("files");  // their names' digits and how many lines each has
    QTest::newRow("midnight") << std::string("daily")
                              << Names{"2011-05-15T23:59:59", "2011-05-16T00:00:00", "2011-05-16T00:00:00"}
                              << Names{"20110515-235959:1", "20110516-000000:2"};
    QTest::newRow("turn of the year") << std::string("daily")
                                      << Names{"2011-12-31T23:59:58", "2011-12-31T23:59:59", "2012-01-01T00:00:00"}
                                      << Names{"20111231-235958:2", "20120101-000000:1"};
    QTest::newRow("silent days") << std::string("daily") << Names{"2011-05-15T10:00:00", "2011-05-19T10:00:00"}
                                 << Names{"20110515-100000:1", "20110519-100000:1"};
    QTest::newRow("set back across midnight")
        << std::string("daily")
        << Names{"2011-05-16T00:00:10", "2011-05-15T23:59:50", "2011-05-16T00:00:01", "2011-05-17T00:00:00"}
        << Names{"20110516-000010:3", "20110517-000000:1"};
    QTest::newRow("set right by years") << std::string("daily")
                                        << Names{"2031-05-16T00:00:10", "2011-05-16T00:00:10", "2011-05-17T00:00:10"}
                                        << Names{"20110516-000010:1", "20110517-000010:1", "20310516-000010:1"};
    QTest::newRow("hours") << std::string("hourly")
                           << Names{"2011-05-15T12:00:00", "2011-05-15T12:59:59", "2011-05-15T13:00:00",
                                    "2011-05-15T15:30:00"}
                           << Names{"20110515-120000:2", "20110515-130000:1", "20110515-153000:1"};
    QTest::newRow("summer time ends") << std::string("hourly")
                                      << Names{"2011-10-30T02:59:59", "2011-10-30T02:00:00", "2011-10-30T02:59:59",
                                               "2011-10-30T03:00:00"}
                                      << Names{"20111030-025959:3", "20111030-030000:1"};
    QTest::newRow("summer time begins") << std::string("hourly") << Names{"2011-03-27T01:59:59", "2011-03-27T03:00:00"}
                                        << Names{"20110327-015959:1", "20110327-030000:1"};
    QTest::newRow("never") << std::string("never")
                           << Names{"2011-05-15T12:00:00", "2011-05-16T12:00:00", "2012-05-16T12:00:00"}
                           << Names{"20110515-120000:3"};
}

void UnattendedRecordWindowTest::nextFile() {
    QFETCH(std::string, rotate);
    QFETCH(Names, times);
    QFETCH(Names, files);
    Unattended u("Start=1\nRecord=$F\nRotate=" + rotate + "\n");
    TestWindow& t = u.Begin();
    for (std::size_t i = 0; i < times.size(); ++i) {
        u.w.SetClock(times[i]);
        t.Feed(0, Sentence(static_cast<int>(i)).substr(0, 3));  // a line is taken whole, whenever it began
        t.Feed(0, Sentence(static_cast<int>(i)).substr(3) + "\r\n");
    }
    t.Press("Stop");
    Names sFiles;
    for (const std::string& sName : u.Files()) {
        const std::string sContent = u.Content(sName);
        QVERIFY(sContent.ends_with("\r\n"));
        sFiles.push_back(sName.substr(10, 15) + ":" + std::to_string(LineCount(sContent)));
    }
    QCOMPARE(sFiles, files);
    QCOMPARE(u.Log().size(), times.size());  // and no notice
}

void UnattendedRecordWindowTest::nextFileDoesNotWaitForTheDisk() {
    const support::SlowDisk tDisk;
    Unattended u("Start=1\nRecord=$F\n", "2011-05-15T23:59:50");
    u.w.tSynchronize = tDisk.Function();
    TestWindow& t = u.Begin();
    for (int i = 0; i < 20; ++i) {
        t.FeedLine(0, Sentence(i));
        u.Pass(1);
    }
    QCOMPARE(tDisk.Ended(), 0);
    QCOMPARE(u.Files(), (Names{"tidewatch-20110515-235950.txt", "tidewatch-20110516-000000.txt"}));
    QCOMPARE(LineCount(u.Content(u.Files()[0])), 10);  // with the system already
    QCOMPARE(LineCount(u.Content(u.Files()[1])), 10);
    QVERIFY(t.m_tFiles.IsOpen(1) && t.m_tFiles.IsOpen(2));
    tDisk.ReleaseAll();
    while (t.m_tFiles.IsOpen(1)) t.RecordFlush(), u.Pass(1);  // closed once it is on the disk
    QVERIFY(t.m_tFiles.IsOpen(2));
    QVERIFY(u.w.bBusyPointer.empty());
}

void UnattendedRecordWindowTest::nothingWaitsForTheFolder() {
    Unattended u("Start=1\nRecord=$F\nKeep days=1\n");
    const auto pGate = std::make_shared<Gate>();
    u.w.tAdjust = [pGate](toolkit::Platform& t) {
        t.DiskRoom = [pGate](const std::filesystem::path&) -> std::optional<runtime::DiskRoom> {
            pGate->Pass();
            return std::nullopt;
        };
    };
    u.t = std::make_unique<TestWindow>(u.w);
    u.t->LoadAndShow();
    u.t->UnattendedBegin();
    for (int i = 0; i < 200; ++i) {
        u.t->FeedLine(0, Sentence(i));
        u.t->Advance(1);
    }
    QCOMPARE(LineCount(u.Content("tidewatch-20110515-120000.txt")), 200);
    u.t->Press("Stop");
    QCOMPARE(u.t->Panel(1), std::string("Stopped"));
    pGate->Open();
    u.t->m_tFolderWork.Wait();
    QCOMPARE(pGate->iWaiting, 1);  // and no queue of them
}

void UnattendedRecordWindowTest::stopWaitsForAllFiles() {
    Unattended u("Start=1\nRecord=$F\nRotate=hourly\n", "2011-05-15T12:59:59");
    std::vector<int> iSynchronized;
    std::mutex tMutex;
    u.w.tSynchronize = [&](int iDescriptor) {
        struct stat tStatus {};
        ::fstat(iDescriptor, &tStatus);
        const std::scoped_lock tLock(tMutex);
        iSynchronized.push_back(static_cast<int>(tStatus.st_size));
        return 0;
    };
    TestWindow& t = u.Begin();
    t.FeedLine(0, Sentence(1));
    t.FeedLine(0, Sentence(2));
    u.w.SetClock("2011-05-15T13:00:00");
    t.FeedLine(0, Sentence(3));
    t.Press("Stop");
    QVERIFY(!t.m_tFiles.IsOpen(1) && !t.m_tFiles.IsOpen(2));
    QVERIFY(std::ranges::find(iSynchronized, 60) != iSynchronized.end());  // two lines of 30
    QVERIFY(std::ranges::find(iSynchronized, 30) != iSynchronized.end());
}

void UnattendedRecordWindowTest::anotherFileOfThatNameStays() {
    Unattended u("Start=1\nRecord=$F\n");
    u.w.WriteFile(u.sFolder + QStringLiteral("/tidewatch-20110515-120000.txt"), "precious");
    u.Begin().FeedLine(0, Sentence(1));
    QCOMPARE(u.Content("tidewatch-20110515-120000.txt"), std::string("precious"));
    QCOMPARE(u.Content("tidewatch-20110515-120000-2.txt"), std::string("05/15/2011 12:00:00 $GPGLL,1\r\n"));
}

void UnattendedRecordWindowTest::missingFolderIsToldOnceAndWaitedFor() {
    Unattended u("Start=1\nRecord=$F\n");
    QVERIFY(QDir(u.sFolder).removeRecursively());
    TestWindow& t = u.Begin();
    const std::string sCause = "Record - No such file or directory: " + u.sFolder.toStdString();
    u.Pass(1);  // no line has come
    QCOMPARE(t.Panel(1), std::string("Running"));
    QCOMPARE(t.Panel(2), sCause);
    QVERIFY(t.Toolbar.Action(QStringLiteral("Record")).isEnabled());
    t.FeedLine(0, Sentence(1));
    u.Pass(600);
    QCOMPARE(u.Log(), (Log{"<<" + sCause + ">>", Sentence(1)}));
    QVERIFY(!QDir(u.sFolder).exists());  // where no disk is mounted none shall be invented
    QVERIFY(QDir().mkpath(u.sFolder));
    u.Pass(61);
    QCOMPARE(t.Panel(1), std::string("Record"));
    t.FeedLine(0, Sentence(2));
    QCOMPARE(u.Files().size(), std::size_t{1});
    QCOMPARE(t.MSComm(0).PortOpen(), true);
}

void UnattendedRecordWindowTest::unwritableFolderIsTold() {
    Unattended u("Start=1\nRecord=$F\n");
    const bool bOwner = ::geteuid() == 0;  // of the system, who may write everywhere
    QCOMPARE(::chmod(u.sFolder.toStdString().c_str(), 0555), 0);
    QCOMPARE(::chmod(u.w.Folder().toStdString().c_str(), 0755), 0);
    u.Begin();
    u.t->Press("Stop");
    if (bOwner) QCOMPARE(::seteuid(65534), 0);
    u.t->Press("Start");
    u.t->FeedLine(0, Sentence(1));
    u.Pass(70);
    const Log sLog = u.Log();
    const Names sFiles = u.Files();
    if (bOwner) QCOMPARE(::seteuid(0), 0);
    QCOMPARE(sLog, (Log{Sentence(1), "<<Record - Permission denied: " + u.sFolder.toStdString() + ">>"}));
    QCOMPARE(sFiles, Names{});
    QCOMPARE(::chmod(u.sFolder.toStdString().c_str(), 0755), 0);
}

void UnattendedRecordWindowTest::folderThatIsRemovedIsTold() {
    Unattended u("Start=1\nRecord=$F\n");
    TestWindow& t = u.Begin();
    t.FeedLine(0, Sentence(1));
    u.Pass(90);
    QVERIFY(QDir(u.sFolder).removeRecursively());
    u.Pass(200);
    const std::string sAt = ": " + u.sFolder.toStdString() + ">>";
    QCOMPARE(u.Log(), (Log{Sentence(1), "<<Record - The file is no longer there" + sAt,
                           "<<Record - No such file or directory" + sAt}));
    QCOMPARE(t.Panel(1), std::string("Running"));
    QVERIFY(QDir().mkpath(u.sFolder));
    u.Pass(61);
    t.FeedLine(0, Sentence(2));
    QCOMPARE(u.Files().size(), std::size_t{1});
}

// As by a tool that moves logs away: hardly a line is lost.
void UnattendedRecordWindowTest::fileThatIsRemovedIsFollowedByAnother() {
    Unattended u("Start=1\nRecord=$F\n");
    TestWindow& t = u.Begin();
    t.FeedLine(0, Sentence(1));
    u.Pass(90);
    QVERIFY(
        QFile::rename(u.sFolder + QStringLiteral("/tidewatch-20110515-120000.txt"), u.w.Path(QStringLiteral("moved"))));
    u.Pass(3);
    QCOMPARE(t.Panel(1), std::string("Record"));
    t.FeedLine(0, Sentence(2));
    QCOMPARE(u.Files(), Names{"tidewatch-20110515-120133.txt"});
}

// A disk that has room and yet takes nothing, for hours.
void UnattendedRecordWindowTest::failingDiskLeavesNoEmptyFiles() {
    Unattended u("Start=1\nRecord=$F\n");
    TestWindow& t = u.Begin();
    {
        const support::FullDisk tFull(0);
        for (int i = 0; i < 20; ++i) {
            t.FeedLine(0, Sentence(i));
            u.Pass(30);
        }
    }
    QCOMPARE(u.Files(), Names{});
    const Log sLog = u.Log();
    QCOMPARE(std::ranges::count_if(sLog, [](const std::string& s) { return s.starts_with("<<Record - "); }), 1);
    u.Pass(60);
    t.FeedLine(0, Sentence(1));
    QCOMPARE(u.Files().size(), std::size_t{1});
}

// Lines come all the time, the first one before the folder's report is there.
void UnattendedRecordWindowTest::failingDiskIsTriedOnceAMinute() {
    Unattended u("Start=1\nRecord=$F\n");
    TestWindow& t = u.Begin();
    const support::FullDisk tFull(0);
    int iBegun = 0;
    for (int i = 0; i < 600; ++i) {
        if (t.Panel(1) == "Record") ++iBegun;
        t.FeedLine(0, Sentence(i));
        QCOMPARE(t.Panel(1), std::string("Running"));
        u.Pass(1);
    }
    QCOMPARE(iBegun, 10);
}

void UnattendedRecordWindowTest::fullDiskTakesTheOldestThenStops() {
    Unattended u("Start=1\nRecord=$F\nRotate=hourly\n");
    // Each of our files takes 30 MB of 260.
    u.w.tAdjust = [&u](toolkit::Platform& t) {
        t.DiskRoom = [sFolder = u.sFolder, p = u.w.pRoom](const std::filesystem::path&) {
            const auto lFiles = QDir(sFolder).entryList({QStringLiteral("tidewatch-*")}, QDir::Files).size();
            return runtime::DiskRoom{p->lFree - lFiles * 30'000'000, 1'000'000'000'000};
        };
    };
    u.w.pRoom->lFree = 260'000'000;
    TestWindow& t = u.Begin();
    for (int i = 12; i < 18; ++i) {
        u.w.SetClock("2011-05-15T" + std::to_string(i) + ":00:00");
        t.FeedLine(0, Sentence(i));
        u.AwaitDisk();
        u.Pass(2);
    }
    QCOMPARE(u.Files(), (Names{"tidewatch-20110515-160000.txt", "tidewatch-20110515-170000.txt"}));
    QCOMPARE(t.Panel(1), std::string("Record"));
    u.w.pRoom->lFree = 100'000'000;  // another program takes the rest
    u.Pass(61);
    const std::string sNotice = "Record - " + Full + ": " + u.sFolder.toStdString();
    QCOMPARE(u.Files(), Names{"tidewatch-20110515-170000.txt"});  // what was recorded last is not given up
    QCOMPARE(t.Panel(1), std::string("Running"));
    QCOMPARE(t.Panel(2), sNotice);
    t.FeedLine(0, Sentence(100));
    u.Pass(600);
    QCOMPARE(t.Panel(1), std::string("Running"));
    QCOMPARE(u.Content(u.Files()[0]), std::string("05/15/2011 17:00:00 $GPGLL,17\r\n"));
    QCOMPARE(std::ranges::count(u.Log(), "<<" + sNotice + ">>"), 1);
    u.w.pRoom->lFree = 300'000'000;
    u.Pass(61);
    QCOMPARE(t.Panel(1), std::string("Record"));
    t.FeedLine(0, Sentence(101));
    QCOMPARE(u.Files().size(), std::size_t{2});
}

void UnattendedRecordWindowTest::fullDiskAtTheStart() {
    Unattended u("Start=1\nRecord=$F\n");
    u.w.pRoom->lFree = 10;
    TestWindow& t = u.Begin();
    u.Pass(1);
    QCOMPARE(t.Panel(1), std::string("Running"));
    QCOMPARE(u.Log(), Log{"<<Record - " + Full + ": " + u.sFolder.toStdString() + ">>"});
    QCOMPARE(u.Files(), Names{});
}

void UnattendedRecordWindowTest::oldFilesGo() {
    Unattended u("Start=1\nRecord=$F\nKeep days=2\n", "2011-05-10T12:00:00");
    TestWindow& t = u.Begin();
    for (int iDay = 10; iDay < 16; ++iDay) {
        u.w.SetClock("2011-05-" + std::to_string(iDay) + "T12:00:00");
        t.FeedLine(0, Sentence(iDay));
        u.AwaitDisk();
        u.Pass(2);
    }
    QCOMPARE(u.Files(), (Names{"tidewatch-20110513-120000.txt", "tidewatch-20110514-120000.txt",
                               "tidewatch-20110515-120000.txt"}));
    u.Pass(60);  // nothing but time goes by
    QCOMPARE(u.Files().size(), std::size_t{2});
    QCOMPARE(u.Log().size(), std::size_t{6});
}

void UnattendedRecordWindowTest::thousandForeignFilesStay() {
    Unattended u("Start=1\nRecord=$F\nRotate=hourly\nKeep days=1\nKeep MB=1\n");
    for (int i = 0; i < 1000; ++i) {
        u.w.WriteFile(u.sFolder + QStringLiteral("/photo%1.jpg").arg(i), std::string(2000, 'x'));
    }
    u.w.pRoom->lFree = 0;
    TestWindow& t = u.Begin();
    for (int i = 12; i < 20; ++i) {
        u.w.SetClock("2011-05-15T" + std::to_string(i) + ":00:00");
        t.FeedLine(0, Sentence(i));
        u.AwaitDisk();
        u.Pass(2);
    }
    const Names sFiles = u.Files();
    QCOMPARE(std::ranges::count_if(sFiles, [](const std::string& s) { return s.starts_with("photo"); }), 1000);
    QCOMPARE(sFiles.size(), std::size_t{1001});
}

// Two windows on the same profile and folder: what the other one records into stays.
void UnattendedRecordWindowTest::fileOfAnotherWindowStays() {
    Unattended u("Start=1\nRecord=$F\nKeep days=1\n", "2011-05-01T12:00:00");
    TestWindow& t = u.Begin();
    TestWindow tOther(u.w);
    tOther.LoadAndShow();
    tOther.txtCommPort(0).SetText("2");
    tOther.UnattendedBegin();
    tOther.m_tFolderWork.Wait();
    tOther.FeedLine(0, Sentence(1));
    u.w.SetClock("2011-05-15T12:00:00");
    t.FeedLine(0, Sentence(2));
    u.Pass(61);
    QCOMPARE(u.Files(), (Names{"tidewatch-20110501-120000.txt", "tidewatch-20110515-120000.txt"}));
    tOther.Press("Stop");
    u.Pass(61);
    QCOMPARE(u.Files(), Names{"tidewatch-20110515-120000.txt"});
}

void UnattendedRecordWindowTest::recordingByHandIsNotDisturbed() {
    Unattended u("Start=1\nRecord=$F\n");
    QVERIFY(QDir(u.sFolder).removeRecursively());
    TestWindow& t = u.Begin();
    u.Pass(1);
    const QString sFile = u.w.Path(QStringLiteral("by hand.txt"));
    u.w.tFileAnswers = {sFile};
    t.Press("Record");
    QCOMPARE(t.Panel(1), std::string("Record"));
    QVERIFY(QDir().mkpath(u.sFolder));
    u.w.SetClock("2011-05-15T23:59:00");
    for (int i = 0; i < 120; ++i) {
        t.FeedLine(0, Sentence(i));
        u.Pass(1);
    }
    QCOMPARE(u.Files(), Names{});
    QVERIFY(QFile::remove(sFile));  // it ends, and the other one takes over
    u.Pass(63);
    QCOMPARE(t.LastLine(t.lstCommData(0)), std::string("<<Record - The file is no longer there>>"));
    t.FeedLine(0, Sentence(1));
    QCOMPARE(u.Files().size(), std::size_t{1});
    QCOMPARE(t.Panel(1), std::string("Record"));
}

void UnattendedRecordWindowTest::openDialogIsNotDisturbed() {
    Unattended u("Start=1\nRecord=$F\n");
    QVERIFY(QDir(u.sFolder).removeRecursively());
    const QString sFile = u.w.Path(QStringLiteral("by hand.txt"));
    u.w.tAdjust = [&](toolkit::Platform& t) {
        t.AskFile = [&](QWidget*, const toolkit::FileRequest&) {  // the window lives on meanwhile
            QDir().mkpath(u.sFolder);
            u.Pass(130);
            return std::optional(sFile);
        };
    };
    TestWindow& t = u.Begin();
    u.Pass(1);
    t.Press("Record");
    t.FeedLine(0, Sentence(1));
    t.Press("Stop");
    QCOMPARE(u.Files(), Names{});
    QVERIFY(QByteArray(u.w.ReadFile(sFile).c_str()).endsWith("$GPGLL,1\r\n"));
}

void UnattendedRecordWindowTest::playbackIsNotRecorded() {
    Unattended u("Record=$F\n");
    TestWindow& t = u.Begin();
    const QString sFile = u.w.Path(QStringLiteral("a.txt"));
    u.w.WriteFile(sFile, "05/01/2011 10:00:00 $GPGLL,1\r\n05/01/2011 10:02:00 $GPGLL,2\r\n");
    u.w.tFileAnswers = {sFile, sFile};
    t.Press("Playback");
    u.Pass(130);
    QCOMPARE(t.Panel(1), std::string("Done"));
    t.Press("Playback Burst");
    u.Pass(65);
    QCOMPARE(u.Files(), Names{});
    QCOMPARE(t.Panel(1), std::string("Playback"));
}

QTEST_MAIN(UnattendedRecordWindowTest)
#include "UnattendedRecordWindowTest.moc"
