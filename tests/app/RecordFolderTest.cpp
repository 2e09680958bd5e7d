// Tending the folder of an unattended recording, with real files: what goes, in which order, and what stays whatever
// happens.
#include "app/RecordFolder.h"

#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <cerrno>
#include <fstream>
#include <utility>

#include "app/CaptureLine.h"
#include "platform/runtime/TextFiles.h"
#include "tests/support/IsoTime.h"
#include "tests/support/PrintString.h"

using app::FolderReport;
using app::FolderTask;
using app::TendFolder;

namespace {

using Names = std::vector<std::string>;

constexpr std::int64_t Large = 1'000'000'000'000;

class Folder {
public:
    Folder() {
        tTask.tFolder = tPath;
        tTask.sProgram = "tidewatch";
        tTask.dtNow = *support::FromIso("2011-05-15T12:00:00");
        tTask.tRoom = [](const std::filesystem::path&) { return runtime::DiskRoom{Large, Large}; };
    }
    void Write(const std::string& sName, const std::string& sContent) const {
        std::ofstream(tPath / sName, std::ios::binary) << sContent;
    }
    // A recording of so many bytes, from one moment to another.
    std::string Record(const char* sFirst, const char* sLast, std::size_t iBytes = 200) const {
        std::string sStampFirst, sStampLast;
        const auto dtFirst = *support::FromIso(sFirst);
        runtime::AppendRecordStamp(sStampFirst, dtFirst);
        runtime::AppendRecordStamp(sStampLast, *support::FromIso(sLast));
        const std::string sEnd = sStampLast + " $GPGLL,last\r\n";
        std::string sText = sStampFirst + " $GPGLL,";
        sText += std::string(iBytes - sText.size() - sEnd.size() - 2, 'x') + "\r\n" + sEnd;
        std::string sDigits = sFirst;
        std::erase_if(sDigits, [](char c) { return c == '-' || c == ':'; });
        sDigits.replace(sDigits.find('T'), 1, "-");
        std::string sName = "tidewatch-" + sDigits + ".txt";
        Write(sName, sText);
        return sName;
    }
    // A capture of that beginning.
    std::string Capture(const char* sFirst) const {
        std::string sHead;
        app::WriteCaptureHead(sHead, {*support::FromIso(sFirst), 0});
        std::string sName = Record(sFirst, sFirst);
        std::filesystem::remove(tPath / sName);
        sName.replace(sName.size() - 4, 4, app::CaptureSuffix);
        Write(sName, sHead + "\r\n" + sHead.substr(0, 23) + " 1 < $GPGLL,x\\r\\n\r\n");
        return sName;
    }
    Names Left() const {
        Names sNames;
        for (const QString& s : QDir(sFolder()).entryList(
                 QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name)) {
            sNames.push_back(s.toStdString());
        }
        return sNames;
    }
    QString sFolder() const { return tTemporary.path(); }

    QTemporaryDir tTemporary;
    std::filesystem::path tPath = tTemporary.path().toStdString();
    FolderTask tTask;
};

}  // namespace

class RecordFolderTest : public QObject {
    Q_OBJECT

private slots:
    void withoutLimitsNothingGoes();
    void daysCountFromTheLastLine();
    void bytesCountAllOfOurs();
    void nearlyFullDiskTakesTheOldest();
    void newestStaysOnAFullDisk();
    void recordedFileStays();
    void whatIsNotOursStays();
    void emptyFilesOfOursDoNotCount();
    void capturesGoLikeRecordings();
    void fileThatIsChangedMeanwhileStays();
    void withoutDescriptorsNothingGoes();
    void otherProgramsFilesStay();
    void thousandForeignFilesStay();
    void missingAndUnusableFolders();
};

void RecordFolderTest::withoutLimitsNothingGoes() {
    Folder f;
    f.Record("1999-01-01T00:00:00", "1999-01-01T23:59:59");
    f.Record("2011-05-15T00:00:00", "2011-05-15T11:59:59");
    const FolderReport t = TendFolder(f.tTask);
    QCOMPARE(t.iError, 0);
    QVERIFY(!t.bNearlyFull && t.sRemoved.empty());
    QCOMPARE(f.Left().size(), std::size_t{2});
    QVERIFY(TendFolder(Folder().tTask).sRemoved.empty());  // nor of nothing
}

void RecordFolderTest::daysCountFromTheLastLine() {
    Folder f;
    const std::string sOld = f.Record("2011-05-07T00:00:00", "2011-05-08T11:59:59");
    const std::string sOlder = f.Record("2011-04-01T00:00:00", "2011-04-01T23:00:00");
    const std::string sLong = f.Record("2011-05-01T00:00:00", "2011-05-08T12:00:00");  // seven days to the second
    const std::string sNow = f.Record("2011-05-15T00:00:00", "2011-05-15T12:00:00");
    f.tTask.lKeepDays = 7;
    QCOMPARE(TendFolder(f.tTask).sRemoved, (Names{sOlder, sOld}));
    QCOMPARE(f.Left(), (Names{sLong, sNow}));
    f.tTask.dtNow.lSeconds += 1;
    QCOMPARE(TendFolder(f.tTask).sRemoved, Names{sLong});
}

void RecordFolderTest::bytesCountAllOfOurs() {
    Folder f;
    const Names sNames = {f.Record("2011-05-11T00:00:00", "2011-05-11T23:00:00", 400),
                          f.Record("2011-05-12T00:00:00", "2011-05-12T23:00:00", 300),
                          f.Record("2011-05-13T00:00:00", "2011-05-13T23:00:00", 300),
                          f.Record("2011-05-14T00:00:00", "2011-05-14T23:00:00", 100)};
    f.Write("notes.txt", std::string(5000, 'n'));
    f.tTask.lKeepBytes = 1100;
    QVERIFY(TendFolder(f.tTask).sRemoved.empty());
    f.tTask.lKeepBytes = 1099;
    QCOMPARE(TendFolder(f.tTask).sRemoved, Names{sNames[0]});
    f.tTask.lKeepBytes = 400;
    QCOMPARE(TendFolder(f.tTask).sRemoved, Names{sNames[1]});
    f.tTask.lKeepBytes = 1;
    QCOMPARE(TendFolder(f.tTask).sRemoved, Names{sNames[2]});  // and never the newest
    QCOMPARE(f.Left(), (Names{"notes.txt", sNames[3]}));
}

// Each file that goes makes 40 MB of room.
void RecordFolderTest::nearlyFullDiskTakesTheOldest() {
    Folder f;
    Names sNames;
    for (const char* sDay : {"2011-05-11", "2011-05-12", "2011-05-13", "2011-05-14"}) {
        sNames.push_back(
            f.Record((std::string(sDay) + "T01:00:00").c_str(), (std::string(sDay) + "T23:00:00").c_str()));
    }
    f.tTask.tRoom = [&f](const std::filesystem::path& tFolder) -> std::optional<runtime::DiskRoom> {
        if (tFolder != f.tPath) return std::nullopt;
        return runtime::DiskRoom{(7 - static_cast<std::int64_t>(f.Left().size())) * 40'000'000, Large};
    };
    const FolderReport t = TendFolder(f.tTask);  // 120 MB are free at first
    QCOMPARE(t.sRemoved, (Names{sNames[0], sNames[1]}));
    QVERIFY(!t.bNearlyFull);
    QVERIFY(TendFolder(f.tTask).sRemoved.empty());
}

void RecordFolderTest::newestStaysOnAFullDisk() {
    Folder f;
    const std::string sOld = f.Record("2011-05-14T00:00:00", "2011-05-14T23:00:00");
    const std::string sNew = f.Record("2011-05-15T00:00:00", "2011-05-15T11:00:00");
    f.tTask.tRoom = [](const std::filesystem::path&) { return runtime::DiskRoom{100, Large}; };
    const FolderReport t = TendFolder(f.tTask);
    QCOMPARE(t.sRemoved, Names{sOld});
    QVERIFY(t.bNearlyFull);
    QCOMPARE(f.Left(), Names{sNew});
    f.tTask.tRoom = [](const std::filesystem::path&) { return std::nullopt; };
    QVERIFY(!TendFolder(f.tTask).bNearlyFull);  // nobody knows
}

// By this program or by another one: the clock may have been set back, so it need not be the newest.
void RecordFolderTest::recordedFileStays() {
    Folder f;
    runtime::TextFiles tFiles([](int) { return 0; });
    QVERIFY(tFiles.Create(1, f.tPath / "tidewatch-20110501-000000.txt"));
    tFiles.WriteLine(1, "05/01/2011 00:00:00 $GPGLL,x");
    tFiles.Flush(1);
    const std::string sOld = f.Record("2011-05-02T00:00:00", "2011-05-02T00:00:00");
    const std::string sNew = f.Record("2011-05-15T00:00:00", "2011-05-15T11:00:00");
    f.tTask.lKeepDays = 1;
    f.tTask.lKeepBytes = 1;
    f.tTask.tRoom = [](const std::filesystem::path&) { return runtime::DiskRoom{0, Large}; };
    QCOMPARE(TendFolder(f.tTask).sRemoved, Names{sOld});
    tFiles.AwaitDisk(1);
    tFiles.Close(1);
    QCOMPARE(TendFolder(f.tTask).sRemoved, Names{"tidewatch-20110501-000000.txt"});
    QCOMPARE(f.Left(), Names{sNew});
}

void RecordFolderTest::whatIsNotOursStays() {
    Folder f;
    const std::string sOurs = f.Record("2011-05-01T00:00:00", "2011-05-01T01:00:00");
    const std::string sNew = f.Record("2011-05-15T00:00:00", "2011-05-15T11:00:00");
    f.Write("tidewatch-20110401-000000.txt", "my notes of April\n");
    f.Write("tidewatch-20110402-000000.txt", "04/02/2011 00:00:01 $GPGLL,another second\r\n");
    f.Write("tidewatch-20110403-000000.txt", std::string(4096, '\0'));
    f.Write("Tidewatch.Txt", "04/01/2011 00:00:00 $GPGLL,by hand\r\n");
    QVERIFY(QDir(f.sFolder()).mkdir(QStringLiteral("tidewatch-20110404-000000.txt")));
    QVERIFY(
        QFile::link(QString::fromStdString(sOurs), f.sFolder() + QStringLiteral("/tidewatch-20110501-000000-2.txt")));
    QVERIFY(QFile::link(QStringLiteral("/nowhere"), f.sFolder() + QStringLiteral("/tidewatch-20110406-000000.txt")));
    QCOMPARE(::mkfifo((f.tPath / "tidewatch-20110407-000000.txt").c_str(), 0600), 0);
    Names sExpected = f.Left();
    std::erase(sExpected, sOurs);
    f.tTask.lKeepDays = 1;
    f.tTask.lKeepBytes = 1;
    f.tTask.tRoom = [](const std::filesystem::path&) { return runtime::DiskRoom{0, Large}; };
    QCOMPARE(TendFolder(f.tTask).sRemoved, Names{sOurs});
    QCOMPARE(f.Left(), sExpected);
    QVERIFY(TendFolder(f.tTask).sRemoved.empty());
}

// What is not ours takes nothing from the bytes that we may keep.
void RecordFolderTest::emptyFilesOfOursDoNotCount() {
    Folder f;
    f.Record("2011-05-14T00:00:00", "2011-05-14T01:00:00", 500);
    f.Record("2011-05-15T00:00:00", "2011-05-15T11:00:00", 500);
    f.Write("tidewatch-20110515-110000.txt", std::string(5000, '\0'));
    f.tTask.lKeepBytes = 1000;
    QVERIFY(TendFolder(f.tTask).sRemoved.empty());
}

// The newest of each kind stays, so that neither takes the other's place.
void RecordFolderTest::capturesGoLikeRecordings() {
    Folder f;
    const std::string sOldCapture = f.Capture("2011-05-01T00:00:00");
    const std::string sOld = f.Record("2011-05-02T00:00:00", "2011-05-02T01:00:00");
    const std::string sCapture = f.Capture("2011-05-03T00:00:00");
    const std::string sNew = f.Record("2011-05-04T00:00:00", "2011-05-04T01:00:00");
    f.Write("tidewatch-20110404-000000" + std::string(app::CaptureSuffix), "my notes of April\n");
    f.tTask.lKeepBytes = 1;
    QCOMPARE(TendFolder(f.tTask).sRemoved, (Names{sOldCapture, sOld}));
    QCOMPARE(f.Left().size(), std::size_t{3});
    QVERIFY(std::filesystem::exists(f.tPath / sCapture) && std::filesystem::exists(f.tPath / sNew));
}

// By another program, between the look at the folder and the file's turn to go; one that is gone by then is no trouble.
void RecordFolderTest::fileThatIsChangedMeanwhileStays() {
    Folder f;
    const std::string sOld = f.Record("2011-05-14T00:00:00", "2011-05-14T23:00:00");
    const std::string sGone = f.Record("2011-05-13T00:00:00", "2011-05-13T23:00:00");
    f.Record("2011-05-15T00:00:00", "2011-05-15T11:00:00");
    int iAsked = 0;
    f.tTask.tRoom = [&](const std::filesystem::path&) {
        if (++iAsked == 1) std::filesystem::remove(f.tPath / sGone);
        if (iAsked == 2) f.Write(sOld, "my notes of May\n");
        return runtime::DiskRoom{100, Large};
    };
    QVERIFY(TendFolder(f.tTask).sRemoved.empty());
    QVERIFY(iAsked >= 2);
    QCOMPARE(f.Left().size(), std::size_t{2});
}

// None for the folder, or one that is taken by the folder: its files cannot be listed.
void RecordFolderTest::withoutDescriptorsNothingGoes() {
    Folder f;
    f.Record("2011-05-01T00:00:00", "2011-05-01T01:00:00");
    f.Record("2011-05-15T00:00:00", "2011-05-15T11:00:00");
    f.tTask.lKeepBytes = 1;
    rlimit tBefore{};
    QCOMPARE(::getrlimit(RLIMIT_NOFILE, &tBefore), 0);
    const int iNext = ::dup(STDERR_FILENO);
    ::close(iNext);
    std::vector<FolderReport> tReports;
    for (const rlim_t iLeft : {0, 1}) {
        const rlimit tFew{static_cast<rlim_t>(iNext) + iLeft, tBefore.rlim_max};
        ::setrlimit(RLIMIT_NOFILE, &tFew);
        tReports.push_back(TendFolder(f.tTask));
        ::setrlimit(RLIMIT_NOFILE, &tBefore);
    }
    QCOMPARE(tReports[0].iError, EMFILE);
    for (const FolderReport& t : tReports) QVERIFY(t.sRemoved.empty());
    QCOMPARE(f.Left().size(), std::size_t{2});
    QCOMPARE(TendFolder(f.tTask).sRemoved.size(), std::size_t{1});
}

void RecordFolderTest::otherProgramsFilesStay() {
    Folder f;
    const std::string sOurs = f.Record("2011-05-01T00:00:00", "2011-05-01T01:00:00");
    QVERIFY(QFile::copy(f.sFolder() + QLatin1Char('/') + QString::fromStdString(sOurs),
                        f.sFolder() + QStringLiteral("/north-20110501-000000.txt")));
    f.Record("2011-05-15T00:00:00", "2011-05-15T11:00:00");
    f.tTask.lKeepDays = 1;
    QCOMPARE(TendFolder(f.tTask).sRemoved, Names{sOurs});
    f.tTask.sProgram = "north";
    QVERIFY(TendFolder(f.tTask).sRemoved.empty());  // it is the newest of that one
}

void RecordFolderTest::thousandForeignFilesStay() {
    Folder f;
    Names sExpected;
    for (int i = 0; i < 1000; ++i) f.Write("photo" + std::to_string(i) + ".jpg", "05/01/2011 00:00:00 $GPGLL,x\r\n");
    sExpected = f.Left();
    const std::string sOld = f.Record("2011-05-01T00:00:00", "2011-05-01T01:00:00");
    const std::string sNew = f.Record("2011-05-15T00:00:00", "2011-05-15T11:00:00");
    f.tTask.lKeepBytes = 1;
    QCOMPARE(TendFolder(f.tTask).sRemoved, Names{sOld});
    sExpected.push_back(sNew);
    QCOMPARE(f.Left(), sExpected);
}

void RecordFolderTest::missingAndUnusableFolders() {
    Folder f;
    f.tTask.tFolder = f.tPath / "missing";
    QCOMPARE(TendFolder(f.tTask).iError, ENOENT);
    f.Write("file", "x");
    f.tTask.tFolder = f.tPath / "file";
    QCOMPARE(TendFolder(f.tTask).iError, ENOTDIR);
    // Without the rights of the system's owner, who may write everywhere.
    QCOMPARE(::chmod(f.tPath.c_str(), 0555), 0);
    const bool bOwner = ::geteuid() == 0;
    if (bOwner) QCOMPARE(::seteuid(65534), 0);
    f.tTask.tFolder = f.tPath;
    const int iError = TendFolder(f.tTask).iError;
    if (bOwner) QCOMPARE(::seteuid(0), 0);
    QCOMPARE(::chmod(f.tPath.c_str(), 0755), 0);
    QCOMPARE(iError, EACCES);
}

QTEST_APPLESS_MAIN(RecordFolderTest)
#include "RecordFolderTest.moc"
